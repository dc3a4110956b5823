# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Requests for authorization under each value of XMPP/AuthType."""

import unittest

from support.case import Case


class Subscription:
    """The tests; the classes below say over which server."""

    def setUp(self):
        super().setUp()
        self.server = self.serve()
        self.ewa = self.peer("ewa", self.server)

    def asked(self, value):
        """A messenger with that setting, which Ewa asks for its presence."""
        terminal = self.online("ala", self.server, settings={"XMPP/AuthType": value})
        self.ewa.presence(to="ala@localhost", kind="subscribe")
        return terminal

    def answer(self, kind):
        return self.ewa.wait("presence", **{"from": lambda jid: jid.startswith("ala@localhost")}, type=kind)

    def test_0_asks_the_person_who_accepts(self):
        terminal = self.asked(0)
        terminal.wait("authorization", jid="ewa@localhost")
        terminal.command("authorize", jid="ewa@localhost")
        self.answer("subscribed")
        self.answer(None)
        self.assertEqual(self.ewa.seen("presence", type="subscribe"), [])

    def test_0_asks_the_person_who_accepts_and_asks_in_return(self):
        terminal = self.asked(0)
        terminal.wait("authorization", jid="ewa@localhost")
        terminal.command("authorize", jid="ewa@localhost", ask=True)
        self.answer("subscribed")
        self.answer("subscribe")
        self.ewa.presence(to="ala@localhost", kind="subscribed")
        terminal.wait("contact", jid="ewa@localhost", subscription="both")

    def test_0_asks_the_person_who_refuses(self):
        terminal = self.asked(0)
        terminal.wait("authorization", jid="ewa@localhost")
        terminal.command("deny", jid="ewa@localhost")
        self.answer("unsubscribed")

    def test_0_asks_also_about_a_request_from_the_time_offline(self):
        terminal = self.online("ala", self.server)
        terminal.command("status", status="offline")
        terminal.wait("connection", state="offline")
        self.ewa.presence(to="ala@localhost", kind="subscribe")
        terminal.command("status", status="online")
        terminal.wait("authorization", jid="ewa@localhost")

    def test_1_refuses_at_once(self):
        terminal = self.asked(1)
        self.answer("unsubscribed")
        self.assertEqual(terminal.seen("authorization"), [])

    def test_2_accepts_at_once_and_asks_nothing_in_return(self):
        terminal = self.asked(2)
        self.answer("subscribed")
        self.assertEqual(terminal.seen("authorization"), [])
        self.assertEqual(self.ewa.seen("presence", type="subscribe"), [])

    def test_3_neither_asks_nor_answers(self):
        terminal = self.asked(3)
        self.ewa.message("ala@localhost", "po prośbie")
        terminal.wait("message", body="po prośbie")
        self.assertEqual(terminal.seen("authorization"), [])
        terminal.command("message", to="ewa@localhost", body="po odpowiedzi, której nie ma")
        self.ewa.wait("message", body="po odpowiedzi, której nie ma")
        self.assertEqual(self.ewa.seen("presence", type=lambda kind: kind in ("subscribed", "unsubscribed")), [])


class OverProsody(Subscription, Case):
    serve = Case.prosody


class OverEjabberd(Subscription, Case):
    serve = Case.ejabberd


if __name__ == "__main__":
    unittest.main()
