# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Includes go down the order of the rooms: a room may include itself and what stands before it.

The plugin's folders may also include host/ and platform/. On the ground floor host/ knows nothing of platform/, its
utilities nothing but each other, and services are named in host/ only. The messenger knows nothing of the plugin but the
records of host/oku/; a program stands on the core's faces, values, options and texts, and on nothing else of it.
"""
import pathlib
import re
import sys

PLUGIN = ["plugin", "stream", "router", "im", "extensions", "profile", "transfer", "ui", "dialogs", "assembly"]
BELOW_ALL = {"host", "platform"}
# Windows are drawn by whoever can: what stands for them knows the account's frame and no feature.
UI_MAY_INCLUDE = {"ui", "plugin"}
# The exports stand above all layers, and beside the account's frame because they bear the plugin's name.
EXEMPT = {"plugin/module.cpp"}
CORE = ["xml", "values", "boundary", "process", "net", "storage", "accounts", "windows", "dialogs", "passwords", "wire",
        "roster", "cards", "talk", "connections", "transfers", "news", ""]
TERMINAL = ["screen", "talk", "json", ""]
# What every room of the messenger may include: the words of its texts.
COMMON = {"messenger/core/texts.h", "messenger/terminal/texts.h"}
# How a program sees the core. Its main() alone knows the messenger behind the faces, and starts the process.
SEEN = re.compile(r"messenger/core/(values/\w+|options|texts|(\w+/)?\w+_face)\.h")
STARTS = {"messenger/terminal/main.cpp": {"messenger/core/messenger.h", "messenger/core/process/process_protection.h"}}
SERVICE_CALL = re.compile(r'\bcall\(\s*u"[^"]*/')
# What the plugin's logic includes of others: the language's library, expat and zlib. It draws nothing itself.
FOREIGN = re.compile(r'^\s*#\s*include\s+<([^>]+)>', re.MULTILINE)
KNOWN = re.compile(r"[a-z_]+|expat\.h|zlib\.h")
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)


def sources(root, folder):
    for source in sorted((root / folder).rglob("*")):
        if source.suffix in (".h", ".cpp"):
            yield source.relative_to(root).as_posix(), source.read_text(encoding="utf-8")


def plugin_faults(root):
    for layer, folder in enumerate(PLUGIN):
        for name, text in sources(root, folder):
            if name in EXEMPT:
                continue
            if SERVICE_CALL.search(text):
                yield f"{name} names a service of the host"
            for include in FOREIGN.findall(text):
                if not KNOWN.fullmatch(include):
                    yield f"{name} includes {include}: the plugin's logic knows no toolkit"
            for include in INCLUDE.findall(text):
                top = include.split("/")[0]
                if top in BELOW_ALL:
                    continue
                if folder == "ui" and top not in UI_MAY_INCLUDE:
                    yield f"{name} includes {include}, which ui/ does not know"
                if top not in PLUGIN:
                    yield f"{name} includes {include}, which is no part of the plugin"
                elif PLUGIN.index(top) > layer:
                    yield f"{name} includes {include}, which is above it"
    for folder in sorted(BELOW_ALL):
        for name, text in sources(root, folder):
            for include in INCLUDE.findall(text):
                above = include.split("/")[0] in PLUGIN or (folder == "host" and include.startswith("platform/"))
                inside = not name.startswith("host/util/") or "/" not in include or include.startswith("host/util/")
                if above or not inside:
                    yield f"{name} includes {include}, which is above it"


def room_of(name, hall):
    """The room of a file below the hall: its folder there, or nothing for the hall's own files."""
    inner = name[len(hall) + 1:].split("/")
    return inner[0] if len(inner) > 1 else ""


def hall_faults(root, hall, rooms):
    for name, text in sources(root, hall):
        room = room_of(name, hall)
        if room not in rooms:
            yield f"{name} stands in a room that the order does not know"
            continue
        for include in INCLUDE.findall(text):
            if not include.startswith(hall + "/") or include in COMMON:
                continue
            if rooms.index(room_of(include, hall)) > rooms.index(room):
                yield f"{name} includes {include}, which is above it"


def messenger_faults(root):
    yield from hall_faults(root, "messenger/core", CORE)
    yield from hall_faults(root, "messenger/terminal", TERMINAL)
    for name, text in sources(root, "messenger"):
        program = not name.startswith("messenger/core/")
        for include in INCLUDE.findall(text):
            if include.split("/")[0] != "messenger":
                if "/" in include and not include.startswith("host/oku/"):
                    yield f"{name} includes {include}, which is the plugin's"
            elif include.startswith("messenger/core/"):
                seen = SEEN.fullmatch(include) or include in STARTS.get(name, set())
                if program and not seen:
                    yield f"{name} includes {include}, which is no face of the core"
            elif not program:
                yield f"{name} includes {include}, which is above it"


def main():
    root = pathlib.Path(sys.argv[1])
    found = list(plugin_faults(root)) + list(messenger_faults(root))
    print("\n".join(found) if found else "every include goes down")
    return 1 if found else 0


sys.exit(main())
