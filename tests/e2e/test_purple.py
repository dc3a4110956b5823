# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Files between the messenger and a client made of libpurple, which wrote its side of them without knowing ours."""

import contextlib
import hashlib
import random
import unittest

from oku.prosody import Prosody
from oku.terminal import CommandFailed
from support.case import Case
from support.ejabberd import Ejabberd
from support.friends import befriend

SIZES = (1, 4095, 4096, 4097, 3 << 20)
# So many blocks that nobody is done with them before he hears that the first has moved.
LONG = 256 << 20
NAME = "Zażółć & 'gęślą' <jaźń>, {} bajtów.bin"


def content(size):
    return random.Random(size).randbytes(size)


def sha1(path):
    return hashlib.sha1(path.read_bytes()).hexdigest()


class WithPurple:
    """The tests; the classes below say over which server."""

    def setUp(self):
        super().setUp()
        self.server = self.shared(self.kind, lambda server: befriend(self, server, "ala", "olek"))
        self.received = self.folder / "received"
        # The bytes are not to be compressed: they would only cost time.
        self.terminal = self.online("ala", self.server, options=("--verbose",),
                                    settings={"XMPP/SI/Path": f"{self.received}/", "XMPP/Serv/Compress": 0})
        self.olek = self.purple("olek", self.server)
        self.olek.wait("presence", jid="ala@localhost", online=True)
        # Until it is known what a contact's client can do it is offered no file.
        self.terminal.wait("log", text=f"disco#info result form: {self.olek.full}")
        own = self.terminal.seen("presence", jid="ala@localhost")[0]
        self.ala = f"ala@localhost/{own['resource']}"

    def file(self, size):
        path = self.folder / NAME.format(size)
        if size == LONG:
            with path.open("wb") as file:
                file.truncate(size)
        else:
            path.write_bytes(content(size))
        return path

    def from_messenger(self, size):
        """The messenger offers a file; gives it, the transfer's number there, and the offer as libpurple tells it."""
        path = self.file(size)
        self.terminal.command("send-file", to="olek@localhost", path=str(path))
        number = self.terminal.wait("transfer", path=str(path))["transfer"]
        return path, number, self.olek.wait("offered", name=path.name, size=size)

    def from_purple(self, size):
        """Libpurple offers a file; gives it, the transfer's number there, and the offer as the messenger tells it."""
        path = self.file(size)
        self.olek.command("send", self.ala, path)
        number = self.olek.wait("sending", path=str(path))["number"]
        return path, number, self.terminal.wait("file-offer", name=path.name, size=size)

    def taken(self, size):
        """Libpurple offers a file and the messenger takes it; gives the file and both numbers."""
        path, theirs, offer = self.from_purple(size)
        self.terminal.command("answer-file", offer=offer["offer"], answer="accept")
        return path, theirs, self.terminal.wait("transfer", direction="in", name=path.name)["transfer"]

    def end_of(self, number):
        return self.terminal.wait("transfer", transfer=number,
                                  state=lambda state: state not in ("negotiating", "running"))

    def state_of(self, number):
        """Of a transfer, as the messenger lists it now."""
        return next(transfer["state"] for transfer in self.terminal.ask("files", "files")["transfers"]
                    if transfer["transfer"] == number)

    def messenger_heard_all(self):
        """Waits until the messenger has had what libpurple sent so far."""
        self.olek.command("message", self.ala, "to było wszystko")
        self.terminal.wait("message", body="to było wszystko")

    def wait_until_moving(self, ours, theirs):
        self.olek.wait("moved", number=theirs, bytes=lambda moved: moved > 0)
        self.terminal.wait("transfer", transfer=ours, position=lambda moved: moved > 0)

    def test_files_that_are_sent_arrive_whole(self):
        for size in SIZES:
            with self.subTest(size=size):
                path, number, offer = self.from_messenger(size)
                arrived = self.folder / f"arrived {size}"
                self.olek.command("accept", offer["number"], arrived)
                end = self.olek.wait("ended", number=offer["number"])
                self.assertEqual((end["how"], end["bytes"]), ("complete", size))
                self.assertEqual(sha1(arrived), sha1(path))
                end = self.end_of(number)
                self.assertEqual((end["state"], end["position"]), ("done", size))

    def test_an_empty_file_arrives_and_libpurple_does_not_believe_it(self):
        # It takes the one block, which is empty, for a broken one, closes, and never answers the block; it offers no
        # empty file itself.
        _, number, offer = self.from_messenger(0)
        arrived = self.folder / "arrived"
        self.olek.command("accept", offer["number"], arrived)
        self.assertEqual(self.olek.wait("ended", number=offer["number"])["how"], "stopped")
        self.assertEqual(arrived.read_bytes(), b"")
        self.messenger_heard_all()
        self.assertEqual(self.state_of(number), "running")
        self.terminal.command("cancel-file", transfer=number)
        self.assertEqual(self.end_of(number)["state"], "cancelled")

    def test_files_that_come_arrive_whole(self):
        for size in SIZES:
            with self.subTest(size=size):
                path, theirs, number = self.taken(size)
                end = self.end_of(number)
                self.assertEqual((end["state"], end["position"]), ("done", size))
                self.assertEqual(sha1(self.received / path.name), sha1(path))
                end = self.olek.wait("ended", number=theirs)
                self.assertEqual((end["how"], end["bytes"]), ("complete", size))

    def test_of_the_two_ways_that_it_offers_the_second_is_taken(self):
        _, theirs, _ = self.taken(1)
        self.olek.wait("ended", number=theirs, how="complete")
        said = self.olek.said()
        socks, in_band = (said.index(f"<option><value>http://jabber.org/protocol/{way}</value></option>")
                          for way in ("bytestreams", "ibb"))
        self.assertLess(socks, in_band)
        self.assertIn("<field var='stream-method'><value>http://jabber.org/protocol/ibb</value></field>",
                      said.replace('"', "'"))

    def test_the_messenger_refuses(self):
        _, theirs, offer = self.from_purple(4097)
        self.terminal.command("answer-file", offer=offer["offer"], answer="refuse")
        self.assertEqual(self.olek.wait("ended", number=theirs)["how"], "stopped")

    def test_libpurple_refuses(self):
        _, number, offer = self.from_messenger(4097)
        self.olek.command("refuse", offer["number"])
        self.assertEqual(self.end_of(number)["state"], "failed")

    def test_the_messenger_stops_sending(self):
        _, number, offer = self.from_messenger(LONG)
        self.olek.command("accept", offer["number"], self.folder / "arrived")
        self.wait_until_moving(number, offer["number"])
        self.terminal.command("cancel-file", transfer=number)
        self.assertEqual(self.end_of(number)["state"], "cancelled")
        self.assertEqual(self.olek.wait("ended", number=offer["number"])["how"], "stopped")

    def test_the_messenger_stops_receiving(self):
        path, theirs, number = self.taken(LONG)
        self.wait_until_moving(number, theirs)
        self.terminal.command("cancel-file", transfer=number)
        self.assertEqual(self.end_of(number)["state"], "cancelled")
        # A receiver tells nobody, and blocks that still come are answered no more: whoever sends waits until he gives up.
        self.terminal.command("message", to=self.olek.jid, body="dosyć")
        self.olek.wait("message", text="dosyć")
        self.assertEqual(self.olek.seen("ended"), [])
        self.olek.command("cancel", theirs)
        self.olek.wait("ended", number=theirs, how="cancelled")
        self.assertLess(0, (self.received / path.name).stat().st_size)

    def test_libpurple_stops_sending(self):
        path, theirs, number = self.taken(LONG)
        self.wait_until_moving(number, theirs)
        self.olek.command("cancel", theirs)
        self.olek.wait("ended", number=theirs, how="cancelled")
        # The end of the stream shuts the file; what came of it stays, and so does the window until its user closes it.
        self.messenger_heard_all()
        self.assertEqual(self.state_of(number), "running")
        self.terminal.command("cancel-file", transfer=number)
        end = self.end_of(number)
        self.assertEqual(end["state"], "cancelled")
        self.assertEqual((self.received / path.name).stat().st_size, end["position"])

    def test_libpurple_stops_receiving(self):
        _, number, offer = self.from_messenger(LONG)
        self.olek.command("accept", offer["number"], self.folder / "arrived")
        self.wait_until_moving(number, offer["number"])
        self.olek.command("cancel", offer["number"])
        self.olek.wait("ended", number=offer["number"], how="cancelled")
        self.assertEqual(self.end_of(number)["state"], "failed")

    def test_libpurple_goes_while_it_receives(self):
        _, number, offer = self.from_messenger(LONG)
        self.olek.command("accept", offer["number"], self.folder / "arrived")
        self.wait_until_moving(number, offer["number"])
        self.olek.command("logout")
        self.terminal.wait("presence", jid=self.olek.jid, status="offline")
        # The server refuses a block that it can deliver to nobody. One that was delivered just before is answered by
        # nobody, and the user must give up: which of them it is is chance.
        with contextlib.suppress(CommandFailed):
            self.terminal.command("cancel-file", transfer=number)
        self.assertIn(self.end_of(number)["state"], ("failed", "cancelled"))

    def test_libpurple_goes_while_it_sends(self):
        path, theirs, number = self.taken(LONG)
        self.wait_until_moving(number, theirs)
        self.olek.command("logout")
        self.terminal.wait("presence", jid=self.olek.jid, status="offline")
        # Nobody says that no more comes; the user sees that the contact has gone.
        self.assertEqual(self.state_of(number), "running")
        self.terminal.command("cancel-file", transfer=number)
        self.assertEqual(self.end_of(number)["state"], "cancelled")
        self.assertLess(0, (self.received / path.name).stat().st_size)

    def test_two_files_at_once_do_not_mix(self):
        size = 1 << 20
        sent, number, offer = self.from_messenger(size)
        arrived = self.folder / "arrived"
        self.olek.command("accept", offer["number"], arrived)
        got, theirs, ours = self.taken(size - 1)
        for transfer in (number, ours):
            self.assertEqual(self.end_of(transfer)["state"], "done")
        for transfer in (offer["number"], theirs):
            self.assertEqual(self.olek.wait("ended", number=transfer)["how"], "complete")
        self.assertEqual(sha1(arrived), sha1(sent))
        self.assertEqual(sha1(self.received / got.name), sha1(got))

    def test_words_and_status_go_both_ways(self):
        self.olek.command("message", self.ala, 'Zażółć <gęślą> & "jaźń"')
        self.terminal.wait("message", body='Zażółć <gęślą> & "jaźń"')
        self.terminal.command("message", to="olek@localhost", body="Też <&> ąę")
        self.olek.wait("message", **{"from": self.ala, "text": "Też <&> ąę"})
        self.olek.command("status", "away", "zaraz wracam, ąę")
        self.terminal.wait("presence", jid="olek@localhost", status="away", description="zaraz wracam, ąę")
        self.terminal.command("status", status="dnd", description="pracuję")
        self.olek.wait("presence", jid="ala@localhost", status="dnd", text="pracuję")


class OverProsody(WithPurple, Case):
    kind = Prosody


class OverEjabberd(WithPurple, Case):
    kind = Ejabberd


if __name__ == "__main__":
    unittest.main()
