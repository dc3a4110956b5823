# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""What others learn who ask the messenger: features, their hash, version, time and ping; and what the server can do."""

import datetime
import functools
import os
import re
import unittest

from oku.prosody import MODULES, Prosody
from support import clock
from support.caps import ASK_DISCO, ASK_VERSION, CAPS, DISCO, VERSION, features, identities, verification
from support.case import Case
from support.ejabberd import Ejabberd
from support.friends import befriend

PROTOCOL = "http://jabber.org/protocol/"
FEATURES = [
    *(PROTOCOL + path for path in (
        "caps", "chatstates", "disco#info", "disco#items", "geoloc", "geoloc+notify", "http-auth", "ibb", "mood",
        "mood+notify", "pubsub", "si", "si/profile/file-transfer", "tune", "tune+notify")),
    "iq", "jabber:iq:oob", "jabber:iq:privacy", "jabber:iq:version", "jabber:x:data", "presence", "sslc2s",
    "urn:xmpp:avatar:data", "urn:xmpp:avatar:metadata", "urn:xmpp:avatar:metadata+notify", "urn:xmpp:ping",
    "urn:xmpp:ssn", "urn:xmpp:time", "vcard-temp"]
TIME = "{urn:xmpp:time}"


class Answers:
    """The messenger asked by a contact and by a stranger; the classes below say over which server."""

    def setUp(self):
        super().setUp()
        self.server = self.shared(self.kind, lambda server: befriend(self, server, "ala", "olek"))

    def logged_in(self, **options):
        """The messenger, the contact who sees it, and the presence that the contact got."""
        olek = self.peer("olek", self.server, "dom")
        terminal = self.online("ala", self.server, options=("--verbose",), **options)
        return terminal, olek, olek.wait("presence", **{"from": lambda jid: jid.startswith("ala@localhost/")}, type=None)

    def asked(self, terminal, peer, to, payload, told):
        """Asks; the messenger tells of it in its log, and gives the answer's one child."""
        answer = peer.query(to, payload)
        self.assertEqual((answer.get("type"), answer.get("from"), answer.get("to")), ("result", to, peer.full))
        terminal.wait("log", level=5, tag="XMPP", text=f"{told} request form: {peer.full}")
        self.assertEqual(len(answer), 1)
        return answer[0]

    def test_features_are_told_to_a_contact_and_to_a_stranger(self):
        terminal, olek, presence = self.logged_in()
        for peer in (olek, self.peer("ewa", self.server, "obca")):
            with self.subTest(peer.jid):
                query = self.asked(terminal, peer, presence["from"], ASK_DISCO, "Disco#info")
                self.assertEqual(query.tag, f"{{{DISCO}}}query")
                self.assertEqual(identities(query), [("client", "pc", "", "OKF - protoLink")])
                self.assertEqual(features(query), FEATURES)
                self.assertEqual(len(query), 1 + len(FEATURES))
                self.assertEqual(query.get("node"), "{node}#{ver}".format(**presence["caps"]))

    def test_the_hash_holds_what_is_answered(self):
        terminal, olek, presence = self.logged_in()
        caps = presence["caps"]
        self.assertEqual({key: caps[key] for key in ("hash", "ext")}, {"hash": "sha-1", "ext": "ep-notify"})
        self.assertRegex(caps["node"], r"^https?://.+/$")
        # As a client asks that saw the hash for the first time: for what stands behind the node.
        node = f"{caps['node']}#{caps['ver']}"
        query = self.asked(terminal, olek, presence["from"], f"<query xmlns='{DISCO}' node='{node}'/>", "Disco#info")
        self.assertEqual(query.get("node"), node)
        self.assertEqual(verification(query), caps["ver"])
        query.remove(query[-1])
        self.assertNotEqual(verification(query), caps["ver"])

    def test_another_client_checks_the_hash_and_accepts_it(self):
        ewa = self.peer("ewa", self.server, "obca")
        ewa.check_hashes()
        terminal, _, presence = self.logged_in()
        right = presence["caps"]
        for caps in ({**right, "ver": "AAAAAAAAAAAAAAAAAAAAAAAAAAA="}, right):
            terminal.command("raw", xml=f"<presence to='ewa@localhost'><c xmlns='{CAPS}' hash='{caps['hash']}' "
                                        f"node='{caps['node']}' ver='{caps['ver']}' ext='{caps['ext']}'/></presence>")
            ewa.wait("presence", caps=caps)
            terminal.wait("log", text=f"Disco#info request form: {ewa.full}")
        ewa.wait("checked", ver=right["ver"], **{"from": presence["from"]})
        self.assertEqual(len(ewa.seen("checked")), 1, "the false one is not believed")

    def test_the_hash_stands_in_each_presence(self):
        terminal, olek, presence = self.logged_in()
        for status in ("chat", "dnd", "away", "xa", "online"):
            terminal.command("status", status=status, description=f"jestem {status}")
            again = olek.wait("presence", status=f"jestem {status}")
            self.assertEqual(again["caps"], presence["caps"])

    def test_the_version(self):
        terminal, olek, presence = self.logged_in()
        query = self.asked(terminal, olek, presence["from"], ASK_VERSION, "Version info")
        system = os.uname()
        version = re.match(r"\d+\.\d+", system.release).group()
        self.assertEqual([(child.tag, child.text) for child in query], [
            (f"{{{VERSION}}}name", "OKF"), (f"{{{VERSION}}}version", "0.7.61.1311"),
            (f"{{{VERSION}}}os", f"{system.sysname} {system.machine} {version}"),
            (f"{{{VERSION}}}plugin", "protoLink")])

    def test_the_time(self):
        # The sign is the one of what local time lacks to UTC, and summer time plays no part.
        for zone, offset in (("CET-1CEST,M3.5.0,M10.5.0/3", "-1:00"), ("EST5", "05:00"), ("IST-5:30", "-5:30"),
                             ("UTC0", "00:00")):
            with self.subTest(zone):
                terminal, olek, presence = self.logged_in(profile=offset, environment={"TZ": zone})
                before = clock.now()
                answer = self.asked(terminal, olek, presence["from"], "<time xmlns='urn:xmpp:time'/>", "Time info")
                self.assertEqual([child.tag for child in answer], [TIME + "tzo", TIME + "utc"])
                self.assertEqual(answer[0].text, offset)
                told = datetime.datetime.strptime(answer[1].text, "%Y-%m-%dT%H:%M:%S%z")
                self.assertTrue(clock.between(before, told, clock.now()), (before, told))

    def test_a_ping(self):
        _, olek, presence = self.logged_in()
        answer = olek.query(presence["from"], "<ping xmlns='urn:xmpp:ping'/>")
        self.assertEqual((answer.get("type"), answer.get("from"), len(answer)), ("result", presence["from"], 0))

    def test_what_the_server_can_do_is_logged_in_order(self):
        terminal = self.online("ala", self.server, options=("--verbose",))
        # The server answers in order: what it can do stands before its answer to a later question.
        server = terminal.ask("server", "server")
        texts = [event["text"] for event in terminal.seen("log", level=5, tag="XMPP")]
        first = texts.index("ala@localhost :: session binded, requesting server caps")
        self.assertEqual([text for text in texts[first:] if text.startswith("\tdetected: ")],
                         ["\tdetected: " + text for text in self.detected])
        self.assertEqual(server["domain"], "localhost")
        for identity in self.identities:
            self.assertIn(identity, server["identities"])
        for feature in self.features:
            self.assertIn(feature, server["features"])
        self.assertNotIn("", server["features"])

    def test_the_server_is_asked_once_in_each_connection(self):
        terminal = self.messenger()
        terminal.command("console", on=True)
        self.account(terminal, "ala", self.server)
        for login in (1, 2):
            terminal.command("status", status="online")
            terminal.wait("connection", state="online")
            terminal.command("status", status="offline")
            terminal.wait("connection", state="offline")
            sent = "".join(event["data"] for event in terminal.seen("xml", direction="out"))
            self.assertEqual(len(re.findall(r"<iq to=.localhost.[^>]*><query xmlns=.[^'\"]*disco#info", sent)), login)


class OverProsody(Answers, Case):
    kind = functools.partial(Prosody, modules=MODULES + ("privacy_lists",))
    detected = ("XEP-0016 (Privacy-Lists)", "XEP-0049 (Private XML Storage)")
    identities = ("server/im Prosody",)
    features = ("jabber:iq:privacy", "jabber:iq:private", DISCO, "urn:xmpp:ping")


class OverEjabberd(Answers, Case):
    kind = functools.partial(Ejabberd, modules=("mod_privacy",))
    detected = ("XEP-0016 (Privacy-Lists)", "XEP-0060 (Publish-Subscribe)", "XEP-0060 (+Publish Options)",
                "XEP-0163 (PEP Profile)")
    identities = ("server/im ejabberd", "pubsub/pep")
    features = ("jabber:iq:privacy", PROTOCOL + "pubsub", PROTOCOL + "pubsub#publish-options", DISCO)


if __name__ == "__main__":
    unittest.main()
