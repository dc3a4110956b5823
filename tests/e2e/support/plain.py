# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""A messenger that a person uses line by line: what is typed goes in, and the lines that are shown come out."""

import subprocess

from oku.events import EventLog
from oku.process import Child


class PlainTerminal:
    """`oku-terminal --plain` with a profile that has its account already. Each line is an event `line`."""

    def __init__(self, build, profile, authority, jid):
        self.log = EventLog(f"{profile.name}, plain")
        self.child = Child([str(build / "oku-terminal"), "--plain", "--profile", str(profile),
                            "--module", str(build / "protoLink.module"), "--ca-file", str(authority),
                            "--account", jid, "--status", "online"],
                           profile.parent / f"{profile.name}.lines", self._on_line, lambda: self.log.end("it ended"),
                           {"LANG": "pl_PL.UTF-8", "DBUS_SESSION_BUS_ADDRESS": "disabled:"},
                           stdin=subprocess.PIPE, stderr=subprocess.STDOUT)

    def _on_line(self, line):
        self.log.add({"event": "line", "text": line.decode()})

    def type(self, line):
        self.child.process.stdin.write(line.encode() + b"\n")
        self.child.process.stdin.flush()

    def wait(self, *parts):
        """Waits for a line with all these parts in it; gives the line."""
        return self.log.wait("line", text=lambda text: all(part in text for part in parts))["text"]

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
        self.child.process.stdin.close()
