# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""A third-party client made of libpurple, without a user: told what to do through a pipe, events come back as JSON."""

import json
import pathlib
import shlex
import subprocess

from oku.events import EventLog, Unexpected
from oku.process import Child, open_private


class Purple:
    """One run of purple-bot. tests/e2e/purple tells its commands and events."""

    def __init__(self, program, home, user, password, server, authority, resource="libpurple", options=()):
        """`home` is a folder that is made for it, `options` stand behind it on the command line."""
        self.jid = f"{user}@{server.domain}"
        self.full = f"{self.jid}/{resource}"
        self.log = EventLog(self.full)
        self.wait, self.seen, self.wait_for = self.log.wait, self.log.seen, self.log.wait_for
        self.home = pathlib.Path(home)
        self.child = None
        self._command = [str(program), str(home), *options]
        self._login = password, server.port, authority
        self._given = 0

    def start(self):
        """Starts it and logs in; its presence is told to its contacts."""
        self.home.mkdir(mode=0o700)
        with open_private(self.home / "stderr") as errors:
            self.child = Child(self._command, self.home / "events",
                               lambda line: self.log.add(json.loads(line)),
                               lambda: self.log.end(f"it ended (see {self.home}/stderr)"),
                               {"HOME": str(self.home), "LC_ALL": "C.UTF-8"}, stdin=subprocess.PIPE, stderr=errors)
        self.wait("ready")
        self.command("login", self.full, *self._login)
        self.wait("online")
        return self

    def command(self, *words):
        """Gives a command and waits until it is done."""
        line = shlex.join(str(word) for word in words) + "\n"
        self.child.process.stdin.write(line.encode())
        self.child.process.stdin.flush()
        self._given += 1
        answer = self.wait_for(lambda event: event.get("given") == self._given, f"the answer to {line}")
        if answer["event"] == "refused":
            raise Unexpected(f"{self.full}: {line.strip()}: {answer['reason']}")

    def stop(self):
        """Logs out and ends; nothing happens when it was never started."""
        if not self.child:
            return
        try:
            self.child.process.stdin.close()
        except BrokenPipeError:
            pass
        self.child.end_by_itself()

    def said(self):
        """What libpurple has written of itself, with all that went over the wire in clear."""
        return (self.home / "stderr").read_text("utf-8", "replace")
