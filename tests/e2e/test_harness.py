# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""The servers and the other side by themselves, so that trouble there is not taken for trouble of the messenger."""

import os
import shutil
import unittest
from unittest import mock

from oku.process import Port
from oku.prosody import Prosody, ServerFailed
from support import clock
from support.case import Case
from support.fast_time import Watch


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

    def test_what_a_messenger_says_is_kept_for_its_owner_alone(self):
        before = os.umask(0)
        try:
            terminal = self.messenger()
        finally:
            os.umask(before)
        for kind in ("events", "stderr"):
            file = terminal.profile.parent / f"{terminal.profile.name}.{kind}"
            self.assertEqual(file.stat().st_mode & 0o077, 0, kind)

    def test_a_wrong_password_is_told(self):
        server = self.prosody({"ala": "other"})
        peer = self.peer("ala", server, start=False)
        peer.connect()
        peer.wait("failed_auth")


class Parts(unittest.TestCase):
    """The ground of the tests by itself."""

    def test_a_part_that_fails_leaves_nothing_to_the_next(self):
        sessions, messengers = [], []

        class Failing(Case):
            def runTest(self):
                server = self.shared(Prosody, lambda server: None)
                for number in (1, 2):
                    with self.subTest(number):
                        sessions.append(server.sessions)
                        messengers.append(self.online("ala", server))
                        self.peer("olek", server)
                        self.fail("as it should")

        result = unittest.TestResult()
        try:
            Failing().run(result)
        finally:
            Failing.doClassCleanups()
        self.assertEqual(result.errors, [])
        self.assertEqual([reason.splitlines()[-1] for _, reason in result.failures], ["AssertionError: as it should"] * 2)
        self.assertEqual(sessions, [0, 0])
        self.assertEqual([terminal.child.running for terminal in messengers], [False, False])
        folder = messengers[0].profile.parent
        self.assertTrue(folder.exists(), "for whoever wants to know why it failed")
        shutil.rmtree(folder)

    def test_a_fast_clock_excuses_a_failure_only_while_the_machine_stood_still(self):
        class Fast(Case):
            plays = 0

            def runTest(self):
                self.in_good_time(self.play)

            def play(self):
                self.plays += 1
                self.assertEqual(self.plays, 3)

        for stood_still, plays in ((True, 3), (False, 1)):
            test = Fast()
            with mock.patch.object(Watch, "stood_still", stood_still):
                result = test.run()
            Fast.doClassCleanups()
            del Fast._authority
            self.assertEqual((test.plays, result.wasSuccessful()), (plays, stood_still))
            if not stood_still:
                shutil.rmtree(test.folder)

    def test_a_port_stays_with_the_one_who_drew_it(self):
        port = Port()
        self.assertFalse(port._reserve(port.number))
        port.release()
        self.assertTrue(port._reserve(port.number))
        port.release()

    def test_two_clocks_may_differ_by_a_tick_and_by_no_more(self):
        moment = clock.now()
        for behind, same in ((clock.TICK / 250, True), (clock.TICK * 2, False)):
            self.assertEqual(clock.between(moment, moment - behind, moment), same)
            self.assertEqual(clock.between(moment, moment + behind, moment), same)


if __name__ == "__main__":
    unittest.main()
