# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Two people who talk: each step is an act of one and what both must then see."""

import time


class StepFailed(RuntimeError):
    """A step was not seen on both sides; the text names it and tells what was seen instead."""


class Person:
    """One side: a terminal messenger and its account."""

    def __init__(self, terminal, jid, password, address):
        self.terminal = terminal
        self.jid = jid
        self.password = password
        self.address = address

    def settings(self):
        return {"XMPP/Serv/Enable": 1, "XMPP/Serv/Host": self.address, "XMPP/Serv/SSL": 1, "OKU/PasswordInFile": 1}


def sign_in(person):
    """Adds the account and goes online; the line is encrypted before the password is given."""
    terminal = person.terminal
    terminal.command("account", jid=person.jid, password=person.password, settings=person.settings())
    terminal.command("status", status="online", description="")
    for state in ("encrypted", "authorized", "online"):
        terminal.wait("connection", state=state)


def _both_sign_in(ala, olek):
    sign_in(ala)
    sign_in(olek)


def _subscribe(ala, olek):
    ala.terminal.command("add", jid=olek.jid, name="Olek", group="Znajomi")
    olek.terminal.wait("authorization", jid=ala.jid)
    olek.terminal.command("authorize", jid=ala.jid, ask=True)
    ala.terminal.wait("authorization", jid=olek.jid)
    ala.terminal.command("authorize", jid=olek.jid, ask=False)
    for one, other in ((ala, olek), (olek, ala)):
        one.terminal.wait("contact", jid=other.jid, subscription="both")


def _see_each_other(ala, olek):
    for one, other in ((ala, olek), (olek, ala)):
        one.terminal.wait("presence", jid=other.jid, status="online")
    olek.terminal.command("status", status="away", description="Zaraz wracam ☕")
    olek.terminal.wait("status", status="away")
    ala.terminal.wait("presence", jid=olek.jid, status="away", description="Zaraz wracam ☕")


def _say(speaker, listener, body):
    speaker.terminal.command("message", to=listener.jid, body=body)
    speaker.terminal.wait("sent", to=listener.jid, body=body)
    listener.terminal.wait("message", **{"from": speaker.jid}, body=body)


def _first_words(ala, olek):
    _say(ala, olek, "Cześć, Olku! 👋")
    _say(olek, ala, "Zażółć gęślą jaźń, Alu 🦆")


def _type(speaker, listener):
    for composing in (True, False):
        speaker.terminal.command("typing", to=listener.jid, composing=composing)
        listener.terminal.wait("typing", **{"from": speaker.jid}, composing=composing)


def _type_and_talk(ala, olek):
    _type(ala, olek)
    _say(ala, olek, "Widzisz, że piszę? <tak> & nie…")
    _type(olek, ala)
    _say(olek, ala, "Widzę!\nI w dwóch wierszach też.")


STEPS = (
    ("log in under STARTTLS", _both_sign_in),
    ("subscribe to each other", _subscribe),
    ("see each other's presence", _see_each_other),
    ("greet each other", _first_words),
    ("type and talk", _type_and_talk),
)


def play(ala, olek, tell):
    """Plays all steps. `tell(title, seconds)` hears of each one that both sides have seen, before the next begins."""
    for title, step in STEPS:
        started = time.monotonic()
        try:
            step(ala, olek)
        except Exception as error:
            raise StepFailed(f"{title}: {error}") from error
        tell(title, time.monotonic() - started)
