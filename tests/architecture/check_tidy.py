# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""clang-tidy finds nothing in the sources of the plugin and of the messenger.

    check_tidy.py ROOT BUILD

It takes seconds for a file, so what was found clean is not looked at again before the file, a header of ours below it, its
command or .clang-tidy changes: a stamp of all these lies in BUILD/tidy.
"""
import concurrent.futures
import functools
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

FOLDERS = ("assembly", "plugin", "host", "platform", "stream", "router", "im", "extensions", "profile", "transfer",
           "ui", "dialogs", "messenger")
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)
# clang reads no headers that another compiler has read before, and a few warnings have other names there.
LEFT_OUT = re.compile(r"-Winvalid-pch|-fno-gnu-unique|-fsanitize=.*|-fno-sanitize.*")


class Sources:
    """The sources below `root`, as the build in `build` compiles them."""

    def __init__(self, root, build):
        self.root = root
        self.build = build
        self.settings = (root / ".clang-tidy").read_bytes()

    def commands(self):
        """Each source of ours and the arguments that it is compiled with, once."""
        found = {}
        for entry in json.loads((self.build / "compile_commands.json").read_text()):
            path = pathlib.Path(entry["file"])
            if path.is_relative_to(self.root) and path.relative_to(self.root).parts[0] in FOLDERS:
                found.setdefault(path, arguments(entry["command"]))
        return found

    @functools.cache
    def below(self, path):
        """The file and our headers below it, as far as they lie where their names say."""
        seen, waiting = set(), [path]
        while waiting:
            one = waiting.pop()
            if one not in seen:
                seen.add(one)
                names = INCLUDE.findall(one.read_text(encoding="utf-8"))
                waiting += [self.root / name for name in names if (self.root / name).is_file()]
        return sorted(seen)

    def stamp(self, path, command):
        whole = hashlib.sha256(self.settings + "\0".join(command).encode())
        for one in self.below(path):
            whole.update(hashlib.sha256(one.read_bytes()).digest())
        return self.build / "tidy" / whole.hexdigest()


def arguments(command):
    """What follows the compiler's name, without what only that compiler knows."""
    words = shlex.split(command)
    compiler = next(index for index, word in enumerate(words) if not word.endswith("ccache"))
    kept, rest = [], iter(words[compiler + 1:])
    for word in rest:
        if word == "-o":
            next(rest)
        elif word == "-include":
            # Instead of all that the precompiled headers hold: what is for translations, which nobody includes.
            kept += [word, "QtCore/QCoreApplication"] if "cmake_pch" in next(rest) else []
        elif not LEFT_OUT.fullmatch(word):
            kept.append(word)
    return kept


def faults(path, command):
    """What clang-tidy says of a file; nothing when it is clean."""
    done = subprocess.run(["nice", "-n", "5", "clang-tidy", "--quiet", str(path), "--", *command],
                          capture_output=True, text=True)
    if done.returncode == 0 and not done.stdout.strip():
        return ""
    return done.stdout.strip() or f"{path}: clang-tidy ended with {done.returncode}:\n{done.stderr.strip()}"


def main():
    root, build = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    sources = Sources(root, build)
    (build / "tidy").mkdir(exist_ok=True)
    stamps = {path: (sources.stamp(path, command), command) for path, command in sources.commands().items()}
    for old in set((build / "tidy").iterdir()) - {stamp for stamp, _ in stamps.values()}:
        old.unlink()
    waiting = {path: both for path, both in stamps.items() if not both[0].exists()}
    said = set()
    with concurrent.futures.ThreadPoolExecutor(len(os.sched_getaffinity(0))) as pool:
        tasks = {pool.submit(faults, path, command): stamp for path, (stamp, command) in waiting.items()}
        for task in concurrent.futures.as_completed(tasks):
            if not task.result():
                tasks[task].touch()
            # What stands in a header is found below each file that includes it.
            for line in task.result().splitlines():
                if line not in said:
                    print(line, flush=True)
            said.update(task.result().splitlines())
    print(f"{len(stamps)} files, {len(waiting)} of them looked at now: " + ("see above" if said else "clean"))
    return 1 if said else 0


sys.exit(main())
