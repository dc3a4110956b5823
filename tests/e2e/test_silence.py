# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Servers that fall silent or dawdle. Time passes fast for the messenger here, the server lives in ordinary time."""

import time
import unittest

from support.case import CLEAR, Case
from support.fast_time import fast_time
from support.scripted import BIND, HEADER, MECHANISMS, SUCCESS

SPEED = 20


class Silence(Case):
    def meets(self, first):
        """A messenger whose first connection goes as `first` says; every later one is a good server's."""
        def script(connection, number):
            if number == 1:
                first(connection)
                server.log.add({"event": "left", "given_up": connection.wait_for_end()})
            elif connection.log_in():
                connection.serve_to_end()

        server = self.scripted(script)
        terminal = self.messenger(environment=fast_time(SPEED))
        self.account(terminal, "ala", server, settings=CLEAR)
        terminal.command("status", status="online")
        return terminal, server

    def recovers(self, first):
        terminal, server = self.meets(first)
        self.assertTrue(server.log.wait("left")["given_up"], "the messenger gave the connection up")
        terminal.wait("connection", state="offline", reason=lambda text: text)
        server.log.wait("accepted", number=2)
        terminal.wait("connection", state="online")
        return terminal

    def test_a_server_that_says_nothing(self):
        self.recovers(lambda connection: None)

    def test_a_server_that_falls_silent_in_the_login(self):
        def first(connection):
            connection.expect(r"<stream:stream[^>]*>")
            connection.send(HEADER + MECHANISMS)

        self.recovers(first)

    def test_a_server_that_falls_silent_before_the_session(self):
        def first(connection):
            connection.expect(r"<stream:stream[^>]*>")
            connection.send(HEADER + MECHANISMS)
            connection.expect(r"<auth\b[^>]*>[^<]*</auth>")
            connection.send(SUCCESS)
            connection.expect(r"<stream:stream[^>]*>")
            connection.send(HEADER + BIND)

        self.recovers(first)

    def test_a_server_that_falls_silent_after_the_login(self):
        def play():
            terminal, server = self.meets(lambda connection: connection.log_in())
            terminal.wait("connection", state="online")
            server.log.wait("accepted", number=2)
            terminal.wait("connection", state="online")

        self.in_good_time(play)

    def keeps(self, first, body):
        """What the server says at last comes through the connection that it was said in."""
        def play():
            terminal, server = self.meets(first)
            terminal.wait("message", body=body)
            self.assertEqual(len(server.log.seen("accepted")), 1)

        self.in_good_time(play)

    def test_a_server_that_sends_a_byte_a_second_during_the_login(self):
        def first(connection):
            connection.expect(r"<stream:stream[^>]*>")
            for character in HEADER + MECHANISMS:
                if not connection.send(character):
                    break
                time.sleep(1 / SPEED)

        self.recovers(first)

    def test_a_message_that_comes_a_byte_a_second(self):
        def first(connection):
            connection.log_in()
            for byte in "<message from='olek@localhost/x' type='chat'><body>powoli ąę</body></message>".encode():
                connection.send(bytes([byte]))
                time.sleep(1 / SPEED)

        self.keeps(first, "powoli ąę")

    def test_a_quiet_server_that_answers_pings_is_kept(self):
        def first(connection):
            connection.log_in()
            for _ in range(6):
                connection.answer_iq("urn:xmpp:ping")
            connection.send("<message from='olek@localhost/x' type='chat'><body>nadal tu jestem</body></message>")

        self.keeps(first, "nadal tu jestem")


if __name__ == "__main__":
    unittest.main()
