# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""What was learnt of other clients is known at the next start; and files that are not as they were left."""

import os
import unittest
import xml.etree.ElementTree as ElementTree

from oku.prosody import Prosody
from support.caps import CHAT_STATES, DISCO, OtherClient
from support.case import Case
from support.ejabberd import Ejabberd
from support.friends import befriend

NAME = "XMPPClientDB.xml"
PING = "urn:xmpp:ping"
FILE_TRANSFER = "http://jabber.org/protocol/si/profile/file-transfer"
STATES, PINGS, FILES = "XEP-0085 (Chat States)", "XEP-0199 (Ping)", "XEP-0096 (FileTransfer)"


def entry(client, honest=None):
    """An entry of the file: what the client says under its own hash, or under that of an honest one."""
    return f'<entry hash="{(honest or client).hash}">{client.content()}</entry>'


def many_entries(size):
    """Entries of other clients, so many bytes of them."""
    text = entry(OtherClient("Obcy", *(f"urn:test:{number}" for number in range(12))))
    count = size // len(text)
    return "".join(text.replace('hash="', f'hash="{number}', 1) for number in range(count))


class Base(Case):
    """A contact's clients that answer what they are asked, and a messenger's profile."""

    def setUp(self):
        super().setUp()
        self.server = self.shared(self.kind, self.prepare)
        self.folder.joinpath("ala").mkdir(mode=0o700)
        self.path = self.folder / "ala" / NAME

    def prepare(self, server):
        befriend(self, server, "ala", "olek")
        befriend(self, server, "ewa", "olek")

    def present(self, client, resource="dom", said=None):
        """A client of the contact that has the hash of `client`, and says what `said` is."""
        peer = self.peer("olek", self.server, resource, start=False)
        peer.connect()
        peer.wait("online")
        peer.answer_with(DISCO, (said or client).answer)
        peer.raw(client.presence())
        return peer

    def run_messenger(self, *peers, **options):
        """Logs in and waits until something is known of each of these clients."""
        terminal = self.online("ala", self.server, options=("--verbose",), **options)
        for peer in peers:
            terminal.wait("log", level=5, tag="XMPP", text=f"disco#info result form: {peer.full}")
        return terminal

    def questions(self, terminal, peer):
        """How often the client was asked by a messenger, once all has come that this one has sent to it. A server asks
        too: in its own name, or in the client's."""
        mark = f"koniec {len(peer.seen('message'))}"
        terminal.command("raw", xml=f"<message to='{peer.full}' type='chat'><body>{mark}</body></message>")
        peer.wait("message", body=mark)
        return len(peer.seen("asked", namespace=DISCO,
                             **{"from": lambda jid: jid.startswith(("ala@localhost/", "ewa@localhost/"))}))

    def detected(self, terminal):
        """What the messenger has found out of all clients together."""
        # A command is carried out after what the messenger is just doing.
        terminal.command("roster")
        logged = [event["text"] for event in terminal.seen("log", level=5, tag="XMPP")]
        return {text[len("\tdetected: "):] for text in logged if text.startswith("\tdetected: ")} & {STATES, PINGS, FILES}

    def seen_in_cache(self, terminal, peer):
        return terminal.seen("log", level=5, tag="XMPP", text=f"Caps in cache, creating fake response ({peer.full})")

    def from_file(self, terminal, peer):
        return bool(self.seen_in_cache(terminal, peer))

    def kept(self, terminal):
        """What the messenger writes at its end: hash to the elements below the query."""
        self.assertEqual(terminal.quit(), 0)
        return {one.get("hash"): self.told(one.find(f"{{{DISCO}}}query"))
                for one in ElementTree.fromstring(self.path.read_bytes())}

    @staticmethod
    def told(query):
        return None if query is None else [(child.tag, child.attrib) for child in query]


class TwoRuns(Base):
    """The tests; the classes below say over which server."""

    def test_the_second_run_asks_nobody(self):
        client = OtherClient("Obcy ąę & <ja>", CHAT_STATES, PING)
        olek = self.present(client)
        terminal = self.run_messenger(olek)
        self.assertFalse(self.from_file(terminal, olek))
        self.assertEqual((self.questions(terminal, olek), self.detected(terminal)), (1, {STATES, PINGS}))
        self.assertFalse(self.path.exists() and self.path.read_bytes(), "it is written at the end")
        self.assertEqual(self.kept(terminal), {client.hash: self.told(client.query)})
        content = self.path.read_bytes()
        self.assertTrue(content.startswith(b"<dbRoot><entry hash="), content[:100])
        self.assertEqual(self.path.stat().st_mode & 0o777, 0o600)

        terminal = self.run_messenger(olek)
        self.assertTrue(self.from_file(terminal, olek))
        self.assertEqual((self.questions(terminal, olek), self.detected(terminal)), (1, {STATES, PINGS}))
        self.assertEqual(terminal.quit(), 0)
        self.assertEqual(self.path.read_bytes(), content)

    def test_two_messengers_ask_each_other_in_the_first_run_only(self):
        contents = []
        for run in (1, 2):
            ala, olek = (self.online(user, self.server, options=("--verbose",)) for user in ("ala", "olek"))
            for terminal, other in ((ala, "olek@localhost"), (olek, "ala@localhost")):
                terminal.wait("log", text=lambda text: text.startswith(f"disco#info result form: {other}/"))
                terminal.command("typing", to=other, composing=True)
            for terminal, other in ((ala, "olek@localhost"), (olek, "ala@localhost")):
                terminal.command("message", to=other, body="koniec")
            for terminal, other in ((ala, "olek@localhost"), (olek, "ala@localhost")):
                terminal.wait("message", **{"from": other}, body="koniec")
                asked = terminal.seen("log", text=lambda text: text.startswith(f"Disco#info request form: {other}/"))
                cached = terminal.seen("log", text=lambda text: text.startswith("Caps in cache, creating fake response"))
                self.assertEqual((len(asked), len(cached)), (1, 0) if run == 1 else (0, 1))
                self.assertEqual(self.detected(terminal), {STATES, PINGS, FILES})
            for terminal in (ala, olek):
                self.assertEqual(terminal.quit(), 0)
            contents.append((self.path.read_bytes(), (self.folder / "olek" / NAME).read_bytes()))
        self.assertEqual(contents[0], contents[1])
        self.assertEqual(contents[0][0].count(b"<entry "), 1)

    def test_two_accounts_that_learn_the_same_leave_one_entry(self):
        client = OtherClient("Obcy", PING)
        terminal = self.online("ala", self.server, options=("--verbose",))
        # The plugin finds a further account when it starts, so it is loaded anew and the first one logs in again.
        self.account(terminal, "ewa", self.server)
        terminal.command("status", status="online", account="ewa@localhost")
        for account in ("ala@localhost", "ewa@localhost"):
            terminal.wait("connection", account=account, state="online")
        olek = self.present(client)
        for _ in ("ala", "ewa"):
            terminal.wait("log", text=f"disco#info result form: {olek.full}")
        self.assertIn(self.questions(terminal, olek), (1, 2), "the second asks unless the first has its answer already")
        cached = len(self.seen_in_cache(terminal, olek))

        terminal.command("status", status="offline", account="ewa@localhost")
        terminal.wait("connection", account="ewa@localhost", state="offline")
        asked = self.questions(terminal, olek)
        terminal.command("status", status="online", account="ewa@localhost")
        terminal.wait("log", text=f"disco#info result form: {olek.full}")
        self.assertEqual(len(self.seen_in_cache(terminal, olek)), cached + 1, "what one has learnt, the other knows")
        self.assertEqual(self.questions(terminal, olek), asked)
        self.assertEqual(self.kept(terminal), {client.hash: self.told(client.query)})

    def test_the_first_answer_for_a_hash_is_kept(self):
        honest, said = OtherClient("Uczciwy", CHAT_STATES), OtherClient("Kłamca", PING)
        liar = self.present(honest, "dom", said)
        terminal = self.run_messenger(liar)
        other = self.present(honest, "praca")
        terminal.wait("log", text=f"disco#info result form: {other.full}")
        self.assertEqual((self.questions(terminal, other), self.detected(terminal)), (0, {PINGS}))
        self.assertEqual(self.kept(terminal), {honest.hash: self.told(said.query)})


class TwoRunsOverProsody(TwoRuns):
    kind = Prosody


class TwoRunsOverEjabberd(TwoRuns):
    kind = Ejabberd


class Files(Base):
    """Files that somebody has changed."""

    kind = Prosody

    def setUp(self):
        super().setUp()
        self.client = OtherClient("Obcy", CHAT_STATES, PING)
        self.other = OtherClient("Drugi", FILE_TRANSFER)

    def put(self, content):
        self.path.write_bytes(content.encode() if isinstance(content, str) else content)

    def learns_anew(self, **options):
        """The file is worth nothing: the client is asked, and is what it says. Gives the messenger."""
        olek = self.present(self.client)
        terminal = self.run_messenger(olek, **options)
        self.assertFalse(self.from_file(terminal, olek))
        self.assertEqual((self.questions(terminal, olek), self.detected(terminal)), (1, {STATES, PINGS}))
        olek.stop()
        return terminal

    def test_a_wrong_entry_is_believed_and_nobody_is_asked(self):
        poisoned = f"<dbRoot>{entry(self.other, self.client)}{entry(self.client)}</dbRoot>"
        self.put(poisoned)
        olek = self.present(self.client)
        terminal = self.run_messenger(olek)
        self.assertTrue(self.from_file(terminal, olek))
        self.assertEqual((self.questions(terminal, olek), self.detected(terminal)), (0, {FILES}))
        olek.message("ala@localhost", "jestem")
        terminal.wait("message", body="jestem")
        terminal.command("typing", to="olek@localhost", composing=True)
        self.questions(terminal, olek)
        self.assertEqual([one["states"] for one in olek.seen("message") if one["states"]], [])
        self.assertEqual(terminal.quit(), 0)
        self.assertEqual(self.path.read_text(), poisoned)

    def test_entries_with_anything_in_them_do_no_harm(self):
        strange = ("<x/>tekst<entry/><entry hash=''><query/></entry><entry hash='a'>"
                   "<query xmlns='http://jabber.org/protocol/disco#info'><feature/><feature var=''/>"
                   f"<feature var='{CHAT_STATES} '/><identity type='pep'/><query/></query></entry>"
                   f"<entry hash='{self.client.hash} '/><ENTRY hash='{self.client.hash}'/>")
        self.put(f"<!-- z ręki -->\n<dbRoot hash='{self.client.hash}'>{strange}{entry(self.other)}</dbRoot><next/>")
        kept = self.kept(self.learns_anew())
        self.assertEqual(kept[self.client.hash], self.told(self.client.query))
        self.assertEqual(kept[self.other.hash], self.told(self.other.query))

    def test_an_entry_without_a_query_tells_nothing_and_asks_nothing(self):
        self.put(f'<dbRoot><entry hash="{self.client.hash}"/></dbRoot>')
        olek = self.present(self.client)
        terminal = self.online("ala", self.server, options=("--verbose",))
        terminal.wait("log", level=5, tag="XMPP", text=f"Caps in cache, creating fake response ({olek.full})")
        self.assertEqual((self.questions(terminal, olek), self.detected(terminal)), (0, set()))
        self.assertEqual(self.kept(terminal), {self.client.hash: None})

    def test_a_foreign_root_keeps_its_name_and_what_else_it_holds(self):
        self.put(f'<foreign mark="1">{entry(self.other)}<thing/></foreign>')
        known, new = self.present(self.other, "dom"), self.present(self.client, "praca")
        terminal = self.run_messenger(known, new)
        self.assertEqual((self.questions(terminal, known), self.questions(terminal, new)), (0, 1))
        self.assertEqual(self.detected(terminal), {STATES, PINGS, FILES})
        self.assertEqual(terminal.quit(), 0)
        root = ElementTree.fromstring(self.path.read_bytes())
        self.assertEqual((root.tag, root.attrib, [(one.tag, one.get("hash")) for one in root]),
                         ("foreign", {"mark": "1"}, [("entry", self.other.hash), ("thing", None),
                                                     ("entry", self.client.hash)]))

    def test_a_truncated_file_is_worth_nothing_and_is_whole_again_afterwards(self):
        whole = f"<dbRoot>{entry(self.client)}{entry(OtherClient('Ćma', PING))}</dbRoot>".encode()
        for cut in (whole.index(b"feature var"), whole.index("Ćma".encode()) + 1, len(whole) - 1):
            with self.subTest(cut):
                self.put(whole[:cut])
                self.assertEqual(self.kept(self.learns_anew()), {self.client.hash: self.told(self.client.query)})

    def test_bytes_that_are_no_xml(self):
        for number, content in enumerate((os.urandom(5000), b"", b"\0" * 5000, entry(self.client).encode("utf-16"),
                                          b"<dbRoot>" + b"<entry hash='\xff\xfe'/>" + b"</dbRoot>")):
            with self.subTest(number):
                self.put(content)
                self.assertIn(self.client.hash, self.kept(self.learns_anew()))

    def test_a_file_that_cannot_be_read_is_left_as_it_is(self):
        content = f"<dbRoot>{entry(self.client)}</dbRoot>"
        self.put(content)
        self.path.chmod(0)
        self.assertEqual(self.learns_anew(powerless=True).quit(), 0)
        self.assertEqual(self.path.stat().st_mode & 0o777, 0)
        self.path.chmod(0o600)
        self.assertEqual(self.path.read_text(), content)

    def test_something_else_of_that_name(self):
        for make in (os.mkdir, os.mkfifo, lambda path: os.symlink("nowhere/at/all", path)):
            with self.subTest(make):
                make(self.path)
                self.assertEqual(self.learns_anew().quit(), 0)
                self.assertFalse(self.path.is_file())
                os.rmdir(self.path) if self.path.is_dir() else self.path.unlink()

    def test_ten_million_bytes(self):
        content = f"<dbRoot>{many_entries(10_000_000)}{entry(self.client)}</dbRoot>"
        self.put(content)
        olek, new = self.present(self.client), self.present(self.other, "praca")
        terminal = self.run_messenger(olek, new)
        self.assertEqual((self.questions(terminal, olek), self.questions(terminal, new)), (0, 1))
        self.assertEqual(self.detected(terminal), {STATES, PINGS, FILES})
        self.assertEqual(terminal.quit(), 0)
        after = self.path.read_text()
        self.assertTrue(after.startswith(content.removesuffix("</dbRoot>")))
        self.assertEqual(after.count("<entry "), content.count("<entry ") + 1)

    def test_ten_million_bytes_of_depth(self):
        self.put(b"<a>" * 3_400_000)
        self.assertEqual(self.kept(self.learns_anew()), {self.client.hash: self.told(self.client.query)})

    def test_a_kill_loses_only_what_this_run_has_learnt(self):
        content = f"<dbRoot>{entry(self.other)}</dbRoot>"
        self.put(content)
        self.learns_anew().stop(kill=True)
        self.assertEqual(self.path.read_text(), content)
        kept = self.kept(self.learns_anew())
        self.assertEqual(list(kept), [self.other.hash, self.client.hash])


del Base, TwoRuns  # they are no tests by themselves

if __name__ == "__main__":
    unittest.main()
