# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""The view of ./run: two people's events side by side, on a terminal of any width."""

import contextlib
import io
import pathlib
import re
import sys
import unicodedata
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[3] / "scripts"))

from oku.view import View, second_column, wrapped  # noqa: E402

EVENTS = (("ala", {"event": "message", "from": "olek@localhost", "body": "Zażółć gęślą jaźń 李梅 🦆 " * 4}),
          ("olek", {"event": "contact", "jid": "ala@localhost", "name": "Ala", "group": "Znajomi i rodzina",
                    "subscription": "both"}),
          ("olek", {"event": "notice", "text": "x" * 200}),
          ("ala", {"event": "connection", "state": "online"}))


def width(text):
    return sum(0 if unicodedata.category(one) in ("Mn", "Cf") else 2 if unicodedata.east_asian_width(one) in "WF" else 1
               for one in text)


def shown(columns):
    with contextlib.redirect_stdout(io.StringIO()) as output:
        view = View("ala", "olek", columns)
        view.say("A private Prosody listens on 127.0.0.1:5222; all of it lies under build/run.")
        view.heading()
        for name, event in EVENTS:
            view.event(name, event)
        view.step("both log in and see each other's presence", 1.25)
    return output.getvalue().splitlines()


class TheView(unittest.TestCase):
    def test_no_line_is_wider_than_the_terminal(self):
        for columns in range(20, 131):
            for line in shown(columns):
                self.assertLessEqual(width(line), columns, (columns, line))

    def test_no_letter_is_lost(self):
        wanted = re.sub(r"\s", "", EVENTS[0][1]["body"])
        for columns in (24, 40, 71, 72, 120):
            self.assertIn(wanted, re.sub(r"\s", "", "".join(shown(columns))))

    def test_the_second_side_stands_to_the_right_where_there_is_room(self):
        self.assertEqual([second_column(columns) for columns in (None, 120, 94, 72, 50, 49, 20)],
                         [42, 42, 42, 31, 20, 2, 2])
        self.assertTrue(any(line.find("contact Ala") == 41 for line in shown(72)))

    def test_lines_break_at_blanks_by_columns(self):
        self.assertEqual(wrapped("raz dwa trzy", 7), ["raz dwa", "trzy"])
        self.assertEqual(wrapped("raz dwa trzy", 8), ["raz dwa", "trzy"])
        self.assertEqual(wrapped("李梅李梅", 5), ["李梅", "李梅"])
        self.assertEqual(wrapped("konstantynopol", 6), ["konsta", "ntynop", "ol"])
        self.assertEqual(wrapped("", 5), [""])
        self.assertEqual(wrapped("raz dwa", None), ["raz dwa"])


if __name__ == "__main__":
    unittest.main()
