# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Files between two messengers, beside the stream: one publishes the file, the other fetches it."""

import pathlib
import random
import unittest

from oku.prosody import Prosody
from support.case import Case
from support.ejabberd import Ejabberd
from support.files import sha1
from support.friends import befriend

SIZES = (0, 1, 4095, 4096, 4097, 3 << 20)


class Beside:
    """The tests; the classes below say over which server."""

    def setUp(self):
        super().setUp()
        self.server = self.shared(self.kind, lambda server: befriend(self, server, "ala", "olek"))

    def pair(self, **settings):
        """Two messengers that know what the other can do."""
        pair = []
        for user in ("ala", "olek"):
            terminal = self.online(user, self.server, options=("--verbose",),
                                   settings={"XMPP/SI/Path": f"{self.folder}/{user}-files/%from%/",
                                             "XMPP/Serv/Compress": 0, **settings})
            terminal.jid = f"{user}@localhost"
            pair.append(terminal)
        for terminal, other in (pair, reversed(pair)):
            terminal.wait("log", text=lambda text, jid=other.jid: text.startswith(f"disco#info result form: {jid}/"))
        return pair

    def move(self, sender, receiver, name, data):
        """Sends a file that is accepted; gives how it ended on both sides, and what arrived."""
        path = pathlib.Path(self.folder) / name
        path.write_bytes(data)
        sender.command("send-file", to=receiver.jid, path=str(path))
        offer = receiver.wait("file-offer", name=name)
        self.assertEqual(offer["size"], len(data))
        receiver.command("answer-file", offer=offer["offer"], answer="accept")
        ends = [terminal.wait("transfer", name=name, state=lambda state: state not in ("negotiating", "running"))
                for terminal in (sender, receiver)]
        arrived = self.folder / f"{receiver.jid.split('@')[0]}-files" / sender.jid / name
        self.assertEqual(ends[1]["path"], str(arrived))
        return [(end["state"], end["text"]) for end in ends], arrived.read_bytes()

    def test_files_are_fetched_both_ways(self):
        pair = self.pair(**{"OKU/PublishFiles": 1})
        for sender, receiver in (pair, pair[::-1]):
            for size in SIZES:
                with self.subTest(sender=sender.jid, size=size):
                    data = random.Random(size).randbytes(size)
                    states, arrived = self.move(sender, receiver, f"plik {sender.jid} {size} ż.bin", data)
                    # The plugin's words for the way beside the stream.
                    self.assertEqual(states, [("done", "Wysłano"), ("done", "Odebrano")])
                    self.assertEqual(sha1(arrived), sha1(data))

    def test_files_go_over_the_stream_where_nobody_publishes(self):
        pair = self.pair()
        data = random.Random(1).randbytes(20_000)
        states, arrived = self.move(*pair, "plik.bin", data)
        self.assertEqual([state for state, _ in states], ["done", "done"])
        self.assertEqual(states[0][1], "Gotowe")
        self.assertEqual(arrived, data)


class OverProsody(Beside, Case):
    kind = Prosody


class OverEjabberd(Beside, Case):
    kind = Ejabberd


if __name__ == "__main__":
    unittest.main()
