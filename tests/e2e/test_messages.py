# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Messages both ways, typing notices, and messages that come late or come back."""

import datetime
import unittest

from oku.prosody import Prosody
from support import clock
from support.case import Case
from support.ejabberd import Ejabberd
from support.friends import befriend

TEXTS = ("Zażółć gęślą jaźń", "🦆👩‍👩‍👧‍👦 𝄞", "<message/> & \"cytat\" 'inny' ]]>", "dwa\nwiersze\n\ttabulator", " brzegi ",
         "długi " * 2000)


class Messages:
    """The tests; the classes below say over which server."""

    def setUp(self):
        super().setUp()
        self.server = self.shared(self.kind, lambda server: befriend(self, server, "ala", "olek"))
        self.terminal = self.online("ala", self.server)
        self.olek = self.peer("olek", self.server, "dom")
        self.terminal.wait("presence", jid="olek@localhost", resource="dom")

    def test_texts_go_out_as_they_were_written(self):
        for text in TEXTS:
            self.terminal.command("message", to="olek@localhost", body=text)
            self.terminal.wait("sent", to="olek@localhost", body=text)
            self.assertEqual(self.olek.wait("message", body=text)["type"], "chat")

    def test_texts_come_in_as_they_were_written(self):
        for text in TEXTS:
            self.olek.message("ala@localhost", text)
            message = self.terminal.wait("message", **{"from": "olek@localhost"}, body=text)
            self.assertEqual((message["resource"], message["kind"], message["failed"]), ("dom", "chat", False))

    def test_a_message_with_a_subject(self):
        self.terminal.command("message", to="olek@localhost", kind="normal", subject="Temat: ćma", body="Treść")
        got = self.olek.wait("message", body="Treść")
        self.assertEqual((got["subject"], got["type"]), ("Temat: ćma", None))
        self.olek.message("ala@localhost", "Odpowiedź", "normal", "Re: ćma")
        self.terminal.wait("message", body="Odpowiedź", subject="Re: ćma", kind="normal")

    def test_typing_is_seen_on_both_sides(self):
        self.olek.message("ala@localhost", state="composing")
        self.terminal.wait("typing", **{"from": "olek@localhost"}, composing=True)
        self.olek.message("ala@localhost", "już", state="active")
        self.terminal.wait("message", body="już")
        self.terminal.command("typing", to="olek@localhost", composing=True)
        self.olek.wait("message", states=["composing"], body=None)
        self.terminal.command("typing", to="olek@localhost", composing=False)
        self.olek.wait("message", states=["paused"], body=None)

    def test_typing_is_kept_quiet_where_the_person_wants_it(self):
        self.olek.message("ala@localhost", "pisz", state="active")
        self.terminal.wait("message", body="pisz")
        self.account(self.terminal, "ala", self.server, settings={"OKU/SendTyping": 0})
        self.terminal.command("typing", to="olek@localhost", composing=True)
        self.terminal.command("message", to="olek@localhost", body="gotowe")
        self.olek.wait("message", body="gotowe")
        self.assertEqual(self.olek.seen("message", states=["composing"]), [])

    def test_an_answer_goes_to_the_resource_that_wrote_last(self):
        second = self.peer("olek", self.server, "praca", priority=-1)
        second.message("ala@localhost", "stąd piszę", state="active")
        self.terminal.wait("message", body="stąd piszę")
        self.terminal.command("message", to="olek@localhost", body="odpisuję")
        self.assertEqual(second.wait("message", body="odpisuję")["states"], ["active"])

    def test_a_message_from_the_time_offline_tells_when_it_was_written(self):
        self.terminal.command("status", status="offline")
        self.terminal.wait("connection", state="offline")
        self.olek.wait("presence", type="unavailable")
        before = clock.now()
        self.olek.message("ala@localhost", "na potem")
        # The answer stands behind the message: that one is put aside before its receiver asks for what waits.
        self.olek.query("localhost", "<ping xmlns='urn:xmpp:ping'/>")
        self.terminal.command("status", status="online")
        message = self.terminal.wait("message", body="na potem")
        written, shown = (datetime.datetime.fromisoformat(message[key]) for key in ("delayed", "time"))
        self.assertTrue(clock.between(before, written, shown), (before, message))

    def test_a_message_to_nobody_is_told_to_have_failed(self):
        self.terminal.command("message", to="nikt@localhost", body="halo?")
        number = self.terminal.wait("failed", to="nikt@localhost")["message"]
        self.terminal.wait("notice", text=lambda text: "nikt@localhost" in text)
        kept = self.terminal.ask("history", "history", **{"with": "nikt@localhost"})["messages"]
        self.assertEqual([one["state"] for one in kept if one["direction"] == "out"], ["failed"])
        self.terminal.command("resend", message=number)
        self.terminal.wait("sent", message=number, body="halo?")
        self.terminal.wait("failed", message=number)

    def test_the_history_keeps_both_sides_in_order(self):
        self.terminal.command("message", to="olek@localhost", body="raz")
        self.olek.wait("message", body="raz")
        self.olek.message("ala@localhost", "dwa")
        self.terminal.wait("message", body="dwa")
        kept = self.terminal.ask("history", "history", **{"with": "olek@localhost"})["messages"]
        self.assertEqual([(one["direction"], one["body"]) for one in kept], [("out", "raz"), ("in", "dwa")])


class OverProsody(Messages, Case):
    kind = Prosody


class OverEjabberd(Messages, Case):
    kind = Ejabberd

    def test_a_message_that_comes_back_with_its_text_is_shown(self):
        self.terminal.command("message", to="nikt@localhost", body="halo?")
        message = self.terminal.wait("message", **{"from": "nikt@localhost"}, failed=True)
        self.assertTrue(message["body"].startswith("Twoja wiadomość nie została dostarczona do adresata!"))


if __name__ == "__main__":
    unittest.main()
