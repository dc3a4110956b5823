# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Files between the messenger and another client, with the bytes in the stream, over real servers."""

import random
import threading
import unittest

from oku.prosody import Prosody
from support.case import Case
from support.ejabberd import Ejabberd
from support.files import FilePeer, sha1
from support.friends import befriend

SIZES = (0, 1, 4095, 4096, 4097, 3 << 20)


def content(size):
    return random.Random(size).randbytes(size)


class Transfers:
    """The tests; the classes below say over which server."""

    def setUp(self):
        super().setUp()
        self.server = self.shared(self.kind, lambda server: befriend(self, server, "ala", "olek"))
        self.documents = self.folder / "documents"
        self.terminal = self.online("ala", self.server, options=("--verbose",),
                                    settings={"XMPP/SI/Path": f"{self.documents}/%from%/", "XMPP/Serv/Compress": 0})
        own = self.terminal.seen("presence", lambda event: event["jid"] == "ala@localhost")[0]
        self.ala = f"ala@localhost/{own['resource']}"
        self.olek = self.peer("olek", self.server, "dom", kind=FilePeer)
        self.terminal.wait("log", text=f"disco#info result form: {self.olek.full}")

    def end_of(self, number):
        return self.terminal.wait("transfer", transfer=number,
                                  state=lambda state: state not in ("negotiating", "running"))

    def send(self, name, data):
        path = self.folder / name
        path.write_bytes(data)
        self.terminal.command("send-file", to="olek@localhost", path=str(path))
        return self.terminal.wait("transfer", path=str(path))["transfer"]

    def receive(self, name, data, sid):
        """Has the peer send a file that the user accepts; gives the transfer's number."""
        sending = threading.Thread(target=self.olek.send, args=(self.ala, name, data, sid))
        sending.start()
        offer = self.terminal.wait("file-offer", size=len(data))
        self.terminal.command("answer-file", offer=offer["offer"], answer="accept")
        number = self.terminal.wait("transfer", size=len(data), direction="in")["transfer"]
        sending.join()
        return number

    def test_files_that_are_sent_arrive_whole(self):
        for size in SIZES:
            with self.subTest(size=size):
                number = self.send(f"wysłany {size}.bin", content(size))
                arrived = self.olek.wait("file", size=size)
                self.assertEqual(arrived["sha1"], sha1(content(size)))
                self.assertEqual(arrived["name"], f"wysłany {size}.bin")
                end = self.end_of(number)
                self.assertEqual((end["state"], end["position"]), ("done", size))

    def test_files_that_come_arrive_whole(self):
        for size in SIZES[1:]:
            with self.subTest(size=size):
                number = self.receive(f"odebrany {size}.bin", content(size), f"s{size}")
                end = self.end_of(number)
                self.assertEqual((end["state"], end["position"]), ("done", size))
                path = self.documents / "olek@localhost" / f"odebrany {size}.bin"
                self.assertEqual(end["path"], str(path))
                self.assertEqual(sha1(path.read_bytes()), sha1(content(size)))


class OverProsody(Transfers, Case):
    kind = Prosody


class OverEjabberd(Transfers, Case):
    kind = Ejabberd


if __name__ == "__main__":
    unittest.main()
