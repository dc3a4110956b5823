# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Tunes, moods and places in both directions, news of mail, and the question of a web site."""

import concurrent.futures
import os
import select
import unittest

from oku.events import TIMEOUT
from oku.prosody import ANNOUNCE_PEP, MODULES, Prosody
from oku.terminal import CommandFailed
from support.case import CLEAR, Case
from support.ejabberd import Ejabberd
from support.friends import befriend
from support.personal import Personal

OLEK = {"from": "olek@localhost"}
TUNE = {"artist": "Czesław Ż.", "title": "Sen & jawa <1>", "source": "Album", "track": "3", "uri": "https://a.example/?b&c",
        "length": "185"}
NO_TUNE = dict.fromkeys(TUNE, "")


class Events:
    """The tests; the classes below say over which server."""

    def setUp(self):
        super().setUp()
        self.server = self.shared(self.kind, lambda server: befriend(self, server, "ala", "olek"))
        self.terminal = self.online("ala", self.server)
        self.olek = self.peer("olek", self.server, "dom")
        self.personal = Personal(self.olek)
        self.terminal.wait("presence", jid="olek@localhost", resource="dom")
        self.personal.until_heard(self.terminal.log, self.olek.log)

    def contact(self, **fields):
        return self.terminal.wait("contact", jid="olek@localhost", **fields)

    def test_what_contacts_publish(self):
        self.personal.mood("in_love", "bo <tak> & już")
        self.terminal.wait("mood", **OLEK, mood="in_love", text="bo <tak> & już")
        self.assertEqual(self.contact(mood=lambda mood: "in_love" in mood)["mood"],
                         "Nastrój: in_love\nOpis: bo <tak> & już")
        shown = self.terminal.wait("popup", kind="mood", text=lambda text: "in_love" in text)
        self.assertIs(shown["opens"], False)

        self.personal.tune(**TUNE)
        self.terminal.wait("tune", **OLEK, **TUNE)
        self.assertIn("Sen & jawa <1>", self.contact(tune=lambda tune: bool(tune))["tune"])
        self.terminal.wait("popup", kind="tune", title="Olek słucha:")

        self.personal.location(lat="52.23", lon="21.01", locality="Warszawa")
        self.terminal.wait("location", **OLEK, fields={"lat": "52.23", "lon": "21.01", "locality": "Warszawa"})

    def test_what_contacts_take_back(self):
        self.personal.tune(**TUNE)
        self.contact(tune=lambda tune: bool(tune))
        self.terminal.forget()
        self.personal.tune()
        self.terminal.wait("tune", **OLEK, **NO_TUNE)
        self.contact(tune="")
        self.terminal.forget()
        self.personal.withdraw("xep_0107")
        self.terminal.wait("mood", **OLEK, mood="", text="")
        self.contact(mood="")
        self.personal.location(lat="1")
        self.personal.withdraw("xep_0080")
        self.terminal.wait("location", **OLEK, fields={})

    def test_what_the_person_publishes_and_takes_back(self):
        told = {"from": "ala@localhost"}
        self.terminal.command("mood", mood="happy", text="<bo> tak & \"już\"")
        self.olek.wait("mood", **told, fields={"happy": "", "text": "<bo> tak & \"już\""})
        self.terminal.wait("mood", **told, mood="happy")
        self.terminal.command("mood")
        self.olek.wait("mood", **told, fields={})

        self.terminal.command("tune", **{**TUNE, "uri": ""})
        self.olek.wait("tune", **told, fields={key: value for key, value in TUNE.items() if key != "uri"})
        self.terminal.command("tune")
        self.olek.wait("tune", **told, fields={})

        self.terminal.command("location", fields={"lat": "52.23", "text": "dom & ogród"})
        self.olek.wait("location", **told, fields={"lat": "52.23", "text": "dom & ogród"})
        self.terminal.command("location")
        self.olek.wait("location", **told, fields={})

    def test_what_a_web_site_asks_is_answered(self):
        """The site speaks as a service, or as the person's own: another client of the account stands for it."""
        own = self.terminal.seen("presence", jid="ala@localhost")[0]["resource"]
        site = self.peer("ala", self.server, "strona")
        question = ("<confirm xmlns='http://jabber.org/protocol/http-auth' id='a7374jnj' method='GET' "
                    "url='https://files.example.org:9345/missive.html'/>")
        for button, kind, condition in (("yes", "result", 0), ("no", "error", 1)):
            with concurrent.futures.ThreadPoolExecutor() as asking:
                answer = asking.submit(site.query, f"ala@localhost/{own}", question)
                box = self.terminal.wait("question", style="question")
                self.assertIn("https://files.example.org:9345/missive.html", box["text"])
                self.assertIs(box["holds"], True)
                self.assertEqual(box["seconds"], 60)
                self.terminal.command("answer", box=box["box"], button=button)
                stanza = answer.result()
            self.assertEqual(stanza.get("type"), kind)
            refused = stanza.findall(".//{urn:ietf:params:xml:xmpp-stanzas}not-authorized")
            self.assertEqual(len(refused), condition)


class OverProsody(Events, Case):
    @staticmethod
    def kind(*arguments):
        return Prosody(*arguments, modules=(*MODULES, ANNOUNCE_PEP))


class OverEjabberd(Events, Case):
    kind = Ejabberd


class WithoutPersonalEvents(Case):
    def test_the_person_learns_that_the_server_takes_none(self):
        terminal = self.online("ala", self.prosody())
        for command in ("mood", "tune", "location"):
            with self.assertRaises(CommandFailed) as refused:
                terminal.command(command)
            self.assertTrue(str(refused.exception))


class Mail(Case):
    """On a server that pushes news of mail, which the real ones here do not."""

    def setUp(self):
        super().setUp()
        programs = self.folder / "programs"
        programs.mkdir()
        self.opened = self.folder / "opened"
        os.mkfifo(self.opened)
        browser = programs / "xdg-open"
        browser.write_text(f"#!/bin/sh\nprintf '%s|%s\\n' \"$#\" \"$1\" >'{self.opened}'\n")
        browser.chmod(0o755)
        self.environment = {"PATH": f"{programs}:{os.environ['PATH']}"}

    def first_line_opened(self):
        reader = os.open(self.opened, os.O_RDONLY | os.O_NONBLOCK)
        try:
            self.assertTrue(select.select([reader], [], [], TIMEOUT)[0], "nothing was opened")
            return os.read(reader, 4096).decode().strip()
        finally:
            os.close(reader)

    def test_it_is_told_and_a_click_opens_its_page(self):
        def script(connection, _):
            connection.log_in()
            connection.send("<iq type='set' id='push'><new-mail xmlns='google:mail:notify'/></iq>")
            connection.answer_iq("google:mail:notify", "<mailbox xmlns='google:mail:notify'><mail-thread-info tid='1'>"
                                 "<senders><sender name='Olek' address='olek@localhost'/></senders>"
                                 "<subject>Obiad</subject></mail-thread-info></mailbox>")
            connection.serve_to_end()

        terminal = self.messenger(environment=self.environment)
        self.account(terminal, "ala", self.scripted(script), settings=CLEAR)
        terminal.command("status", status="online")
        told = terminal.wait("popup", kind="mail")
        self.assertIs(told["opens"], True)
        self.assertEqual(told["text"], "Ilość nieprzeczytanych: 1\n1 - Olek: \"Obiad\"")
        terminal.command("open-popup", popup=told["popup"])
        count, address = self.first_line_opened().split("|")
        self.assertEqual(count, "1")
        self.assertRegex(address, "^https?://")
        terminal.wait("popup-gone", popup=told["popup"])
        with self.assertRaises(CommandFailed):
            terminal.command("open-popup", popup=told["popup"])


if __name__ == "__main__":
    unittest.main()
