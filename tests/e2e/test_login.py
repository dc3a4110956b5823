# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Logging in: the path, what is refused, and that no password goes where it should not."""

import datetime
import unittest

from oku.certificates import Authority
from oku.events import Unexpected
from support.case import CLEAR, Case

PATH = ["connecting", "connected", "encrypted", "authorized", "online"]


class Login(Case):
    def logs_in(self, server, mechanism, settings=None):
        terminal = self.messenger(options=("--verbose",))
        self.account(terminal, "ala", server, settings=settings)
        terminal.command("status", status="online")
        terminal.wait("connection", state="online")
        terminal.wait("status", status="online")
        self.assertEqual([event["state"] for event in terminal.seen("connection")], PATH)
        self.assertTrue(terminal.seen("log", text=f"Authorization ({mechanism})"))
        terminal.command("status", status="offline")
        terminal.wait("connection", state="offline")

    def test_plain_under_starttls_over_prosody(self):
        self.logs_in(self.prosody(), "PLAIN")

    def test_plain_under_tls_from_the_first_byte(self):
        server = self.prosody()
        self.logs_in(server, "PLAIN",
                     {"XMPP/Serv/Host": f"127.0.0.1:{server.tls_port}", "XMPP/Serv/SSL/Legacy": 1})

    def test_digest_md5_under_starttls_over_ejabberd(self):
        self.logs_in(self.ejabberd(), "DIGEST-MD5")

    def wrong_password(self, server):
        terminal = self.messenger()
        self.account(terminal, "ala", server, password="nie to")
        terminal.command("status", status="online")
        terminal.wait("notice", text=lambda text: "Autoryzacja na koncie ala@localhost nie powiodła się" in text)
        terminal.wait("connection", state="offline")
        self.assertEqual(terminal.seen("connection", state="authorized"), [])
        self.account(terminal, "ala", server)
        terminal.command("status", status="online")
        terminal.wait("connection", state="online")
        self.assertEqual(len(terminal.seen("connection", state="connecting")), 2, "nobody asked for another try")

    def test_a_wrong_password_is_told_and_the_right_one_works_afterwards_over_prosody(self):
        self.wrong_password(self.prosody())

    def test_a_wrong_password_is_told_and_the_right_one_works_afterwards_over_ejabberd(self):
        self.wrong_password(self.ejabberd())

    def test_a_server_that_is_not_there_is_told(self):
        server = self.prosody()
        server.stop(kill=True)
        terminal = self.messenger()
        self.account(terminal, "ala", server)
        terminal.command("status", status="online")
        terminal.wait("connection", state="offline", reason=lambda text: text)
        self.assertEqual(terminal.seen("connection", state="connected"), [])

    def test_a_stream_that_never_encrypts_gets_no_password(self):
        def script(connection, _):
            connection.expect(r"<stream:stream[^>]*>")
            connection.send("<?xml version='1.0'?><stream:stream xmlns='jabber:client' id='x' version='1.0' "
                            "xmlns:stream='http://etherx.jabber.org/streams'><stream:features><mechanisms "
                            "xmlns='urn:ietf:params:xml:ns:xmpp-sasl'><mechanism>PLAIN</mechanism></mechanisms>"
                            "</stream:features>")
            server.log.add({"event": "auth", "text": getattr(connection.expect(r"<auth.*?(</auth>|/>)", 5), "string", "")})

        server = self.scripted(script)
        terminal = self.messenger()
        self.account(terminal, "ala", server, password="tajne")
        terminal.command("status", status="online")
        terminal.wait("notice")
        self.assertNotIn("AGFsYQB0YWpuZQ", server.log.wait("auth")["text"], "base64 of user and password")

    def in_clear(self, server):
        """A messenger that is online on a scripted server."""
        terminal = self.messenger()
        self.account(terminal, "ala", server, settings=CLEAR)
        terminal.command("status", status="online")
        terminal.wait("connection", state="online")
        return terminal

    def test_an_account_that_is_added_beside_it_signs_off_and_ends_its_stream(self):
        def script(connection, number):
            connection.log_in()
            closing = connection.expect(r"<presence type=\"unavailable\">.*</presence></stream:stream>")
            server.log.add({"event": "closed", "number": number, "well": closing is not None})
            connection.send("</stream:stream>")

        server = self.scripted(script)
        terminal = self.in_clear(server)
        self.account(terminal, "olek", server, settings=CLEAR)
        self.assertTrue(server.log.wait("closed", number=1)["well"])
        server.log.wait("accepted", number=2)
        terminal.wait("connection", state="online")

    def test_a_first_login_tells_its_contacts_as_one_list(self):
        items = "".join(f"<item jid='k{number}@localhost' name='Kontakt {number}'/>" for number in range(500))

        def script(connection, _):
            connection.log_in(items)
            connection.serve_to_end()

        terminal = self.in_clear(self.scripted(script))
        told = terminal.wait("roster", contacts=lambda contacts: contacts)["contacts"]
        self.assertEqual(len(told), 500)
        self.assertEqual(terminal.seen("contact"), [])


class BadCertificate(Case):
    def asked(self, server, authority, settings=None):
        """Tries to log in and gives the messenger and the question about the certificate."""
        terminal = self.messenger(authority=authority)
        self.account(terminal, "ala", server, settings=settings)
        terminal.command("status", status="online")
        question = terminal.wait("question", style="question", text=lambda text: text.count(":") >= 31)
        self.assertEqual(terminal.seen("connection", state="encrypted"), [])
        self.assertNotIn("Authenticated as", (server.home / "prosody.log").read_text())
        return terminal, question

    def test_an_answer_that_comes_when_the_server_has_gone_counts_for_the_next_connection(self):
        server, stranger = self.prosody(), self.unknown_authority()
        terminal, question = self.asked(server, stranger)
        server.stop(kill=True)
        terminal.command("answer", box=question["box"], button="yes")
        terminal.wait("connection", state="offline")
        server.start()
        terminal.wait("connection", state="online")
        self.assertEqual(terminal.seen("question"), [question], "one question is enough")

    def refused(self, server, authority, reason, settings=None):
        terminal, question = self.asked(server, authority, settings)
        self.assertIn(reason, question["text"])
        terminal.forget()
        terminal.command("answer", box=question["box"], button="no")
        terminal.wait("connection", state="offline", reason=lambda text: text)
        with self.assertRaises(Unexpected, msg="it dials again"):
            terminal.wait("connection", state="connecting", timeout=5)
        self.assertEqual(len(terminal.seen("notice")), 1, "one line tells it")
        self.assertEqual(terminal.seen("connection", state="encrypted"), [])
        self.assertNotIn("Authenticated as", (server.home / "prosody.log").read_text())

    def unknown_authority(self):
        return Authority(self.folder / "stranger", "somebody else").certificate

    def test_an_unknown_authority_is_told_and_refused(self):
        self.refused(self.prosody(), self.unknown_authority(), "protoLink private authority")

    def test_a_bad_certificate_under_tls_from_the_first_byte_is_refused(self):
        server = self.prosody()
        self.refused(server, self.unknown_authority(), "protoLink private authority",
                     {"XMPP/Serv/Host": f"127.0.0.1:{server.tls_port}", "XMPP/Serv/SSL/Legacy": 1})

    def test_a_certificate_for_another_domain_is_told_and_refused(self):
        server = self.prosody(certificate=self.authority.issue("elsewhere.example"))
        self.refused(server, self.authority.certificate, "elsewhere.example")

    def test_an_expired_certificate_is_told_and_refused(self):
        authority = Authority(self.folder / "authority")
        server = self.prosody(certificate=authority.issue("localhost", *(
            datetime.datetime(year, 1, 1, tzinfo=datetime.timezone.utc) for year in (2020, 2021))))
        self.refused(server, authority.certificate, "2021-01-01")

    def test_a_certificate_that_the_person_accepts_is_not_asked_about_again(self):
        server, stranger = self.prosody(), self.unknown_authority()
        terminal, question = self.asked(server, stranger)
        terminal.command("answer", box=question["box"], button="yes")
        terminal.wait("connection", state="online")
        self.assertEqual(terminal.quit(), 0)
        again = self.messenger(authority=stranger)
        again.command("status", status="online")
        again.wait("connection", state="online")
        self.assertEqual(again.seen("question"), [])


if __name__ == "__main__":
    unittest.main()
