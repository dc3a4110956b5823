# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Servers that fall silent or dawdle. Time passes fast for the messenger here, the server lives in ordinary time."""

import time
import unittest

from support.case import CLEAR, Case, NotInTime
from support.fast_time import fast_time
from support.scripted import BIND, HEADER, MECHANISMS, SUCCESS

SPEED = 20
LATER = "<message from='olek@localhost/x' type='chat'><body>od nowa</body></message>"


class Silence(Case):
    def meets(self, first):
        """A messenger whose first connection goes as `first` says; every later one is a good server's."""
        def script(connection, number):
            if number == 1:
                first(connection)
                server.log.add({"event": "left", "given_up": connection.wait_for_end()})
            elif connection.log_in():
                connection.send(LATER)
                connection.serve_to_end()

        server = self.scripted(script)
        terminal = self.messenger(environment=fast_time(SPEED))
        self.account(terminal, "ala", server, settings=CLEAR)
        self.wait_until_kept(terminal, "ala")  # writing it could take the three seconds that a login has here
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
            terminal.wait("connection", state="online")
            if server.log.seen("accepted", number=2):
                raise NotInTime("the login alone took the messenger its minute")
            # What a later connection says ends the wait as well.
            self.assertEqual(terminal.wait("message")["body"], body)
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
            message = "<message from='olek@localhost/x' type='chat'><body>powoli ąę</body></message>".encode()
            begun = time.monotonic()
            for number, byte in enumerate(message, 1):
                connection.send(bytes([byte]))
                # By the clock: what each pause lasts longer does not add up.
                time.sleep(max(0, begun + number / SPEED - time.monotonic()))

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
