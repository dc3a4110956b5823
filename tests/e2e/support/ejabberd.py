# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""A private ejabberd on the loopback: DIGEST-MD5, PLAIN and zlib; no node name, no port mapper, gone with its starter."""

import base64
import glob
import pathlib
import subprocess
import threading

from oku.events import TIMEOUT
from oku.process import Child, Port
from oku.prosody import COMPONENT_SECRET, ServerFailed

_CONFIGURATION = """\
loglevel: info
log_rotate_count: 0
hosts: [{domain}]
certfiles: ["{home}/server.pem"]
auth_method: internal
auth_password_format: plain
disable_sasl_mechanisms: []
listen:
  - {{ port: {port}, ip: "127.0.0.1", module: ejabberd_c2s, max_stanza_size: 524288, access: c2s, {starttls}: true, zlib: true }}
  - {{ port: {tls_port}, ip: "127.0.0.1", module: ejabberd_c2s, access: c2s, tls: true, zlib: true }}
{components}registration_timeout: infinity
acl:
  local: {{ user_regexp: "" }}
  admin: {{ user: "{admin}@{domain}" }}
access_rules:
  c2s: {{ allow: all }}
  local: {{ allow: local }}
  configure: {{ allow: admin }}
shaper_rules:
  max_user_sessions: 10
modules:
  mod_caps: {{}}
  mod_disco: {{}}
  mod_offline: {{}}
  mod_ping: {{}}
  mod_private: {{}}
  mod_pubsub: {{ access_createnode: local, plugins: [flat, pep] }}
  mod_roster: {{ versioning: true }}
  mod_time: {{}}
  mod_vcard: {{}}
  mod_version: {{}}
{modules}"""

_COMPONENTS = """\
  - port: {port}
    ip: "127.0.0.1"
    module: ejabberd_service
    password: "{secret}"
"""

_START = """\
[true = lists:member(ejabberd_auth:try_register(base64:decode(U), <<"{domain}">>, base64:decode(P)), [ok, {{error, exists}}])
 || {{U, P}} <- {accounts}],
io:format("ACCOUNTS READY~n").
"""


def _base64(text):
    return base64.b64encode(text.encode()).decode()


class Ejabberd:
    """One server for one domain. The accounts are made at its first start; `port` stays for the next."""

    # Seconds until what it stores is on the disk: its database writes behind, and a crash takes back what it has said.
    store_delay = 5
    # It reads what it has stored for a user who logs in, and then deletes all that is stored for that user: what is
    # stored in between goes with it, and to store the first message takes it long.
    loses_at_login = True

    def __init__(self, home, certificate, accounts, domain="localhost", modules=(), admin="nobody",
                 components=(), clear=False):
        """`modules` are those that a test needs besides the usual ones, `admin` is the user who may configure it,
        `components` are the addresses of services that connect to it from outside, at `component_port`.
        `clear` lets clients log in without TLS."""
        self.home = pathlib.Path(home)
        self.domain = domain
        self.accounts = dict(accounts)
        self.modules = modules
        self.admin = admin
        self.components = components
        self.clear = clear
        self.port = self.tls_port = self.component_port = None
        self.child = None
        self._reserved = ()
        self._sessions = 0
        self._answer = threading.Condition()
        self._lines = []
        self._ended = False
        for folder in ("log", "spool"):
            (self.home / folder).mkdir(parents=True, exist_ok=True)
        (self.home / "server.pem").write_text("".join(file.read_text() for file in reversed(certificate)))

    @property
    def address(self):
        return f"127.0.0.1:{self.port}"

    def start(self):
        """Starts it and waits until it listens and knows its accounts."""
        attempts = 1 if self.port else 5
        for _ in range(attempts):
            if attempts > 1:
                self._reserved = Port(), Port(), Port()
                self.port, self.tls_port, self.component_port = (port.number for port in self._reserved)
            self._launch()
            ports = (self.port, self.tls_port, *([self.component_port] if self.components else []))
            lines = ["ACCOUNTS READY", *(f"connections at 127.0.0.1:{port} for" for port in ports)]
            with self._answer:
                self._answer.wait_for(lambda: self._ended or all(map(self._said, lines)), TIMEOUT)
                if not self._ended and all(map(self._said, lines)):
                    self.accounts = {}
                    return self
                last = "\n".join(self._lines[-5:])
            self.stop(kill=True)
        raise ServerFailed(f"ejabberd did not come up; the last it said:\n{last}")

    def _said(self, text):
        return any(text in line for line in self._lines)

    def _launch(self):
        self._lines, self._ended, self._sessions = [], False, 0
        modules = "".join(f"  {name}: {{}}\n" for name in self.modules)
        (self.home / "ejabberd.yml").write_text(_CONFIGURATION.format(
            home=self.home, domain=self.domain, port=self.port, tls_port=self.tls_port, modules=modules,
            admin=self.admin, components=self._listener(), starttls="starttls" if self.clear else "starttls_required"))
        # Erlang reads its arguments in whatever encoding the system has: plain ASCII arrives as it is.
        accounts = "[" + ",".join(f'{{"{_base64(user)}","{_base64(password)}"}}'
                                  for user, password in self.accounts.items()) + "]"
        environment = {
            "ERL_LIBS": glob.glob("/usr/lib/*/ejabberd-*")[0].rsplit("/", 1)[0], "HOME": str(self.home),
            "EJABBERD_CONFIG_PATH": str(self.home / "ejabberd.yml"),
            "EJABBERD_LOG_PATH": str(self.home / "log/ejabberd.log"), "ERL_CRASH_DUMP": "/dev/null",
            "ERL_MAX_PORTS": "4096"}
        self.child = Child(
            ["erl", "-noinput", "+P", "50000", "+S", "1", "-mnesia", "dir", f'"{self.home}/spool"', "-s", "ejabberd",
             "-eval", _START.format(domain=self.domain, accounts=accounts).replace("\n", " ")],
            self.home / "output.log", self._on_line, self._on_end, environment, cwd=self.home,
            stdin=subprocess.DEVNULL, stderr=subprocess.STDOUT)

    def _listener(self):
        """The lines of the configuration for services from outside: each becomes the one that it says it is. A connection
        for which the configuration names services becomes all of them."""
        return _COMPONENTS.format(port=self.component_port, secret=COMPONENT_SECRET) if self.components else ""

    def _on_line(self, line):
        text = line.decode("utf-8", "replace").rstrip()
        with self._answer:
            self._lines.append(text)
            self._sessions += ("Opened c2s session" in text) - ("Closing c2s session" in text)
            self._answer.notify_all()

    def _on_end(self):
        with self._answer:
            self._ended = True
            self._answer.notify_all()

    @property
    def sessions(self):
        """The number of clients that are logged in, as the server knows it: some time after one has left, fewer."""
        return self._sessions

    def wait_until_left(self):
        """Waits until no client is logged in any more; gives whether it came to that."""
        with self._answer:
            return self._answer.wait_for(lambda: self._sessions <= 0, TIMEOUT)

    def stop(self, kill=False):
        """Stops it; with `kill` as a crash would. Its data and its port stay for the next start."""
        if self.child:
            self.child.end(kill)
            self.child = None
