# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""A private Prosody on the loopback: its own folder, its own port, gone when its starter is."""

import pathlib
import shutil
import subprocess
import threading

from .events import TIMEOUT
from .process import Child, Port

_CONFIGURATION = """\
run_as_root = true
pidfile = "{home}/prosody.pid"
data_path = "{home}/data"
certificates = "{home}/certificates"
interfaces = {{ "127.0.0.1" }}
c2s_ports = {{ {port} }}
c2s_direct_tls_ports = {{ {tls_port} }}
component_ports = {{ {component_port} }}
component_interfaces = {{ "127.0.0.1" }}
s2s_ports = {{ }}
s2s_direct_tls_ports = {{ }}
http_ports = {{ }}
https_ports = {{ }}
plugin_paths = {{ "{home}/modules" }}
modules_disabled = {{ "s2s" }}
modules_enabled = {{ {modules} }}
authentication = "internal_plain"
storage = "internal"
c2s_require_encryption = {encrypted}
allow_unencrypted_plain_auth = {clear}
allow_registration = {registration}
ssl = {{ certificate = "{certificate}", key = "{key}" }}
log = {{ {{ levels = {{ min = "info" }}, to = "console" }} }}

VirtualHost "{domain}"
{more}{components}"""

# What a component proves itself with.
COMPONENT_SECRET = "tajne komponentu"

# The server tells of its accounts only that they take personal events. Other servers tell it of themselves as well, and
# programs have been written for those: this module of the tests' own does the same here.
ANNOUNCE_PEP = "announce_pep"
_ANNOUNCE_PEP = """\
module:add_identity("pubsub", "pep", "Prosody");
module:add_feature("http://jabber.org/protocol/pubsub");
module:add_feature("http://jabber.org/protocol/pubsub#publish-options");
"""

MODULES = ("roster", "saslauth", "tls", "disco", "ping", "time", "version", "private", "vcard", "pep", "offline",
           "register")


class ServerFailed(RuntimeError):
    """The server did not come up; the text tells why."""


class Prosody:
    """One server for one domain, PLAIN under STARTTLS. `port` stays the same when it is stopped and started again."""

    store_delay = 0  # seconds until what it stores is on the disk
    loses_at_login = False  # what comes for a user in the moment of a login

    def __init__(self, home, certificate, accounts, domain="localhost", modules=MODULES, registration=False, more="",
                 components=(), clear=False):
        """`more` are lines of the configuration behind those of the domain, `components` the addresses of services that
        connect to it from outside, at `component_port`. `clear` lets clients log in without TLS."""
        self.home = pathlib.Path(home)
        self.domain = domain
        self.certificate, self.key = certificate
        self.modules = modules
        self.registration = registration
        self.more = more
        self.components = components
        self.clear = clear
        self.port = self.tls_port = self.component_port = None
        self.child = None
        self._ports = ()
        self._sessions = 0
        self._answer = threading.Condition()
        self._listening = set()
        self._trouble = None
        for folder in ("data", "certificates", "modules"):
            (self.home / folder).mkdir(parents=True, exist_ok=True)
        (self.home / "modules" / f"mod_{ANNOUNCE_PEP}.lua").write_text(_ANNOUNCE_PEP)
        for name, password in accounts.items():
            self.add_account(name, password)

    @property
    def address(self):
        return f"127.0.0.1:{self.port}"

    def add_account(self, name, password):
        folder = self.home / "data" / self.domain.replace(".", "%2e") / "accounts"
        folder.mkdir(parents=True, exist_ok=True)
        (folder / f"{name}.dat").write_text(f'return {{ ["password"] = "{password}"; }};\n')

    def start(self):
        """Starts it and waits until it listens. A port that somebody else took meanwhile is replaced, the first time."""
        if not shutil.which("prosody"):
            raise ServerFailed("prosody is not installed")
        attempts = 1 if self.port else 5
        for _ in range(attempts):
            if attempts > 1:
                self._ports = Port(), Port(), Port()
                self.port, self.tls_port, self.component_port = (port.number for port in self._ports)
            self._launch()
            wanted = {self.port, self.tls_port, *([self.component_port] if self.components else [])}
            with self._answer:
                self._answer.wait_for(lambda: self._trouble or self._listening >= wanted, TIMEOUT)
                trouble = self._trouble
                up = self._listening >= wanted
            if up and not trouble:
                return self
            self.stop(kill=True)
        raise ServerFailed(f"Prosody did not come up: {trouble or 'it does not listen'} (see {self.home}/prosody.log)")

    def _launch(self):
        self._listening, self._trouble, self._sessions = set(), None, 0
        configuration = self.home / "prosody.cfg.lua"
        configuration.write_text(_CONFIGURATION.format(
            home=self.home, port=self.port, tls_port=self.tls_port, domain=self.domain,
            certificate=self.certificate, key=self.key, modules=", ".join(f'"{name}"' for name in self.modules),
            registration=str(self.registration).lower(), clear=str(self.clear).lower(),
            encrypted=str(not self.clear).lower(), more=self.more, component_port=self.component_port,
            components="".join(f'Component "{name}"\ncomponent_secret = "{COMPONENT_SECRET}"\n'
                               for name in self.components)))
        self.child = Child(["prosody", "--config", str(configuration), "-F"], self.home / "prosody.log",
                           on_line=self._on_line, on_end=lambda: self._report("it ended"),
                           stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL)

    def _on_line(self, line):
        text = line.decode("utf-8", "replace")
        if "Failed to open server port" in text:
            self._report(text.strip())
        if "Client connected" in text or "Client disconnected" in text:
            with self._answer:
                self._sessions += 1 if "Client connected" in text else -1
                self._answer.notify_all()
        for port in (self.port, self.tls_port, self.component_port):
            if f"on [127.0.0.1]:{port}" in text and "Activated service" in text:
                with self._answer:
                    self._listening.add(port)
                    self._answer.notify_all()

    def _report(self, trouble):
        with self._answer:
            self._trouble = self._trouble or trouble
            self._answer.notify_all()

    @property
    def sessions(self):
        """The number of clients that are connected, as the server knows it: some time after one has left, fewer."""
        return self._sessions

    def wait_until_left(self):
        """Waits until no client is connected any more; gives whether it came to that."""
        with self._answer:
            return self._answer.wait_for(lambda: self._sessions <= 0, TIMEOUT)

    def stop(self, kill=False):
        """Stops it; with `kill` as a crash would. Its data and its port stay for the next start."""
        if self.child:
            self.child.end(kill)
            self.child = None
