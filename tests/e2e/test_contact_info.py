# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""What the messenger tells of a contact's resources when its person asks."""

import datetime
import os
import unittest

from oku.prosody import Prosody
from oku.terminal import CommandFailed
from support import clock
from support.caps import CHAT_STATES, DISCO, VERSION
from support.case import Case
from support.ejabberd import Ejabberd
from support.friends import befriend

NOTHING = {"client": "", "version": "", "os": "", "features": []}


class Info:
    """The tests; the classes below say over which server."""

    settings = {}

    def setUp(self):
        super().setUp()
        self.server = self.shared(self.kind, lambda server: befriend(self, server, "ala", "olek"))
        self.terminal = self.online("ala", self.server, settings=self.settings)

    def present(self, resource, priority=0):
        """A client of the contact whom the messenger has seen."""
        peer = self.peer("olek", self.server, resource, priority)
        self.terminal.wait("presence", jid="olek@localhost", resource=resource)
        return peer

    def info(self, jid="olek@localhost"):
        """Asks and gives the events by their resources."""
        before = len(self.terminal.log.all())
        self.terminal.command("info", jid=jid)
        return {event["resource"]: event for event in self.terminal.log.all()[before:] if event["event"] == "info"}

    def tells(self, event, **wanted):
        self.assertEqual({key: event[key] for key in wanted}, wanted)

    def test_another_client(self):
        olek = self.present("dom", priority=5)
        names = [f"urn:test:{os.urandom(30).hex()}" for _ in range(100)]
        olek.features(CHAT_STATES, *names)
        olek.software("Inny <klient> ąę", "1.2.3 & 4", "Łąka 7 🦆")
        before = clock.now()
        olek.presence("dnd", "Nie teraz ąę 🦆", 5)
        self.terminal.wait("presence", resource="dom", status="dnd")
        info, = self.info().values()
        self.tells(info, jid="olek@localhost", resource="dom", client="Inny <klient> ąę", version="1.2.3 & 4",
                   os="Łąka 7 🦆", status="dnd", priority=5, description="Nie teraz ąę 🦆")
        self.assertLessEqual({CHAT_STATES, DISCO, VERSION, "urn:xmpp:ping", *names}, set(info["features"]))
        changed = datetime.datetime.fromisoformat(info["changed"])
        self.assertTrue(clock.between(before, changed, clock.now()), (before, info["changed"]))

    def test_another_messenger_of_this_kind(self):
        other = self.online("olek", self.server, settings={"XMPP/Priority": 3})
        other.command("status", status="away", description="obiad")
        self.terminal.wait("presence", jid="olek@localhost", status="away", description="obiad")
        info, = self.info().values()
        self.tells(info, client="OKF", version="0.7.61.1311", status="away", priority=3, description="obiad")
        self.assertRegex(info["os"], r"^Linux \S+ \d+\.\d+$")
        self.assertEqual(len(info["features"]), 29)
        # Both ways: what one may ask of the other, the other may ask of it.
        other.wait("presence", jid="ala@localhost", status="online")
        answer = other.ask("info", "info", jid="ala@localhost")
        self.tells(answer, client="OKF", version="0.7.61.1311", os=info["os"], features=info["features"], priority=0)

    def test_each_resource_is_asked(self):
        for resource, priority in (("dom", 5), ("praca & reszta", -1)):
            self.present(resource, priority).software(f"Klient {resource}", "1", "")
        told = self.info("olek@localhost/dom")
        self.assertEqual({resource: (event["client"], event["priority"]) for resource, event in told.items()},
                         {"dom": ("Klient dom", 5), "praca & reszta": ("Klient praca & reszta", -1)})

    def test_a_client_that_refuses(self):
        olek = self.present("dom")
        olek.leave_unanswered(DISCO, VERSION)
        number = self.terminal.send("info", jid="olek@localhost")
        for namespace in (DISCO, VERSION):
            request = olek.wait("asked", namespace=namespace, where=lambda asked: asked["id"].startswith("oku-"))
            olek.raw(f"<iq type='error' to='{request['from']}' id='{request['id']}'><query xmlns='{namespace}'/>"
                     "<error type='cancel'><service-unavailable xmlns='urn:ietf:params:xml:ns:xmpp-stanzas'/></error></iq>")
        self.tells(self.terminal.wait("info", resource="dom"), status="online", **NOTHING)
        self.terminal.wait("ok", id=number)

    def test_the_end_of_the_connection_ends_the_waiting(self):
        olek = self.present("dom")
        olek.leave_unanswered(DISCO, VERSION)
        number = self.terminal.send("info", jid="olek@localhost")
        olek.wait("asked", namespace=VERSION)
        self.terminal.command("status", status="offline")
        self.tells(self.terminal.wait("info", resource="dom"), **NOTHING)
        self.terminal.wait("ok", id=number)

    def test_a_contact_who_is_not_there(self):
        self.assertEqual(self.info(), {})

    def test_a_stranger(self):
        with self.assertRaisesRegex(CommandFailed, "ewa@localhost"):
            self.info("ewa@localhost")


class OverProsody(Info, Case):
    kind = Prosody

    def test_a_client_that_goes_before_it_answers(self):
        """Nobody answers then, so this takes the ten seconds that the messenger waits."""
        olek = self.present("dom")
        olek.leave_unanswered(DISCO, VERSION)
        number = self.terminal.send("info", jid="olek@localhost")
        olek.wait("asked", namespace=VERSION)
        olek.stop()
        self.tells(self.terminal.wait("info", resource="dom"), **NOTHING)
        self.terminal.wait("ok", id=number)


class OverEjabberd(Info, Case):
    kind = Ejabberd


class OverCompression(Info, Case):
    """Answers come in many pieces."""

    kind = Ejabberd
    settings = {"XMPP/Serv/Compress": 1}


if __name__ == "__main__":
    unittest.main()
