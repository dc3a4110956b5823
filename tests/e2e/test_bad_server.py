# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""What a hostile or broken server may send. Each time the messenger must live on: the next good thing still works."""

import os
import unittest

from support.case import CLEAR, Case
from support.fast_time import fast_time
from support.scripted import HEADER

GOOD = "<message from='olek@localhost/x' type='chat'><body>dobra wiadomość</body></message>"


def message(body):
    return f"<message from='olek@localhost/x' type='chat'><body>{body}</body></message>"


class BadServer(Case):
    def connected(self, script, **options):
        server = self.scripted(script)
        terminal = self.messenger(**options)
        self.account(terminal, "ala", server, settings=CLEAR)
        terminal.command("status", status="online")
        return terminal, server

    def after_login(self, data):
        """Logs in, sends the data and a good message behind it; gives the messenger once that one has come."""
        def script(connection, _):
            if connection.log_in():
                connection.send(data)
                connection.send(GOOD)
                connection.serve_to_end()

        terminal, server = self.connected(script)
        terminal.wait("message", body="dobra wiadomość")
        self.assertEqual(len(server.log.seen("accepted")), 1, "the connection was kept")
        return terminal

    def recovers_from(self, data):
        """The first connection sends the data and closes; the second one is good."""
        def script(connection, number):
            if number == 1:
                connection.expect(r"<stream:stream[^>]*>")
                connection.send(data)
            elif connection.log_in():
                connection.send(GOOD)
                connection.serve_to_end()

        # The pause before the next attempt is three seconds of the messenger's time.
        terminal, _ = self.connected(script, environment=fast_time(10))
        terminal.wait("message", body="dobra wiadomość")

    def test_garbage(self):
        self.recovers_from(os.urandom(200_000))

    def test_zeros(self):
        self.recovers_from(bytes(100_000))

    def test_another_protocol(self):
        self.recovers_from("HTTP/1.1 400 Bad Request\r\nContent-Length: 0\r\n\r\n")

    def test_an_end_at_once(self):
        self.recovers_from("")

    def test_a_header_cut_in_the_middle(self):
        self.recovers_from(HEADER[:60])

    def test_a_stream_error(self):
        self.recovers_from(HEADER + "<stream:error><host-unknown xmlns='urn:ietf:params:xml:ns:xmpp-streams'/>"
                           "</stream:error></stream:stream>")

    def test_an_entity_bomb_is_not_expanded(self):
        entities = "".join(f"<!ENTITY e{i + 1} '{f'&e{i};' * 10}'>" for i in range(9))
        self.recovers_from(f"<?xml version='1.0'?><!DOCTYPE x [<!ENTITY e0 'ha'>{entities}]>" + HEADER +
                           "<message><body>&e9;</body></message>")

    def test_a_million_levels(self):
        depth = 1_000_000
        self.after_login("<message from='olek@localhost/x' type='chat'>" + "<a>" * depth + "</a>" * depth + "</message>")

    def test_a_stanza_of_64_mib(self):
        size = 64 << 20
        terminal = self.after_login(message("x" * size))
        bodies = [len(event["body"]) for event in terminal.seen("message")]
        self.assertEqual(bodies, [size, len("dobra wiadomość")])

    def test_a_hundred_thousand_stanzas_that_mean_nothing(self):
        self.after_login("<iq type='set' id='1'><query xmlns='urn:nothing'/></iq>" * 100_000)

    def test_text_that_no_message_should_hold(self):
        terminal = self.after_login(message("&#9;&#10;&#13;&lt;script&gt;\u202e \ufeff \U0010ffff"))
        self.assertEqual(terminal.seen("message")[0]["body"], "\t\n\r<script>\u202e \ufeff \U0010ffff")

    def test_attributes_that_are_missing_empty_or_absurd(self):
        absurd = "x" * 100_000
        terminal = self.after_login(
            "<message/><presence/><iq/><message from=''><body>od nikogo</body></message>"
            "<presence from='@'/><presence from='olek@localhost/x'><priority>99999999999999999999</priority></presence>"
            f"<presence from='{absurd}@localhost/y'><show>{absurd}</show></presence>"
            "<iq type='set' from='ala@localhost' id='2'><query xmlns='jabber:iq:roster'><item/><item jid=''/>"
            "<item jid='olek@localhost' subscription='zagadka' name='Olek'/></query></iq>")
        self.assertEqual(terminal.roster()["olek@localhost"]["name"], "Olek")

    def test_a_stranger_cannot_change_the_roster(self):
        terminal = self.after_login(
            "<iq type='set' from='zly@elsewhere.example' id='3'><query xmlns='jabber:iq:roster'>"
            "<item jid='zly@elsewhere.example' subscription='both' name='Szef'/></query></iq>")
        self.assertEqual(terminal.roster(), {})

    def test_bytes_that_are_not_utf_8(self):
        def script(connection, number):
            if connection.log_in() and number == 1:
                connection.send(b"<message from='olek@localhost/x'><body>\xff\xfe\xc0\x80</body></message>")
            elif number > 1:
                connection.send(GOOD)
                connection.serve_to_end()

        terminal, _ = self.connected(script, environment=fast_time(10))
        terminal.wait("message", body="dobra wiadomość")


if __name__ == "__main__":
    unittest.main()
