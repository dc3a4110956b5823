# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""The plugin's windows as a script works with them: the service browser, forms of ad-hoc commands, and pages."""

import unittest

from oku.prosody import MODULES, Prosody
from support.case import Case
from support.ejabberd import Ejabberd
from support.friends import befriend
from support.windows import COMMANDS, Browser, Form, Page, called, notice

USER = "Użytkownik (format: uzytkownik@serwer/zasób):"
PRIORITY = "Priorytet połączenia:"
ADD_USER = "http://jabber.org/protocol/admin#add-user"


class Windows:
    """The tests; the classes below say over which server."""

    def setUp(self):
        super().setUp()
        self.server = self.new_server()
        self.terminal = self.online("ala", self.server)
        self.browser = Browser(self.terminal)

    def test_browses_the_server_and_a_level_below(self):
        self.browser.browse("localhost")
        row = self.browser.row(lambda row: self.service in row["text"])
        self.terminal.forget()
        self.browser.command("window-activate", control=self.browser.list, row=row["row"])
        self.terminal.wait("window-no-rows", window=self.browser.window)
        self.terminal.wait("window-control", window=self.browser.window, control=self.browser.jid, text=self.service)

    def test_runs_a_command_that_asks_for_nothing(self):
        self.browser.browse("localhost", COMMANDS)
        self.browser.execute(self.plain_command)
        notice(self.terminal, "Polecenie zostało wykonane.")

    def test_fills_in_the_form_of_an_administrator(self):
        self.browser.browse("localhost", COMMANDS)
        self.browser.execute(ADD_USER)
        form = Form(self.terminal)
        address, = form.fields("edit")
        passwords = form.fields("password")
        self.assertEqual(len(passwords), 2, form.controls)
        form.fill(address, "nowa@localhost")
        for one in passwords:
            form.fill(one, "tajne <&> ąę")
        self.terminal.wait("window-changed", window=self.browser.window, input=False)
        form.send()
        notice(self.terminal, "Operacja wykonana pomyślnie.")
        form.wait_gone()
        newcomer = self.messenger("nowa")
        self.account(newcomer, "nowa", self.server, password="tajne <&> ąę")
        newcomer.command("status", status="online")
        newcomer.wait("connection", state="online")

    def test_goes_when_it_is_closed_and_opens_again(self):
        self.browser.command("window-close")
        self.terminal.wait("window-closed", window=self.browser.window)
        again = Browser(self.terminal)
        self.assertNotEqual(again.window, self.browser.window)


class OverProsody(Windows, Case):
    service = "rooms.localhost"
    plain_command = "uptime"

    def new_server(self):
        return self.shared(lambda *arguments: Prosody(
            *arguments, modules=(*MODULES, "adhoc", "uptime", "admin_adhoc"),
            more='admins = { "ala@localhost" }\nComponent "rooms.localhost" "muc"\n'), lambda server: None)


class OverEjabberd(Windows, Case):
    service = "pubsub.localhost"
    plain_command = "ping"

    def new_server(self):
        return self.shared(lambda *arguments: Ejabberd(*arguments, modules=("mod_adhoc", "mod_configure", "mod_last"),
                                                       admin="ala"), lambda server: None)


class Pages(Case):
    def setUp(self):
        super().setUp()
        self.terminal = self.messenger()
        self.terminal.command("account", jid="ala@localhost", password="sekret", settings={"OKU/PasswordInFile": 1})

    def setting(self, key):
        return self.terminal.ask("get", "setting", key=key)["value"]

    def test_options_are_saved_when_the_page_is_confirmed(self):
        page = Page(self.terminal)
        self.assertTrue(page.text(USER).startswith("ala@localhost/"), page.text(USER))
        passwords = [one["text"] for one in page.controls if one["kind"] == "password"]
        self.assertEqual(passwords, ["***", ""], "a password is told to nobody")
        compression, = [one for one in page.controls if one["text"] == "Włącz obsługę kompresji"]
        wanted = not compression["checked"]
        page.check(compression["control"], wanted)
        page.fill(PRIORITY, "17")
        page.ok()
        self.assertEqual((self.setting("XMPP/Priority"), self.setting("XMPP/Serv/Compress")), (17, int(wanted)))

    def test_what_is_entered_in_a_page_that_is_closed_is_not_saved(self):
        page = Page(self.terminal)
        page.fill(PRIORITY, "17")
        self.terminal.command("window-close", window=page.frame)
        self.terminal.wait("window-closed", window=page.frame)
        self.assertNotEqual(self.setting("XMPP/Priority"), 17)
        self.assertEqual(Page(self.terminal).text(PRIORITY), "0")


class Properties(Case):
    def setUp(self):
        super().setUp()
        self.server = self.prosody()
        self.other = self.peer("ala", self.server, "other")
        self.other.roster_set("olek@localhost", "Olek", ["Praca"])
        self.terminal = self.online("ala", self.server)

    def test_a_contact_gets_another_name_and_another_group(self):
        page = Page(self.terminal, "properties", jid="olek@localhost")
        self.assertEqual([page.text(name) for name in ("JID:", "Nazwa:", "Grupa:")], ["olek@localhost", "Olek", "Praca"])
        controls = {called(one): one for one in page.controls}
        self.assertTrue(controls["JID:"]["readOnly"])
        self.assertIn("Praca", controls["Grupa:"]["items"])
        page.fill("Nazwa:", "Oleś <&> ąę")
        page.fill("Grupa:", "Dom & „my”")
        page.apply()
        self.other.wait("roster", items=lambda items: items.get("olek@localhost", {}).get("name") == "Oleś <&> ąę"
                        and items["olek@localhost"]["groups"] == ["Dom & „my”"])
        self.terminal.wait("contact", jid="olek@localhost", name="Oleś <&> ąę", group="Dom & „my”")

    def test_the_plugin_says_what_it_has_for_a_contact(self):
        self.terminal.command("pages", jid="olek@localhost")
        pages = self.terminal.wait("pages", jid="olek@localhost")["properties"]
        self.assertEqual([one["caption"] for one in pages], ["Właściwości", "Informacje XMPP"])
        self.terminal.command("contact-menu", jid="olek@localhost")
        menu = self.terminal.wait("contact-menu", jid="olek@localhost")["items"]
        self.assertEqual([one["item"].removeprefix("OKU/Contact/") for one in menu],
                         ["Archive", "Message", "Chat", "Delete", "Edit", "PubDir"])

    def test_the_contacts_program_is_told_by_its_page_of_information(self):
        befriend(self, self.server, "ala", "olek")
        self.peer("olek", self.server, "praca").software("Program <&>", "1.2", "System")
        self.terminal.wait("presence", jid="olek@localhost", resource="praca")
        page = Page(self.terminal, "properties", jid="olek@localhost", page="XMPP/Prop/Info")
        self.assertIn("\tpraca\n", page.text("Zalogowane zasoby:"))
        answer = "JID:\tolek@localhost/praca\n  Program:\tProgram <&>\n  Wersja:  \t1.2\n  System:\tSystem\n"
        self.terminal.wait("window-control", lambda event: answer in event["text"], window=page.window)


if __name__ == "__main__":
    unittest.main()
