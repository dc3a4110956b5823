# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Files that were received are opened with the system's program, by scripts and in the terminal; programs after a question."""

import os
import re
import select
import threading
import unittest
import urllib.parse

from oku.events import TIMEOUT
from oku.prosody import Prosody
from oku.terminal import CommandFailed
from support.case import Case
from support.ejabberd import Ejabberd
from support.files import FilePeer
from support.friends import befriend
from support.pictures import png


class Opening:
    """The tests; the classes below say over which server."""

    def setUp(self):
        super().setUp()
        self.server = self.shared(self.kind, lambda server: befriend(self, server, "ala", "olek"))
        programs = self.folder / "programs"
        programs.mkdir()
        opener = programs / "xdg-open"
        opener.write_text(f"#!/bin/sh\nprintf '%s\\n' \"$1\" >'{self.folder}/opened'\n")
        opener.chmod(0o755)
        os.mkfifo(self.folder / "opened")
        self.opened = os.open(self.folder / "opened", os.O_RDWR | os.O_NONBLOCK)
        self.addCleanup(os.close, self.opened)
        self.environment = {"PATH": f"{programs}:{os.environ['PATH']}"}
        self.settings = {"XMPP/SI/Path": f"{self.folder}/documents/%from%/"}

    def path(self, name):
        return str(self.folder / "documents" / "olek@localhost" / name)

    def was_opened(self):
        """What the system's program was given."""
        self.assertTrue(select.select([self.opened], [], [], TIMEOUT)[0], "nothing was opened")
        address = os.read(self.opened, 4096).decode().strip()
        self.assertTrue(address.startswith("file:///"), address)
        return urllib.parse.unquote(address.removeprefix("file://"))

    def sends(self, to, name, accept):
        """The contact sends a file; `accept` answers the offer."""
        content = png(2, 2) if name.endswith(".png") else b"#!/bin/sh\n"
        sending = threading.Thread(target=self.olek.send, args=(to, name, content, f"do {name}"))
        sending.start()
        accept()
        sending.join()

    def test_by_a_script(self):
        terminal = self.online("ala", self.server, options=("--verbose",), settings=self.settings,
                               environment=self.environment)
        own = terminal.seen("presence", jid="ala@localhost")[0]["resource"]
        self.olek = self.peer("olek", self.server, "dom", kind=FilePeer)
        terminal.wait("log", text=f"disco#info result form: {self.olek.full}")

        def receive(name):
            def accept():
                terminal.command("answer-file", offer=terminal.wait("file-offer", name=name)["offer"], answer="accept")
            self.sends(f"ala@localhost/{own}", name, accept)
            return terminal.wait("transfer", name=name, state="done")["transfer"]

        terminal.command("open-file", transfer=receive("obraz & <1>.png"))
        self.assertEqual(self.was_opened(), self.path("obraz & <1>.png"))
        program = receive("skrypt.sh")
        for button, opened in (("no", "inny.png"), ("yes", "skrypt.sh")):
            terminal.command("open-file", transfer=program)
            box = terminal.wait("question", style="question", text=lambda text: "skrypt.sh" in text)
            terminal.command("answer", box=box["box"], button=button)
            if button == "no":
                terminal.command("open-file", transfer=receive("inny.png"))
            self.assertEqual(self.was_opened(), self.path(opened))
        with self.assertRaises(CommandFailed):
            terminal.command("open-file", transfer=program + 9)

    def test_in_the_terminal(self):
        with self.part():
            terminal = self.messenger()
            self.account(terminal, "ala", self.server, settings=self.settings)
            self.wait_until_kept(terminal, "ala")
        terminal = self.plain(environment=self.environment)
        terminal.type("/online")
        terminal.next("gotowy, lista kontaktów pobrana")
        self.olek = self.peer("olek", self.server, "dom", kind=FilePeer)
        own = self.olek.wait("presence", type=None, **{"from": lambda jid: jid.startswith("ala@localhost/")})["from"]

        def receive(name):
            def accept():
                terminal.next("chce przysłać", name)
                terminal.next("/accept")
                terminal.type("/accept")
            self.sends(own, name, accept)
            terminal.next(name, "gotowe")

        receive("obraz.png")
        terminal.type("/open")
        self.assertEqual(self.was_opened(), self.path("obraz.png"))
        receive("skrypt.sh")
        self.answer(terminal, "/open", "no")
        receive("inny.png")
        terminal.type("/open")
        self.assertEqual(self.was_opened(), self.path("inny.png"))
        self.answer(terminal, "/open 2", "yes")
        self.assertEqual(self.was_opened(), self.path("skrypt.sh"))
        self.assertEqual(terminal.quit(), 0)

    def answer(self, terminal, command, answer):
        """Gives a command that brings a question, and answers that."""
        terminal.type(command)
        number = re.search(r"/answer (\d+)", terminal.next("/answer")).group(1)
        terminal.type(f"/answer {number} {answer}")


class OverProsody(Opening, Case):
    kind = Prosody


class OverEjabberd(Opening, Case):
    kind = Ejabberd


if __name__ == "__main__":
    unittest.main()
