# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""A server that stops and comes back."""

import unittest

from oku.events import Unexpected
from support.case import CLEAR, Case
from support.friends import befriend


class Reconnection(Case):
    def comes_back(self, server, kill):
        befriend(self, server, "ala", "olek")
        if kill:
            # A server writes behind: it would not remember this friendship. When it stops it writes everything.
            server.stop()
            server.start()
        terminal = self.online("ala", server)
        olek = self.peer("olek", server)
        terminal.wait("presence", jid="olek@localhost", status="online")
        terminal.forget()

        server.stop(kill)
        terminal.wait("connection", state="offline")
        terminal.wait("contact", jid="olek@localhost", status="offline", resources=[])
        olek.wait("disconnected")
        terminal.command("message", to="olek@localhost", body="napisane bez serwera")
        terminal.wait("queued", to="olek@localhost", body="napisane bez serwera")

        server.start()
        terminal.wait("connection", state="online")
        terminal.wait("status", status="online")
        terminal.wait("sent", to="olek@localhost", body="napisane bez serwera")
        # Its answer stands behind the message: that one is not on its way while the contact logs in.
        terminal.command("console", on=True)
        terminal.command("raw", xml="<iq to='localhost' type='get' id='znak'><ping xmlns='urn:xmpp:ping'/></iq>")
        terminal.wait("xml", direction="in", data=lambda data: "znak" in data)
        again = self.peer("olek", server, "again")
        again.wait("message", body="napisane bez serwera")
        terminal.wait("presence", jid="olek@localhost", resource="again", status="online")
        again.message("ala@localhost", "jestem")
        terminal.wait("message", body="jestem")
        self.assertEqual(len(again.seen("message", body="napisane bez serwera")), 1)

    def test_prosody_stops_and_starts(self):
        self.comes_back(self.prosody(), kill=False)

    def test_prosody_crashes_and_starts(self):
        self.comes_back(self.prosody(), kill=True)

    def test_ejabberd_stops_and_starts(self):
        self.comes_back(self.ejabberd(), kill=False)

    def test_ejabberd_crashes_and_starts(self):
        self.comes_back(self.ejabberd(), kill=True)

    def test_going_offline_ends_the_attempts(self):
        server = self.scripted(lambda connection, number: None)
        terminal = self.messenger()
        self.account(terminal, "ala", server, settings=CLEAR)
        terminal.command("status", status="online")
        for attempt in (1, 2):
            server.log.wait("accepted", number=attempt)
        terminal.command("status", status="offline")
        # How many attempts there were by then depends on the time that passed.
        terminal.forget()
        with self.assertRaises(Unexpected):
            terminal.wait("connection", state="connecting", timeout=4)


if __name__ == "__main__":
    unittest.main()
