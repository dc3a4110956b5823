# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Registration with services through the plugin's browser: what the services have recorded is the proof."""

import functools
import unittest

from oku.prosody import Prosody
from support.case import Case
from support.ejabberd import Ejabberd
from support.gateway import Gateway
from support.windows import Browser, Form, field, notice

GATEWAY, PLAIN, LEAVING = "gateway.localhost", "plain.localhost", "leaving.localhost"
ALA = "ala@localhost"


class Registration:
    """The tests; the classes below say over which server."""

    def setUp(self):
        super().setUp()
        self.server = self.shared(functools.partial(self.kind, components=(GATEWAY, PLAIN, LEAVING)), self.services)
        for service in self.service.values():
            service.members.clear()
        self.terminal = self.online("ala", self.server)
        self.browser = Browser(self.terminal)

    @classmethod
    def services(cls, server):
        """They stay as long as the server: one that comes back at once may get nothing of what is sent to it."""
        for address in (GATEWAY, PLAIN, LEAVING):
            cls.service[address] = Gateway(address, server, plain=address == PLAIN)
            cls.addClassCleanup(cls.service[address].stop)
            cls.service[address].start()

    def row(self, address):
        """The service as the list of the server shows it, once it has told what it can do."""
        self.browser.browse("localhost")
        return self.browser.row(lambda row: address in row["text"] and "Rejestracja" in field(row, "Możliwości:"))

    def form(self, address):
        """The form of the service."""
        self.browser.choose_from_menu(self.row(address), "Rejestracja")
        return Form(self.terminal)

    def done(self, form):
        notice(self.terminal, "Operacja wykonana pomyślnie.")
        form.wait_gone()

    def test_is_found_with_what_it_is(self):
        row = self.row(GATEWAY)
        self.assertEqual(row["text"], f"Brama ({GATEWAY})")
        self.assertEqual((field(row, "Kategoria:"), field(row, "Typ:")), ("gateway", "gadu-gadu"))

    def test_by_a_form_corrected_after_a_refusal_and_left_again(self):
        form = self.form(GATEWAY)
        self.terminal.wait("window-changed", window=form.dialog.window, heading=GATEWAY, description="Wypełnij <wszystko>")
        form.fill("Numer", "dwadzieścia")
        form.fill("Hasło", "tajne <&> \"ąę\"")
        form.fill("Opiekun", "olek@localhost/dom & ogród")
        form.fill("Opis", "pierwszy\ndrugi <b>")
        form.check("Zgoda", False)
        form.check("Reklamy", True)
        form.choose("Sieć", 1)
        self.terminal.forget()
        form.send()
        notice(self.terminal, "To nie jest numer.", "warning")
        self.service[GATEWAY].wait("refused", by=ALA)
        self.assertEqual(self.service[GATEWAY].members, {})
        form.wait_usable()
        form.fill("Numer", "4213")
        form.send()
        self.done(form)
        self.service[GATEWAY].wait("registered", by=ALA)
        self.assertEqual(self.service[GATEWAY].members[ALA], {
            "FORM_TYPE": "jabber:iq:register", "sesja": "a&b", "numer": "4213", "haslo": "tajne <&> \"ąę\"",
            "opiekun": "olek@localhost/dom & ogród", "opis": "pierwszy\ndrugi <b>", "zgoda": "false",
            "reklamy": "true", "siec": "druga"})
        self.unregisters(GATEWAY)

    def test_by_a_plain_list_corrected_after_a_refusal_and_left_again(self):
        form = self.form(PLAIN)
        form.fill("Użytkownik:", "ala")
        form.fill("E-Mail:", "ala@example.org")
        form.fill("Hasło:", "<&>")
        form.send()
        notice(self.terminal, "To nie jest numer.", "warning")
        form.fill("Użytkownik:", "17")
        form.send()
        self.done(form)
        self.assertEqual(self.service[PLAIN].members, {ALA: {"username": "17", "email": "ala@example.org", "password": "<&>"}})
        again = self.form(PLAIN)
        self.assertEqual(again.text("Użytkownik:"), "17", "the service knows who asks")
        self.terminal.command("window-close", window=again.dialog.window)
        again.wait_gone()
        self.unregisters(PLAIN)

    def unregisters(self, address):
        self.browser.choose_from_menu(self.row(address), "Wyrejestruj")
        self.service[address].wait("removed", by=ALA)
        self.assertEqual(self.service[address].members, {})
        self.assertEqual(self.terminal.seen("question", style="error"), [])

    def test_leaving_what_one_is_not_in_is_refused(self):
        self.browser.choose_from_menu(self.row(GATEWAY), "Wyrejestruj")
        notice(self.terminal, "Nikt taki tu nie jest zapisany.", "warning")
        self.service[GATEWAY].wait("refused", by=ALA)

    def test_a_service_that_goes_while_its_form_is_open(self):
        form = self.form(LEAVING)
        form.fill("Numer", "1")
        self.service[LEAVING].stop()
        form.send()
        notice(self.terminal, "Serwer zwrócił błąd", "warning")
        self.terminal.command("window-close", window=form.dialog.window)
        form.wait_gone()
        self.assertEqual(self.service[LEAVING].members, {})


class OverProsody(Registration, Case):
    kind, service = Prosody, {}


class OverEjabberd(Registration, Case):
    kind, service = Ejabberd, {}


if __name__ == "__main__":
    unittest.main()
