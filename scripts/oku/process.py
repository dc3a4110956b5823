"""Child processes that end with their parent, whatever becomes of it."""

import ctypes
import os
import signal
import socket
import subprocess
import threading

PR_SET_PDEATHSIG = 1
_libc = ctypes.CDLL(None, use_errno=True)


def _die_with_parent():
    """Runs in the child: the kernel kills it when its parent goes, also when the parent is killed."""
    _libc.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


def free_port():
    """A TCP port of the loopback that nobody listens on now. Another process may be faster: starting retries."""
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class Child:
    """A process in a session of its own, so that Ctrl-C reaches only the one who drives it.

    What it writes to standard output goes line by line to `on_line` (on a thread of its own) and to `log_path`."""

    def __init__(self, arguments, log_path, on_line=None, on_end=None, environment=None, **options):
        self.log = open(log_path, "ab", buffering=0)
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

    def end_by_itself(self, timeout):
        """Waits until the process ends on its own; gives its exit code. TimeoutExpired when it does not."""
        code = self.process.wait(timeout)
        self._close(timeout)
        return code

    def end(self, kill=False, timeout=15):
        """Ends the process and gives its exit code. One that does not go within `timeout` seconds is killed."""
        if self.log.closed:
            return self.process.returncode
        if self.running:
            self.process.send_signal(signal.SIGKILL if kill else signal.SIGTERM)
        try:
            code = self.process.wait(timeout)
        except subprocess.TimeoutExpired:
            self.process.kill()
            code = self.process.wait()
        self._close(timeout)
        return code

    def _close(self, timeout):
        self.reader.join(timeout)
        self.process.stdout.close()
        self.log.close()
