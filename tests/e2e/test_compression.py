# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Stream compression: only where it is asked for, and everything that goes through it."""

import base64
import os
import unittest

from support.case import Case
from support.ejabberd import Ejabberd
from support.friends import befriend

LONG = 20_000
COMPRESSED = {"XMPP/Serv/Compress": 1}


def dull(size):
    """So many bytes of words, which shrink to next to nothing."""
    return ("Zażółć gęślą jaźń. " * size).encode()[:size].decode(errors="ignore")


def dense(size):
    """So many bytes that hardly shrink: random, over letters of one byte each."""
    return base64.b64encode(os.urandom(size)).decode()[:size]


def even(size):
    """So many bytes that shrink to about a twentieth, all of them alike: rows of which each says something new."""
    row = "powtorzenie " * 9
    return "".join(f"{os.urandom(4).hex()} {row}" for _ in range(size // 100))[:size]


class Compression(Case):
    def setUp(self):
        super().setUp()
        self.server = self.shared(Ejabberd, lambda server: befriend(self, server, "ala", "olek"))

    def compressed(self, user="ala"):
        terminal = self.messenger(user, options=("--verbose",))
        terminal.command("console", on=True)
        self.account(terminal, user, self.server, settings=COMPRESSED)
        terminal.command("status", status="online")
        terminal.wait("connection", state="online")
        own = {"event": "presence", "jid": f"{user}@localhost"}
        terminal.wait_for(lambda event: own.items() <= event.items(), "the own presence")
        return terminal

    def traffic(self, terminal, direction):
        return "".join(event["data"] for event in terminal.seen("xml", direction=direction))

    def with_olek(self):
        """A messenger under compression, and the contact."""
        terminal, olek = self.compressed(), self.peer("olek", self.server, "dom")
        terminal.wait("presence", jid="olek@localhost", resource="dom", status="online")
        return terminal, olek

    def tells_no_fault(self, terminal):
        self.assertEqual(terminal.seen("log", text=lambda text: "fault" in text or "FAILURE" in text), [])
        self.assertEqual(len(terminal.seen("connection", state="connecting")), 1, "and there was one login")

    def test_a_login_is_compressed_when_the_account_says_so(self):
        terminal = self.compressed()
        terminal.wait("log", level=5, text="Initializing stream compression (zlib) @ ala@localhost")
        terminal.wait("log", level=5, text="Compression enabled @ ala@localhost")
        self.assertIn("<method>zlib</method></compress>", self.traffic(terminal, "out"))
        self.assertIn("<compressed xmlns='http://jabber.org/protocol/compress'/>", self.traffic(terminal, "in"))
        self.tells_no_fault(terminal)

    def test_an_account_made_by_the_messenger_is_not_compressed(self):
        terminal = self.messenger("ala", options=("--verbose",))
        terminal.command("console", on=True)
        self.account(terminal, "ala", self.server)
        self.assertEqual(terminal.ask("get", "setting", key="XMPP/Serv/Compress")["value"], 0)
        terminal.command("status", status="online")
        terminal.wait("connection", state="online")
        self.assertIn("<compression xmlns='http://jabber.org/features/compress'>", self.traffic(terminal, "in"),
                      "the server would have")
        self.assertNotIn("<compress", self.traffic(terminal, "out"))
        self.assertEqual(terminal.quit(), 0)
        self.assertIn("XMPP/Serv/Compress = 0\n", self.settings_file().read_text())

    def settings_file(self):
        found = list((self.folder / "ala").rglob("protoLink.config"))
        self.assertEqual(len(found), 1)
        return found[0]

    def test_long_messages_both_ways(self):
        terminal, olek = self.with_olek()
        for make in (dull, dense, even):
            with self.subTest(make.__name__):
                sent, received = make(LONG), make(LONG)
                terminal.command("message", to="olek@localhost", body=sent)
                olek.wait("message", body=sent)
                olek.message("ala@localhost", received)
                terminal.wait("message", body=received)
        self.tells_no_fault(terminal)

    def test_many_messages_at_once_both_ways(self):
        terminal, olek = self.with_olek()
        texts = [f"{number} {dense(number * 37 % 3000)}" for number in range(100)]
        for text in texts:
            terminal.send("message", to="olek@localhost", body=text)
            olek.message("ala@localhost", text)
        olek.wait("message", body=texts[-1])
        terminal.wait("message", body=texts[-1])
        self.assertEqual([message["body"] for message in olek.seen("message")], texts)
        self.assertEqual([message["body"] for message in terminal.seen("message")], texts)
        self.tells_no_fault(terminal)

    def test_what_is_far_over_one_piece_comes_through(self):
        # Shrunk to a twentieth: a piece of 1 KiB becomes some 20 kB, and two of them at once were over the 32,768
        # bytes beyond which a piece does not come through whole.
        terminal, olek = self.with_olek()
        text = even(200_000)
        olek.message("ala@localhost", text)
        terminal.wait("message", body=text)
        olek.message("ala@localhost", "i dalej")
        terminal.wait("message", body="i dalej")
        self.tells_no_fault(terminal)

    def test_a_piece_that_becomes_far_too_much_ends_the_connection_and_the_next_one_works(self):
        terminal, olek = self.with_olek()
        olek.message("ala@localhost", dull(200_000))
        terminal.wait("log", level=0, tag="XMSC", text="ERROR: Decompression fault!")
        terminal.wait("connection", state="offline")
        terminal.command("status", status="online")
        # The contact was seen once before: this is the second time, whoever was faster, this command or the messenger.
        terminal.wait("presence", jid="olek@localhost", resource="dom", status="online")
        olek.message("ala@localhost", "i znowu")
        terminal.wait("message", body="i znowu")
        self.assertEqual([message["body"] for message in terminal.seen("message")], ["i znowu"])

    def test_two_messengers_under_compression(self):
        ala, olek = self.compressed("ala"), self.compressed("olek")
        ala.wait("presence", jid="olek@localhost", status="online")
        olek.wait("presence", jid="ala@localhost", status="online")
        text = dense(LONG)
        for terminal, to, other in ((ala, "olek@localhost", olek), (olek, "ala@localhost", ala)):
            terminal.command("message", to=to, body=text)
            other.wait("message", body=text)
        for terminal in (ala, olek):
            self.tells_no_fault(terminal)

    def test_a_second_login_after_a_compressed_one(self):
        terminal, olek = self.with_olek()
        for settings in (COMPRESSED, {"XMPP/Serv/Compress": 0}, COMPRESSED):
            terminal.command("status", status="offline")
            terminal.wait("connection", state="offline")
            self.account(terminal, "ala", self.server, settings=settings)
            terminal.forget()
            terminal.command("status", status="online")
            terminal.wait("presence", jid="olek@localhost", resource="dom", status="online")
            text = dense(LONG)
            terminal.command("message", to="olek@localhost", body=text)
            olek.wait("message", body=text)
            olek.message("ala@localhost", text)
            terminal.wait("message", body=text)
        self.assertEqual(len(terminal.seen("log", text="Compression enabled @ ala@localhost")), 3)

    def test_a_roster_of_two_hundred(self):
        ewa = self.peer("ewa", self.server, "pisze")
        for number in range(200):
            ewa.roster_set(f"kontakt{number}@localhost", f"Kontakt {number} ąę", [f"Grupa {number % 7}"])
        ewa.stop()
        terminal = self.compressed("ewa")
        roster = terminal.roster()
        self.assertEqual({jid: (entry["name"], entry["group"]) for jid, entry in roster.items()},
                         {f"kontakt{number}@localhost": (f"Kontakt {number} ąę", f"Grupa {number % 7}")
                          for number in range(200)})
        self.tells_no_fault(terminal)


if __name__ == "__main__":
    unittest.main()
