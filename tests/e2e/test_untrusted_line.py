# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""What comes before TLS, or before the login is done, may come from anybody: it is neither believed nor answered."""

import base64
import hashlib
import re
import threading
import unittest

from support.case import CLEAR, PASSWORDS, Case
from support.fast_time import fast_time
from support.scripted import BIND, HEADER, PROCEED

GOOD = "<message from='olek@localhost/x' type='chat'><body>dobra wiadomość</body></message>"
FORGED = "<message from='olek@localhost/x' type='chat'><body>podrobiona</body></message>"
PUSH = ("<iq type='set' id='p1'><query xmlns='jabber:iq:roster'>"
        "<item jid='zly@elsewhere.example' subscription='both' name='Szef'/></query></iq>")
BOUND = "<iq type='result' id='b1'><bind xmlns='urn:ietf:params:xml:ns:xmpp-bind'/></iq>"
SUCCESSES = ("<success xmlns='urn:ietf:params:xml:ns:xmpp-sasl'/>", "<success/>")
ALLOWED_OUT = r"\s*(<\?xml[^>]*>|<stream:stream[^>]*>|<starttls[^>]*/>|</stream:stream>|\s)*"


class UntrustedLine(Case):
    def online_at(self, script, settings=None, before=None, **options):
        """A messenger whose account goes online at a server that runs the script; `before` is done first."""
        server = self.scripted(script)
        terminal = self.messenger(**options)
        self.account(terminal, "ala", server, settings=settings)
        if before:
            before(terminal)
        terminal.command("status", status="online")
        return terminal, server

    def nothing_went_out(self, answers, profile="profile"):
        """A server that gives these answers to the first header gets nothing of a session."""
        heard = []

        def script(connection, number):
            if number > 1:
                return
            connection.expect(r"<stream:stream[^>]*>")
            for answer in answers:
                connection.send(answer)
                # Long enough for each step of a login.
                connection.expect("(?!)", 0.7)
            heard.append(connection.received)

        def queue(terminal):
            terminal.command("message", to="olek@localhost", body="tajne")
            terminal.wait("queued", body="tajne")

        terminal, server = self.online_at(script, before=queue, profile=profile)
        server.log.wait("done", number=1)
        self.assertRegex(heard[0], rf"\A{ALLOWED_OUT}\Z")
        self.assertEqual(terminal.seen("sent"), [])
        states = [event["state"] for event in terminal.seen("connection")]
        self.assertFalse({"authorized", "online"} & set(states), states)
        return terminal

    def rejected(self, terminal, what="Zanim połączenie było szyfrowane"):
        terminal.wait("notice", text=lambda text: text.startswith(what))
        return [event for event in terminal.seen("notice") if event["text"].startswith(what)]

    def test_a_success_that_nobody_asked_for(self):
        for number, success in enumerate(SUCCESSES):
            with self.subTest(success):
                terminal = self.nothing_went_out([HEADER + success, HEADER + BIND, BOUND, FORGED], f"profile{number}")
                self.assertEqual(len(self.rejected(terminal)), 1, "told once for the connection")
                self.assertEqual(terminal.seen("message"), [])

    def test_a_bound_resource_that_nobody_asked_for(self):
        terminal = self.nothing_went_out([HEADER, BOUND, "<iq type='result' id='s1'/>"])
        self.assertEqual(len(self.rejected(terminal)), 1)

    def test_mechanisms_without_tls(self):
        def script(connection, _):
            connection.log_in()

        terminal, server = self.online_at(script, settings={"XMPP/Serv/SSL": 0})
        end = terminal.wait("connection", state="offline")
        self.assertIn("nie jest szyfrowane", end["reason"])
        self.assertEqual(terminal.seen("connection", state="authorized"), [])

    def test_a_man_in_the_middle_of_the_second_dial(self):
        def script(connection, number):
            if number == 1:
                if connection.log_in_by_tls(self._localhost, "<item jid='olek@localhost' name='Olek'/>"):
                    connection.expect("(?!)", 0.5)
            elif number == 2:
                connection.expect(r"<stream:stream[^>]*>")
                connection.send(HEADER + PUSH + FORGED)
                connection.expect("(?!)", 1)
            elif connection.log_in_by_tls(self._localhost, "<item jid='olek@localhost' name='Olek'/>"):
                connection.send(GOOD)
                connection.serve_to_end()

        terminal, _ = self.online_at(script)
        terminal.wait("message", body="dobra wiadomość")
        self.assertEqual([event["body"] for event in terminal.seen("message")], ["dobra wiadomość"])
        self.assertEqual(list(terminal.roster()), ["olek@localhost"])
        self.assertEqual(len(self.rejected(terminal)), 1)
        self.assertTrue(all(event["encrypted"] for event in terminal.seen("connection", state="online")))

    def test_clear_text_behind_a_proceed(self):
        proceeds = (PROCEED, "<proceed/>", "<proceed xmlns='urn:ietf:params:xml:ns:xmpp-tl&#115;'/>",
                    "<proceed xmlns='urn:other' to='ala'></proceed>", "<!-- --><proceed/>",
                    # What the plugin takes out of a text is not there when it reads the names.
                    "<proce<?ed/>?>", "<?x <proceed/> ?>")

        def script(connection, number):
            if number <= len(proceeds):
                if connection.offer_tls():
                    connection.send(proceeds[number - 1] + FORGED)
                    connection.start_tls(self._localhost) and connection.log_in()
            elif connection.log_in_by_tls(self._localhost):
                connection.send(GOOD)
                connection.serve_to_end()

        terminal, server = self.online_at(script, environment=fast_time(20))
        for _ in proceeds:
            terminal.wait("connection", state="connecting")
        terminal.wait("message", body="dobra wiadomość")
        self.assertEqual({event["body"] for event in terminal.seen("message")}, {"dobra wiadomość"})

    def test_clear_text_behind_a_proxys_answer(self):
        noticed = threading.Event()

        def script(connection, _):
            if not connection.expect(r"CONNECT [^\r]*\r\n(?:[^\r]+\r\n)*\r\n"):
                return
            connection.send("HTTP/1.1 200 OK\r\n\r\n" + ("" if noticed.is_set() else HEADER + PUSH + FORGED))
            if connection.start_tls(self._localhost) and connection.log_in():
                connection.send(GOOD)
                connection.serve_to_end()

        server = self.scripted(script)
        terminal = self.messenger(environment=fast_time(5))
        self.account(terminal, "ala", server, settings={
            "XMPP/Serv/SSL/Legacy": 1, "XMPP/Proxy/OKU": 0, "XMPP/Proxy/Enable": 1, "XMPP/Proxy/Type": 3,
            "XMPP/Proxy/Host": "127.0.0.1", "XMPP/Proxy/Port": str(server.port)})
        terminal.command("status", status="online")
        # An attempt that took too long by the messenger's clock tells nothing: it is attacked until it has noticed.
        terminal.wait("connection", state="offline", reason=lambda text: "niezaszyfrowane dane" in text)
        noticed.set()
        terminal.wait("message", body="dobra wiadomość")
        self.assertEqual([event["body"] for event in terminal.seen("message")], ["dobra wiadomość"])
        self.assertEqual(terminal.roster(), {})

    def test_a_message_before_the_session_is_bound(self):
        def script(connection, _):
            if not (connection.offer_tls() and connection.send(PROCEED) and connection.start_tls(self._localhost)):
                return
            connection.send(FORGED + PUSH)
            if connection.log_in():
                connection.send(GOOD)
                connection.serve_to_end()

        terminal, server = self.online_at(script)
        terminal.wait("message", body="dobra wiadomość")
        self.assertEqual([event["body"] for event in terminal.seen("message")], ["dobra wiadomość"])
        self.assertEqual(len(self.rejected(terminal, "Zanim logowanie się skończyło")), 1)
        self.assertEqual(len(server.log.seen("accepted")), 1, "the connection is kept")

    def test_a_session_in_clear_says_so(self):
        terminal, _ = self.online_at(lambda connection, _: connection.log_in() and connection.serve_to_end(),
                                     settings=CLEAR)
        self.assertFalse(terminal.wait("connection", state="online")["encrypted"])
        self.assertFalse(terminal.seen("connection", state="authorized")[0]["encrypted"])


class Digest(Case):
    """The server's proof in DIGEST-MD5."""

    MECHANISMS = ("<stream:features><mechanisms xmlns='urn:ietf:params:xml:ns:xmpp-sasl'>"
                  "<mechanism>DIGEST-MD5</mechanism></mechanisms></stream:features>")
    CHALLENGE = 'realm="localhost",nonce="OA6MG9tEQGm2hh",qop="auth",charset=utf-8,algorithm=md5-sess'

    @staticmethod
    def element(name, text):
        content = base64.b64encode(text.encode()).decode()
        return f"<{name} xmlns='urn:ietf:params:xml:ns:xmpp-sasl'>{content}</{name}>"

    @staticmethod
    def proof(response, password):
        """What RFC 2831 has a server send in answer to a response."""
        def md5(text):
            return hashlib.md5(text if isinstance(text, bytes) else text.encode()).hexdigest()

        field = dict(re.findall(r'([a-z-]+)="?([^",]*)', response))
        secret = hashlib.md5(f"{field['username']}:{field['realm']}:{password}".encode()).digest()
        key = md5(secret + f":{field['nonce']}:{field['cnonce']}".encode())
        return md5(f"{key}:{field['nonce']}:{field['nc']}:{field['cnonce']}:{field['qop']}:"
                   + md5(":" + field["digest-uri"]))

    def at_server(self, answer, tls=True):
        """Goes online at a server that answers the response with what `answer` gives for the right proof."""
        def script(connection, number):
            if number > 1:
                return
            if tls and not (connection.offer_tls() and connection.send(PROCEED)
                            and connection.start_tls(self._localhost)):
                return
            connection.expect(r"<stream:stream[^>]*>")
            connection.send(HEADER + self.MECHANISMS)
            connection.expect(r"<auth\b[^>]*>")
            connection.send(self.element("challenge", self.CHALLENGE))
            found = connection.expect(r"<response\b[^>]*>([^<]*)</response>")
            answers = answer(self.proof(base64.b64decode(found.group(1)).decode(), PASSWORDS["ala"]))
            if answers[0].startswith("<challenge"):
                connection.send(answers.pop(0))
                if not connection.expect(r"<response\b[^>]*>"):
                    return
            connection.send(answers[0])
            if connection.finish_login():
                connection.serve_to_end()

        terminal = self.messenger()
        self.account(terminal, "ala", self.scripted(script), settings=None if tls else CLEAR)
        terminal.command("status", status="online")
        return terminal

    def logs_in(self, answer, tls=True):
        self.at_server(answer, tls).wait("connection", state="online")

    def ends(self, answer, tls=True):
        terminal = self.at_server(answer, tls)
        end = terminal.wait("connection", state="offline")
        self.assertIn("nie dowiódł, że zna hasło", end["reason"])
        self.assertEqual(terminal.seen("connection", state="authorized"), [])

    def test_a_proof_in_a_second_challenge(self):
        self.logs_in(lambda proof: [self.element("challenge", f"rspauth={proof}"), ""])

    def test_a_proof_in_a_second_challenge_in_clear(self):
        self.logs_in(lambda proof: [self.element("challenge", f"rspauth={proof}"), ""], tls=False)

    def test_a_wrong_proof(self):
        self.ends(lambda proof: [self.element("challenge", f"rspauth={proof[::-1]}"), ""])

    def test_a_wrong_proof_in_the_success(self):
        self.ends(lambda proof: [self.element("success", f"rspauth={proof[::-1]}")])

    def test_no_proof(self):
        self.logs_in(lambda proof: [""])

    def test_no_proof_in_clear(self):
        self.ends(lambda proof: [""], tls=False)


if __name__ == "__main__":
    unittest.main()
