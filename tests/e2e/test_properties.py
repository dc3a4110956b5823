# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""A contact's properties over real servers: what is changed in its page, read back from the server's roster and its
privacy lists, and seen to act."""

import functools
import unittest

from oku.prosody import MODULES, Prosody
from support.case import Case
from support.ejabberd import Ejabberd
from support.friends import befriend
from support.windows import Page, notice

AUTHORIZE, ASK = "Autoryzuj", "Poproś o autoryzację"
HIDE, IGNORE = "Ukryj moją obecność przed tym użytkownikiem", "Ignoruj zmiany stanu tego użytkownika"
BLOCK_MESSAGES, BLOCK_REQUESTS = "Zablokuj wiadomości", "Zablokuj przychodzące pakiety \"iq\""
# By box: what the entry of the list denies.
DENIED = {HIDE: "presence-out", IGNORE: "presence-in", BLOCK_MESSAGES: "message", BLOCK_REQUESTS: "iq"}
ROSTER, VERSION = "{jabber:iq:roster}", "<query xmlns='jabber:iq:version'/>"
OF_ALA = {"from": lambda jid: jid.startswith("ala@localhost/")}
OLEK = "olek@localhost"


class Base:
    def setUp(self):
        super().setUp()
        self.server = self.shared(self.kind, self.acquaint)
        self.olek = self.peer("olek", self.server, "dom")
        self.terminal = self.online("ala", self.server)
        self.terminal.command("console", on=True)
        self.terminal.wait("presence", jid=OLEK, resource="dom", status="online")
        self.marks = 0

    def acquaint(self, server):
        befriend(self, server, "ala", "olek")

    def page(self, jid=None, **fields):
        return Page(self.terminal, "properties", **({"jid": jid} if jid else {}), **fields)

    def on_the_server(self, read):
        """What another client of the account reads; it leaves again, and nobody sees it."""
        with self.part():
            reader = self.peer("ala", self.server, "czyta", start=False)
            reader.connect()
            reader.wait("online")
            return read(reader)

    def roster(self):
        """By address: name, group and subscription."""
        items = self.on_the_server(lambda reader: reader.query(None, "<query xmlns='jabber:iq:roster'/>"))
        return {item.get("jid"): (item.get("name"), item.findtext(f"{ROSTER}group"), item.get("subscription"))
                for item in items.iter(f"{ROSTER}item")}

    def seen_by_olek(self):
        """The types of the presences of the account that the contact has seen, once all has come that was sent to it."""
        mark = f"znak {len(self.olek.seen('asked'))}"
        self.terminal.command("raw", xml=f"<iq to='{OLEK}/dom' type='get' id='{mark}'>{VERSION}</iq>")
        self.olek.wait("asked", id=mark)
        return [presence["type"] for presence in self.olek.seen("presence", **OF_ALA)]


class Properties(Base):
    """The tests; the classes below say over which server."""

    def acquaint(self, server):
        """The first login makes the list of an account, which acts from the next status or login on."""
        super().acquaint(server)
        with self.part():
            terminal = self.messenger("first")
            terminal.command("console", on=True)
            self.account(terminal, "ala", server)
            terminal.command("status", status="online")
            terminal.wait("xml", direction="out", data=lambda data: "okf-privacy" in data and 'action="allow"' in data)
            terminal.wait("presence", jid="ala@localhost")

    def test_adds_a_contact_who_is_authorised_and_asked_again(self):
        ewa = self.peer("ewa", self.server)
        page = self.page()
        page.fill("JID:", "ewa@localhost")
        page.fill("Nazwa:", "Ewa & <spółka>")
        page.fill("Grupa:", "Znajomi \"nowi\"")
        page.ok()
        ewa.wait("presence", type="subscribe", **{"from": "ala@localhost"})
        self.assertEqual(self.roster()["ewa@localhost"], ("Ewa & <spółka>", "Znajomi \"nowi\"", "none"))
        ewa.presence(to="ala@localhost", kind="subscribed")
        ewa.presence(to="ala@localhost", kind="subscribe")
        self.terminal.wait("authorization", jid="ewa@localhost")
        self.terminal.wait("contact", jid="ewa@localhost", subscription="to")
        page = self.page("ewa@localhost")
        page.press(AUTHORIZE)
        ewa.wait("presence", type="subscribed", **{"from": "ala@localhost"})
        ewa.wait("presence", type=None, **OF_ALA)
        self.assertEqual(self.roster()["ewa@localhost"][2], "both")
        ewa.presence(to="ala@localhost", kind="unsubscribed")
        self.terminal.wait("contact", jid="ewa@localhost", subscription="from")
        page.press(ASK)
        ewa.wait("presence", type="subscribe", **{"from": "ala@localhost"})


    def test_edits_name_and_group(self):
        page = self.page(OLEK)
        self.assertEqual([page.text(name) for name in ("JID:", "Nazwa:", "Grupa:")], [OLEK, "Olek", "Znajomi"])
        jid, = [one for one in page.controls if one["name"] == "JID:"]
        self.assertTrue(jid["readOnly"])
        page.fill("Nazwa:", "Aleksander")
        page.fill("Grupa:", "Rodzina")
        page.apply()
        self.terminal.wait("contact", jid=OLEK, name="Aleksander", group="Rodzina")
        self.assertEqual(self.roster()[OLEK], ("Aleksander", "Rodzina", "both"))
        page.fill("Nazwa:", "Olek")
        page.fill("Grupa:", "Znajomi")
        self.terminal.forget()  # the contact was told under this name when it came
        page.ok()
        self.terminal.wait("contact", jid=OLEK, name="Olek", group="Znajomi")
        self.assertEqual(self.roster()[OLEK], ("Olek", "Znajomi", "both"))

    def test_refuses_what_cannot_be_done(self):
        page = self.page()
        page.fill("JID:", "e@")
        self.terminal.command("page-ok", window=page.frame)
        self.assertEqual(notice(self.terminal, "Nie wpisałeś JID", "warning")["title"], "Brak TID")
        page.fill("JID:", "nowy@localhost")
        self.terminal.command("status", status="offline")
        self.terminal.wait("connection", state="offline")
        self.terminal.command("page-ok", window=page.frame)
        self.assertEqual(notice(self.terminal, "Nie jesteś połączony", "warning")["title"], "Brak połączenia")
        self.assertEqual(self.terminal.seen("window-closed"), [], "the page stays")
        self.assertNotIn("nowy@localhost", self.roster())

    def test_tells_the_programs_of_a_contact(self):
        other = self.peer("olek", self.server, "praca")
        self.terminal.wait("presence", jid=OLEK, resource="praca")
        self.olek.software("Kula", "1.2 & 3", "żółty <system>")
        other.software("Sześcian", "7", "inny")
        page = self.page(OLEK, page="XMPP/Prop/Info")
        for line in ("Program:\tKula", "Wersja:  \t1.2 & 3", "System:\tżółty <system>", "Program:\tSześcian",
                     "\tdom\n", "\tpraca\n"):
            self.terminal.wait_for(lambda event: line in event.get("text", "") and event.get("window") == page.window, line)


    def list(self):
        """What the server's list denies, by address, as the other client reads it."""
        stanza = self.on_the_server(lambda reader: reader.query(
            None, "<query xmlns='jabber:iq:privacy'><list name='okf-privacy'/></query>"))
        return {item.get("value"): sorted(child.tag.split("}")[1] for child in item)
                for item in stanza.iter("{jabber:iq:privacy}item") if item.get("action") == "deny"}

    def mark(self, *boxes):
        """Checks these boxes in the contact's page, no others, and confirms it; the server has done it then."""
        page = self.page(OLEK)
        for box in DENIED:
            page.check(box, box in boxes)
        page.ok()
        self.marks += 1
        self.terminal.command("raw", xml=f"<iq to='localhost' type='get' id='znak-{self.marks}'>{VERSION}</iq>")
        self.terminal.wait("xml", direction="in", data=lambda data: f"znak-{self.marks}" in data)

    def test_each_box_is_an_entry_and_comes_back(self):
        for boxes in ((HIDE,), (IGNORE,), (BLOCK_MESSAGES,), (BLOCK_REQUESTS,), tuple(DENIED)):
            self.mark(*boxes)
            self.assertEqual(self.list(), {OLEK: sorted(DENIED[box] for box in boxes)})
        self.assertEqual(self.terminal.quit(), 0)
        self.terminal = self.messenger("ala")
        self.terminal.command("console", on=True)
        self.terminal.command("status", status="online")
        self.terminal.wait("xml", direction="in", data=lambda data: "okf-privacy" in data and "presence-out" in data)
        self.terminal.wait("presence", jid="ala@localhost")
        page = self.page(OLEK)
        self.assertEqual({one["text"] for one in page.controls if one.get("checked")}, set(DENIED))
        self.terminal.command("window-close", window=page.frame)
        self.mark()
        self.assertEqual(self.list(), {})

    def test_hides_the_account(self):
        before = len(self.seen_by_olek())
        self.mark(HIDE)
        self.assertEqual(self.seen_by_olek()[before:], ["unavailable"])
        self.mark(HIDE)
        self.terminal.command("status", status="away", description="nie dla Olka")
        self.terminal.wait("status", status="away")
        self.assertEqual(self.seen_by_olek()[before:], ["unavailable"], "nothing is told after that")
        sent = self.terminal.seen("xml", direction="out", data=lambda data: 'type="unavailable"' in data)
        self.assertEqual(len(sent), 1, sent)
        self.mark()
        self.olek.wait("presence", type=None, show="away", status="nie dla Olka")
        self.assertEqual(self.seen_by_olek()[before:], ["unavailable", None])

    def test_ignores_the_contact(self):
        self.mark(IGNORE)
        self.assertEqual(self.list(), {OLEK: ["presence-in"]})
        self.olek.presence("dnd", "nie dla Ali")
        self.olek.message("ala@localhost", "widzisz?")
        self.terminal.wait("message", body="widzisz?")
        self.assertEqual(self.terminal.seen("presence", jid=OLEK, description="nie dla Ali"), [])
        self.mark()
        self.assertEqual(self.list(), {})
        self.olek.presence("dnd", "znowu dla Ali")
        self.terminal.wait("presence", jid=OLEK, description="znowu dla Ali")

    def test_blocks_messages(self):
        self.mark(BLOCK_MESSAGES)
        self.assertEqual(self.list(), {OLEK: ["message"]})
        self.olek.message("ala@localhost", "nie dojdzie")
        self.olek.presence("away", "po wiadomości")
        self.terminal.wait("presence", jid=OLEK, description="po wiadomości")
        self.assertEqual(self.terminal.seen("message"), [])
        self.mark()
        self.assertEqual(self.list(), {})
        self.olek.message("ala@localhost", "dojdzie")
        self.terminal.wait("message", body="dojdzie")

    def test_blocks_requests(self):
        own = self.terminal.seen("presence", jid="ala@localhost")[0]["resource"]
        for blocked in (True, False):
            self.mark(*([BLOCK_REQUESTS] if blocked else []))
            self.assertEqual(self.list(), {OLEK: ["iq"]} if blocked else {})
            answer = self.olek.query(f"ala@localhost/{own}", VERSION)
            self.assertEqual(answer.get("type"), "error" if blocked else "result")


class WithoutPrivacyLists(Base):
    """The boxes are not for use."""

    def test_the_boxes_are_disabled(self):
        page = self.page(OLEK)
        self.assertEqual({box: one["enabled"] for box in DENIED for one in page.controls if one["text"] == box},
                         dict.fromkeys(DENIED, False))


class OverProsody(Properties, Case):
    kind = functools.partial(Prosody, modules=(*MODULES, "privacy_lists"))


class OverEjabberd(Properties, Case):
    kind = functools.partial(Ejabberd, modules=("mod_privacy",))


class WithoutPrivacyListsOverProsody(WithoutPrivacyLists, Case):
    kind = Prosody


class WithoutPrivacyListsOverEjabberd(WithoutPrivacyLists, Case):
    kind = Ejabberd


if __name__ == "__main__":
    unittest.main()
