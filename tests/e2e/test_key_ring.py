# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Passwords in the key ring of a session, and in the account's file where there is no session."""

import os
import tempfile
import unittest

from support.case import PASSWORDS, Case
from support.soak import wait_until

# A session with a key ring that is open, as a login leaves it.
SESSION = ["dbus-run-session", "--", "sh", "-c",
           'printf unlocked | gnome-keyring-daemon --unlock --components=secrets >/dev/null && exec "$@"', "sh"]


class KeyRing(Case):
    def setUp(self):
        super().setUp()
        self.server = self.prosody()
        self.home = self.folder / "home"
        self.home.mkdir()

    def start(self, session):
        """A messenger, with a session or without one; each has the same home and the same profile."""
        environment = {"HOME": str(self.home), "XDG_RUNTIME_DIR": tempfile.mkdtemp(prefix="run-", dir=self.folder)}
        for name in ("XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"):
            environment[name] = str(self.home / name)
        terminal = self.messenger(start=False, environment=environment, options=["--verbose"])
        if session:
            terminal.arguments = SESSION + terminal.arguments
        return terminal.start()

    def add(self, terminal):
        terminal.command("account", jid="ala@localhost", password=PASSWORDS["ala"],
                         settings={"XMPP/Serv/Enable": 1, "XMPP/Serv/Host": self.server.address})

    def log_in(self, terminal):
        terminal.command("status", status="online")
        terminal.wait("connection", state="online")

    def files_with_the_password(self):
        found = []
        for folder, _, names in os.walk(self.folder / "profile"):
            for name in names:
                try:
                    with open(os.path.join(folder, name), "rb") as file:
                        if PASSWORDS["ala"].encode() in file.read():
                            found.append(name)
                except FileNotFoundError:  # it has taken another one's place
                    continue
        return found

    def said(self, terminal):
        return " ".join(str(event) for event in terminal.log.all())

    def test_in_a_session_the_key_ring_keeps_it(self):
        first = self.start(session=True)
        self.add(first)
        self.log_in(first)
        # At its end it gives the key ring three seconds only.
        wait_until(lambda: first.ask("get", "setting", key="OKU/PasswordInRing")["value"] == 1, "the key ring's answer")
        self.assertEqual(first.quit(), 0)
        self.assertEqual(self.files_with_the_password(), [])
        self.assertEqual(first.seen("question"), [])

        second = self.start(session=True)
        self.log_in(second)
        for terminal in (first, second):
            self.assertNotIn(PASSWORDS["ala"], self.said(terminal))

    def test_without_a_session_it_lies_in_the_file_once_the_person_agrees(self):
        first = self.start(session=False)
        self.add(first)
        question = first.wait("question", style="question")
        self.assertEqual(self.files_with_the_password(), [])
        first.command("answer", box=question["box"], button="yes")
        self.assertEqual(self.files_with_the_password(), ["protoLink.config"])
        self.assertEqual((self.folder / "profile" / "protoLink.config").stat().st_mode & 0o777, 0o600)
        self.assertEqual(first.quit(), 0)
        self.log_in(self.start(session=False))

    def test_without_a_session_it_is_forgotten_when_the_person_refuses(self):
        first = self.start(session=False)
        self.add(first)
        first.command("answer", box=first.wait("question", style="question")["box"], button="no")
        self.log_in(first)
        self.assertEqual(first.quit(), 0)
        self.assertEqual(self.files_with_the_password(), [])
        second = self.start(session=False)
        second.command("status", status="online")
        second.wait("notice", text=lambda text: "hasła" in text)


if __name__ == "__main__":
    unittest.main()
