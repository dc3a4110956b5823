# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""The wizard of the options page over real servers: new accounts, and new passwords. A login is the proof each time."""

import functools
import unittest

from oku.prosody import Prosody
from support.case import Case, PASSWORDS
from support.ejabberd import Ejabberd
from support.windows import Page, Window, notice

USER = "Użytkownik (format: uzytkownik@serwer/zasób):"
PASSWORD = "nowe hasło ąę"


class Wizard(Window):
    """The wizard, opened from the options page by the button of that name."""

    def __init__(self, page, button):
        page.press(button)
        super().__init__(page.terminal, page.terminal.wait("window", kind="modal"))

    def enter(self, password, jid=None):
        """Enters a password, and an address where there is one, and confirms it."""
        if jid:
            self.fill("JID:", jid)
        self.fill("Hasło:", password)
        self.press("OK")

    def leave(self):
        self.press("Anuluj")
        self.wait_closed()


class Accounts:
    """The tests; the classes below say over which server. Each works with users of its own."""

    def setUp(self):
        super().setUp()
        self.server = self.shared(self.kind, lambda server: None)

    def wizard(self, server=None, profile="profile"):
        """A messenger whose account is to become another one, its options page, and the wizard of a new account."""
        terminal = self.messenger(profile, options=("--verbose",))
        terminal.command("console", on=True)
        self.account(terminal, "nikt", server or self.server, password="nic")
        page = Page(terminal)
        return terminal, page, Wizard(page, "Nowy...")

    def registered(self, wizard, page, jid):
        """What the user sees when the account is there: he is told, the wizard goes, and the page has the account."""
        notice(page.terminal, "Konto zostało zarejestrowane.")
        wizard.wait_closed()
        page.terminal.wait("window-control", window=page.window, control=page.control(USER), text=f"{jid}/oku")

    def goes_online(self, user, password):
        """Logs in with another messenger."""
        terminal = self.messenger(user)
        self.account(terminal, user, self.server, password=password)
        terminal.command("status", status="online")
        return terminal

    def logs_in(self, user, password):
        self.goes_online(user, password).wait("connection", state="online")

    def is_refused(self, user, password):
        terminal = self.goes_online(user, password)
        terminal.wait("notice", text=lambda text: f"Autoryzacja na koncie {user}@localhost nie powiodła się" in text)
        terminal.wait("connection", state="offline")

    def test_makes_an_account_that_logs_in_from_the_page(self):
        terminal, page, wizard = self.wizard()
        wizard.enter(PASSWORD, "nowa@localhost")
        self.registered(wizard, page, "nowa@localhost")
        # The servers take no second header on that connection. The account is there all the same.
        terminal.wait("xml", direction="in", data=lambda data: "not-well-formed" in data)
        # Else the next attempt, as whom the settings still tell, may be under way when the page is confirmed.
        terminal.command("status", status="offline")
        page.ok()
        terminal.command("status", status="online")
        online = terminal.wait("connection", state="online")
        self.assertEqual(online["account"], "nowa@localhost")
        self.assertTrue(online["encrypted"])

    def test_makes_an_account_for_whoever_logs_in_elsewhere(self):
        terminal, page, wizard = self.wizard()
        wizard.enter(PASSWORD, "wszedzie@localhost")
        self.registered(wizard, page, "wszedzie@localhost")
        self.logs_in("wszedzie", PASSWORD)
        self.assertEqual(terminal.ask("get", "setting", key="XMPP/User")["value"].split("/")[0], "nikt@localhost",
                         "the page was not confirmed")

    def test_tells_of_a_name_that_is_taken_and_goes_on_with_another(self):
        terminal, page, wizard = self.wizard()
        wizard.enter(PASSWORD, "olek@localhost")
        notice(terminal, "Serwer zwrócił błąd.", "error")
        for name in ("JID:", "Hasło:", "Potw. hasła:", "OK"):
            terminal.wait("window-control", window=wizard.window, control=wizard.control(name), enabled=True)
        wizard.enter(PASSWORD, "druga@localhost")
        self.registered(wizard, page, "druga@localhost")
        self.logs_in("druga", PASSWORD)
        with self.part():
            self.logs_in("olek", PASSWORDS["olek"])

    def test_changes_the_password_for_the_next_login(self):
        self.server_with("zmienna", "stare hasło")
        terminal = self.messenger()
        self.account(terminal, "zmienna", self.server, password="stare hasło")
        page = Page(terminal)
        wizard = Wizard(page, "Zmień...")
        wizard.enter(PASSWORD)
        notice(terminal, "Musisz być połączony z siecią aby zmienić hasło.")
        terminal.command("status", status="online")
        terminal.wait("connection", state="online")
        wizard.enter(PASSWORD)
        notice(terminal, "Hasło zostało zmienione.")
        wizard.wait_closed()
        page.ok()
        terminal.forget()
        terminal.command("status", status="offline")
        terminal.wait("connection", state="offline")
        terminal.command("status", status="online")
        terminal.wait("connection", state="online")
        self.assertEqual(terminal.seen("notice"), [])
        self.is_refused("zmienna", "stare hasło")

    def server_with(self, user, password):
        """Lets the wizard make an account, from a messenger that goes then."""
        with self.part():
            _, page, wizard = self.wizard(profile="maker")
            wizard.enter(password, f"{user}@localhost")
            self.registered(wizard, page, f"{user}@localhost")

    def test_makes_an_account_in_the_terminal(self):
        with self.part():
            self.account(self.messenger(), "nikt", self.server, password="nic")
        terminal = self.plain()
        terminal.type("/options")
        terminal.type(terminal.row("<Nowy...>"))
        jid, password, confirm = (terminal.row(text) for text in ("JID:", "Hasło:", "<OK>"))
        terminal.type(f"{jid} terminalowa@localhost", password)
        terminal.next("Hasło:")
        terminal.type(PASSWORD, confirm)
        terminal.next("Konto zostało zarejestrowane.")
        terminal.next(USER, "terminalowa@localhost/oku")
        terminal.type("/offline", "ok")
        terminal.next("zapisano")
        terminal.type("/online")
        terminal.next("gotowy, lista kontaktów pobrana")
        self.assertEqual(terminal.quit(), 0)
        self.logs_in("terminalowa", PASSWORD)

    def test_makes_none_where_the_account_is_connected(self):
        terminal = self.online("ala", self.server)
        wizard = Wizard(Page(terminal), "Nowy...")
        wizard.enter(PASSWORD, "trzecia@localhost")
        notice(terminal, "Przy rejestracji musisz się rozłączyć z siecią XMPP.")
        wizard.leave()
        self.is_refused("trzecia", PASSWORD)

    def test_makes_none_on_a_server_that_allows_none(self):
        server = self.closed(self)
        terminal, page, wizard = self.wizard(server)
        wizard.enter(PASSWORD, "czwarta@localhost")
        notice(terminal, "Ten serwer nie obsługuje rejestracji inline.", "error")
        terminal.wait("connection", state="offline")
        wizard.leave()
        page.ok()
        self.assertEqual(terminal.ask("get", "setting", key="XMPP/User")["value"].split("/")[0], "nikt@localhost")
        self.server = server
        self.is_refused("czwarta", PASSWORD)


class OverProsody(Accounts, Case):
    kind = functools.partial(Prosody, registration=True)
    closed = staticmethod(Case.prosody)


class OverEjabberd(Accounts, Case):
    kind = functools.partial(Ejabberd, modules=("mod_register",))
    closed = staticmethod(Case.ejabberd)


if __name__ == "__main__":
    unittest.main()
