# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""What "cmake --install" puts into a folder works from there, and from wherever that folder is moved."""

import base64
import pathlib
import subprocess
import unittest

from support.case import BUILD, Case


class Installation(Case):
    @classmethod
    def setUpClass(cls):
        """Installed once, then moved: nothing may remember the folder that it was installed to."""
        first = cls.class_folder() / "first place"
        done = subprocess.run(["cmake", "--install", str(BUILD), "--prefix", str(first)], capture_output=True, text=True)
        if done.returncode:
            raise RuntimeError(f"the installation failed:\n{done.stdout}{done.stderr}")
        cls.place = first.rename(first.with_name("another place"))

    def installed(self, name):
        """The one file of that name below the folder."""
        found = list(self.place.rglob(name))
        self.assertEqual(len(found), 1, f"{name} in {found}")
        return found[0]

    def terminal(self, **environment):
        """The installed messenger, which is told nothing of its module."""
        terminal = self.messenger(start=False, environment=environment)
        at = terminal.arguments.index("--module")
        del terminal.arguments[at:at + 2]
        terminal.arguments[0] = str(self.installed("oku-terminal"))
        return terminal

    def test_it_starts_and_finds_its_module(self):
        terminal = self.terminal().start()
        terminal.command("account", jid="ala@localhost", password="x", settings={"OKU/PasswordInFile": 1})
        self.assertEqual(terminal.quit(), 0)

    def test_it_starts_by_a_link_from_elsewhere(self):
        terminal = self.terminal()
        link = self.folder / "oku"
        link.symlink_to(terminal.arguments[0])
        terminal.arguments[0] = str(link)
        self.assertEqual(terminal.start().quit(), 0)

    def test_without_the_module_it_names_the_place_beside_the_program(self):
        module = self.installed("protoLink.module")
        away = module.rename(module.with_name("away"))
        self.addCleanup(away.rename, module)
        terminal = self.terminal()
        terminal.start(ready=False)
        self.assertEqual(terminal.wait_for_end(), 1)
        self.assertIn(f"{self.place}/bin/protoLink.module", terminal.seen("error")[0]["reason"])

    def test_its_texts_come_along_in_both_languages(self):
        told = {}
        for language in ("pl_PL.UTF-8", "en_GB.UTF-8"):
            done = subprocess.run([str(self.installed("oku-terminal")), "--help"], capture_output=True, text=True,
                                  env={"LANG": language, "LC_ALL": language, "LANGUAGE": ""})
            told[language] = done.stdout
        self.assertIn("Użycie: oku-terminal", told["pl_PL.UTF-8"])
        self.assertIn("Usage: oku-terminal", told["en_GB.UTF-8"])

    def test_the_program_that_reads_pictures_is_found(self):
        program = self.installed("oku-picture")
        self.assertEqual(program.relative_to(self.place), pathlib.Path("libexec/oku/oku-picture"))
        picture = self.folder / "picture"
        picture.write_bytes(base64.b64decode(
            "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAIAAACQd1PeAAAADElEQVR42mP4z8AAAAMBAQD3A0FDAAAAAElFTkSuQmCC"))
        terminal = self.terminal().start()
        terminal.command("set-picture", path=str(picture))
        self.assertEqual(terminal.quit(), 0)

    def test_its_pages_lie_where_the_system_looks_for_those_of_a_program(self):
        """man looks in share/man beside the folder of the program that is in the path."""
        page = self.installed("oku-terminal.1")
        self.assertEqual(page.relative_to(self.place), pathlib.Path("share/man/man1/oku-terminal.1"))

    def test_nothing_names_the_folder_it_was_installed_to(self):
        for path in self.place.rglob("*"):
            if path.is_file():
                self.assertNotIn(b"first place", path.read_bytes(), path)


if __name__ == "__main__":
    unittest.main()
