# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""What the messenger learns of others by itself: whom it asks, and what it does once it knows."""

import unittest

from oku.prosody import Prosody
from support.caps import CAPS, CHAT_STATES, DISCO, OtherClient
from support.case import Case
from support.ejabberd import Ejabberd
from support.friends import befriend

FILE_TRANSFER = "http://jabber.org/protocol/si/profile/file-transfer"


class Learning:
    """The tests; the classes below say over which server."""

    def setUp(self):
        super().setUp()
        self.server = self.shared(self.kind, lambda server: befriend(self, server, "ala", "olek"))

    def silent_peer(self, presence=None):
        """A client of the contact that answers no question about its features; the test does."""
        olek = self.peer("olek", self.server, "dom", start=False)
        olek.connect()
        olek.wait("online")
        olek.leave_unanswered(DISCO)
        olek.raw(presence or "<presence/>")
        return olek

    def messenger_asks(self, olek):
        return olek.wait("asked", namespace=DISCO, **{"from": lambda jid: jid.startswith("ala@localhost/")})

    def questions(self, olek, terminal):
        """How often the messenger has asked, once everything that it sent so far has come."""
        number = len(olek.seen("message")) + 1
        terminal.command("message", to="olek@localhost", body=f"koniec {number}")
        olek.wait("message", body=f"koniec {number}")
        return len(olek.seen("asked", namespace=DISCO, **{"from": lambda jid: jid.startswith("ala@localhost/")}))

    def types_and_says(self, terminal, olek, body):
        """Types and sends a text; gives the chat states that the contact saw before it."""
        olek.forget()
        before = len(olek.seen("message"))
        terminal.command("typing", to="olek@localhost", composing=True)
        terminal.command("message", to="olek@localhost", body=body)
        olek.wait("message", body=body)
        return [message["states"] for message in olek.seen("message")[before:-1]]

    def test_typing_is_told_only_to_who_is_known_to_want_it(self):
        client = OtherClient("Obcy", CHAT_STATES, CAPS, "urn:xmpp:ping", FILE_TRANSFER)
        olek = self.silent_peer(client.presence())
        terminal = self.online("ala", self.server, options=("--verbose",))
        request = self.messenger_asks(olek)
        olek.message("ala@localhost", "jestem")  # the conversation has a resource from here on
        terminal.wait("message", body="jestem")
        self.assertEqual(self.types_and_says(terminal, olek, "raz"), [])
        olek.raw(client.answer(request))
        terminal.wait("log", level=5, tag="XMPP", text=f"disco#info result form: {olek.full}")
        for text in ("XEP-0085 (Chat States)", "XEP-0199 (Ping)", "XEP-0115 (Caps)", "XEP-0096 (FileTransfer)"):
            terminal.wait("log", level=5, tag="XMPP", text=f"\tdetected: {text}")
        self.assertEqual(self.types_and_says(terminal, olek, "dwa"), [["composing"]])

    def test_a_client_without_chat_states_gets_none(self):
        client = OtherClient("Stary", "urn:xmpp:ping")
        olek = self.silent_peer(client.presence())
        terminal = self.online("ala", self.server, options=("--verbose",))
        olek.raw(client.answer(self.messenger_asks(olek)))
        terminal.wait("log", text="\tdetected: XEP-0199 (Ping)")
        olek.message("ala@localhost", "jestem")
        terminal.wait("message", body="jestem")
        self.assertEqual(self.types_and_says(terminal, olek, "raz"), [])

    def test_a_refusal_leaves_everything_as_it_was(self):
        olek = self.silent_peer()
        terminal = self.online("ala", self.server)
        request = self.messenger_asks(olek)
        olek.raw(f"<iq type='error' to='{request['from']}' id='{request['id']}'><query xmlns='{DISCO}'>"
                 f"<feature var='{CHAT_STATES}'/></query><error type='cancel'><service-unavailable "
                 "xmlns='urn:ietf:params:xml:ns:xmpp-stanzas'/></error></iq>")
        olek.message("ala@localhost", "jestem")
        terminal.wait("message", body="jestem")
        self.assertEqual(self.types_and_says(terminal, olek, "raz"), [])
        self.assertEqual(self.questions(olek, terminal), 1, "and it is not asked again")

    def test_an_answer_from_somebody_else_is_not_believed(self):
        client = OtherClient("Obcy", CHAT_STATES)
        olek = self.silent_peer(client.presence())
        terminal = self.online("ala", self.server, options=("--verbose",))
        request = self.messenger_asks(olek)
        ewa = self.peer("ewa", self.server, "dom")
        ewa.raw(client.answer(request))
        ewa.message("ala@localhost", "to nie ja")
        terminal.wait("message", body="to nie ja")
        olek.message("ala@localhost", "jestem")
        terminal.wait("message", body="jestem")
        self.assertEqual(self.types_and_says(terminal, olek, "raz"), [])
        olek.raw(client.answer(request))
        terminal.wait("log", text="\tdetected: XEP-0085 (Chat States)")
        self.assertEqual(self.types_and_says(terminal, olek, "dwa"), [["composing"]])

    def test_each_new_resource_is_asked_once(self):
        client = OtherClient("Obcy", CHAT_STATES)
        # No hash, one of another kind, an empty one, one that is a hash: all are asked, and each only once.
        for presence in ("<presence/>", client.presence("md5"),
                         f"<presence><c xmlns='{CAPS}' hash='sha-1' node='https://other.example' ver=''/></presence>",
                         client.presence()):
            with self.subTest(presence):
                olek = self.silent_peer(presence)
                terminal = self.online("ala", self.server, "profile", options=("--verbose",))
                olek.raw(client.answer(self.messenger_asks(olek)))
                terminal.wait("log", text="\tdetected: XEP-0085 (Chat States)")
                for text in ("jeden", "dwa"):
                    olek.raw(presence.replace("<presence", f"<presence id='{text}'", 1))
                    olek.presence("dnd", text)
                    terminal.wait("presence", resource="dom", description=text)
                self.assertEqual(self.questions(olek, terminal), 1)
                self.assertEqual(terminal.quit(), 0)
                olek.stop()

    def test_a_resource_that_comes_again_is_not_asked_when_its_hash_is_known(self):
        client = OtherClient("Obcy", CHAT_STATES)
        olek = self.silent_peer(client.presence())
        terminal = self.online("ala", self.server, options=("--verbose",))
        olek.raw(client.answer(self.messenger_asks(olek)))
        terminal.wait("log", text="\tdetected: XEP-0085 (Chat States)")
        olek.presence(kind="unavailable")
        terminal.wait("presence", resource="dom", status="offline")
        olek.raw(client.presence())
        terminal.wait("log", level=5, tag="XMPP", text=f"Caps in cache, creating fake response ({olek.full})")
        terminal.wait("log", text="\tdetected: XEP-0085 (Chat States)")
        olek.message("ala@localhost", "znowu jestem")
        terminal.wait("message", body="znowu jestem")
        self.assertEqual(self.types_and_says(terminal, olek, "raz"), [["composing"]])
        self.assertEqual(self.questions(olek, terminal), 1)

    def test_a_stranger_is_not_asked(self):
        ewa = self.peer("ewa", self.server, "obca")
        terminal = self.online("ala", self.server)
        terminal.command("message", to="ewa@localhost", body="gdzie jesteś?")
        full = ewa.wait("message", body="gdzie jesteś?")["from"]
        ewa.presence(to="ala@localhost")
        ewa.presence(to=full)
        ewa.query(full, "<ping xmlns='urn:xmpp:ping'/>")
        self.assertEqual(ewa.seen("asked", **{"from": full}), [])

    def test_two_messengers_learn_of_each_other(self):
        ala = self.online("ala", self.server, options=("--verbose",))
        olek = self.online("olek", self.server, options=("--verbose",))
        for terminal, other in ((ala, "olek@localhost"), (olek, "ala@localhost")):
            terminal.wait("log", text=lambda text: text.startswith(f"Disco#info request form: {other}/"))
            terminal.wait("log", text=lambda text: text.startswith(f"disco#info result form: {other}/"))
            for text in ("XEP-0085 (Chat States)", "XEP-0199 (Ping)", "XEP-0115 (Caps)", "XEP-0096 (FileTransfer)"):
                terminal.wait("log", text=f"\tdetected: {text}")
        # Nobody has written yet, so there is no resource for a typing notice.
        ala.command("typing", to="olek@localhost", composing=True)
        ala.command("message", to="olek@localhost", body="cześć")
        olek.wait("message", body="cześć")
        self.assertEqual(olek.seen("typing", composing=True), [])
        olek.command("typing", to="ala@localhost", composing=True)
        ala.wait("typing", **{"from": "olek@localhost"}, composing=True)
        olek.command("message", to="ala@localhost", body="no cześć")
        ala.wait("message", body="no cześć")
        ala.command("typing", to="olek@localhost", composing=True)
        olek.wait("typing", **{"from": "ala@localhost"}, composing=True)


class OverProsody(Learning, Case):
    kind = Prosody


class OverEjabberd(Learning, Case):
    kind = Ejabberd


if __name__ == "__main__":
    unittest.main()
