# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Files, folders, options and commands that are not as they should be."""

import os
import pathlib
import unittest

from oku.terminal import CommandFailed
from support.case import Case

GARBAGE = os.urandom(5000)


class BadFiles(Case):
    def starts_with(self, name, content):
        """Spoils a file of a profile that has been used; gives a messenger started with it, and the server."""
        server = self.prosody()
        other = self.peer("ala", server, "other")
        other.roster_set("olek@localhost", "Olek", ["Praca"])
        self.assertEqual(self.online("ala", server).quit(), 0)
        paths = [path for path in (self.folder / "ala").rglob("*") if path.name == name]
        self.assertEqual(len(paths), 1, f"one file {name} in the profile")
        paths[0].write_bytes(content)
        return self.messenger("ala"), server

    def test_a_corrupt_roster_file(self):
        whole = self.folder
        for number, content in enumerate((GARBAGE, b"", b"<roster><element jid='x@y'", b"<a>" * 1_000_000,
                                          "<roster><element jid='x@y' name='ą".encode("utf-16"))):
            with self.subTest(number):
                self.folder = whole / str(number)
                self.folder.mkdir()
                terminal, _ = self.starts_with("protoLink.roster", content)
                terminal.command("status", status="online")
                terminal.wait("connection", state="online")
                self.assertEqual(terminal.roster()["olek@localhost"]["group"], "Praca")
                self.assertEqual(terminal.quit(), 0)

    def test_a_corrupt_settings_file_is_told_and_not_lost(self):
        terminal, server = self.starts_with("protoLink.config", GARBAGE)
        self.account(terminal, "ala", server)
        terminal.command("status", status="online")
        terminal.wait("connection", state="online")
        self.assertEqual(terminal.quit(), 0)
        kept = [path for path in (self.folder / "ala").rglob("*") if path.is_file() and path.read_bytes() == GARBAGE]
        self.assertEqual(len(kept), 1, "the person can still look into the old file")

    def test_a_settings_file_with_wrong_values(self):
        terminal, server = self.starts_with(
            "protoLink.config", b"[XMPP]\nUser=\xff\xfe\nAuthType=duzo\nServ\\SSL=99999999999999999999\nPriority=-\n[[[\n=\n")
        self.account(terminal, "ala", server, settings={"XMPP/AuthType": 0, "XMPP/Serv/SSL": 1})
        terminal.command("status", status="online")
        terminal.wait("connection", state="online")

    def test_a_corrupt_client_database(self):
        terminal, _ = self.starts_with("XMPPClientDB.xml", b"<clients><client" + GARBAGE)
        terminal.command("status", status="online")
        terminal.wait("connection", state="online")

    def test_an_empty_profile(self):
        (self.folder / "profile").mkdir()
        terminal = self.messenger()
        self.assertEqual(terminal.seen("ready")[0]["accounts"], [])
        with self.assertRaises(CommandFailed):
            terminal.command("status", status="online")


class BadStart(Case):
    def fails(self, terminal, code=1):
        """It ends by itself with that code and one line that tells why; gives the line."""
        terminal.start(ready=False)
        self.assertEqual(terminal.wait_for_end(), code)
        told = [event["reason"] for event in terminal.seen("error")] + terminal.errors().splitlines()
        self.assertTrue(told)
        return told[0]

    def started(self, profile="profile", **options):
        return self.messenger(profile, start=False, **options)

    def test_a_profile_that_is_no_folder(self):
        (self.folder / "profile").write_text("a file")
        self.assertIn(str(self.folder / "profile"), self.fails(self.started()))
        self.assertEqual((self.folder / "profile").read_text(), "a file")

    def test_a_profile_that_cannot_be_made(self):
        terminal = self.started()
        terminal.arguments[terminal.arguments.index("--profile") + 1] = "/proc/no-such-profile"
        self.assertIn("/proc/no-such-profile", self.fails(terminal))

    def test_a_profile_that_cannot_be_read(self):
        profile = self.folder / "profile"
        profile.mkdir()
        profile.chmod(0)
        self.addCleanup(profile.chmod, 0o700)
        self.assertIn(str(profile), self.fails(self.started(powerless=True)))

    def module(self, path):
        terminal = self.started()
        terminal.arguments[terminal.arguments.index("--module") + 1] = str(path)
        return self.fails(terminal)

    def test_a_missing_module(self):
        self.assertIn("no-such.module", self.module(self.folder / "no-such.module"))

    def test_a_module_that_is_no_library(self):
        path = self.folder / "text.module"
        path.write_text("not a library")
        self.assertIn("text.module", self.module(path))

    def test_a_library_that_is_no_plugin(self):
        library = next(pathlib.Path("/usr/lib").glob("*/libexpat.so.1")).resolve()
        self.assertIn(library.name, self.module(library))

    def test_a_certificate_file_that_is_not_there(self):
        self.assertIn("no.crt", self.fails(self.started(authority=self.folder / "no.crt"), code=2))

    def test_a_wrong_option(self):
        self.assertIn("--nonsense", self.fails(self.started(options=("--nonsense",)), code=2))

    def test_the_help_names_every_option(self):
        terminal = self.started(options=("--help",))
        terminal.start(ready=False)
        self.assertEqual(terminal.wait_for_end(), 0)
        text = (self.folder / "profile.events").read_text()
        for option in ("--profile", "--module", "--account", "--ca-file", "--json", "--verbose", "--help"):
            self.assertIn(option, text)


class BadCommands(Case):
    def test_lines_that_are_no_commands_are_answered_and_do_no_harm(self):
        terminal = self.messenger()
        lines = (b"{", b"[]", b"42", b'"status"', b"\xff\xfe\x00", b'{"cmd":5}', b'{"cmd":"fly"}', b"[" * 100_000,
                 b'{"cmd":"status"}', b'{"cmd":"message","to":7}', b'{"cmd":"account","jid":"no jid"}',
                 b'{"cmd":"answer","box":99,"button":"yes"}', b'{"cmd":"get"}', b'{"cmd":"history","limit":-1}')
        for line in lines:
            terminal.send_line(line)
            self.assertTrue(terminal.wait("error")["reason"].strip(), line[:40])
        self.assertEqual(len(terminal.seen("error")), len(lines), "one answer each")

    def test_the_end_of_input_is_quit(self):
        terminal = self.messenger()
        terminal.child.process.stdin.close()
        terminal.wait("bye")
        self.assertEqual(terminal.wait_for_end(), 0)

    def test_commands_without_a_connection_tell_why(self):
        terminal = self.messenger()
        terminal.command("account", jid="ala@localhost", password="x")
        for command in ({"cmd": "add", "jid": "olek@localhost"}, {"cmd": "raw", "xml": "<presence/>"},
                        {"cmd": "remove", "jid": "olek@localhost"}, {"cmd": "server"}):
            with self.assertRaises(CommandFailed) as failed:
                terminal.command(**command)
            self.assertTrue(str(failed.exception))


if __name__ == "__main__":
    unittest.main()
