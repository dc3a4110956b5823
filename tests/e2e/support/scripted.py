# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""A server that does as the test says: it speaks as much XMPP as a login needs, in clear or by TLS, and misbehaves."""

import re
import socket
import ssl
import threading

from oku.events import TIMEOUT, EventLog

HEADER = ("<?xml version='1.0'?><stream:stream xmlns='jabber:client' xmlns:stream='http://etherx.jabber.org/streams' "
          "id='scripted' from='localhost' version='1.0'>")
MECHANISMS = ("<stream:features><mechanisms xmlns='urn:ietf:params:xml:ns:xmpp-sasl'><mechanism>PLAIN</mechanism>"
              "</mechanisms></stream:features>")
STARTTLS = "<stream:features><starttls xmlns='urn:ietf:params:xml:ns:xmpp-tls'/></stream:features>"
PROCEED = "<proceed xmlns='urn:ietf:params:xml:ns:xmpp-tls'/>"
BIND = ("<stream:features><bind xmlns='urn:ietf:params:xml:ns:xmpp-bind'/>"
        "<session xmlns='urn:ietf:params:xml:ns:xmpp-session'/></stream:features>")
SUCCESS = "<success xmlns='urn:ietf:params:xml:ns:xmpp-sasl'/>"


class Connection:
    """One accepted connection: what came, and what is sent."""

    def __init__(self, sock):
        self.socket = sock
        self.received = ""
        self.heard = ""  # all that came so far

    def send(self, data):
        """Sends text or bytes; gives False when the other side has gone."""
        try:
            self.socket.sendall(data.encode() if isinstance(data, str) else data)
            return True
        except OSError:
            return False

    def expect(self, pattern, timeout=TIMEOUT):
        """Reads until the pattern is in what came since the last call, and gives the match; None at the end."""
        self.socket.settimeout(timeout)
        while True:
            found = re.search(pattern, self.received, re.DOTALL)
            if found:
                self.received = self.received[found.end():]
                return found
            try:
                piece = self.socket.recv(65536)
            except OSError:
                return None
            if not piece:
                return None
            text = piece.decode("utf-8", "replace")
            self.received += text
            self.heard += text

    def serve_to_end(self):
        """Reads until the other side closes its stream, and answers that as a server does."""
        if self.expect(r"</stream:stream>"):
            self.send("</stream:stream>")

    def wait_for_end(self, timeout=TIMEOUT):
        """Reads and answers nothing until the other side closes; False when it does not within the time."""
        self.socket.settimeout(timeout)
        try:
            while self.socket.recv(65536):
                pass
        except TimeoutError:
            return False
        except OSError:
            pass
        return True

    def answer_iq(self, pattern, content=""):
        """Waits for the iq whose text holds the pattern and answers it with a result."""
        found = self.expect(r"<iq\b[^>]*>(?:(?!</iq>).)*" + pattern + r"(?:(?!</iq>).)*</iq>")
        if not found:
            return False
        number = re.search(r"\bid=['\"]([^'\"]*)['\"]", found.group(0)).group(1)
        return self.send(f"<iq type='result' id='{number}'>{content}</iq>")

    def start_tls(self, identity):
        """Answers the other side's handshake with a certificate and its key; False when there is none."""
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(*identity)
        self.socket.settimeout(TIMEOUT)
        try:
            self.socket = context.wrap_socket(self.socket, server_side=True)
        except OSError:
            return False
        self.received = ""
        return True

    def offer_tls(self):
        """Goes on until the other side asks for TLS."""
        return bool(self.expect(r"<stream:stream[^>]*>") and self.send(HEADER + STARTTLS)
                    and self.expect(r"<starttls[^>]*>"))

    def log_in_by_tls(self, identity, items=""):
        return self.offer_tls() and self.send(PROCEED) and self.start_tls(identity) and self.log_in(items)

    def log_in(self, items="", features=""):
        """Goes through a whole login; `items` are the roster's, `features` what the server tells that it can do. False
        when the other side left."""
        return bool(
            self.expect(r"<stream:stream[^>]*>") and self.send(HEADER + MECHANISMS)
            and self.expect(r"<auth\b[^>]*>[^<]*</auth>") and self.finish_login(items, features))

    def finish_login(self, items="", features=""):
        """Goes from the success of a login to its end."""
        return bool(
            self.send(SUCCESS) and self.expect(r"<stream:stream[^>]*>") and self.send(HEADER + BIND)
            and self.answer_iq("xmpp-bind", "<bind xmlns='urn:ietf:params:xml:ns:xmpp-bind'>"
                               "<jid>ala@localhost/x</jid></bind>")
            and self.answer_iq("xmpp-session")
            and self.answer_iq("disco#info", f"<query xmlns='http://jabber.org/protocol/disco#info'>{features}</query>")
            and self.answer_iq("jabber:iq:roster", f"<query xmlns='jabber:iq:roster'>{items}</query>")
            and self.expect(r"<presence\b"))


class ScriptedServer:
    """Calls `script(connection, number)` on a thread of its own for each connection, numbered from 1."""

    def __init__(self, script, domain="localhost"):
        self.domain = domain
        self.log = EventLog("the scripted server")
        self._script = script
        self._connections = []
        self._listener = socket.create_server(("127.0.0.1", 0))
        self.port = self._listener.getsockname()[1]
        self._thread = threading.Thread(target=self._accept, daemon=True)
        self._thread.start()

    @property
    def address(self):
        return f"127.0.0.1:{self.port}"

    def _accept(self):
        number = 0
        while True:
            try:
                sock, _ = self._listener.accept()
            except OSError:
                return
            number += 1
            connection = Connection(sock)
            self._connections.append(connection)
            self.log.add({"event": "accepted", "number": number})
            threading.Thread(target=self._serve, args=(connection, number), daemon=True).start()

    def _serve(self, connection, number):
        try:
            self._script(connection, number)
            self.log.add({"event": "done", "number": number})
        except Exception as error:
            self.log.add({"event": "failed", "number": number, "error": repr(error)})
        finally:
            connection.socket.close()

    def stop(self):
        """Stops listening and cuts what is open."""
        self._listener.shutdown(socket.SHUT_RDWR)
        self._listener.close()
        for connection in self._connections:
            try:
                connection.socket.shutdown(socket.SHUT_RDWR)
            except OSError:
                pass
        self._thread.join(TIMEOUT)
