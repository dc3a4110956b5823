"""Includes go down the order of the subsystems: a folder may include itself, lower folders, host/ and platform/. On the
ground floor host/ knows nothing of platform/, its utilities nothing but each other, and services are named in host/ only.
"""
import pathlib
import re
import sys

ORDER = ["plugin", "stream", "router", "im", "extensions", "profile", "transfer", "dialogs", "assembly"]
BELOW_ALL = {"host", "platform"}
# The exports stand above all layers, and beside the account's frame because they bear the plugin's name.
EXEMPT = {"plugin/module.cpp"}
SERVICE_CALL = re.compile(r'\bcall\(\s*u"[^"]*/')
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)


def faults(root):
    for layer, folder in enumerate(ORDER):
        for source in sorted((root / folder).rglob("*")):
            name = source.relative_to(root).as_posix()
            if source.suffix not in (".h", ".cpp") or name in EXEMPT:
                continue
            text = source.read_text(encoding="utf-8")
            if SERVICE_CALL.search(text):
                yield f"{name} names a service of the host"
            for include in INCLUDE.findall(text):
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
                name = source.relative_to(root).as_posix()
                above = include.split("/")[0] in ORDER or (folder == "host" and include.startswith("platform/"))
                inside = not name.startswith("host/util/") or "/" not in include or include.startswith("host/util/")
                if above or not inside:
                    yield f"{name} includes {include}, which is above it"


def main():
    found = list(faults(pathlib.Path(sys.argv[1])))
    print("\n".join(found) if found else "every include goes down")
    return 1 if found else 0


sys.exit(main())
