# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Both sides of a conversation in one view: the first person's on the left, the second's on the right."""

import os
import shutil
import sys
import threading
import time
import unicodedata

STAMP = 10
WIDEST_COLUMN = 42
NARROWEST_TEXT = 20  # columns; with less to each side the second one is only set in a little


def _resource(event):
    return f"{event['jid']}/{event['resource']}" if event.get("resource") else event.get("jid", "")


def _presence(event):
    text = f"{_resource(event)} is {event.get('status')}"
    return f"{text}: {event['description']}" if event.get("description") else text


def _contact(event):
    waiting = ", waiting" if event.get("waiting") else ""
    return f"contact {event.get('name') or event.get('jid')} [{event.get('group')}], {event.get('subscription')}{waiting}"


def _connection(event):
    return event.get("state", "") + (f": {event['reason']}" if event.get("reason") else "")


def _typing(event):
    return f"{event.get('from')} " + ("is writing…" if event.get("composing") else "stopped writing")


_TEXTS = {
    "connection": _connection,
    "status": lambda event: f"I am {event.get('status')} {event.get('description') or ''}".rstrip(),
    "contact": _contact,
    "removed": lambda event: f"contact {event.get('jid')} is gone",
    "presence": _presence,
    "authorization": lambda event: f"{event.get('jid')} asks to see my presence",
    "typing": _typing,
    "message": lambda event: f"<{event.get('from')}> {event.get('body')}",
    "sent": lambda event: f"<me> {event.get('body')}",
    "queued": lambda event: f"<me, waiting for the login> {event.get('body')}",
    "question": lambda event: f"? {event.get('title')}: {event.get('text')}",
    "notice": lambda event: f"! {event.get('text')}",
    "not JSON": lambda event: f"!! {event.get('line')}",
}


def _columns_of(character):
    if unicodedata.category(character) in ("Mn", "Me", "Cf"):
        return 0
    return 2 if unicodedata.east_asian_width(character) in "WF" else 1


def _break_place(text, columns):
    """Where the text's first line ends: behind the last blank that fits, or inside a long word."""
    width = 0
    for place, character in enumerate(text):
        width += _columns_of(character)
        if width > columns:
            blank = text.rfind(" ", 0, place + 1)
            return blank if blank > 0 else max(place, 1)
    return len(text)


def wrapped(text, columns):
    """The text in lines of at most that many columns (None: any number), at least one."""
    if columns is None:
        return [text]
    lines = []
    while text or not lines:
        place = _break_place(text, columns)
        lines.append(text[:place].rstrip())
        text = text[place:].lstrip()
    return lines


def second_column(columns):
    """Where the second person's text begins, beside the time; `columns` as in wrapped."""
    if columns is None:
        return WIDEST_COLUMN
    half = (columns - STAMP) // 2
    return min(WIDEST_COLUMN, half) if half >= NARROWEST_TEXT else 2


class View:
    """Prints the events of two messengers as they come; may be called from any thread. `columns` is the width that is
    there (None: any), by default the terminal's."""

    def __init__(self, first, second, columns=...):
        self._width = columns if columns is not ... else (
            max(STAMP + 4, shutil.get_terminal_size().columns) if sys.stdout.isatty() else None)
        self._columns = {first: 0, second: second_column(self._width)}
        self._lock = threading.Lock()
        self._told = {}
        self._colours = sys.stdout.isatty() and not os.environ.get("NO_COLOR")
        self.quiet = False

    def _print(self, text, colour):
        with self._lock:
            print(f"\033[{colour}m{text}\033[0m" if self._colours else text, flush=True)

    def heading(self):
        line = ""
        for name, column in self._columns.items():
            if line and len(line) >= column + STAMP:
                line += " "
            line = line.ljust(column + STAMP) + name.upper()
        self._print(line, "1")

    def event(self, name, event):
        """One event of the messenger `name`; those that say nothing to a person are left out."""
        text = _TEXTS.get(event.get("event"))
        if text is None or self.quiet or not self._news(name, event):
            return
        column = self._columns[name]
        lines = self._lines(text(event), column + STAMP)
        stamp = time.strftime("%H:%M:%S")
        rest = "\n".join(" " * (column + STAMP) + line for line in lines[1:])
        self._print(f"{stamp}  {' ' * column}{lines[0]}" + (f"\n{rest}" if rest else ""), "36" if column else "33")

    def _news(self, name, event):
        """False for what a line of its own has told: the own presence, and a contact that changed in nothing else."""
        if event["event"] == "presence":
            return event.get("jid") != event.get("account")
        if event["event"] != "contact":
            return True
        text, key = _contact(event), (name, event.get("jid"))
        old, self._told[key] = self._told.get(key), text
        return text != old

    def step(self, title, seconds):
        self._print("\n".join(self._lines(f"--- {title}: seen on both sides, {seconds:.1f} s", 0)), "32")

    def say(self, text):
        self._print("\n".join(self._lines(text, 0)), "0")

    def _lines(self, text, indent):
        room = None if self._width is None else self._width - indent
        return [part for line in text.split("\n") for part in wrapped(line, room)]
