# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""A proxy that speaks SOCKS 4, 4A and 5 and HTTP, leads everybody to one server, and tells what it was asked."""

import base64
import re
import socket
import threading

from oku.events import TIMEOUT, EventLog


class Proxy:
    """An event `asked` for each connection: `kind` ("SOCKS4" "SOCKS4A" "SOCKS5" "HTTP"), `target` and `login`."""

    def __init__(self, server):
        self.log = EventLog("the proxy")
        self.wait, self.seen = self.log.wait, self.log.seen
        self._server = server
        self._listener = socket.create_server(("127.0.0.1", 0))
        self.port = self._listener.getsockname()[1]
        self._open = []
        self._thread = threading.Thread(target=self._accept, daemon=True)
        self._thread.start()

    def _accept(self):
        while True:
            try:
                client, _ = self._listener.accept()
            except OSError:
                return
            self._open.append(client)
            threading.Thread(target=self._serve, args=(client,), daemon=True).start()

    def _serve(self, client):
        try:
            client.settimeout(TIMEOUT)
            with client, client.makefile("rb", buffering=0) as stream:
                handshake = {b"\4": self._socks4, b"\5": self._socks5}.get(first := stream.read(1), self._http)
                kind, target, login, answer = handshake(client, stream, first)
                self.log.add({"event": "asked", "kind": kind, "target": target, "login": login})
                with socket.create_connection(("127.0.0.1", self._server.port)) as server:
                    self._open.append(server)
                    client.sendall(answer)
                    threading.Thread(target=_pump, args=(server, client), daemon=True).start()
                    client.settimeout(None)
                    _pump(client, server)
        except (OSError, ValueError) as error:
            self.log.add({"event": "failed", "error": repr(error)})

    def _socks4(self, client, stream, _):
        _, port, address = stream.read(1), int.from_bytes(_exactly(stream, 2)), _exactly(stream, 4)
        user = _until_nul(stream)
        by_name = address[:3] == b"\0\0\0" and address[3]
        host = _until_nul(stream) if by_name else socket.inet_ntoa(address)
        return "SOCKS4A" if by_name else "SOCKS4", f"{host}:{port}", user, b"\0\x5a" + bytes(6)

    def _socks5(self, client, stream, _):
        methods, login = _exactly(stream, _exactly(stream, 1)[0]), ""
        client.sendall(b"\5\2" if 2 in methods else b"\5\0")
        if 2 in methods:
            _exactly(stream, 1)
            user, password = (_exactly(stream, _exactly(stream, 1)[0]).decode() for _ in range(2))
            login = f"{user}:{password}"
            client.sendall(b"\1\0")
        kind = _exactly(stream, 4)[3]
        host = socket.inet_ntoa(_exactly(stream, 4)) if kind == 1 else _exactly(stream, _exactly(stream, 1)[0]).decode()
        port = int.from_bytes(_exactly(stream, 2))
        return "SOCKS5", f"{host}:{port}", login, b"\5\0\0\1" + bytes(6)

    def _http(self, client, stream, first):
        head = first
        while not head.endswith(b"\r\n\r\n"):
            head += _exactly(stream, 1)
        target = re.match(rb"CONNECT (\S+) HTTP", head)
        login = re.search(rb"(?i)proxy-authorization: basic (\S+)", head)
        if not target:
            raise ValueError(head)
        return ("HTTP", target.group(1).decode(), base64.b64decode(login.group(1)).decode() if login else "",
                b"HTTP/1.1 200 OK\r\n\r\n")

    def stop(self):
        """Stops listening and cuts what is open."""
        self._listener.shutdown(socket.SHUT_RDWR)
        self._listener.close()
        for one in self._open:
            try:
                one.shutdown(socket.SHUT_RDWR)
            except OSError:
                pass
        self._thread.join(TIMEOUT)


def _exactly(stream, count):
    data = b""
    while len(data) < count:
        piece = stream.read(count - len(data))
        if not piece:
            raise ValueError("the other side left")
        data += piece
    return data


def _until_nul(stream):
    text = b""
    while (one := _exactly(stream, 1)) != b"\0":
        text += one
    return text.decode()


def _pump(source, sink):
    """Carries bytes until one side leaves, and lets the other one know."""
    try:
        while data := source.recv(65536):
            sink.sendall(data)
    except OSError:
        pass
    for one in (source, sink):
        try:
            one.shutdown(socket.SHUT_RDWR)
        except OSError:
            pass
