# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""What check_translations.py finds, and what it lets pass."""
import unittest

from check_translations import faults

FRAME = """<TS version="2.1"><context><name>Here</name><message%s><source>%s</source>%s</message></context></TS>"""


class FaultsTest(unittest.TestCase):
    def faults_of(self, translation, source="%1 do %2", counted=False):
        text = FRAME % (' numerus="yes"' if counted else "", source, translation)
        found, count = faults(text, 2)
        self.assertEqual(count, 1)
        return found

    def test_lets_a_finished_translation_pass(self):
        self.assertEqual(self.faults_of("<translation>%2 from %1</translation>"), [])

    def test_finds_a_missing_translation(self):
        self.assertEqual(len(self.faults_of("<translation></translation>", source="do")), 1)

    def test_finds_an_unfinished_translation(self):
        self.assertEqual(len(self.faults_of('<translation type="unfinished">%1 to %2</translation>')), 1)

    def test_finds_a_translation_whose_text_is_gone(self):
        for state in ("vanished", "obsolete"):
            self.assertEqual(len(self.faults_of(f'<translation type="{state}">%1 to %2</translation>')), 1)

    def test_finds_other_blanks(self):
        for translation in ("%1 to", "%1 to %3", "%1 to %2 and %2", "%n to %2"):
            self.assertEqual(len(self.faults_of(f"<translation>{translation}</translation>")), 1, translation)

    def test_wants_each_form_of_a_number(self):
        one, two = "<numerusform>%n line</numerusform>", "<numerusform>%n lines</numerusform>"
        for forms, wanted in ((one + two, 0), (one, 1), (one + "<numerusform></numerusform>", 2)):
            found = self.faults_of(f"<translation>{forms}</translation>", source="%n wierszy", counted=True)
            self.assertEqual(len(found), wanted, forms)


if __name__ == "__main__":
    unittest.main()
