# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Ways in which honest servers differ. None of them may keep a person out, or be taken for an attack."""

import base64
import unittest

from support.case import Case
from support.scripted import BIND, HEADER, MECHANISMS, PROCEED, STARTTLS, SUCCESS

GOOD = "<message from='olek@localhost/x' type='chat'><body>dobra wiadomość</body></message>"
NO_SESSION = "<stream:features><bind xmlns='urn:ietf:params:xml:ns:xmpp-bind'/></stream:features>"
MANAGED = ("<stream:features><bind xmlns='urn:ietf:params:xml:ns:xmpp-bind'><required/></bind>\n"
           "<sm xmlns='urn:xmpp:sm:2'/><sm xmlns='urn:xmpp:sm:3'><optional/></sm>"
           "<ver xmlns='urn:xmpp:features:rosterver'/><csi xmlns='urn:xmpp:csi:0'/>"
           "<sub xmlns='urn:xmpp:features:pre-approval'/><c xmlns='http://jabber.org/protocol/caps' hash='sha-1' "
           "node='http://server.example/' ver='x&amp;y'/></stream:features>")
DOUBLE = ('<?xml version="1.0" encoding="UTF-8"?>\n<stream:stream xmlns:stream="http://etherx.jabber.org/streams" '
          'xmlns="jabber:client" version="1.0" id="a&gt;b" from="localhost" xml:lang="pl" to="ala@localhost">')
ADDITIONAL = "<success xmlns='urn:ietf:params:xml:ns:xmpp-sasl'>" + base64.b64encode(b"more=1").decode() + "</success>"
ANSWERS = (("xmpp-bind", "<bind xmlns='urn:ietf:params:xml:ns:xmpp-bind'><jid>ala@localhost/x</jid></bind>"),
           ("xmpp-session", ""), ("disco#info", "<query xmlns='http://jabber.org/protocol/disco#info'/>"),
           ("jabber:iq:roster", "<query xmlns='jabber:iq:roster'><item jid='olek@localhost'/></query>"))
DECLARED = HEADER.replace("'1.0'?>", "'1.0' encoding='utf-8' standalone=\"yes\"?>")


class HonestServers(Case):
    def bind(self, connection, before=lambda send: None, header=HEADER, starttls=STARTTLS, proceed=PROCEED,
             success=SUCCESS, features=BIND, pieces=False):
        """Goes up to the features with the resource, and gives what sends; None when the other side left."""
        def send(text):
            data = text.encode()
            size = 1 if pieces else len(data)
            for at in range(0, len(data), size):
                connection.send(data[at:at + size])

        before(send)
        connection.expect(r"<stream:stream[^>]*>")
        send(header + starttls)
        connection.expect(r"<starttls[^>]*>")
        connection.send(proceed)
        if not connection.start_tls(self._localhost):
            return None
        connection.expect(r"<stream:stream[^>]*>")
        send(header + MECHANISMS)
        connection.expect(r"<auth\b[^>]*>[^<]*</auth>")
        send(success)
        connection.expect(r"<stream:stream[^>]*>")
        send(header + features)
        return send

    @staticmethod
    def finish(connection, send, sender):
        """Answers the rest of a login as from that address; the server answers for itself where it was asked."""
        for pattern, content in ANSWERS:
            found = connection.expect(r"<iq\b[^>]*\bid=\"([^\"]*)\"[^>]*>(?:(?!</iq>).)*" + pattern)
            address = "localhost" if sender and pattern == "disco#info" else sender
            address = f" from='{address}'" if address else ""
            send(f"<iq type='result'{address} id='{found.group(1)}'>{content}</iq>")
        connection.expect(r"<presence\b")
        send(GOOD)

    def go_online(self, script, profile="profile"):
        server = self.scripted(script)
        terminal = self.messenger(profile)
        self.account(terminal, "ala", server)
        terminal.command("message", to="olek@localhost", body="czeka")
        terminal.command("status", status="online")
        return terminal, server

    def let_in(self, profile="profile", sender="", **ways):
        """The person comes in at the first dial, gets what was sent, and hears of nothing that was rejected."""
        def script(connection, _):
            send = self.bind(connection, **ways)
            if send:
                self.finish(connection, send, sender)
                connection.serve_to_end()

        terminal, server = self.go_online(script, profile)
        self.assertTrue(terminal.wait("connection", state="online")["encrypted"])
        terminal.wait("message", body="dobra wiadomość")
        terminal.wait("sent", body="czeka")
        self.assertEqual([event["text"] for event in terminal.seen("notice")], [])
        self.assertEqual(len(server.log.seen("accepted")), 1)
        self.assertEqual(list(terminal.roster()), ["olek@localhost"])

    def test_blanks_that_keep_the_line_open(self):
        self.let_in(before=lambda send: send(" \n"), starttls=" " + STARTTLS + "\r\n")

    def test_each_byte_in_a_piece_of_its_own(self):
        self.let_in(pieces=True, header=HEADER.replace("id=", "note='zażółć &amp; &#x105;' id="))

    def test_both_kinds_of_quotes_and_declarations(self):
        self.let_in(header=DOUBLE)

    def test_a_declaration_with_all_that_it_may_hold(self):
        self.let_in(header=DECLARED)

    def test_tls_that_is_required(self):
        required = STARTTLS.replace("tls'/>", "tls'><required/></starttls>")
        self.let_in(starttls=required, proceed=PROCEED.replace("'", '"'))

    def test_mechanisms_beside_starttls(self):
        self.let_in(starttls=STARTTLS.replace("</stream:features>", "") + MECHANISMS.replace("<stream:features>", ""))

    def test_a_server_that_knows_no_sessions_but_answers(self):
        self.let_in(features=NO_SESSION)

    def test_a_server_with_many_features(self):
        self.let_in(features=MANAGED)

    def test_more_data_beside_the_success(self):
        self.let_in(success=ADDITIONAL)

    def test_answers_with_an_address(self):
        for number, sender in enumerate(("localhost", "ala@localhost", "ala@localhost/x", "Ala@LOCALHOST")):
            with self.subTest(sender):
                self.let_in(profile=f"profile{number}", sender=sender)

    def test_a_server_that_sends_elsewhere_before_tls(self):
        elsewhere = ("<stream:error><see-other-host xmlns='urn:ietf:params:xml:ns:xmpp-streams'>other.example"
                     "</see-other-host></stream:error></stream:stream>")

        def script(connection, _):
            connection.expect(r"<stream:stream[^>]*>")
            connection.send(HEADER + elsewhere)
            connection.wait_for_end()

        terminal, _ = self.go_online(script)
        self.assertIn("see-other-host", terminal.wait("connection", state="offline")["reason"])
        self.assertEqual([event for event in terminal.seen("notice") if "ufać" in event["text"]], [])

    def test_a_session_that_is_refused(self):
        def script(connection, _):
            self.bind(connection)
            connection.answer_iq("xmpp-bind", "<bind xmlns='urn:ietf:params:xml:ns:xmpp-bind'/>")
            found = connection.expect(r"<iq\b[^>]*\bid=\"([^\"]*)\"[^>]*>(?:(?!</iq>).)*xmpp-session")
            connection.send(f"<iq type='error' id='{found.group(1)}'><error type='cancel'><service-unavailable "
                            "xmlns='urn:ietf:params:xml:ns:xmpp-stanzas'/></error></iq>" + GOOD)
            connection.serve_to_end()

        terminal, _ = self.go_online(script)
        self.assertIn("service-unavailable", terminal.wait("connection", state="offline")["reason"])
        self.assertEqual(terminal.seen("message"), [])
        self.assertEqual(terminal.seen("sent"), [], "what waited still waits")


if __name__ == "__main__":
    unittest.main()
