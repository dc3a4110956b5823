# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Child processes that end with their parent, whatever becomes of it."""

import ctypes
import os
import random
import signal
import socket
import subprocess
import threading
import weakref

from .events import TIMEOUT

PR_SET_PDEATHSIG = 1
# Below the ports that the kernel gives to whoever asks for any, so that nobody gets one of ours while its server is down,
# and nobody who dials a server that is down meets himself.
PORTS = range(20000, 32000)
_libc = ctypes.CDLL(None, use_errno=True)


def _die_with_parent():
    """Runs in the child: the kernel kills it when its parent goes, also when the parent is killed."""
    _libc.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


class Port:
    """A TCP port of the loopback that nobody listens on, reserved among all processes that draw theirs here: as long as
    this object lives, also while the server that was made for it is down."""

    def __init__(self):
        for number in random.SystemRandom().sample(PORTS, len(PORTS)):
            if self._reserve(number):
                self.number = number
                return
        raise OSError("no port is free")

    def _reserve(self, number):
        """The reservation is a name in the kernel that only one process can have, and that goes with it."""
        mark = socket.socket(socket.AF_UNIX)
        try:
            mark.bind(f"\0protoLink port {number}")
            with socket.socket() as probe:
                probe.bind(("127.0.0.1", number))
        except OSError:
            mark.close()
            return False
        self.release = weakref.finalize(self, os.close, mark.detach())
        return True


def open_private(path):
    """A file to append to, without a buffer, that only its owner can read: talks and console lines go into it."""
    descriptor = os.open(path, os.O_WRONLY | os.O_CREAT | os.O_APPEND | os.O_CLOEXEC, 0o600)
    os.fchmod(descriptor, 0o600)
    return os.fdopen(descriptor, "ab", buffering=0)


class Child:
    """A process in a session of its own, so that Ctrl-C reaches only the one who drives it.

    What it writes to standard output goes line by line to `on_line` (on a thread of its own) and to `log_path`."""

    def __init__(self, arguments, log_path, on_line=None, on_end=None, environment=None, **options):
        self.log = open_private(log_path)
        self.process = subprocess.Popen(
            arguments, stdout=subprocess.PIPE, start_new_session=True, preexec_fn=_die_with_parent,
            env={**os.environ, **(environment or {})}, **options)
        self.reader = threading.Thread(target=self._read, args=(on_line, on_end), daemon=True)
        self.reader.start()

    def _read(self, on_line, on_end):
        for line in self.process.stdout:
            self.log.write(line)
            if on_line:
                on_line(line)
        if on_end:
            on_end()

    @property
    def running(self):
        return self.process.poll() is None

    def end_by_itself(self):
        """Waits until the process ends on its own; gives its exit code. TimeoutExpired when it does not."""
        code = self.process.wait(TIMEOUT)
        self._close()
        return code

    def end(self, kill=False):
        """Ends the process and gives its exit code. One that does not go by itself is killed in the end."""
        if self.log.closed:
            return self.process.returncode
        if self.running:
            self.process.send_signal(signal.SIGKILL if kill else signal.SIGTERM)
        try:
            code = self.process.wait(TIMEOUT)
        except subprocess.TimeoutExpired:
            self.process.kill()
            code = self.process.wait()
        self._close()
        return code

    def _close(self):
        self.reader.join(TIMEOUT)
        self.process.stdout.close()
        self.log.close()
