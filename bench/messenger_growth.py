#!/usr/bin/env python3
# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""How the messenger's cost grows with contacts, messages, strangers, history and accounts: processor time of the whole
messenger against a server on this machine that logs it in, sends a load, and waits for the answer to a ping behind it.

    bench/messenger_growth.py build/oku-terminal                    # all curves
    bench/messenger_growth.py build/oku-terminal strangers contacts --quick

A row tells the count, the seconds of processor time of screen and JSON mode, what that is for each, and the memory after
it; where it says so, how long a key took to show on the screen meanwhile."""

import argparse
import fcntl
import json
import os
import pathlib
import pty
import re
import select
import shutil
import struct
import subprocess
import sys
import tempfile
import termios
import threading
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path[:0] = [str(ROOT / "tests/e2e"), str(ROOT / "scripts")]
from support.scripted import BIND, HEADER, MECHANISMS, SUCCESS, ScriptedServer  # noqa: E402

BODY = "a message of about a hundred letters, as people write them when they have something to say to each other."
SETTINGS = {"XMPP/Serv/Enable": 1, "XMPP/Serv/SSL": 0, "OKU/AllowClearText": 1, "OKU/PasswordInFile": 1}
PIECE = 256 << 10


def contact(number):
    return f"contact{number:05d}@localhost"


def roster(count):
    return "".join(f"<item jid='{contact(at)}' name='Contact {at}' subscription='both'><group>Group {at % 20}</group>"
                   "</item>" for at in range(count))


def message(sender):
    return (f"<message from='{sender}' to='ala@localhost' type='chat' id='m'><body>{BODY}</body>"
            "<active xmlns='http://jabber.org/protocol/chatstates'/></message>")


def presence(sender, show):
    return f"<presence from='{sender}' to='ala@localhost/x'><show>{show}</show><status>busy with it</status></presence>"


# Each load: how many contacts there are, and what is sent for the number of a stanza.
LOADS = {
    "messages": (1000, lambda at: message(contact(at % 1000) + "/desk")),
    "messages-of-10": (1000, lambda at: message(contact(at % 10) + "/desk")),
    "presences": (1000, lambda at: presence(f"{contact(at % 1000)}/r{at % 2}", ("away", "dnd", "xa")[at % 3])),
    "strangers": (100, lambda at: message(f"stranger{at}@elsewhere/desk")),
    "resources": (100, lambda at: presence(f"{contact(0)}/r{at}", "away")),
    "requests": (100, lambda at: f"<presence type='subscribe' from='s{at}@elsewhere' to='ala@localhost'/>"),
    "typing": (100, lambda at: f"<message from='stranger{at}@elsewhere/x' to='ala@localhost' type='chat'>"
                               "<composing xmlns='http://jabber.org/protocol/chatstates'/></message>"),
}
COUNTS = {
    "contacts": (100, 1000, 10_000, 50_000),
    "messages": (1000, 10_000, 100_000, 500_000),
    "messages-of-10": (1000, 10_000, 100_000),
    "presences": (1000, 10_000, 100_000),
    "strangers": (1000, 10_000, 50_000),
    "resources": (100, 1000, 5000, 20_000),
    "requests": (1000, 10_000, 150_000),
    "typing": (1000, 10_000, 50_000),
    "history": (1000, 10_000, 100_000, 1_000_000),
    "accounts": (1, 10, 50),
}
KEYED = {"strangers", "contacts", "messages", "requests", "resources"}


class Process:
    """The messenger, on a terminal or in its JSON mode; what it writes is read and, but for the last, thrown away."""

    def __init__(self, program, profile, screen):
        self.screen = screen
        command = [program, "--profile", str(profile), *([] if screen else ["--json"])]
        environment = {**os.environ, "TERM": "xterm-256color", "LANG": "C.UTF-8"}
        if screen:
            self.terminal, slave = pty.openpty()
            fcntl.ioctl(slave, termios.TIOCSWINSZ, struct.pack("HHHH", 40, 120, 0, 0))
            self.process = subprocess.Popen(command, stdin=slave, stdout=slave, stderr=slave, env=environment,
                                            start_new_session=True)
            os.close(slave)
            self.written = self.terminal
        else:
            self.process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, env=environment)
            self.terminal = self.process.stdin.fileno()
            self.written = self.process.stdout.fileno()
        self.output = b""
        self.news = threading.Condition()
        threading.Thread(target=self._read, daemon=True).start()

    def _read(self):
        while True:
            try:
                piece = os.read(self.written, 1 << 20)
            except OSError:
                piece = b""
            with self.news:
                self.output = self.output[-(1 << 16):] + piece
                self.news.notify_all()
            if not piece:
                return

    def type(self, text):
        os.write(self.terminal, text.encode())

    def wait_for(self, text, limit=60):
        with self.news:
            return self.news.wait_for(lambda: text.encode() in self.output, limit)

    def forget(self):
        with self.news:
            self.output = b""

    def cpu(self):
        """Seconds of processor time of all its threads."""
        total = 0
        for task in pathlib.Path(f"/proc/{self.process.pid}/task").iterdir():
            try:
                total += int((task / "schedstat").read_text().split()[0])
            except OSError:
                pass
        return total / 1e9

    def memory(self):
        """Resident memory in MB."""
        status = pathlib.Path(f"/proc/{self.process.pid}/status").read_text()
        return int(re.search(r"VmRSS:\s+(\d+)", status).group(1)) / 1024

    def settle(self):
        """Waits until it is idle; gives the processor time until then."""
        before = self.cpu()
        while True:
            time.sleep(0.5)
            now = self.cpu()
            if now - before < 0.005:
                return now
            before = now

    def key_delay(self):
        """Milliseconds until a key that is pressed shows, the slowest of five."""
        slowest = 0
        for letter in "ŁŚŹŻĆ":
            self.forget()
            begin = time.monotonic()
            self.type(letter)
            self.wait_for(letter, 30)
            slowest = max(slowest, time.monotonic() - begin)
            self.type("\x7f")
            time.sleep(0.1)
        return slowest * 1000

    def stop(self):
        self.process.terminate()
        try:
            self.process.wait(60)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()


def write_profile(program, profile, address, users):
    process = Process(program, profile, screen=False)
    process.wait_for('"ready"')
    for user in users:
        settings = {**SETTINGS, "XMPP/Serv/Host": address}
        process.forget()
        process.type(json.dumps({"cmd": "account", "jid": f"{user}@localhost", "password": "x", "settings": settings})
                     + "\n")
        process.wait_for('"ok"')
    process.stop()


class Line:
    """One login: what happens on its connection, for the thread that measures."""

    def __init__(self):
        self.at_roster = threading.Event()
        self.give_roster = threading.Event()
        self.ready = threading.Event()
        self.fenced = threading.Event()
        self.connection = None
        self.fences = 0

    def serve(self, connection, contacts):
        self.connection = connection
        jid = "<bind xmlns='urn:ietf:params:xml:ns:xmpp-bind'><jid>ala@localhost/x</jid></bind>"
        logged_in = (connection.expect(r"<stream:stream[^>]*>") and connection.send(HEADER + MECHANISMS)
                     and connection.expect(r"<auth\b[^>]*>[^<]*</auth>") and connection.send(SUCCESS)
                     and connection.expect(r"<stream:stream[^>]*>") and connection.send(HEADER + BIND)
                     and connection.answer_iq("xmpp-bind", jid) and connection.answer_iq("xmpp-session")
                     and connection.answer_iq("disco#info", "<query xmlns='http://jabber.org/protocol/disco#info'/>"))
        if not logged_in:
            return
        items = roster(contacts)
        self.at_roster.set()
        self.give_roster.wait()
        connection.answer_iq("jabber:iq:roster", f"<query xmlns='jabber:iq:roster'>{items}</query>")
        connection.expect(r"<presence\b")
        self.ready.set()
        if connection.expect(r"</stream:stream>", timeout=None):
            connection.send("</stream:stream>")

    def send(self, stanzas):
        """Sends the stanzas in large pieces, as the other side reads them."""
        waiting = []
        size = 0
        for stanza in stanzas:
            waiting.append(stanza)
            size += len(stanza)
            if size >= PIECE:
                self.connection.send("".join(waiting))
                waiting, size = [], 0
        self.connection.send("".join(waiting))

    def fence(self, process):
        """Waits until everything that was sent has been worked off."""
        self.fences += 1
        self.connection.send(f"<iq type='get' id='fence{self.fences}' from='localhost' to='ala@localhost/x'>"
                             "<ping xmlns='urn:xmpp:ping'/></iq>")
        return process.settle()


class Stage:
    """A messenger that is logged in, with so many contacts, at a server that does what it is told."""

    def __init__(self, program, contacts, screen, profile=None, users=("ala",)):
        self.folder = profile or tempfile.mkdtemp(prefix="growth-")
        self.lines = []
        self.kept = profile is not None

        def script(connection, _):
            line = Line()
            self.lines.append(line)
            line.serve(connection, contacts)

        self.server = ScriptedServer(script)
        write_profile(program, self.folder, self.server.address, users)
        self.process = Process(program, self.folder, screen)
        self.process.settle()
        for user in users:
            if screen:
                self.process.type(f"/account {user}@localhost\r/online\r")
            else:
                self.process.type(json.dumps({"cmd": "status", "account": f"{user}@localhost", "status": "online"})
                                  + "\n")
        while len(self.lines) < len(users) or not all(line.at_roster.is_set() for line in self.lines):
            time.sleep(0.05)
        self.before_roster = self.process.settle()

    def log_in(self):
        for line in self.lines:
            line.give_roster.set()
        for line in self.lines:
            line.ready.wait()
        return self.process.settle()

    def close(self):
        self.process.stop()
        self.server.stop()
        if not self.kept:
            shutil.rmtree(self.folder, ignore_errors=True)


def measure_load(program, name, count, screen):
    contacts, stanza = LOADS[name]
    stage = Stage(program, contacts, screen)
    before = stage.log_in()
    stage.lines[0].send(stanza(at) for at in range(count))
    spent = stage.lines[0].fence(stage.process) - before
    return finish(stage, name, spent, screen)


def measure_contacts(program, name, count, screen):
    stage = Stage(program, count, screen)
    return finish(stage, name, stage.log_in() - stage.before_roster, screen)


def measure_accounts(program, name, count, screen):
    stage = Stage(program, 100, screen, users=[f"user{at}" for at in range(count)])
    return finish(stage, name, stage.log_in() - stage.before_roster, screen)


def measure_history(program, name, count, screen):
    """Opens a conversation and asks for the last messages where the history holds so many."""
    contacts, stanza = LOADS["messages"]
    stage = Stage(program, contacts, screen)
    stage.log_in()
    stage.lines[0].send(stanza(at) for at in range(count))
    before = stage.lines[0].fence(stage.process)
    for at in range(0, 1000, 50):
        if screen:
            stage.process.type(f"/chat-with {contact(at)}\r")
        else:
            stage.process.type(json.dumps({"cmd": "history", "with": contact(at), "limit": 20}) + "\n")
        time.sleep(0.02)
    return finish(stage, name, stage.process.settle() - before, screen)


def finish(stage, name, spent, screen):
    delay = stage.process.key_delay() if screen and name in KEYED else None
    memory = stage.process.memory()
    stage.close()
    return spent, memory, delay


MEASURES = {"contacts": measure_contacts, "history": measure_history, "accounts": measure_accounts}


def main():
    arguments = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    arguments.add_argument("program", help="build/oku-terminal; the module lies where it looks for it")
    arguments.add_argument("curves", nargs="*", metavar="CURVE", help=", ".join(COUNTS))
    arguments.add_argument("--quick", action="store_true", help="without the largest count of each curve")
    chosen = arguments.parse_args()
    print("| Curve | Count | Screen s | µs each | MB | Key ms | JSON s | µs each | MB |")
    print("|---|--:|--:|--:|--:|--:|--:|--:|--:|", flush=True)
    for name in chosen.curves or COUNTS:
        for count in COUNTS[name][:-1] if chosen.quick else COUNTS[name]:
            measure = MEASURES.get(name, measure_load)
            row = [name, f"{count:,}"]
            for screen in (True, False):
                spent, memory, delay = measure(os.path.abspath(chosen.program), name, count, screen)
                row += [f"{spent:.3f}", f"{spent / count * 1e6:.1f}", f"{memory:.0f}"]
                if screen:
                    row.append("" if delay is None else f"{delay:.0f}")
            print("| " + " | ".join(row) + " |", flush=True)


if __name__ == "__main__":
    main()
