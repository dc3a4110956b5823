# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Pictures of contacts on real servers: by each of the three roads they become files of the cache."""

import base64
import hashlib
import unittest

from oku.prosody import Prosody
from support.case import Case
from support.ejabberd import Ejabberd
from support.friends import befriend

FACE = b"\x89PNG\r\n\x1a\n" + bytes(range(256)) * 60
HASH = hashlib.sha1(FACE).hexdigest()
DATA = base64.b64encode(FACE).decode()
PUBSUB = "http://jabber.org/protocol/pubsub"


class Pictures:
    """The tests; the classes below say over which server."""

    def setUp(self):
        super().setUp()
        self.server = self.shared(self.kind, lambda server: befriend(self, server, "ala", "olek"))
        self.terminal = self.online("ala", self.server, options=("--verbose",))
        self.olek = self.peer("olek", self.server, "dom")
        self.terminal.wait("presence", jid="olek@localhost", resource="dom")

    def logged(self, line, sender, name):
        self.terminal.wait("log", tag="XMAV", text=lambda text: line in text and sender in text and name in text)
        # The file is written before the messenger does anything else.
        self.terminal.command("roster")

    def stored(self, name):
        found, = self.terminal.profile.rglob(f".xmppAvatar/L{name}")
        return found.read_bytes()

    def publish(self, node, name, payload):
        self.olek.raw(f"<iq type='set' id='{node[-4:]}'><pubsub xmlns='{PUBSUB}'><publish node='{node}'>"
                      f"<item id='{name}'>{payload}</item></publish></pubsub></iq>")

    def test_in_the_card(self):
        self.olek.raw("<iq type='set' id='card'><vCard xmlns='vcard-temp'><FN>Olek</FN><PHOTO><TYPE>image/png</TYPE>"
                      f"<BINVAL>{DATA}</BINVAL></PHOTO></vCard></iq>")
        self.olek.raw(f"<presence><x xmlns='vcard-temp:x:update'><photo>{HASH}</photo></x></presence>")
        self.logged("avatar (vcard)", "olek@localhost", HASH)
        self.assertEqual(self.stored(HASH), FACE)
        # It is asked for once.
        self.olek.raw(f"<presence><x xmlns='vcard-temp:x:update'><photo>{HASH}</photo></x></presence>")
        self.logged("avatar cache (vc, hit)", "olek@localhost", HASH)

    def test_of_the_client_itself(self):
        def answer(request):
            return (f"<iq type='result' to='{request['from']}' id='{request['id']}'><query xmlns='jabber:x:avatar'>"
                    f"<data mimetype='image/png'>{DATA}</data></query></iq>")
        self.olek.answer_with("jabber:x:avatar", answer)
        self.olek.raw("<presence><x xmlns='jabber:x:avatar'><hash>client</hash></x></presence>")
        self.logged("avatar data (iq)", "olek@localhost", "client")
        self.assertEqual(self.stored("client"), FACE)

    def test_published_on_the_server(self):
        self.publish("urn:xmpp:avatar:data", HASH, f"<data xmlns='urn:xmpp:avatar:data'>{DATA}</data>")
        self.publish("urn:xmpp:avatar:metadata", HASH,
                     f"<metadata xmlns='urn:xmpp:avatar:metadata'><info id='{HASH}' type='image/png' bytes='{len(FACE)}'/>"
                     "</metadata>")
        self.logged("avatar data (pubsub)", "olek@localhost", HASH)
        self.assertEqual(self.stored(HASH), FACE)

    def test_the_own_one_is_for_whoever_asks(self):
        (self.terminal.profile / "_avatar").write_bytes(FACE)
        own = self.terminal.wait_for(lambda event: event.get("event") == "presence" and event["jid"] == "ala@localhost",
                                     "the own presence")
        answer = self.olek.query(f"ala@localhost/{own['resource']}", "<query xmlns='jabber:x:avatar'/>")
        self.assertEqual(base64.b64decode(answer.findtext(".//{jabber:x:avatar}data")), FACE)


class OverProsody(Pictures, Case):
    kind = Prosody


class OverEjabberd(Pictures, Case):
    kind = Ejabberd


if __name__ == "__main__":
    unittest.main()
