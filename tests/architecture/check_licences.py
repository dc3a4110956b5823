# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Every source file says whose it is and under which licence it stands, in its first lines, so that a copy of one file
still tells it. What is no source (texts, transcripts, seeds of the fuzzers) stands under LICENSE."""
import pathlib
import sys

FOLDERS = ["assembly", "bench", "cmake", "dialogs", "extensions", "fuzz", "host", "im", "messenger", "platform",
           "plugin", "profile", "router", "scripts", "stream", "tests", "transfer", "ui"]
FILES = ["CMakeLists.txt", "run", "test", ".ci/run", ".clang-format", ".clang-tidy"]
SUFFIXES = {".h", ".c", ".cpp", ".py", ".sh", ".cmake"}
LINES = ["SPDX-FileCopyrightText: The protoLink authors", "SPDX-License-Identifier: MIT"]


def sources(root):
    for name in FILES:
        yield root / name
    for folder in FOLDERS:
        for path in sorted((root / folder).rglob("*")):
            script = path.parent == root / "scripts" and path.is_file() and not path.suffix
            generated = path.with_name(path.stem).suffix if path.suffix == ".in" else path.suffix
            if script or generated in SUFFIXES or path.name == "CMakeLists.txt":
                yield path


def says_it(path):
    first = path.read_text(encoding="utf-8").splitlines()[:4]
    if first and first[0].startswith("#!"):
        first = first[1:]
    return [line.lstrip("/# ") for line in first[:2]] == LINES


def main():
    root = pathlib.Path(sys.argv[1])
    silent = [path.relative_to(root).as_posix() for path in sources(root) if not says_it(path)]
    print("\n".join(f"{name}: no SPDX lines at its beginning" for name in silent) or "every source tells its licence")
    return 1 if silent else 0


sys.exit(main())
