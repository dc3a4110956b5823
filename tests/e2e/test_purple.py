# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Talks with a client made of libpurple, which wrote its side without knowing ours."""

import unittest

from oku.prosody import Prosody
from support.case import Case
from support.ejabberd import Ejabberd
from support.friends import befriend


class WithPurple:
    """The tests; the classes below say over which server."""

    def setUp(self):
        super().setUp()
        self.server = self.shared(self.kind, lambda server: befriend(self, server, "ala", "olek"))
        self.terminal = self.online("ala", self.server)
        self.olek = self.purple("olek", self.server)
        self.olek.wait("presence", jid="ala@localhost", online=True)
        own = self.terminal.seen("presence", jid="ala@localhost")[0]
        self.ala = f"ala@localhost/{own['resource']}"

    def test_words_and_status_go_both_ways(self):
        self.olek.command("message", self.ala, 'Zażółć <gęślą> & "jaźń"')
        self.terminal.wait("message", body='Zażółć <gęślą> & "jaźń"')
        self.terminal.command("message", to="olek@localhost", body="Też <&> ąę")
        self.olek.wait("message", **{"from": self.ala, "text": "Też <&> ąę"})
        self.olek.command("status", "away", "zaraz wracam, ąę")
        self.terminal.wait("presence", jid="olek@localhost", status="away", description="zaraz wracam, ąę")
        self.terminal.command("status", status="dnd", description="pracuję")
        self.olek.wait("presence", jid="ala@localhost", status="dnd", text="pracuję")


class OverProsody(WithPurple, Case):
    kind = Prosody


class OverEjabberd(WithPurple, Case):
    kind = Ejabberd


if __name__ == "__main__":
    unittest.main()
