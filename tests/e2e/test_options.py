# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Each setting of the options page: changed there, saved, and seen to act at the next login.

The real servers here have no news of mail: a scripted one stands for one that has. Prosody has no compression."""

import functools
import unittest

from oku.prosody import ANNOUNCE_PEP, MODULES, Prosody
from support.case import CLEAR, PASSWORDS, Case
from support.ejabberd import Ejabberd
from support.friends import befriend
from support.observed import (
    compressed, encrypted, has_priority, is_shown, logs_in_as, mail_is_asked_for, mail_stays, normal_message_is,
    not_proxied, online, picture_is_fetched, picture_is_told, proxied, refused, request_is_answered,
    request_is_asked_about, request_is_left)
from support.options import CONTROLS, OptionsPage, save
from support.pictures import png
from support.proxies import Proxy
from support.windows import notice


def address(case):
    return case.server.address


def tls_address(case):
    return f"127.0.0.1:{case.server.tls_port}"


def proxy_port(case):
    return case.proxy.port


def own_name(_):
    return "localhost:5222"


OWN_PROXY = {"XMPP/Proxy/OKU": 0, "XMPP/Proxy/Enable": 1, "XMPP/Proxy/Host": "127.0.0.1", "XMPP/Proxy/Port": proxy_port}
LOGIN = {"XMPP/Proxy/Auth": 1, "XMPP/Proxy/User": "użytkownik", "XMPP/Proxy/Pass": "tajne ąę"}
# By name: the settings that are changed in the page, and what is seen at the login after that; one after the other.
TABLE = {
    "resource": [({"XMPP/User": "ala@localhost/nowy zasób"}, logs_in_as("ala@localhost/nowy zasób"))],
    "user": [({"XMPP/User": "ewa@localhost/dom", "XMPP/Pass": PASSWORDS["ewa"]}, logs_in_as("ewa@localhost/dom"))],
    "password": [({"XMPP/Pass": "nie to"}, refused), ({"XMPP/Pass": PASSWORDS["ala"]}, online)],
    "priority": [({"XMPP/Priority": text}, has_priority(seen))
                 for text, seen in (("17", "17"), ("200", "127"), ("-200", "-127"), ("5", "5"))],
    "authorization": [({"XMPP/AuthType": 3}, request_is_left), ({"XMPP/AuthType": 0}, request_is_asked_about),
                      ({"XMPP/AuthType": 1}, request_is_answered("unsubscribed")),
                      ({"XMPP/AuthType": 2}, request_is_answered("subscribed"))],
    "normal_messages": [({"XMPP/MessageAsChat": 1}, normal_message_is("chat")),
                        ({"XMPP/MessageAsChat": 0}, normal_message_is("normal"))],
    "tunes": [({"XMPP/XEP-118": on}, is_shown("tune", bool(on))) for on in (0, 1)],
    "moods": [({"XMPP/XEP-107": on}, is_shown("mood", bool(on))) for on in (0, 1)],
    "pictures": [({"XMPP/Avatar/Enable": on}, picture_is_fetched(bool(on))) for on in (0, 1)],
    "own_picture": [({"XMPP/Avatar/SendEnable": on}, picture_is_told(bool(on))) for on in (1, 0)],
    "server": [({"XMPP/Serv/Host": address}, online), ({"XMPP/Serv/Host": tls_address, "XMPP/Serv/SSL/Legacy": 1},
                                                       encrypted(True)),
               ({"XMPP/Serv/Host": address, "XMPP/Serv/SSL/Legacy": 0}, encrypted(True))],
    "own_server": [({**OWN_PROXY, "XMPP/Proxy/Type": 3, "XMPP/Serv/Enable": 0}, proxied("HTTP", own_name)),
                   ({"XMPP/Serv/Enable": 1, "XMPP/Serv/Host": address}, proxied("HTTP", address))],
    "tls": [({"XMPP/Serv/SSL": on}, encrypted(bool(on))) for on in (0, 1)],
    "proxies": [({**OWN_PROXY, "XMPP/Proxy/Type": place}, proxied(kind, address))
                for place, kind in ((0, "SOCKS4"), (1, "SOCKS4A"), (2, "SOCKS5"), (3, "HTTP"))]
               + [({"XMPP/Proxy/Enable": 0}, not_proxied)],
    "proxy_login": [({**OWN_PROXY, **LOGIN, "XMPP/Proxy/Type": place}, proxied(kind, address, login))
                    for place, kind, login in ((0, "SOCKS4", "użytkownik"), (2, "SOCKS5", "użytkownik:tajne ąę"),
                                               (3, "HTTP", "użytkownik:tajne ąę"))]
                   + [({"XMPP/Proxy/Auth": 0}, proxied("HTTP", address))],
    "proxy_of_the_messenger": [({"XMPP/Proxy/OKU": 0}, not_proxied), ({"XMPP/Proxy/OKU": 1}, proxied("SOCKS5", address))],
}
EJABBERD = {"compression": [({"XMPP/Serv/Compress": on}, compressed(bool(on))) for on in (1, 0)]}
MAIL = {"mail": [({"XMPP/GMail": on}, mail_is_asked_for(bool(on))) for on in (0, 1)],
        "news_of_mail": [({"XMPP/GMailLeave": on}, mail_stays(bool(on))) for on in (1, 0)]}
# What the account has before: by the name of the test.
BEFORE = {"server": {"XMPP/Serv/Host": "127.0.0.1:1"}, "tls": {"OKU/AllowClearText": 1}}


def played(*tables):
    """Gives a class a test for each name of the tables."""
    def test(name, steps):
        return lambda case: case.play(name, steps)

    def add(kind):
        for table in tables:
            for name, steps in table.items():
                setattr(kind, f"test_{name}", test(name, steps))
        return kind
    return add


class Options(Case):
    settings = {}

    def play(self, name, steps):
        terminal = self.prepared(name)
        for changes, observe in steps:
            save(terminal, {key: value(self) if callable(value) else value for key, value in changes.items()})
            terminal.forget()
            self.begin = len(terminal.log.all())
            terminal.command("status", status="online")
            observe(self, terminal)
            terminal.command("status", status="offline")
            terminal.wait("connection", state="offline")

    def prepared(self, name):
        """A messenger with the account, offline."""
        terminal = self.messenger(options=("--verbose",), start=False)
        self.prepare(name, terminal)
        terminal.start()
        terminal.command("console", on=True)
        self.account(terminal, "ala", self.server, settings={**self.settings, **BEFORE.get(name, {})})
        if name == "own_picture":
            (self.folder / "own.png").write_bytes(png(2, 2))
            terminal.command("set-picture", path=str(self.folder / "own.png"))
        self.terminal = terminal
        return terminal

    def news(self, kind, /, **fields):
        """The events since the account was told to go online."""
        return [event for event in self.terminal.log.all()[self.begin:] if {"event": kind, **fields}.items() <= event.items()]


class OverRealServers(Options):
    def prepare(self, name, terminal):
        self.olek = self.peer("olek", self.server, "dom")
        if name == "authorization":
            self.ewa = self.peer("ewa", self.server)
        self.proxy = Proxy(self.server)
        self.addCleanup(self.proxy.stop)
        terminal.profile.mkdir(parents=True)
        (terminal.profile / "oku.config").write_text(
            f'OKU/Proxy/Enable = {int(name == "proxy_of_the_messenger")}\nOKU/Proxy/Type = 3\n'
            f'OKU/Proxy/Host = "127.0.0.1"\nOKU/Proxy/Port = {self.proxy.port}\n')

    def setUp(self):
        super().setUp()
        self.server = self.shared(self.kind, lambda server: befriend(self, server, "ala", "olek"))


@played(TABLE)
class OverProsody(OverRealServers):
    kind = functools.partial(Prosody, modules=(*MODULES, ANNOUNCE_PEP), clear=True)


@played(TABLE, EJABBERD)
class OverEjabberd(OverRealServers):
    kind = functools.partial(Ejabberd, clear=True)


@played(MAIL)
class OverScriptedServer(Options):
    settings = CLEAR

    def setUp(self):
        super().setUp()
        self.server = self.scripted(self.script)

    def prepare(self, name, terminal):
        pass

    def script(self, connection, _):
        """Tells whether it was asked for mail by the time that it had an answer to what it asked itself behind the login,
        and has new mail for whoever did."""
        if not connection.log_in(features="<feature var='google:mail:notify'/>"):
            return
        connection.send("<iq type='get' id='koniec' from='localhost'><ping xmlns='urn:xmpp:ping'/></iq>")
        connection.expect("koniec")
        asked = "google:mail:notify" in connection.heard
        self.server.log.add({"event": "asked", "mail": asked})
        if asked:
            connection.send("<iq type='set' id='push'><new-mail xmlns='google:mail:notify'/></iq>")
            connection.answer_iq("google:mail:notify", "<mailbox xmlns='google:mail:notify'><mail-thread-info tid='1'>"
                                 "<senders><sender name='Olek' address='olek@localhost'/></senders>"
                                 "<subject>Obiad</subject></mail-thread-info></mailbox>")
        connection.serve_to_end()


class Page(Case):
    def test_each_setting_of_the_page_is_seen_to_act(self):
        terminal = self.messenger()
        terminal.command("account", jid="ala@localhost", password="sekret", settings={"OKU/PasswordInFile": 1})
        self.assertEqual(OptionsPage(terminal).settings(), set(CONTROLS.values()))
        changed = {key for table in (TABLE, EJABBERD, MAIL) for steps in table.values() for changes, _ in steps
                   for key in changes}
        self.assertEqual(changed, set(CONTROLS))


# The classes that others are made of are no tests.
del Options, OverRealServers

if __name__ == "__main__":
    unittest.main()
