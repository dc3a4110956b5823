# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Presence: of a contact with several resources, and the own one."""

import unittest

from oku.prosody import Prosody
from support.case import Case
from support.ejabberd import Ejabberd
from support.friends import befriend


class Presence:
    """The tests; the classes below say over which server."""

    def setUp(self):
        super().setUp()
        self.server = self.shared(self.kind, lambda server: befriend(self, server, "ala", "olek"))

    def test_each_resource_of_a_contact_is_told(self):
        terminal = self.online("ala", self.server)
        home = self.peer("olek", self.server, "dom", priority=5)
        terminal.wait("presence", jid="olek@localhost", resource="dom", status="online", priority=5)
        work = self.peer("olek", self.server, "praca", priority=1)
        terminal.wait("presence", jid="olek@localhost", resource="praca", status="online", priority=1)

        work.presence("dnd", "Zajęty 🛠", 1)
        terminal.wait("presence", resource="praca", status="dnd", description="Zajęty 🛠")
        terminal.wait("contact", jid="olek@localhost", status="online",
                      where=lambda contact: self.resources(contact) == {"dom": "online", "praca": "dnd"})
        home.presence("xa", "Śpię", 5)
        terminal.wait("contact", jid="olek@localhost", status="xa", description="Śpię")

        home.stop()
        terminal.wait("presence", jid="olek@localhost", resource="dom", status="offline")
        contact = terminal.roster()["olek@localhost"]
        self.assertEqual((contact["status"], self.resources(contact)), ("dnd", {"praca": "dnd"}))
        terminal.forget()  # that the contact was away at the login
        work.stop()
        terminal.wait("contact", jid="olek@localhost", status="offline", resources=[])

    @staticmethod
    def resources(contact):
        return {one["resource"]: one["status"] for one in contact["resources"]}

    def test_who_is_there_already_is_seen_at_the_login(self):
        self.peer("olek", self.server, "dom").presence("chat", "Zapraszam")
        terminal = self.online("ala", self.server)
        terminal.wait("presence", jid="olek@localhost", resource="dom", status="chat", description="Zapraszam")

    def test_the_own_statuses_reach_the_contact(self):
        olek = self.peer("olek", self.server)
        terminal = self.online("ala", self.server)
        mine = olek.wait("presence", **{"from": lambda jid: jid.startswith("ala@localhost/")}, type=None)["from"]
        for status, show in (("chat", "chat"), ("dnd", "dnd"), ("away", "away"), ("xa", "xa"), ("online", None)):
            terminal.command("status", status=status, description=f"teraz {status} ąę & <b>")
            olek.wait("presence", **{"from": mine}, show=show, status=f"teraz {status} ąę & <b>")
        terminal.command("status", status="offline")
        olek.wait("presence", **{"from": mine}, type="unavailable")

    def test_a_priority_that_is_set_goes_out(self):
        olek = self.peer("olek", self.server)
        self.online("ala", self.server, settings={"XMPP/Priority": 7})
        olek.wait("presence", **{"from": lambda jid: jid.startswith("ala@localhost/")}, priority="7")


class OverProsody(Presence, Case):
    kind = Prosody


class OverEjabberd(Presence, Case):
    kind = Ejabberd


if __name__ == "__main__":
    unittest.main()
