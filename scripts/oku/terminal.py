# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""A terminal messenger driven through `oku-terminal --json`: commands in, events out, one JSON object a line."""

import json
import pathlib
import subprocess

from .events import EventLog, Unexpected
from .process import Child, open_private


class CommandFailed(RuntimeError):
    """The messenger refused a command; the text is its reason."""


class OkuTerminal:
    """One messenger with one profile, and the log of its events."""

    def __init__(self, name, build, profile, authority=None, options=(), watch=None, environment=None):
        """`build` is the folder with oku-terminal and protoLink.module, `authority` a certificate to trust, `watch` is
        called with the name and each event as it comes (on the reader's thread)."""
        build = pathlib.Path(build)
        self.name = name
        self.profile = pathlib.Path(profile)
        self.log = EventLog(name)
        self.arguments = [str(build / "oku-terminal"), "--json", "--profile", str(self.profile),
                          "--module", str(build / "protoLink.module"), *options]
        if authority:
            self.arguments += ["--ca-file", str(authority)]
        self.profile.parent.mkdir(parents=True, exist_ok=True)
        self._watch = watch
        self._next_id = 0
        self._errors = self.profile.parent / f"{self.profile.name}.stderr"
        # In Polish, as the plugin's texts are. No session bus, so no key ring of the person who runs this.
        self._environment = {"LANG": "pl_PL.UTF-8", "LC_ALL": "", "LC_MESSAGES": "", "DBUS_SESSION_BUS_ADDRESS": "disabled:",
                             **(environment or {})}
        self.child = None
        self.seen, self.wait, self.forget = self.log.seen, self.log.wait, self.log.forget
        self.wait_for = self.log.wait_for

    def start(self, ready=True):
        """Starts it, by default until it takes commands."""
        with open_private(self._errors) as errors:
            self.child = Child(self.arguments, self.profile.parent / f"{self.profile.name}.events", self._on_line,
                               lambda: self.log.end(f"the messenger ended ({self.errors()})"), self._environment,
                               stdin=subprocess.PIPE, stderr=errors)
        if ready:
            self.wait("ready")
        return self

    def _on_line(self, line):
        try:
            event = json.loads(line)
        except ValueError:
            event = {"event": "not JSON", "line": line.decode("utf-8", "backslashreplace")}
        self.log.add(event)
        if self._watch:
            self._watch(self.name, event)

    def errors(self):
        """What it wrote to standard error, at most the last 2,000 characters."""
        try:
            return self._errors.read_text("utf-8", "replace")[-2000:].strip()
        except FileNotFoundError:
            return ""

    def send(self, cmd, **fields):
        """Writes a command and does not wait; gives its id."""
        self._next_id += 1
        line = json.dumps({"cmd": cmd, "id": self._next_id, **fields}, ensure_ascii=False)
        self.send_line(line.encode())
        return self._next_id

    def send_line(self, line):
        """Writes one line of bytes as it is."""
        try:
            self.child.process.stdin.write(line + b"\n")
            self.child.process.stdin.flush()
        except (BrokenPipeError, ValueError) as error:
            raise Unexpected(f"{self.name}: it takes no commands any more ({self.errors()})") from error

    def command(self, cmd, **fields):
        """Gives a command and waits for its `ok`; a refusal raises CommandFailed."""
        number = self.send(cmd, **fields)
        answer = self.log.wait_for(lambda event: event.get("id") == number, f"the answer to {cmd}")
        if answer["event"] != "ok":
            raise CommandFailed(answer.get("reason", ""))
        return answer

    def ask(self, cmd, event, **fields):
        """Gives a command whose answer comes as an event before its `ok`; gives that event."""
        before = len(self.log.all())
        self.command(cmd, **fields)
        found = [one for one in self.log.all()[before:] if one.get("event") == event]
        if not found:
            raise Unexpected(f"{self.name}: no event {event} before the ok of {cmd}")
        return found[-1]

    def roster(self):
        """The contact list as it is now: bare JID to entry."""
        return {entry["jid"]: entry for entry in self.ask("roster", "roster")["contacts"]}

    def quit(self):
        """Ends it as a user would; gives the exit code."""
        self.send("quit")
        self.wait("bye")
        self.child.process.stdin.close()
        return self.child.end_by_itself()

    def wait_for_end(self):
        """Waits until it ends for a reason of its own; gives the exit code."""
        code = self.child.end_by_itself()
        self.stop()
        return code

    def stop(self, kill=False):
        """Ends it whatever it is doing; nothing happens when it has ended already."""
        if not self.child:
            return
        self.child.end(kill)
        try:
            self.child.process.stdin.close()
        except BrokenPipeError:
            pass
