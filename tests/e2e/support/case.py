# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""The ground of each test: a folder of its own, a certificate authority, and everything ended afterwards."""

import contextlib
import os
import pathlib
import shutil
import tempfile
import time
import unittest

from oku.certificates import Authority
from oku.events import TIMEOUT, Unexpected
from oku.prosody import Prosody
from oku.terminal import OkuTerminal

from .ejabberd import Ejabberd
from .fast_time import Watch
from .peer import Peer
from .plain import PlainTerminal
from .purple import Purple
from .scripted import ScriptedServer
from .soak import wait_until

BUILD = pathlib.Path(os.environ["OKU_BUILD"])
PASSWORDS = {"ala": "sekret ali ąę", "olek": "sekret olka", "ewa": "sekret ewy"}


class NotInTime(AssertionError):
    """What lives by a faster clock had no time for what the test builds on: nothing is known of what it is about."""


class Case(unittest.TestCase):
    """Makes messengers, peers and servers that end with the test. Its folder stays when the test failed."""

    def setUp(self):
        self.folder = self._whole_folder = _new_folder(self._testMethodName)
        self.authority = self.class_authority()
        self.addCleanup(self._tidy)
        self._clients = 0  # made so far, in or around this part

    @classmethod
    def class_authority(cls):
        """One authority for all tests of a class: making keys takes longer than most steps."""
        if "_authority" not in cls.__dict__:
            cls._authority = Authority(cls.class_folder())
            cls._localhost = cls._authority.issue("localhost")
        return cls._authority

    @classmethod
    def class_folder(cls):
        """A folder that goes with the class."""
        folder = _new_folder(cls.__name__)
        cls.addClassCleanup(_remove, folder)
        return folder

    def _tidy(self):
        result = self._outcome.result
        if not any(getattr(test, "test_case", test) is self for test, _ in result.failures + result.errors):
            _remove(self._whole_folder)

    @contextlib.contextmanager
    def part(self):
        """What a part of a test has made ends with that part, also when it failed: the next part meets nothing of it."""
        outer, self._cleanups = self._cleanups, []
        clients = self._clients
        try:
            yield
        finally:
            self.doCleanups()
            self._cleanups, self._clients = outer, clients
            if "_shared" in self.__class__.__dict__ and not clients:
                _wait_until_left(self._shared)

    @contextlib.contextmanager
    def subTest(self, *arguments, **named):
        with super().subTest(*arguments, **named), self.part():
            yield

    def in_good_time(self, play):
        """Plays what lives by a faster clock, and plays it anew where it failed while the machine stood still."""
        for left in range(4, -1, -1):
            with Watch() as watch, self.part():
                try:
                    return play()
                except AssertionError as failure:
                    if not left or not (watch.stood_still or isinstance(failure, NotInTime)):
                        raise

    def prosody(self, accounts=PASSWORDS, certificate=None, **options):
        server = Prosody(self.folder / "prosody", certificate or self._localhost, accounts, **options)
        self.addCleanup(lambda: server.stop(kill=True))
        return server.start()

    def ejabberd(self, accounts=PASSWORDS):
        server = Ejabberd(self.folder / "ejabberd", self._localhost, accounts)
        self.addCleanup(lambda: server.stop(kill=True))
        return server.start()

    @classmethod
    def shared(cls, kind, prepare):
        """One server for all tests of the class, for those that leave nothing behind on it. The first test starts and
        prepares it."""
        if "_shared" not in cls.__dict__:
            cls.class_authority()
            server = kind(cls.class_folder(), cls._localhost, PASSWORDS)
            cls.addClassCleanup(lambda: server.stop(kill=True))
            prepare(server.start())
            cls._shared = server
        _wait_until_left(cls._shared)
        return cls._shared

    def scripted(self, script):
        server = ScriptedServer(script)
        self.addCleanup(server.stop)
        return server

    def peer(self, user, server, resource="peer", priority=0, start=True, kind=Peer):
        self._clients += 1
        peer = kind(user, PASSWORDS[user], server, self.authority.certificate, resource)
        self.addCleanup(peer.stop)
        return peer.start(priority) if start else peer

    def purple(self, user, server):
        self._clients += 1
        purple = Purple(BUILD / "purple-bot", self.folder / "libpurple", user, PASSWORDS[user], server,
                        self.authority.certificate)
        self.addCleanup(purple.stop)
        return purple.start()

    def messenger(self, profile="profile", start=True, powerless=False, **options):
        """A terminal messenger that ends well: a crash or a sanitizer's report fails the test. Nothing is unreadable
        for root; a `powerless` one has given that power up."""
        self._clients += 1
        terminal = OkuTerminal(f"{self._testMethodName}/{profile}", BUILD, self.folder / profile,
                               options.pop("authority", self.authority.certificate), **options)
        if powerless and os.geteuid() == 0:
            powers = "-dac_override,-dac_read_search"
            terminal.arguments[:0] = ["setpriv", f"--bounding-set={powers}", f"--inh-caps={powers}"]
        self.addCleanup(self._end, terminal)
        return terminal.start() if start else terminal

    def plain(self, profile="profile", environment=None):
        """A messenger as a person has it in a line-by-line terminal, with a profile that has an account already."""
        self._clients += 1
        terminal = PlainTerminal(BUILD, self.folder / profile, self.authority.certificate, environment=environment)
        self.addCleanup(terminal.stop)
        terminal.next("/quit")
        return terminal

    def _end(self, terminal):
        """A messenger that still runs must go by itself, without a report of a sanitizer."""
        try:
            if terminal.child and terminal.child.running:
                self.assertEqual(terminal.quit(), 0, f"the messenger's exit code; {terminal.errors()}")
        finally:
            terminal.stop(kill=True)
        self.assertNotRegex(terminal.errors(), "runtime error|AddressSanitizer|LeakSanitizer")

    def account(self, terminal, user, server, password=None, settings=None):
        """Adds the user's account on that server to the messenger."""
        terminal.command("account", jid=f"{user}@{server.domain}",
                         password=PASSWORDS[user] if password is None else password,
                         settings={"XMPP/Serv/Enable": 1, "XMPP/Serv/Host": server.address, "OKU/PasswordInFile": 1,
                                   **(settings or {})})

    def wait_until_kept(self, terminal, user):
        """Waits until the password of the user's account lies in its file: the key ring, of which there is none here, is
        asked first, and answers some time after the account's `ok`."""
        secret = PASSWORDS[user].encode()
        wait_until(lambda: any(secret in file.read_bytes() for file in terminal.profile.glob("*.config")),
                   f"the password of {user} in a file")

    def online(self, user, server, profile=None, settings=None, **options):
        """A messenger whose account has logged in and has its roster. The server has its presence: what is written to
        the account goes to it, and not into a store that a first presence coming just then may miss."""
        terminal = self.messenger(profile or user, **options)
        self.account(terminal, user, server, settings=settings)
        terminal.command("status", status="online")
        terminal.wait("connection", state="online")
        own = {"event": "presence", "jid": f"{user}@{server.domain}"}
        terminal.wait_for(lambda event: own.items() <= event.items(), "the own presence")
        return terminal


# A scripted server speaks in clear; the person must have allowed that.
CLEAR = {"XMPP/Serv/SSL": 0, "OKU/AllowClearText": 1}


def _new_folder(name):
    scratch = BUILD / "e2e"
    scratch.mkdir(exist_ok=True)
    return pathlib.Path(tempfile.mkdtemp(prefix=f"{name}-", dir=scratch))


def _remove(folder):
    """Removes a folder, also one in which something that is just ending still writes."""
    limit = time.monotonic() + TIMEOUT
    while True:
        try:
            return shutil.rmtree(folder)
        except OSError:
            if time.monotonic() > limit:
                raise
            time.sleep(0.05)


def _wait_until_left(server):
    """Waits until a server that goes on has noticed that all have left: the next test, or part of one, is not to see them."""
    if not server.wait_until_left():
        raise Unexpected(f"{server.domain} still has {server.sessions} sessions")
