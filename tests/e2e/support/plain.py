# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""A messenger that a person uses line by line: what is typed goes in, and the lines that are shown come out."""

import re
import subprocess

from oku.events import EventLog
from oku.process import Child


class PlainTerminal:
    """`oku-terminal --plain` with a profile that has its account already. Each line is an event `line`."""

    def __init__(self, build, profile, authority, jid=None, environment=None):
        """With a `jid`, that account goes online at once."""
        self.log = EventLog(f"{profile.name}, plain")
        self._lines = self._read = 0
        self.child = Child([str(build / "oku-terminal"), "--plain", "--profile", str(profile),
                            "--module", str(build / "protoLink.module"), "--ca-file", str(authority),
                            *(["--account", jid, "--status", "online"] if jid else [])],
                           profile.parent / f"{profile.name}.lines", self._on_line, lambda: self.log.end("it ended"),
                           {"LANG": "pl_PL.UTF-8", "LC_ALL": "", "LC_MESSAGES": "", "DBUS_SESSION_BUS_ADDRESS": "disabled:",
                            **(environment or {})},
                           stdin=subprocess.PIPE, stderr=subprocess.STDOUT)

    def _on_line(self, line):
        self._lines += 1
        self.log.add({"event": "line", "number": self._lines, "text": line.decode()})

    def type(self, *lines):
        for line in lines:
            self.child.process.stdin.write(line.encode() + b"\n")
        self.child.process.stdin.flush()

    def wait(self, *parts):
        """Waits for a line with all these parts in it; gives the line."""
        return self.log.wait("line", text=lambda text: all(part in text for part in parts))["text"]

    def next(self, *parts):
        """The same, for lines behind the one that was last waited for so."""
        line = self.log.wait("line", number=lambda number: number > self._read,
                             text=lambda text: all(part in text for part in parts))
        self._read = line["number"]
        return line["text"]

    def row(self, text):
        """Waits until a window shows a row with this text, and gives its number."""
        return re.match(r"\s*(\d+) ", self.next(text)).group(1)

    def shown(self):
        """All lines so far, as one text."""
        return "".join(event["text"] for event in self.log.all())

    def quit(self):
        """Ends it as a user would; gives the exit code."""
        self.type("/quit")
        code = self.child.end_by_itself()
        self.child.process.stdin.close()
        return code

    def stop(self):
        """Ends it whatever it is doing; nothing happens when it has ended already."""
        self.child.end(kill=True)
        if not self.child.process.stdin.closed:
            self.child.process.stdin.close()
