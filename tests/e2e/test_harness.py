"""The servers and the other side by themselves, so that trouble there is not taken for trouble of the messenger."""

import unittest

from oku.prosody import ServerFailed
from support.case import Case


class Harness(Case):
    def two_peers_talk(self, server):
        ala, olek = self.peer("ala", server, "one"), self.peer("olek", server, "two")
        ala.message(olek.full, "Zażółć gęślą jaźń 🦆")
        got = olek.wait("message", body="Zażółć gęślą jaźń 🦆")
        self.assertEqual(got["from"], ala.full)
        olek.message(ala.full, state="composing")
        self.assertEqual(ala.wait("message")["states"], ["composing"])

    def test_two_clients_talk_over_prosody(self):
        self.two_peers_talk(self.prosody())

    def test_two_clients_talk_over_ejabberd(self):
        self.two_peers_talk(self.ejabberd())

    def test_a_stopped_server_comes_back_on_its_port_with_its_data(self):
        for server in (self.prosody(), self.ejabberd()):
            port = server.port
            peer = self.peer("ala", server, "first")
            peer.roster_set("olek@localhost", "Olek", ["Znajomi"])
            server.stop()
            peer.wait("disconnected")
            server.start()
            self.assertEqual(server.port, port)
            again = self.peer("ala", server, "second")
            self.assertIn("olek@localhost", again.wait("roster")["items"])

    def test_a_port_that_is_taken_is_told(self):
        server = self.prosody()
        second = type(server)(self.folder / "second", self._localhost, {})
        second.port, second.tls_port = server.port, server.tls_port
        self.addCleanup(second.stop)
        with self.assertRaises(ServerFailed):
            second.start()

    def test_a_wrong_password_is_told(self):
        server = self.prosody({"ala": "other"})
        peer = self.peer("ala", server, start=False)
        peer.connect()
        peer.wait("failed_auth")


if __name__ == "__main__":
    unittest.main()
