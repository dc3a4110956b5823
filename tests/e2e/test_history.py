# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""What was shown stands in the history, however the messenger ended and whatever became of the file."""

import random
import resource
import threading
import unittest

from support.case import Case
from support.friends import befriend


def set_full(terminal, full):
    """From now on the messenger's files can, or cannot, grow."""
    process = terminal.child.process.pid
    hard = resource.prlimit(process, resource.RLIMIT_FSIZE)[1]
    resource.prlimit(process, resource.RLIMIT_FSIZE, (0 if full else hard, hard))


class History(Case):
    def setUp(self):
        super().setUp()
        self.server = self.prosody()
        befriend(self, self.server, "ala", "olek")
        self.ala = self.online("ala", self.server)
        self.olek = self.peer("olek", self.server, "dom")
        self.ala.wait("presence", jid="olek@localhost", resource="dom")

    def say(self, body):
        self.olek.message("ala@localhost", body)
        self.ala.wait("message", body=body)

    def written(self, terminal, limit=100000):
        return [one["body"] for one in terminal.ask("history", "history", limit=limit)["messages"]]

    def test_a_kill_takes_back_nothing_that_was_shown(self):
        for moment in random.sample(range(1, 400), 3):
            enough = threading.Event()
            sender = threading.Thread(target=lambda: [self.olek.message("ala@localhost", f"{moment}/{number}")
                                                      for number in range(500) if not enough.is_set()])
            sender.start()
            self.ala.wait("message", body=f"{moment}/{moment}")
            self.ala.stop(kill=True)
            enough.set()
            sender.join()
            shown = [event["body"] for event in self.ala.seen("message")]
            self.ala = self.messenger("ala")
            self.assertEqual([body for body in self.written(self.ala) if body in set(shown)], shown)
            self.ala.command("status", status="online")
            self.ala.wait("connection", state="online")
            self.ala.wait("presence", jid="olek@localhost", resource="dom")

    def test_what_comes_while_the_disk_is_full_is_written_when_there_is_room(self):
        self.say("przedtem")
        set_full(self.ala, True)
        self.say("pełno")
        self.say("jeszcze pełno")
        self.assertEqual(self.written(self.ala), ["przedtem", "pełno", "jeszcze pełno"])
        # The disk tells of itself as well, when what was written before is to reach it just now.
        full = {"text": lambda text: "Nie można zapisać w archiwum rozmów" in text}
        self.ala.wait("notice", **full)
        self.assertEqual(len(self.ala.seen("notice", **full)), 1, "told once")
        set_full(self.ala, False)
        self.ala.wait("notice", text=lambda text: "Archiwum rozmów znów działa" in text)
        self.ala.stop(kill=True)
        self.assertEqual(self.written(self.messenger("ala")), ["przedtem", "pełno", "jeszcze pełno"])

    def test_a_damaged_file_is_set_aside(self):
        self.say("przepadnie")
        self.assertEqual(self.ala.quit(), 0)
        file = self.ala.profile / "history.sqlite"
        noise = random.randbytes(30000)
        for damage in (noise, bytes(30000), file.read_bytes()[:file.stat().st_size // 2]):
            file.write_bytes(damage)
            self.ala = self.messenger("ala")
            self.ala.command("status", status="online")
            self.ala.wait("connection", state="online")
            self.say("nowa")
            told = self.ala.wait("notice", lambda event: "damaged" in event["text"])["text"]
            aside = [path for path in self.ala.profile.glob("history.sqlite.damaged-*") if str(path) in told]
            self.assertEqual([path.read_bytes() for path in aside], [damage])
            self.ala.stop(kill=True)
            again = self.messenger("ala")
            self.assertEqual(self.written(again)[-1:], ["nowa"])
            self.assertEqual(again.quit(), 0)


if __name__ == "__main__":
    unittest.main()
