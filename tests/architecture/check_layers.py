"""Includes go down the order of the subsystems: a folder may include itself, lower folders, host/ and platform/."""
import pathlib
import re
import sys

ORDER = ["plugin", "stream", "router", "im", "extensions", "profile", "transfer", "dialogs", "assembly"]
BELOW_ALL = {"host", "platform"}
# The exports stand above all layers, and beside the account's frame because they bear the plugin's name.
EXEMPT = {"plugin/module.cpp"}
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)


def faults(root):
    for layer, folder in enumerate(ORDER):
        for source in sorted((root / folder).rglob("*")):
            name = source.relative_to(root).as_posix()
            if source.suffix not in (".h", ".cpp") or name in EXEMPT:
                continue
            for include in INCLUDE.findall(source.read_text(encoding="utf-8")):
                top = include.split("/")[0]
                if top in BELOW_ALL or "/" not in include:
                    continue
                if top not in ORDER:
                    yield f"{name} includes {include}, which is no part of the plugin"
                elif ORDER.index(top) > layer:
                    yield f"{name} includes {include}, which is above it"
    for folder in sorted(BELOW_ALL):
        for source in sorted((root / folder).rglob("*")):
            if source.suffix not in (".h", ".cpp"):
                continue
            for include in INCLUDE.findall(source.read_text(encoding="utf-8")):
                if include.split("/")[0] in ORDER:
                    yield f"{source.relative_to(root).as_posix()} includes {include}, which is above it"


def main():
    found = list(faults(pathlib.Path(sys.argv[1])))
    print("\n".join(found) if found else "every include goes down")
    return 1 if found else 0


sys.exit(main())
