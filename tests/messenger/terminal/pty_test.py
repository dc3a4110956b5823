# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""The terminal messenger in a pseudo terminal: what a person sees, how the terminal is left, what it ends with.

    pty_test.py FAKE PROGRAM    FAKE is the messenger on a scripted core, PROGRAM the real one
"""

import fcntl
import os
import pathlib
import pty
import re
import select
import signal
import struct
import subprocess
import sys
import tempfile
import termios
import time
import unittest

FAKE, PROGRAM = sys.argv[1], sys.argv[2]
LIMIT = 180
MARK = b"\x1b]behind all of it\x07"
ENTER, LEAVE = b"\x1b[?1049h", b"\x1b[?1049l"


def waiting(stream):
    """How many bytes nobody has read yet."""
    return struct.unpack("i", fcntl.ioctl(stream, termios.FIONREAD, b"\0" * 4))[0]


def asleep(process):
    return pathlib.Path(f"/proc/{process.pid}/stat").read_text().rsplit(")", 1)[1].split()[0] == "S"


class Terminal:
    """A program on a pseudo terminal, and the rows that it has painted there."""

    def __init__(self, arguments, columns=80, rows=24, output=None, **environment):
        """`output`: where it writes instead of to its terminal."""
        self.master, slave = pty.openpty()
        self.slave = slave
        self.size(columns, rows)
        self.before = termios.tcgetattr(slave)
        surroundings = {"PATH": os.environ["PATH"], "LC_ALL": "en_US.UTF-8", "TERM": "xterm-256color", **environment}
        self.process = subprocess.Popen(arguments, stdin=slave, stdout=output or slave, stderr=slave, env=surroundings,
                                        start_new_session=True,
                                        preexec_fn=lambda: fcntl.ioctl(0, termios.TIOCSCTTY, 0))
        self.bytes = b""
        self.rows = {}
        self.taken = 0

    def size(self, columns, rows):
        fcntl.ioctl(self.slave, termios.TIOCSWINSZ, struct.pack("HHHH", rows, columns, 0, 0))

    def resize(self, columns, rows):
        self.size(columns, rows)
        self.process.send_signal(signal.SIGWINCH)

    def read(self, seconds):
        ready, _, _ = select.select([self.master], [], [], seconds)
        if ready:
            try:
                self.bytes += os.read(self.master, 65536)
            except OSError:
                pass
        self._paint()

    def _paint(self):
        """Every frame ends by showing the cursor; whole frames are painted."""
        while True:
            end = self.bytes.find(b"\x1b[?25h", self.taken)
            if end < 0:
                return
            frame = self.bytes[self.taken:end].decode()
            self.taken = end + 6
            if "\x1b[2J" in frame:
                self.rows = {}
            for row, text in re.findall(r"\x1b\[(\d+);1H\x1b\[2K(.*?)(?=\x1b\[\d+;\d+H|$)", frame, re.S):
                self.rows[int(row)] = re.sub(r"\x1b\[[\d;]*[mG]", "", text)

    def text(self):
        return "\n".join(self.rows.get(row, "").rstrip() for row in range(1, max(self.rows, default=0) + 1))

    def wait(self, what):
        """Reads until the predicate holds, or the text is seen."""
        holds = what if callable(what) else lambda: what in self.text()
        limit = time.monotonic() + LIMIT
        while not holds():
            if time.monotonic() > limit:
                raise AssertionError(f"not seen: {what!r}; the screen:\n{self.text()}\n{self.bytes[-500:]!r}")
            self.read(0.1)

    def type(self, text):
        os.write(self.master, text.encode())

    def end(self):
        """Waits for the end; gives the exit code."""
        limit = time.monotonic() + LIMIT
        while self.process.poll() is None and time.monotonic() < limit:
            self.read(0.05)
        if self.process.poll() is None:
            self.process.kill()
            raise AssertionError(f"it does not end; the screen:\n{self.text()}")
        self.read_the_rest()
        return self.process.returncode

    def read_the_rest(self):
        """All that the program has written: what is written to its terminal now comes behind it."""
        os.write(self.slave, MARK)
        while MARK not in self.bytes:
            self.read(LIMIT)
        self.bytes = self.bytes.replace(MARK, b"")

    def close(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        os.close(self.slave)
        os.close(self.master)


class InATerminal(unittest.TestCase):
    def start(self, *options, **settings):
        terminal = Terminal([FAKE, *options], **settings)
        self.addCleanup(terminal.close)
        return terminal

    def test_a_person_connects_and_talks(self):
        terminal = self.start("--status", "online")
        terminal.wait("Olek (dom): away — Zaraz wracam ☕")
        terminal.wait("ala@localhost ● available")
        terminal.type("/chat-with ol\t\r")
        terminal.wait("Olek <olek@localhost> ◐ away (dom)")
        terminal.type("zażółć 李梅 🦆")
        terminal.wait("Olek> zażółć 李梅 🦆")
        terminal.type("\r")
        terminal.wait("ala │ zażółć 李梅 🦆")
        terminal.wait("Olek │ Echo: zażółć 李梅 🦆")
        terminal.type("/quit\r")
        self.assertEqual(terminal.end(), 0)

    def test_the_terminal_is_left_as_it_was_found(self):
        for how in ("/quit\r", "\x04", signal.SIGTERM, signal.SIGINT):
            with self.subTest(how=how):
                terminal = self.start()
                terminal.wait("ala>")
                self.assertFalse(termios.tcgetattr(terminal.slave)[3] & termios.ECHO)
                if isinstance(how, str):
                    terminal.type(how)
                else:
                    terminal.process.send_signal(how)
                self.assertEqual(terminal.end(), 0)
                self.assertEqual(termios.tcgetattr(terminal.slave), terminal.before)
                self.assertEqual(terminal.bytes.count(ENTER), 1)
                self.assertEqual(terminal.bytes.count(LEAVE), 1)
                self.assertTrue(terminal.bytes.rstrip().endswith(LEAVE))
                self.assertIn(b"\x1b[?2004l", terminal.bytes)

    def test_a_terminal_that_goes_away_ends_it(self):
        terminal = self.start()
        terminal.wait("ala>")
        terminal.process.send_signal(signal.SIGHUP)
        self.assertEqual(terminal.end(), 0)

    def test_a_signal_ends_it_while_its_terminal_stands_still(self):
        terminal = self.start("--plain")
        terminal.wait(lambda: b"/quit" in terminal.bytes)
        terminal.type("/help\n" * 50)
        limit = time.monotonic() + LIMIT
        stuck = 0
        while stuck < 50 and time.monotonic() < limit:
            # It sleeps though there is something to read: it waits until its terminal takes more.
            stuck = stuck + 1 if asleep(terminal.process) and waiting(terminal.slave) else 0
            time.sleep(0.01)
        terminal.process.send_signal(signal.SIGTERM)
        self.assertEqual(terminal.process.wait(LIMIT), 1)

    def test_it_follows_the_size_of_the_window(self):
        terminal = self.start("--status", "online", columns=100, rows=30)
        terminal.wait(lambda: max(terminal.rows, default=0) == 30)
        terminal.resize(40, 10)
        terminal.wait(lambda: max(terminal.rows) == 10)
        self.assertTrue(all(len(row) <= 40 for row in terminal.rows.values()))
        terminal.wait("ala@localhost ● available")
        terminal.resize(20, 3)
        terminal.wait(lambda: max(terminal.rows) == 3)
        terminal.resize(90, 24)
        terminal.wait(lambda: max(terminal.rows) == 24 and "Olek (dom)" in terminal.text())

    def test_contacts_stand_beside_the_log_and_open_by_keys(self):
        terminal = self.start("--status", "online", columns=120, rows=20)
        terminal.wait("▾ Praca (1/2)")
        terminal.wait(" ● 李梅 🦆 ")
        terminal.type("\x1bOR\x1b[F")  # F3, End
        terminal.wait("Enter opens")
        terminal.type("\r")
        terminal.wait("Olek>")
        terminal.wait(">◐ Olek")
        self.assertNotIn("Enter opens", terminal.text())
        terminal.type("\x1bOQ")  # F2
        terminal.wait(lambda: "▾" not in terminal.text())
        terminal.type("\x1bOQ")
        terminal.wait("▾ Praca (1/2)")
        terminal.type("\x1b[1;3A")  # Alt-Up
        terminal.wait("all events")
        terminal.resize(50, 12)
        terminal.wait(lambda: max(terminal.rows) == 12 and "▾" not in terminal.text())
        terminal.type("\x1bORcze")  # other keys go back to the line
        terminal.wait("ala> cze")
        terminal.type("\x1bOR")
        terminal.wait(lambda: "▾ Praca (1/2)" in terminal.text() and "│" not in terminal.text())
        terminal.type("\x1b")
        terminal.wait("●")

    def test_several_pasted_lines_are_one_message(self):
        terminal = self.start("--status", "online")
        terminal.type("/chat-with Olek\r")
        terminal.wait("Olek>")
        terminal.type("\x1b[200~raz\rdwa\x1b[201~")
        terminal.wait("Olek> raz⏎dwa")
        self.assertNotIn("Echo", terminal.text())
        terminal.type("\r")
        terminal.wait("Echo: raz\n")
        self.assertIn("│ dwa", terminal.text())

    def test_pasted_lines_are_no_commands_on_plain_lines_either(self):
        terminal = self.start("--plain", "--status", "online")
        terminal.wait(lambda: b"\x1b[?2004h" in terminal.bytes and b"Olek (dom)" in terminal.bytes)
        terminal.type("/chat-with Olek\n\x1b[200~/quit\n/away\ntrzy\x1b[201~\n")
        terminal.wait(lambda: b"Echo: /quit" in terminal.bytes)
        terminal.type("\x1b[200~/dnd\x1b[201~ zajęty\n")
        terminal.wait(lambda: "busy — zajęty".encode() in terminal.bytes)
        terminal.type("/quit\n")
        self.assertEqual(terminal.end(), 0)
        self.assertNotIn(b"status: away", terminal.bytes)
        self.assertTrue(terminal.bytes.endswith(b"\x1b[?2004l"))

    def test_nor_where_the_output_goes_elsewhere(self):
        with tempfile.TemporaryFile() as output:
            terminal = self.start("--plain", "--status", "online", output=output)
            terminal.wait(lambda: b"\x1b[?2004h" in terminal.bytes)
            terminal.type("/chat-with Olek\n\x1b[200~/quit\n/away\x1b[201~\n/quit\n")
            self.assertEqual(terminal.end(), 0)
            output.seek(0)
            text = output.read()
        self.assertIn("→Olek │ /quit".encode(), text)
        self.assertNotIn(b"status: away", text)
        self.assertNotIn(b"\x1b", text)
        self.assertTrue(terminal.bytes.endswith(b"\x1b[?2004l"))

    def test_a_password_is_not_seen(self):
        terminal = self.start()
        terminal.wait("ala>")
        terminal.type("/account add nowa@localhost\r")
        terminal.wait("password of nowa@localhost (not shown):")
        terminal.type("bardzo-tajne\r")
        terminal.wait("commands mean the account nowa@localhost")
        self.assertNotIn(b"tajne", terminal.bytes)

    def test_a_password_that_comes_at_once_with_its_command_is_kept_nowhere(self):
        terminal = self.start()
        terminal.wait("ala>")
        terminal.type("/info\r/account add nowa@localhost\rbardzo-tajne\r")
        terminal.wait("commands mean the account nowa@localhost")
        terminal.type("\x1b[A")
        terminal.wait("nowa> /info")
        self.assertNotIn(b"tajne", terminal.bytes)

    def test_colours_are_left_out_where_they_are_not_wanted(self):
        coloured = self.start("--status", "online")
        coloured.wait("Olek (dom)")
        self.assertIn(b"\x1b[97;44m", coloured.bytes)
        plain = self.start("--status", "online", NO_COLOR="1")
        plain.wait("Olek (dom)")
        self.assertIsNone(re.search(rb"\x1b\[[\d;]*(3[0-7]|4[0-7]|9[0-7])[\d;]*m", plain.bytes))
        self.assertIn(b"\x1b[7m", plain.bytes)

    def test_scrolling_keeps_its_place_while_more_comes(self):
        terminal = self.start(rows=12)
        terminal.wait("ala>")
        terminal.type("/help\r")
        terminal.wait("Ctrl-L redraws")
        terminal.type("\x1b[5~")
        terminal.wait("lines up, End returns")
        seen = terminal.rows[3]
        # The last letter comes behind the keys: a frame from between them does not have it.
        terminal.type("/onlin\x1b[5~\x1b[6~e")
        terminal.wait("ala> /online")
        self.assertEqual(terminal.rows[3], seen)
        terminal.type("\x1b[F")
        terminal.wait("Ctrl-L redraws")

    def test_a_failure_is_told_in_one_line_on_the_usual_screen(self):
        terminal = self.start(FAKE_REFUSAL="the plugin is missing")
        self.assertEqual(terminal.end(), 1)
        self.assertEqual(terminal.bytes, b"oku-terminal: cannot start: the plugin is missing\r\n")
        self.assertEqual(termios.tcgetattr(terminal.slave), terminal.before)

    def test_a_dumb_terminal_gets_plain_lines(self):
        terminal = self.start("--status", "online", TERM="dumb")
        terminal.wait(lambda: b"Olek (dom): away" in terminal.bytes)
        terminal.type("/account add nowa@localhost\r")
        terminal.wait(lambda: b"(not shown)" in terminal.bytes)
        terminal.type("bardzo-tajne\r")
        terminal.wait(lambda: b"account nowa@localhost" in terminal.bytes)
        terminal.type("/quit\r")
        self.assertEqual(terminal.end(), 0)
        self.assertNotIn(b"\x1b", terminal.bytes)
        self.assertNotIn(b"tajne", terminal.bytes)


class WithoutATerminal(unittest.TestCase):
    def run_it(self, program, options, text="", **environment):
        with tempfile.TemporaryDirectory() as folder:
            options = [option.replace("FOLDER", folder) for option in options]
            return subprocess.run([program, *options], input=text.encode(), capture_output=True, timeout=LIMIT,
                                  env={"PATH": os.environ["PATH"], "LC_ALL": "en_US.UTF-8", "HOME": folder,
                                       "DBUS_SESSION_BUS_ADDRESS": "disabled:", **environment})

    def test_plain_lines_are_read_and_written(self):
        done = self.run_it(FAKE, ["--status", "online"], "/roster\n/msg Olek cześć\n/fly\nbez rozmowy")
        self.assertEqual(done.returncode, 0)
        text = done.stdout.decode()
        for expected in ("Olek (dom): away", "  ◐ Olek ", "→Olek │ cześć", "! │ there is no command /fly; list: /help",
                         "! │ no conversation is open"):
            self.assertIn(expected, text)
        self.assertNotIn("\x1b", text)

    def test_english_is_the_language_where_none_is_named(self):
        for language, words in (("C.UTF-8", "there is no command /fly"), ("POSIX", "there is no command /fly"),
                                ("pl_PL.UTF-8", "nie ma polecenia /fly")):
            with self.subTest(language=language):
                self.assertIn(words, self.run_it(FAKE, [], "/fly\n", LC_ALL=language).stdout.decode())

    def test_json_mode_writes_nothing_but_json(self):
        done = self.run_it(FAKE, ["--json"], '{"cmd":"status","status":"online","id":1}\nrubbish\n')
        self.assertEqual(done.returncode, 0)
        lines = done.stdout.decode().splitlines()
        self.assertTrue(all(line.startswith("{") and line.endswith("}") for line in lines))
        self.assertEqual(lines[-1], '{"event":"bye"}')
        self.assertEqual(done.stderr, b"")

    def start(self, *options):
        process = subprocess.Popen([FAKE, *options], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                   stderr=subprocess.PIPE, env={"PATH": os.environ["PATH"], "LC_ALL": "en_US.UTF-8"})
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        for stream in (process.stdin, process.stdout, process.stderr):
            self.addCleanup(stream.close)
        return process

    def test_it_ends_at_the_first_line_that_nobody_reads(self):
        for options, command, last in ((["--json"], b'{"cmd":"roster"}\n', b'"ready"'),
                                       ([], b"/roster\n", b"commands mean")):
            with self.subTest(options=options):
                process = self.start(*options)
                while last not in process.stdout.readline():  # a line of its own would end it before the command
                    pass
                process.stdout.close()
                process.stdin.write(command)
                process.stdin.flush()
                self.assertEqual(process.wait(LIMIT), 1)  # with its input still open
                self.assertEqual(process.stderr.read(), b"oku-terminal: nobody reads what the program writes\n")

    def with_closed(self, closed, *options):
        """The arguments that start the real program with a standard descriptor closed."""
        module = os.path.join(os.path.dirname(PROGRAM), "protoLink.module")
        return ["sh", "-c", f'exec "$@" {closed}', "sh", PROGRAM, "--profile", "FOLDER/p", "--module", module, *options]

    def test_nobody_reads_an_output_that_is_closed(self):
        for mode in ("--json", "--plain"):
            with self.subTest(mode=mode):
                program, *options = self.with_closed(">&-", mode)
                done = self.run_it(program, options)
                self.assertEqual(done.returncode, 1, done)
                self.assertEqual(done.stderr, b"oku-terminal: nobody reads what the program writes\n")

    def test_an_input_that_is_closed_is_at_its_end(self):
        for mode, last in (("--json", b'{"event":"bye"}\n'), ("--plain", b"\n")):
            with self.subTest(mode=mode):
                program, *options = self.with_closed("<&-", mode)
                done = self.run_it(program, options)
                self.assertEqual(done.returncode, 0, done)
                self.assertTrue(done.stdout.endswith(last), done)

    def test_none_of_its_files_takes_the_place_of_closed_errors(self):
        with tempfile.TemporaryDirectory() as folder:
            arguments = [part.replace("FOLDER", folder) for part in self.with_closed("2>&-", "--json")]
            process = subprocess.Popen(arguments, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                       env={"PATH": os.environ["PATH"], "DBUS_SESSION_BUS_ADDRESS": "disabled:"})
            with process:
                self.assertIn(b"ready", process.stdout.readline())
                self.assertEqual(os.readlink(f"/proc/{process.pid}/fd/2"), "/dev/null")
                process.stdin.close()
                process.stdout.read()
                self.assertEqual(process.wait(LIMIT), 0)

    def test_a_signal_ends_it_while_its_reader_stands_still(self):
        for options, command in ((["--json"], b'{"cmd":"roster"}\n'), ([], b"/help\n")):
            for number in (signal.SIGTERM, signal.SIGINT):
                with self.subTest(options=options, number=number):
                    process = self.start(*options)
                    capacity = fcntl.fcntl(process.stdout, fcntl.F_GETPIPE_SZ)
                    process.stdin.write(command * 300)
                    process.stdin.flush()
                    limit = time.monotonic() + LIMIT
                    while waiting(process.stdout) < capacity // 2 and time.monotonic() < limit:
                        time.sleep(0.01)
                    process.send_signal(number)
                    self.assertEqual(process.wait(LIMIT), 1)

    def test_a_signal_costs_a_reader_no_line(self):
        process = self.start("--json")
        process.stdin.write(b'{"cmd":"get","key":"x"}\n')
        process.stdin.flush()
        while b'"ok"' not in process.stdout.readline():  # from here on it looks out for signals
            pass
        process.send_signal(signal.SIGTERM)
        self.assertEqual(process.stdout.readlines()[-1], b'{"event":"bye"}\n')
        self.assertEqual(process.wait(LIMIT), 0)

    def test_what_it_knows_stays_with_its_user(self):
        with tempfile.TemporaryDirectory() as folder:
            module = os.path.join(os.path.dirname(PROGRAM), "protoLink.module")
            before = os.umask(0)
            process = subprocess.Popen(
                [PROGRAM, "--json", "--profile", f"{folder}/p", "--module", module, "--account", "ala@localhost"],
                stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                env={"PATH": os.environ["PATH"], "OKU_PASSWORD": "bardzo-tajne", "DBUS_SESSION_BUS_ADDRESS": "disabled:"})
            os.umask(before)
            with process:
                self.assertIn(b"ready", process.stdout.readline())
                status = pathlib.Path(f"/proc/{process.pid}")
                environment = (status / "environ").read_bytes()
                self.assertIn(b"OKU_PASSWORD", environment)
                self.assertNotIn(b"tajne", environment)
                self.assertRegex((status / "limits").read_text(), r"Max core file size +([01]) +\1 ")
                self.assertRegex((status / "status").read_text(), r"Umask:\s+0077")
                process.stdin.write(b'{"cmd":"set","key":"XMPP/Priority","value":5}\n')
                process.stdin.flush()
                line = b""
                while b'"ok"' not in line:
                    line = process.stdout.readline()
                    self.assertTrue(line, "it ended")
                # The lock lies there while the program runs, all else when it has ended.
                self.assertEqual(pathlib.Path(f"{folder}/p/oku.lock").stat().st_mode & 0o077, 0)
                process.stdin.write(b'{"cmd":"quit"}\n')
                process.stdin.close()
                process.stdout.read()
                self.assertEqual(process.wait(LIMIT), 0)
                rights = {path.name: path.stat().st_mode & 0o077 for path in pathlib.Path(f"{folder}/p").iterdir()}
                self.assertIn("protoLink.config", rights)
                self.assertEqual(set(rights.values()), {0}, rights)

    def test_options(self):
        cases = (
            (["--help"], 0, "Usage: oku-terminal [options]", ""),
            (["--version"], 0, "oku-terminal 1.", ""),
            (["--fly"], 2, "", "unknown option: --fly"),
            (["fly"], 2, "", "unexpected argument: fly"),
            (["--profile"], 2, "", "the option --profile needs a value"),
            (["--profile", "--json"], 2, "", "the option --profile needs a value"),
            (["--module="], 2, "", "the option --module needs a value"),
            (["--json=yes"], 2, "", "unexpected argument: --json=yes"),
            (["--json", "--json"], 2, "", "the option --json is given twice"),
            (["--account", "nobody"], 2, "", '"nobody" is not an address'),
            (["--status", "asleep"], 2, "", 'unknown status "asleep"'),
            (["--ca-file", "FOLDER/none.pem"], 2, "", "cannot read the file"),
            (["--profile", "FOLDER/p", "--module", "FOLDER/none.module"], 1, "", "cannot start: "),
            (["--profile", "FOLDER/p", "--module", "/dev/null"], 1, "", "cannot start: "),
            (["--profile", "/dev/null/p", "--json"], 1, '"event":"error"', "cannot start: "),
        )
        for options, code, output, errors in cases:
            with self.subTest(options=options):
                done = self.run_it(PROGRAM, options)
                self.assertEqual(done.returncode, code, done)
                self.assertIn(output, done.stdout.decode())
                self.assertIn(errors, done.stderr.decode())
                if code:
                    self.assertLessEqual(len(done.stderr.splitlines()), 2)
                else:
                    self.assertEqual(done.stderr, b"")

    def test_help_tells_every_option(self):
        text = self.run_it(PROGRAM, ["--help"]).stdout.decode()
        for option in ("--profile", "--module", "--account", "--status", "--ca-file", "--json", "--plain", "--verbose",
                       "--help", "--version", "OKU_PASSWORD", "NO_COLOR", "LANG"):
            self.assertIn(option, text)
        self.assertTrue(all(len(line) <= 80 for line in text.splitlines()), text)
        self.assertTrue(all(len(line) <= 80 for line in self.run_it(PROGRAM, ["--help"], LC_ALL="pl_PL.UTF-8")
                            .stdout.decode().splitlines()))

    def test_the_manual_tells_every_option_and_command(self):
        folder = os.path.dirname(os.path.abspath(__file__))
        with open(os.path.join(folder, "../../../docs/oku-terminal.1"), encoding="utf-8") as manual:
            text = manual.read().replace("\\-", "-")
        for option in re.findall(r"--[a-z-]+", self.run_it(PROGRAM, ["--help"]).stdout.decode()):
            self.assertIn(option, text)
        commands = re.findall(r"^/([a-z-]+)", self.run_it(FAKE, [], "/help\n").stdout.decode(), re.M)
        self.assertGreater(len(commands), 30)
        for command in commands:
            self.assertRegex(text, f"/{command}\\\\?[ \"fl,\n]")

    def test_the_manual_tells_every_control_key(self):
        folder = os.path.dirname(os.path.abspath(__file__))
        with open(os.path.join(folder, "../../../docs/oku-terminal.1"), encoding="utf-8") as manual:
            text = manual.read().replace("\\-", "-")
        with open(os.path.join(folder, "../../../messenger/terminal/screen/key.cpp"), encoding="utf-8") as decoder:
            characters = {int(number, 16) for number in re.findall(r"^    \{(0x[01][0-9A-F]), ", decoder.read(), re.M)}
        self.assertGreater(len(characters), 15)
        for character in characters - {0x09, 0x0A, 0x0D}:  # Tab and Enter have keys of their own
            self.assertIn(f"Ctrl-{chr(character + 0x40)}", text)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[3:])
