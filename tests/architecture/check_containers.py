# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""No container with the library's fixed hash where others choose the keys: chosen ones would all meet in one bucket."""
import pathlib
import re
import sys

FOLDERS = ["plugin", "stream", "router", "im", "extensions", "profile", "transfer", "dialogs", "ui", "host", "platform",
           "messenger"]
# Files whose keys are our own: handles that are counted up, objects of the plugin, names of services.
OWN_KEYS = {"plugin/boundary.h", "messenger/core/boundary/service_registry.h"}
FIXED_HASH = re.compile(r"\bstd::(unordered_(multi)?(map|set)|hash)\b")


def faults(root):
    for folder in FOLDERS:
        for source in sorted((root / folder).rglob("*")):
            name = source.relative_to(root).as_posix()
            if source.suffix not in (".h", ".cpp") or name in OWN_KEYS:
                continue
            for number, line in enumerate(source.read_text(encoding="utf-8").splitlines(), 1):
                if FIXED_HASH.search(line):
                    yield f"{name}:{number}: a fixed hash; take an ordered container, or say here why the keys are ours"


def main():
    found = list(faults(pathlib.Path(sys.argv[1])))
    print("\n".join(found) if found else "no fixed hash")
    return 1 if found else 0


sys.exit(main())
