# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""What a player of the session plays is published where the person switched that on, and taken back."""

import unittest

from oku.prosody import ANNOUNCE_PEP, MODULES, Prosody
from support.case import Case
from support.ejabberd import Ejabberd
from support.friends import befriend
from support.personal import Personal
from support.player import Bus, Player

ALA = {"from": "ala@localhost"}
DREAM = {"artist": "Czesław Ż.", "title": "Sen & jawa <1>", "source": "Album", "track": "3", "length": "185"}


class TuneCompanion:
    """The tests; the classes below say over which server."""

    def setUp(self):
        super().setUp()
        self.server = self.shared(self.kind, lambda server: befriend(self, server, "ala", "olek"))
        self.bus = Bus(self.folder / "bus")
        self.addCleanup(self.bus.stop)
        self.player = self.started("jeden")
        self.terminal = self.online("ala", self.server, settings={"OKU/PublishTune": 1},
                                    environment={"DBUS_SESSION_BUS_ADDRESS": self.bus.address})
        self.olek = self.peer("olek", self.server, "dom")
        self.terminal.wait("presence", jid="olek@localhost", resource="dom")
        Personal(self.olek).until_heard(self.terminal.log, self.olek.log)

    def started(self, name):
        player = Player(self.bus, name)
        self.addCleanup(player.leave)
        return player

    def play_unheard(self):
        self.player.play(DREAM["title"], DREAM["artist"])

    def play(self):
        self.play_unheard()
        self.heard(DREAM)

    def heard(self, fields):
        """Waits until olek hears of the tune. What comes from here on is none from before it: a server may tell the
        newest one once more."""
        self.olek.wait("tune", **ALA, fields=fields)
        self.olek.forget()

    def taken_back(self):
        self.heard({})

    def test_it_is_taken_back_when_it_stops(self):
        self.play()
        self.player.halt()
        self.taken_back()
        self.play()

    def test_it_is_taken_back_when_the_player_goes(self):
        self.play()
        self.player.leave()
        self.taken_back()
        other = self.started("dwa")
        other.play(DREAM["title"], DREAM["artist"])
        self.heard(DREAM)

    def test_it_is_taken_back_when_the_person_switches_it_off(self):
        self.play()
        self.terminal.command("set", key="OKU/PublishTune", value=0)
        self.taken_back()
        self.player.play("Tajne")
        self.play_unheard()
        self.terminal.command("set", key="OKU/PublishTune", value=1)
        self.heard(DREAM)
        self.assertEqual(self.olek.seen("tune", fields=lambda fields: fields.get("title") == "Tajne"), [])

    def test_it_is_taken_back_when_the_person_leaves(self):
        self.play()
        self.assertEqual(self.terminal.quit(), 0)
        self.taken_back()


class OverProsody(TuneCompanion, Case):
    @staticmethod
    def kind(*arguments):
        return Prosody(*arguments, modules=(*MODULES, ANNOUNCE_PEP))


class OverEjabberd(TuneCompanion, Case):
    kind = Ejabberd


if __name__ == "__main__":
    unittest.main()
