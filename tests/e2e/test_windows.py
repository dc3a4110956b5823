# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""The plugin's windows as a script works with them: the service browser, and forms of ad-hoc commands."""

import unittest

from oku.prosody import MODULES, Prosody
from support.case import Case
from support.ejabberd import Ejabberd

COMMANDS = "http://jabber.org/protocol/commands"
ADD_USER = "http://jabber.org/protocol/admin#add-user"


def field(row, label):
    """The value of a row's field."""
    return next((one["value"] for one in row["fields"] if one["label"] == label), "")


class Browser:
    """The browser's window, by what its controls are called."""

    def __init__(self, terminal):
        self.terminal = terminal
        menu = terminal.ask("menu", "menu")
        item, = [one["item"] for one in menu["items"] if "rzegląd" in one["caption"]]
        terminal.command("menu-item", item=item)
        event = terminal.wait("window", kind="window")
        self.window = event["window"]
        named = {control["name"] or control["text"]: control["control"] for control in event["controls"]}
        self.jid, self.node, self.go = named["JID:"], named["Gałąź:"], named["Przejdź"]
        self.list, = [control["control"] for control in event["controls"] if control["kind"] == "list"]

    def command(self, cmd, **fields):
        self.terminal.command(cmd, window=self.window, **fields)

    def browse(self, jid, node=""):
        self.terminal.forget()
        self.command("window-fill", control=self.jid, text=jid)
        self.command("window-fill", control=self.node, text=node)
        self.command("window-press", control=self.go)

    def row(self, where):
        """The row that comes to fit, whether it does at once or when more of it is known."""
        return self.terminal.wait("window-row", where, window=self.window, control=self.list)

    def execute(self, node):
        """Runs the command of the row with this node by its menu."""
        row = self.row(lambda row: field(row, "Gałąź:") == node and field(row, "Typ:") == "command-node")
        self.command("window-row-menu", control=self.list, row=row["row"])
        menu = self.terminal.wait("window-menu", window=self.window)
        item, = [one for one in menu["items"] if one["text"].startswith("Wykonaj")]
        assert item["enabled"], menu
        self.command("window-menu-item", item=item["item"])


class Windows:
    """The tests; the classes below say over which server."""

    def setUp(self):
        super().setUp()
        self.server = self.new_server()
        self.terminal = self.online("ala", self.server)
        self.browser = Browser(self.terminal)

    def answer_notice(self, text):
        box = self.terminal.wait("question", style="information")
        self.assertIn(text, box["text"])
        self.terminal.command("answer", box=box["box"], button="ok")

    def test_browses_the_server_and_a_level_below(self):
        self.browser.browse("localhost")
        row = self.browser.row(lambda row: self.service in row["text"])
        self.browser.command("window-activate", control=self.browser.list, row=row["row"])
        self.terminal.wait("window-no-rows", window=self.browser.window)
        self.terminal.wait("window-control", window=self.browser.window, control=self.browser.jid, text=self.service)

    def test_runs_a_command_that_asks_for_nothing(self):
        self.browser.browse("localhost", COMMANDS)
        self.browser.execute(self.plain_command)
        self.answer_notice("Polecenie zostało wykonane.")

    def test_fills_in_the_form_of_an_administrator(self):
        self.browser.browse("localhost", COMMANDS)
        self.browser.execute(ADD_USER)
        form = self.terminal.wait("window", kind="modal")
        page = self.terminal.wait("window", kind="child", parent=form["window"])
        address, = [one for one in page["controls"] if one["kind"] == "edit"]
        passwords = [one for one in page["controls"] if one["kind"] == "password"]
        self.assertEqual(len(passwords), 2, page)
        self.terminal.command("window-fill", window=page["window"], control=address["control"], text="nowa@localhost")
        for one in passwords:
            self.terminal.command("window-fill", window=page["window"], control=one["control"], text="tajne <&> ąę")
        self.terminal.wait("window-changed", window=self.browser.window, input=False)
        send, = [one for one in form["controls"] if one.get("default")]
        self.terminal.command("window-press", window=form["window"], control=send["control"])
        self.answer_notice("Operacja wykonana pomyślnie.")
        self.terminal.wait("window-closed", window=form["window"])
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

    def options(self):
        """The page, and by their names the controls of what the plugin has put into it."""
        self.terminal.command("options")
        page = self.terminal.wait("window", kind="page")
        inside = self.terminal.wait("window", kind="child", parent=page["window"])
        return page, inside, {control["name"] or control["text"]: control for control in inside["controls"]}

    def setting(self, key):
        return self.terminal.ask("get", "setting", key=key)["value"]

    def test_options_are_saved_when_the_page_is_confirmed(self):
        page, inside, controls = self.options()
        window = inside["window"]
        user = controls["Użytkownik (format: uzytkownik@serwer/zasób):"]["text"]
        self.assertTrue(user.startswith("ala@localhost/"), user)
        passwords = [one["text"] for one in inside["controls"] if one["kind"] == "password"]
        self.assertEqual(passwords, ["***", ""], "a password is told to nobody")
        compression = controls["Włącz obsługę kompresji"]
        wanted = not compression["checked"]
        self.terminal.command("window-check", window=window, control=compression["control"], checked=wanted)
        priority = controls["Priorytet połączenia:"]["control"]
        self.terminal.command("window-fill", window=window, control=priority, text="17")
        self.terminal.command("page-ok", window=page["window"])
        self.terminal.wait("window-closed", window=page["window"])
        self.assertEqual((self.setting("XMPP/Priority"), self.setting("XMPP/Serv/Compress")), (17, int(wanted)))

    def test_what_is_entered_in_a_page_that_is_closed_is_not_saved(self):
        page, inside, controls = self.options()
        priority = controls["Priorytet połączenia:"]["control"]
        self.terminal.command("window-fill", window=inside["window"], control=priority, text="17")
        self.terminal.command("window-close", window=page["window"])
        self.terminal.wait("window-closed", window=page["window"])
        self.assertNotEqual(self.setting("XMPP/Priority"), 17)
        self.assertEqual(self.options()[2]["Priorytet połączenia:"]["text"], "0")


if __name__ == "__main__":
    unittest.main()
