# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""The invisible status on servers with privacy lists: the contact sees the account go, and does not see it come."""

import functools
import unittest

from oku.prosody import MODULES, Prosody
from support.case import Case
from support.ejabberd import Ejabberd
from support.friends import befriend


class Invisible:
    """The tests; the classes below say over which server."""

    def setUp(self):
        super().setUp()
        self.server = self.shared(self.kind, lambda server: befriend(self, server, "ala", "olek"))
        self.olek = self.peer("olek", self.server, "dom")

    def seen(self, terminal):
        """The types of the presences that the contact has seen of the account, once all has come that was sent."""
        mark = f"koniec {len(self.olek.seen('message'))}"
        terminal.command("raw", xml=f"<message to='{self.olek.full}' type='chat'><body>{mark}</body></message>")
        self.olek.wait("message", body=mark)
        return [presence["type"] for presence in
                self.olek.seen("presence", **{"from": lambda jid: jid.startswith("ala@localhost/")})]

    def test_the_contact_sees_the_account_go_and_not_come(self):
        terminal = self.online("ala", self.server)
        self.olek.wait("presence", type=None, **{"from": lambda jid: jid.startswith("ala@localhost/")})
        before = len(self.seen(terminal))
        terminal.command("status", status="invisible", description="nie ma mnie")
        terminal.wait("status", status="invisible", description="nie ma mnie")
        self.assertEqual(self.seen(terminal)[before:], ["unavailable"])
        # Everything else goes on as before, both ways.
        self.olek.presence("away", "a ja jestem")
        terminal.wait("presence", jid="olek@localhost", resource="dom", status="away", description="a ja jestem")
        self.olek.message("ala@localhost", "widzisz mnie?")
        terminal.wait("message", body="widzisz mnie?")
        terminal.command("status", status="dnd", description="jestem znowu")
        self.olek.wait("presence", type=None, show="dnd", status="jestem znowu")
        self.assertEqual(self.seen(terminal)[before:], ["unavailable", None])
        self.assertEqual(terminal.seen("notice"), [])

    def test_a_login_that_is_invisible_is_not_seen(self):
        terminal = self.messenger("ala")
        self.account(terminal, "ala", self.server)
        terminal.command("status", status="invisible")
        terminal.wait("connection", state="online")
        self.assertNotIn(None, self.seen(terminal))
        # Prosody's list holds back also the question who is there already; who changes from now on is seen.
        self.olek.presence("away", "a ja jestem")
        terminal.wait("presence", jid="olek@localhost", resource="dom", status="away", description="a ja jestem")
        self.assertNotIn(None, self.seen(terminal))
        terminal.command("status", status="online")
        self.olek.wait("presence", type=None, **{"from": lambda jid: jid.startswith("ala@localhost/")})
        self.assertEqual(terminal.seen("notice"), [])

    def test_the_end_of_an_invisible_connection_is_not_seen(self):
        terminal = self.online("ala", self.server)
        self.olek.wait("presence", type=None, **{"from": lambda jid: jid.startswith("ala@localhost/")})
        terminal.command("status", status="invisible")
        self.olek.wait("presence", type="unavailable")
        before = len(self.seen(terminal))
        terminal.command("status", status="offline")
        terminal.wait("connection", state="offline")
        ala = self.online("ala", self.server, "other")
        self.olek.wait("presence", type=None, **{"from": lambda jid: jid.startswith("ala@localhost/")})
        self.assertEqual(self.seen(ala)[before:].count(None), 1)


class OverProsody(Invisible, Case):
    kind = functools.partial(Prosody, modules=MODULES + ("privacy_lists",))


class OverEjabberd(Invisible, Case):
    kind = functools.partial(Ejabberd, modules=("mod_privacy",))


class WithoutPrivacyLists(Case):
    def test_the_person_is_warned(self):
        for server in (self.prosody(), self.ejabberd()):
            terminal = self.online("ala", server, type(server).__name__)
            terminal.command("status", status="invisible")
            terminal.wait("notice", text=lambda text: text.startswith(
                "UWAGA: Ustawiłeś status 'niewidzialny' na serwerze ('localhost')"))


if __name__ == "__main__":
    unittest.main()
