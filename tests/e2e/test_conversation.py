# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""What ./run plays: two people talk, and nothing stays behind, however it ends."""

import os
import pathlib
import pty
import shutil
import signal
import subprocess
import sys
import threading
import unittest

from oku.conversation import Person, play
from oku.events import TIMEOUT
from support.case import BUILD, PASSWORDS, Case
from support.soak import wait_until


class Conversation(Case):
    def plays(self, server):
        people = [Person(self.messenger(name), f"{name}@localhost", PASSWORDS[name], server.address)
                  for name in ("ala", "olek")]
        seen = []
        play(*people, lambda title, seconds: seen.append(title))
        self.assertEqual(len(seen), 5)

    def test_two_messengers_talk_over_prosody(self):
        self.plays(self.prosody())

    def test_two_messengers_talk_over_ejabberd(self):
        self.plays(self.ejabberd())


class Run(Case):
    """The command itself, on a build folder of the test's own."""

    def setUp(self):
        super().setUp()
        self.build = (self.folder / "build").resolve()  # as the command itself names it
        self.build.mkdir()
        for name in ("oku-terminal", "protoLink.module"):
            (self.build / name).symlink_to(BUILD / name)

    def command(self, *arguments, **environment):
        process = subprocess.Popen(
            [sys.executable, "-m", "oku", *arguments], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT, text=True, start_new_session=True,
            env={**os.environ, "OKU_BUILD": str(self.build), **environment})
        self.addCleanup(process.stdout.close)
        self.addCleanup(process.kill)
        return process

    def leaves_nothing_behind(self):
        """What was killed with its parent goes a moment after it."""
        wait_until(lambda: not self.left_behind(), "the end of all processes")

    def left_behind(self):
        """Processes whose command line names the build folder."""
        found = []
        for entry in pathlib.Path("/proc").glob("[0-9]*/cmdline"):
            try:
                if str(self.build) in entry.read_bytes().decode("utf-8", "replace"):
                    found.append(entry.parent.name)
            except OSError:
                continue
        return found

    def test_without_a_terminal_it_plays_and_ends_well(self):
        process = self.command()
        output, _ = process.communicate(timeout=TIMEOUT)
        self.assertEqual(process.returncode, 0, output)
        self.assertEqual(output.count("seen on both sides"), 6, output)
        self.assertIn("Zażółć gęślą jaźń, Alu 🦆", output)
        self.leaves_nothing_behind()

    def test_a_failed_step_is_named_and_ends_badly(self):
        (self.build / "protoLink.module").unlink()
        shutil.copy("/bin/true", self.build / "protoLink.module")
        process = self.command()
        output, _ = process.communicate(timeout=TIMEOUT)
        self.assertEqual(process.returncode, 1, output)
        self.assertIn("./run: failed:", output)
        self.leaves_nothing_behind()

    def held(self):
        """A conversation that was stopped in its midst; None where it was over first, as this program stood still."""
        process = self.command()
        lines = []
        for line in process.stdout:
            lines.append(line)
            if "log in under STARTTLS" in line:
                break
        # Popen looks first, and takes away the end of one that is over before it can be seen here.
        os.kill(process.pid, signal.SIGSTOP)
        state = os.waitid(os.P_PID, process.pid, os.WSTOPPED | os.WEXITED | os.WNOWAIT).si_code
        # In its midst it has a server and messengers; one that has none is about to end well, whatever it is sent.
        if state == os.CLD_STOPPED and self.left_behind():
            return process
        os.kill(process.pid, signal.SIGCONT)
        lines += process.stdout
        self.assertEqual(process.wait(TIMEOUT), 0, "".join(lines))
        return None

    def interrupted(self, number):
        process = self.held()
        while not process:
            process = self.held()
        process.send_signal(number)
        process.send_signal(signal.SIGCONT)
        rest = threading.Thread(target=process.stdout.read)
        rest.start()
        self.assertNotEqual(process.wait(TIMEOUT), 0)
        rest.join()
        self.leaves_nothing_behind()

    def test_ctrl_c_leaves_nothing_behind(self):
        self.interrupted(signal.SIGINT)

    def test_a_lost_terminal_leaves_nothing_behind(self):
        self.interrupted(signal.SIGHUP)

    def test_an_own_account_without_a_password_is_told(self):
        process = self.command("--account", "you@example.org", OKU_PASSWORD="")
        output, _ = process.communicate(timeout=TIMEOUT)
        self.assertEqual(process.returncode, 1)
        self.assertIn("OKU_PASSWORD", output)

    def test_the_password_of_an_own_account_stays_in_no_environment(self):
        secret = "bardzo-tajne"
        screen, terminal = pty.openpty()
        self.addCleanup(os.close, screen)
        process = subprocess.Popen(
            [sys.executable, "-m", "oku", "--account", "you@brak.invalid"], stdin=terminal, stdout=terminal, stderr=terminal,
            start_new_session=True, env={**os.environ, "OKU_BUILD": str(self.build), "OKU_PASSWORD": secret, "TERM": "xterm",
                                         "DBUS_SESSION_BUS_ADDRESS": "disabled:"})
        os.close(terminal)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        shown = b""
        while b"you@brak.invalid" not in shown:  # the messenger's own screen
            shown += os.read(screen, 65536)
        self.assertTrue(self.left_behind())
        for number in [process.pid, *self.left_behind()]:
            self.assertNotIn(secret.encode(), pathlib.Path(f"/proc/{number}/environ").read_bytes())


if __name__ == "__main__":
    unittest.main()
