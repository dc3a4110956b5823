# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""A third-party client in a terminal of its own: told what to do through a pipe, and read through its log files."""

import os
import pathlib
import pty
import threading

from oku.events import TIMEOUT
from oku.process import Child

_SETTINGS = """\
set jid = {jid}
set password = {password}
set server = 127.0.0.1
set port = {port}
set resource = mcabber
set disable_random_resource = 1
set tls = 1
set ssl_ignore_checks = 1
set pinginterval = 0
set logging = 1
set logging_ignore_status = 1
set logging_dir = {home}/logs
set fifo_name = {home}/commands
set beep_on_message = 0
module load fifo
"""


class Mcabber:
    """One run of mcabber. Its folder keeps the logs of all runs."""

    def __init__(self, home, jid, password, port):
        self.home = pathlib.Path(home)
        self.home.mkdir(mode=0o700, exist_ok=True)
        settings = self.home / "mcabberrc"
        settings.write_text(_SETTINGS.format(home=self.home, jid=jid, password=password, port=port))
        settings.chmod(0o600)
        terminal, inside = pty.openpty()
        self._drain = threading.Thread(target=self._read, args=(terminal,), daemon=True)
        self.child = Child(["mcabber", "-f", str(settings)], self.home / "output", stdin=inside, stderr=inside,
                           environment={"TERM": "xterm", "LC_ALL": "C.UTF-8", "HOME": str(self.home)})
        os.close(inside)
        self._drain.start()

    @staticmethod
    def _read(terminal):
        """What it draws is looked at by nobody, but must not fill the terminal's buffer."""
        try:
            while os.read(terminal, 65536):
                pass
        except OSError:
            pass
        os.close(terminal)

    def command(self, line):
        with open(self.home / "commands", "w", encoding="utf-8") as commands:
            commands.write(line + "\n")

    def received(self):
        """The texts of all messages that it has logged as received, in every run."""
        folder = self.home / "logs"
        lines = [line for file in (folder.iterdir() if folder.exists() else ())
                 for line in file.read_text("utf-8", "replace").rpartition("\n")[0].splitlines()]
        return [line.split(" ", 3)[3] for line in lines if line.startswith("MR ")]

    def stop(self):
        if self.child.running:
            self.command("/quit")
        self.child.end_by_itself()
        self._drain.join(TIMEOUT)
