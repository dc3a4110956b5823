# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""What a setting of an account does, as it is seen from outside once the account goes online. Each function here gives one
that takes the test and the messenger; `case` has the peer `olek`, a contact, and `news`, what has come since the login."""

import base64
import itertools

from oku.events import TIMEOUT, Unexpected

from .personal import Personal

FACE = b"\x89PNG\r\n\x1a\n" + bytes(range(256))
OLEK = {"from": "olek@localhost"}
_numbers = itertools.count(1)


def online(case, terminal):
    """The server has the account's presence: from now on it gets what is sent to it."""
    terminal.wait("connection", state="online")
    terminal.wait("presence", where=lambda event: event["jid"] == event["account"])


def refused(case, terminal):
    terminal.wait("notice", text=lambda text: "nie powiodła się, sprawdź użytkownika i hasło" in text)


def settled(case, terminal):
    """Waits until all has come that was sent to the account so far."""
    mark = f"znak {next(_numbers)}"
    case.olek.message("ala@localhost", mark)
    terminal.wait("message", body=mark)


def logs_in_as(jid):
    def observe(case, terminal):
        online(case, terminal)
        text = f"kto to {next(_numbers)}"
        terminal.command("message", to="olek@localhost", body=text)
        case.assertEqual(case.olek.wait("message", body=text)["from"], jid)
    return observe


def encrypted(wanted):
    def observe(case, terminal):
        case.assertIs(terminal.wait("connection", state="online")["encrypted"], wanted)
        case.assertEqual(bool(case.news("connection", state="encrypted")), wanted)
    return observe


def compressed(wanted):
    def observe(case, terminal):
        online(case, terminal)
        case.assertEqual(any("<compress" in event["data"] for event in case.news("xml", direction="out")), wanted)
        case.assertEqual(any("<compressed" in event["data"] for event in case.news("xml", direction="in")), wanted)
        settled(case, terminal)
    return observe


def proxied(kind, target, login=""):
    """The login goes through the proxy; `target` is what it was asked for, for this test."""
    def observe(case, terminal):
        asked = case.proxy.wait("asked")
        case.assertEqual((asked["kind"], asked["target"], asked["login"]), (kind, target(case), login))
        online(case, terminal)
    return observe


def not_proxied(case, terminal):
    before = len(case.proxy.seen("asked"))
    online(case, terminal)
    case.assertEqual(len(case.proxy.seen("asked")), before)


def has_priority(number):
    def observe(case, terminal):
        case.olek.wait("presence", type=None, priority=number, **{"from": lambda jid: jid.startswith("ala@localhost/")})
    return observe


def request_is_left(case, terminal):
    """Who asks gets no answer, and the user is not asked."""
    online(case, terminal)
    case.ewa.presence(to="ala@localhost", kind="subscribe")
    case.ewa.message("ala@localhost", "po prośbie")
    terminal.wait("message", body="po prośbie")
    case.assertEqual(case.news("authorization"), [])
    terminal.command("message", to="ewa@localhost", body="po odpowiedzi")
    case.ewa.wait("message", body="po odpowiedzi")
    case.assertEqual(case.ewa.seen("presence", type=lambda kind: kind in ("subscribed", "unsubscribed")), [])


def request_is_asked_about(case, terminal):
    """The request of before comes again with the login."""
    terminal.wait("authorization", jid="ewa@localhost")
    case.assertEqual(case.ewa.seen("presence", type=lambda kind: kind in ("subscribed", "unsubscribed")), [])


def request_is_answered(kind):
    def observe(case, terminal):
        online(case, terminal)
        case.ewa.presence(to="ala@localhost", kind="subscribe")
        case.ewa.wait("presence", type=kind, **{"from": lambda jid: jid.startswith("ala@localhost")})
        case.assertEqual(case.news("authorization"), [])
    return observe


def normal_message_is(kind):
    def observe(case, terminal):
        online(case, terminal)
        text = f"zwykła {next(_numbers)}"
        case.olek.message("ala@localhost", text, kind="normal")
        case.assertEqual(terminal.wait("message", body=text)["kind"], kind)
    return observe


def is_shown(kind, wanted):
    """Whether a pop-up tells the mood (or tune) that a contact publishes. A server learns at a time of its own that the
    account wants to know, so the contact publishes until it is told."""
    def observe(case, terminal):
        online(case, terminal)
        with case.part():
            personal = Personal(case.peer("olek", case.server, "nastroje"))
            for left in range(19, -1, -1):
                text = f"{kind} {next(_numbers)}"
                personal.mood("calm", text) if kind == "mood" else personal.tune(artist=text)
                try:
                    terminal.wait(kind, timeout=TIMEOUT / 20, where=lambda event: text in str(event), **OLEK)
                    break
                except Unexpected:
                    if not left:
                        raise
        if wanted:
            terminal.wait("popup", kind=kind)
        settled(case, terminal)
        case.assertEqual(bool(case.news("popup", kind=kind)), wanted)
    return observe


def picture_is_fetched(wanted):
    """Whether the contact's client is asked for its picture (XEP-0008) and the picture kept. The switch is about this
    road only: what is in a card or on the server is fetched always."""
    def observe(case, terminal):
        online(case, terminal)
        case.olek.answer_with("jabber:x:avatar", lambda request: (
            f"<iq type='result' to='{request['from']}' id='{request['id']}'><query xmlns='jabber:x:avatar'>"
            f"<data mimetype='image/png'>{base64.b64encode(FACE).decode()}</data></query></iq>"))
        case.olek.raw("<presence><x xmlns='jabber:x:avatar'><hash>buzia</hash></x></presence>")
        if wanted:
            terminal.wait("log", tag="XMAV", text=lambda text: "avatar data (iq)" in text and "buzia" in text)
        settled(case, terminal)
        # The file is written before the messenger does anything else.
        terminal.command("roster")
        case.assertEqual([file.read_bytes() for file in terminal.profile.rglob(".xmppAvatar/Lbuzia")],
                         [FACE] if wanted else [])
        case.assertEqual(bool(case.olek.seen("asked", namespace="jabber:x:avatar")), wanted)
    return observe


def picture_is_told(wanted):
    """Whether the contact sees the hash of the own picture."""
    def observe(case, terminal):
        online(case, terminal)
        own = terminal.ask("own-picture", "own-picture")["hash"] if wanted else None
        case.olek.wait("presence", type=None, picture=own, **{"from": lambda jid: jid.startswith("ala@localhost/")})
        settled(case, terminal)
    return observe


def mail_is_asked_for(wanted):
    """Whether the account asks its server for mail with the login."""
    def observe(case, terminal):
        case.assertIs(case.server.log.wait("asked")["mail"], wanted)
    return observe


def mail_stays(wanted):
    def observe(case, terminal):
        case.assertIs(terminal.wait("popup", kind="mail")["stays"], wanted)
    return observe
