# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""What is kept when no file can grow any more. The limit on the size of files is the system's own: it works as a full
disk does, for the superuser as well."""

import base64
import resource
import unittest

from oku.terminal import CommandFailed
from support.case import PASSWORDS, Case

# Pictures of one point.
PICTURE = base64.b64decode(
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAIAAACQd1PeAAAADElEQVR42mP4z8AAAAMBAQD3A0FDAAAAAElFTkSuQmCC")
OTHER = base64.b64decode("R0lGODlhAgABAPAAAP8AAAAA/yH5BAAAAAAALAAAAAACAAEAAAICRAoAOw==")


def set_full(terminal, full):
    """From now on the messenger's files can, or cannot, grow."""
    process = terminal.child.process.pid
    hard = resource.prlimit(process, resource.RLIMIT_FSIZE)[1]
    resource.prlimit(process, resource.RLIMIT_FSIZE, (0 if full else hard, hard))


class FullDisk(Case):
    def setUp(self):
        super().setUp()
        self.server = self.prosody()
        self.ala = self.online("ala", self.server, environment={"LANG": "pl_PL.UTF-8"})
        self.wait_until_kept(self.ala, "ala")

    def test_an_account_outlives_a_setting_that_cannot_be_written(self):
        file = self.ala.profile / "protoLink.config"
        set_full(self.ala, True)
        before = file.read_bytes()
        self.assertIn(PASSWORDS["ala"].encode(), before)
        for priority in (7, 8):
            with self.assertRaises(CommandFailed):
                self.ala.command("set", key="XMPP/Priority", value=priority)
        self.assertEqual(file.read_bytes(), before)
        self.assertEqual(len(self.ala.seen("notice", lambda event: str(file) in event["text"])), 1)
        self.ala.stop(kill=True)
        again = self.messenger("ala")
        again.command("status", status="online")
        again.wait("connection", state="online")

    def test_what_could_not_be_written_is_written_when_there_is_room(self):
        set_full(self.ala, True)
        with self.assertRaises(CommandFailed):
            self.ala.command("set", key="XMPP/Priority", value=7)
        set_full(self.ala, False)
        self.ala.command("set", key="XMPP/Priority", value=7)
        self.assertEqual(self.ala.quit(), 0)
        again = self.messenger("ala")
        self.assertEqual(again.ask("get", "setting", key="XMPP/Priority")["value"], 7)

    def test_the_own_picture_stays_when_another_cannot_be_written(self):
        path = self.folder / "picture"
        path.write_bytes(PICTURE)
        self.ala.command("set-picture", path=str(path))
        kept = (self.ala.profile / "_avatar").read_bytes()
        set_full(self.ala, True)
        (self.folder / "other").write_bytes(OTHER)
        with self.assertRaisesRegex(CommandFailed, "Poprzedni zostaje"):
            self.ala.command("set-picture", path=str(self.folder / "other"))
        self.assertEqual((self.ala.profile / "_avatar").read_bytes(), kept)
        set_full(self.ala, False)
        self.ala.command("set-picture", path=str(self.folder / "other"))
        self.assertNotEqual((self.ala.profile / "_avatar").read_bytes(), kept)


if __name__ == "__main__":
    unittest.main()
