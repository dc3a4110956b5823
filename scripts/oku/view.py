"""Both sides of a conversation in one view: the first person's on the left, the second's on the right."""

import os
import shutil
import sys
import textwrap
import threading
import time

COLUMN = 42
STAMP = 10


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


def _wrapped(line, indent):
    """The line in parts that fit behind the indent; as it is where nobody looks at a terminal."""
    if not sys.stdout.isatty():
        return [line]
    return textwrap.wrap(line, max(20, shutil.get_terminal_size().columns - indent)) or [""]


class View:
    """Prints the events of two messengers as they come; may be called from any thread."""

    def __init__(self, first, second):
        self._columns = {first: 0, second: COLUMN}
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
            line = line.ljust(column + STAMP) + name.upper()
        self._print(line, "1")

    def event(self, name, event):
        """One event of the messenger `name`; those that say nothing to a person are left out."""
        text = _TEXTS.get(event.get("event"))
        if text is None or self.quiet or not self._news(name, event):
            return
        column = self._columns[name]
        lines = [part for line in text(event).split("\n") for part in _wrapped(line, column + STAMP)]
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
        self._print(f"--- {title}: seen on both sides, {seconds:.1f} s", "32")

    def say(self, text):
        self._print("\n".join(part for line in text.split("\n") for part in _wrapped(line, 0)), "0")
