# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Cards and pictures as a person meets them: the messenger's commands on real servers, slixmpp as the other side."""

import base64
import hashlib
import json
import struct
import unittest
import xml.etree.ElementTree as ET
import zlib

from oku.prosody import ANNOUNCE_PEP, MODULES, Prosody
from oku.terminal import CommandFailed
from support.case import Case
from support.ejabberd import Ejabberd
from support.friends import befriend
from support.pictures import png

VCARD = "{vcard-temp}"
PUBSUB = "http://jabber.org/protocol/pubsub"
DATA = "urn:xmpp:avatar:data"
METADATA = "urn:xmpp:avatar:metadata"
FIELDS = {"nick": "Alusia", "name": "Ala & Co <>", "surname": "Żółć", "email": "ala@example.org",
          "www": "https://example.org/?a=1&b=2", "title": "dr", "role": "szefowa", "birth": "1990-02-03"}


def sha1(content):
    return hashlib.sha1(content).hexdigest()


def size(content):
    return struct.unpack(">II", content[16:24])


FACE = png(64, 48)


class Cards:
    """The tests; the classes below say over which server."""

    def setUp(self):
        super().setUp()
        self.server = self.shared(self.kind, self.prepare)
        self.terminal = self.online("ala", self.server)
        self.olek = self.peer("olek", self.server, "dom")
        self.terminal.wait("presence", jid="olek@localhost", resource="dom")

    def own_card(self):
        """The own card as the messenger shows it; the notice at its end is read."""
        number = self.terminal.send("own-card")
        card = self.terminal.wait("own-card")
        box = self.terminal.wait("question", style="information")
        self.terminal.command("answer", box=box["box"], button="ok")
        answer = self.terminal.wait_for(lambda event: event.get("id") == number, "the answer")
        self.assertEqual(answer["event"], "ok")
        return card

    def set_card(self, jid, content):
        """The account's card on the server, whatever was there."""
        peer = self.peer(jid.split("@")[0], self.server, "card")
        peer.raw(f"<iq type='set' id='card'><vCard xmlns='vcard-temp'>{content}</vCard></iq>")
        card = peer.query(jid, "<vCard xmlns='vcard-temp'/>").find(VCARD + "vCard")
        self.assertEqual(len(card), len(ET.fromstring(f"<x>{content}</x>")))
        peer.stop()

    def picture_file(self, content, name="picture"):
        path = self.folder / name
        path.write_bytes(content)
        return str(path)

    def set_picture(self, content=FACE):
        self.terminal.command("set-picture", path=self.picture_file(content))
        return (self.terminal.profile / "_avatar").read_bytes()

    def prepare(self, server):
        for one, other in (("ala", "olek"), ("ala", "ewa"), ("ewa", "olek")):
            befriend(self, server, one, other)

    # Cards of contacts

    def test_a_contact_s_card(self):
        self.set_card("olek@localhost",
                      "<FN>Olek \u202e\u2067zły</FN><N><FAMILY>Kowalski</FAMILY></N><ADR><CTRY>PL</CTRY></ADR>"
                      f"<PHOTO><TYPE>image/png</TYPE><BINVAL>{base64.b64encode(FACE).decode()}</BINVAL></PHOTO>")
        card = self.terminal.ask("card", "card", jid="olek@localhost")
        self.assertEqual([(row["kind"], row["label"], row["value"]) for row in card["rows"][:-1]], [
            ("section", "", "Dane osobowe"), ("field", "Nazwa:", "Olek \u202e\u2067zły"),
            ("field", "Nazwisko:", "Kowalski"), ("section", "", "Adres"), ("field", "Kraj:", "PL"),
            ("section", "", "Obrazki")])
        picture = card["rows"][-1]
        self.assertEqual(picture["kind"], "picture")
        with open(picture["value"], "rb") as file:
            self.assertEqual(size(file.read()), (64, 48))

    def test_a_picture_that_is_none_is_left_out_of_the_card(self):
        self.set_card("olek@localhost", "<FN>Olek</FN><PHOTO><TYPE>image/png</TYPE><BINVAL>Tm90IGEgcGljdHVyZQ==</BINVAL>"
                      "</PHOTO>")
        card = self.terminal.ask("card", "card", jid="olek@localhost")
        self.assertEqual([row["value"] for row in card["rows"]], ["Dane osobowe", "Olek"])

    def test_a_contact_without_a_card(self):
        with self.assertRaisesRegex(CommandFailed, "pusty element"):
            self.terminal.command("card", jid="nobody@localhost")

    # The own card

    def test_the_own_card_is_stored_and_comes_back(self):
        self.set_card("ala@localhost", "<TITLE>mgr</TITLE><ROLE>sama</ROLE>")
        self.terminal.command("store-card", fields={key: FIELDS[key] for key in FIELDS if key != "role"})
        card = self.olek.query("ala@localhost", "<vCard xmlns='vcard-temp'/>").find(VCARD + "vCard")
        told = {"nick": "NICKNAME", "name": "N/GIVEN", "surname": "N/FAMILY", "email": "EMAIL/USERID", "www": "URL",
                "title": "TITLE", "role": "ROLE", "birth": "BDAY"}
        self.assertEqual({key: card.findtext("/".join(VCARD + name for name in path.split("/")))
                          for key, path in told.items()}, {**FIELDS, "role": "sama"})
        card = self.own_card()
        self.assertEqual((card["fields"], card["lost"]), ({**FIELDS, "role": "sama"}, []))

    def test_what_would_be_lost_is_told_first(self):
        self.set_card("ala@localhost", "<NICKNAME>Ala</NICKNAME><FN>Ala</FN><N><MIDDLE>Ewa</MIDDLE></N>"
                      "<TEL><NUMBER>123</NUMBER></TEL>")
        with self.assertRaisesRegex(CommandFailed, "TEL"):
            self.terminal.command("store-card", fields={"title": "dr"})
        self.assertEqual(sorted(self.terminal.wait("card-losses")["lost"]), ["FN", "N/MIDDLE", "TEL"])
        card = self.olek.query("ala@localhost", "<vCard xmlns='vcard-temp'/>").find(VCARD + "vCard")
        self.assertEqual((card.findtext(VCARD + "FN"), card.findtext(VCARD + "TITLE")), ("Ala", None))
        self.terminal.command("store-card", fields={"title": "dr"}, lose=True)
        card = self.olek.query("ala@localhost", "<vCard xmlns='vcard-temp'/>").find(VCARD + "vCard")
        self.assertEqual((card.findtext(VCARD + "FN"), card.findtext(VCARD + "TITLE"),
                          card.findtext(VCARD + "NICKNAME")), (None, "dr", "Ala"))

    # The own picture

    def test_the_own_picture_is_kept_small_and_told_in_the_presence(self):
        kept = self.set_picture(png(400, 300))
        self.assertEqual(size(kept), (192, 144))
        self.assertEqual(self.terminal.ask("own-picture", "own-picture")["hash"], sha1(kept))
        self.assertEqual(self.terminal.ask("get", "setting", key="AV/Hash")["value"], sha1(kept))
        self.olek.wait("presence", picture=sha1(kept))
        # In this oldest form the client serves it itself.
        own = self.terminal.wait_for(lambda event: event.get("event") == "presence" and event["jid"] == "ala@localhost",
                                     "the own presence")
        answer = self.olek.query(f"ala@localhost/{own['resource']}", "<query xmlns='jabber:x:avatar'/>")
        self.assertEqual(base64.b64decode(answer.findtext(".//{jabber:x:avatar}data")), kept)

    def test_what_is_no_picture_changes_nothing(self):
        kept = self.set_picture()
        for name, content in (("text", b"not a picture"), ("cut", FACE[:200]), ("large", png(4097, 1)),
                              ("bomb", FACE[:16] + struct.pack(">II", 30000, 30000) + FACE[24:])):
            with self.subTest(name):
                with self.assertRaisesRegex(CommandFailed, "nie jest obraz"):
                    self.terminal.command("set-picture", path=self.picture_file(content, name))
                self.assertEqual((self.terminal.profile / "_avatar").read_bytes(), kept)
        with self.assertRaisesRegex(CommandFailed, "odczyta"):
            self.terminal.command("set-picture", path=str(self.folder / "nowhere"))

    def test_published_and_fetched_and_removed(self):
        kept = self.set_picture()
        self.olek.wait("presence", picture=sha1(kept))
        self.terminal.command("publish-picture")
        seen = self.olek.query("ala@localhost", f"<pubsub xmlns='{PUBSUB}'><items node='{METADATA}'/></pubsub>")
        info = seen.find(f".//{{{METADATA}}}info")
        self.assertEqual(dict(info.attrib), {"id": sha1(kept), "type": "image/png", "bytes": str(len(kept))})
        seen = self.olek.query("ala@localhost", f"<pubsub xmlns='{PUBSUB}'><items node='{DATA}'/></pubsub>")
        self.assertEqual(base64.b64decode(seen.findtext(f".//{{{DATA}}}data")), kept)
        self.olek.forget()
        self.terminal.command("remove-picture")
        self.olek.wait("presence", lambda event: event["from"].startswith("ala@localhost/"), picture=None)
        self.assertFalse((self.terminal.profile / "_avatar").exists())
        self.assertEqual(self.terminal.ask("own-picture", "own-picture")["hash"], "")
        self.assertEqual(self.terminal.ask("get", "setting", key="AV/Hash")["value"], "")
        with self.assertRaisesRegex(CommandFailed, "Nie ma"):
            self.terminal.command("publish-picture")
        self.terminal.command("fetch-picture")
        self.assertEqual((self.terminal.profile / "_avatar").read_bytes(), kept)
        self.assertEqual(self.terminal.ask("own-picture", "own-picture")["hash"], sha1(kept))

    # Pictures of contacts

    def shown(self, content, jid="olek@localhost"):
        told = self.terminal.wait("picture", jid=jid, hash=sha1(content))
        with open(told["path"], "rb") as file:
            self.assertEqual(size(file.read()), size(content))

    def publish(self, node, name, payload, peer=None):
        (peer or self.olek).raw(f"<iq type='set' id='{node[-4:]}'><pubsub xmlns='{PUBSUB}'><publish node='{node}'>"
                                f"<item id='{name}'>{payload}</item></publish></pubsub></iq>")

    def publish_picture(self, content, peer=None):
        self.publish(DATA, sha1(content), f"<data xmlns='{DATA}'>{base64.b64encode(content).decode()}</data>", peer)
        self.publish(METADATA, sha1(content), f"<metadata xmlns='{METADATA}'><info id='{sha1(content)}' type='image/png' "
                     f"bytes='{len(content)}'/></metadata>", peer)

    def test_a_contact_s_picture_by_its_card(self):
        face = png(30, 20, 1)
        self.set_card("olek@localhost", f"<FN>Olek</FN><PHOTO><TYPE>image/png</TYPE><BINVAL>"
                      f"{base64.b64encode(face).decode()}</BINVAL></PHOTO>")
        self.olek.raw(f"<presence><x xmlns='vcard-temp:x:update'><photo>{sha1(face)}</photo></x></presence>")
        self.shown(face)

    def test_a_contact_s_picture_published_on_the_server(self):
        face = png(31, 20, 2)
        self.publish_picture(face)
        self.shown(face)

    def test_a_contact_s_picture_of_the_client_itself(self):
        face = png(32, 20, 3)
        self.olek.answer_with("jabber:x:avatar", lambda request: (
            f"<iq type='result' to='{request['from']}' id='{request['id']}'><query xmlns='jabber:x:avatar'>"
            f"<data mimetype='image/png'>{base64.b64encode(face).decode()}</data></query></iq>"))
        self.olek.raw(f"<presence><x xmlns='jabber:x:avatar'><hash>{sha1(face)}</hash></x></presence>")
        self.shown(face)

    def test_two_contacts_with_one_picture(self):
        face = png(36, 20, 8)
        ewa = self.peer("ewa", self.server, "dom")
        self.publish_picture(face)
        self.shown(face)
        self.publish_picture(face, ewa)
        self.shown(face, "ewa@localhost")
        self.assertEqual(len(list(self.terminal.profile.rglob(f"pictures/{sha1(face)}.png"))), 1)

    def test_two_accounts_with_one_contact(self):
        face = png(37, 20, 9)
        # The account that is there logs in anew when another one is added.
        self.terminal.forget()
        self.account(self.terminal, "ewa", self.server)
        for account in ("ala@localhost", "ewa@localhost"):
            self.terminal.command("status", account=account, status="online")
            self.terminal.wait("presence", account=account, jid="olek@localhost", resource="dom", status="online")
        self.publish_picture(face)
        first = self.terminal.wait("picture", hash=sha1(face))
        self.publish_picture(face)
        second = self.terminal.wait("picture", hash=sha1(face))
        self.assertEqual({first["account"], second["account"]}, {"ala@localhost", "ewa@localhost"})
        self.assertEqual(first["path"], second["path"])

    def test_the_announced_hash_of_another_picture_shows_nothing(self):
        mine, other = png(33, 20, 4), png(34, 20, 5)
        self.publish(DATA, sha1(other), f"<data xmlns='{DATA}'>{base64.b64encode(mine).decode()}</data>")
        self.publish(METADATA, sha1(other), f"<metadata xmlns='{METADATA}'><info id='{sha1(other)}' type='image/png' "
                     f"bytes='{len(mine)}'/></metadata>")
        good = png(35, 20, 6)
        self.publish_picture(good)
        self.shown(good)
        told = {event["hash"] for event in self.terminal.seen("picture")}
        self.assertFalse(told & {sha1(mine), sha1(other)})


def announcing(home, certificate, accounts):
    return Prosody(home, certificate, accounts, modules=(*MODULES, ANNOUNCE_PEP))


class OverProsody(Cards, Case):
    kind = staticmethod(announcing)


class OverEjabberd(Cards, Case):
    kind = Ejabberd


class WithoutPubSub(Case):
    """A server that does not say that it takes published pictures gets none; the picture is told in the presence."""

    def test_it_is_told_and_not_published(self):
        terminal = self.online("ala", self.prosody())
        path = self.folder / "picture"
        path.write_bytes(FACE)
        terminal.command("set-picture", path=str(path))
        with self.assertRaisesRegex(CommandFailed, "brak PubSub"):
            terminal.command("publish-picture")
        number = terminal.send("fetch-picture")
        box = terminal.wait("question", style="warning")
        terminal.command("answer", box=box["box"], button="ok")
        answer = terminal.wait_for(lambda event: event.get("id") == number, "the answer")
        self.assertIn("XEP-060", answer["reason"])

    def test_a_refusal_in_a_box_holds_up_no_line_that_comes_with_it(self):
        terminal = self.online("ala", self.prosody())
        lines = [{"cmd": "fetch-picture"}, {"cmd": "message", "id": "m", "to": "olek@localhost", "body": "przed końcem"}]
        terminal.send_line("\n".join(json.dumps(line) for line in lines).encode())
        terminal.child.process.stdin.close()
        self.assertEqual(terminal.wait_for_end(), 0)
        answer = terminal.wait_for(lambda event: event.get("id") == "m", "the answer")
        self.assertEqual(answer["event"], "ok")
        again = self.messenger("ala")
        kept = again.ask("history", "history", **{"with": "olek@localhost"})["messages"]
        self.assertEqual([message["body"] for message in kept], ["przed końcem"])


if __name__ == "__main__":
    unittest.main()
