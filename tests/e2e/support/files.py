# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""A slixmpp client that offers and takes files: stream initiation with the bytes in the stream."""

import hashlib

from slixmpp.xmlstream.handler import CoroutineCallback
from slixmpp.xmlstream.matcher import StanzaPath

from oku.events import TIMEOUT

from .peer import Peer

IBB = "http://jabber.org/protocol/ibb"
SI = "http://jabber.org/protocol/si"
TRANSFER = "http://jabber.org/protocol/si/profile/file-transfer"
SOCKS5 = "http://jabber.org/protocol/bytestreams"


def sha1(content):
    return hashlib.sha1(content).hexdigest()


class FilePeer(Peer):
    """Takes every file that it is offered, and tells of it by an event `file`."""

    def prepare(self):
        async def register():
            client = self._client
            for plugin in ("xep_0047", "xep_0095", "xep_0096", "xep_0115"):
                client.register_plugin(plugin)
            initiation = client["xep_0095"]
            # The library gives the offer to a handler that nobody awaits.
            client.remove_handler("SI Request")
            client.register_handler(CoroutineCallback("SI Request", StanzaPath("iq@type=set/si"),
                                                      initiation._handle_request))
            initiation.unregister_method(SOCKS5)
            # It takes an empty block for a fault; one is all that an empty file has.
            data = client["xep_0047"].stanza.Data
            whole = data.get_data
            data.get_data = lambda block: whole(block) if block.xml.text else b""
            client["xep_0047"].auto_accept = True
            client.add_event_handler("si_request", self._accept)
            client.add_event_handler("ibb_stream_start", self._take)
            client.add_filter("in", self._answered)
        self._sets = 0
        self.call(register)
        self.features(IBB, SI, TRANSFER)
        self._names = {}  # of what is offered, by the stream's identifier
        self._own = set()  # the identifiers of what the peer sends

    def _answered(self, stanza):
        if stanza is not None and stanza.name == "iq" and stanza.xml.get("type") in ("result", "error"):
            self.log.add({"event": "answer", "id": stanza.xml.get("id"), "type": stanza.xml.get("type")})
        return stanza

    async def _accept(self, iq):
        self._names[iq["si"]["id"]] = iq["si"].xml.find(f"{{{TRANSFER}}}file").get("name")
        await self._client["xep_0095"].accept(iq["from"], iq["si"]["id"], ifrom=iq["to"])

    async def _take(self, stream):
        if stream.sid in self._own:
            return
        content = await stream.gather()
        self.log.add({"event": "file", "name": self._names.get(stream.sid), "sha1": sha1(content), "size": len(content)})

    def offer(self, to, name, size, sid):
        """Offers a file and waits for the answer; raises IqError when it is refused."""
        self._own.add(sid)
        self.call(lambda: self._client["xep_0096"].request_file_transfer(
            to, sid=sid, name=name, size=size, methods=[{"value": IBB, "label": "IBB"}], timeout=TIMEOUT))

    def set(self, to, payload):
        """Sends an iq of type set; gives the type of the answer, which may say no more than that."""
        number = self.send_set(to, payload)
        return self.wait("answer", id=number)["type"]

    def send_set(self, to, payload):
        """The same, without waiting for an answer; gives the id."""
        self._sets += 1
        number = f"set-{self._sets}"
        self.raw(f"<iq type='set' id='{number}' to='{to}'>{payload}</iq>")
        return number

    def open(self, to, sid):
        return self.set(to, f"<open xmlns='{IBB}' sid='{sid}' block-size='4096' stanza='iq'/>")

    def block(self, to, sid, number, text):
        return self.set(to, f"<data xmlns='{IBB}' sid='{sid}' seq='{number}'>{text}</data>")

    def close(self, to, sid):
        return self.set(to, f"<close xmlns='{IBB}' sid='{sid}'/>")

    def send(self, to, name, content, sid):
        """Offers a file and sends it once it is accepted."""
        self.offer(to, name, len(content), sid)
        self.stream(to, content, sid)

    def stream(self, to, content, sid):
        """Sends what was accepted, and closes the stream. A receiver that has all by then may answer that or not."""
        async def deliver():
            stream = await self._client["xep_0047"].open_stream(to, sid=sid, block_size=4096, timeout=TIMEOUT)
            await stream.sendall(content, timeout=TIMEOUT)
            stream.close(timeout=TIMEOUT).add_done_callback(lambda answer: answer.cancelled() or answer.exception())
        self.call(deliver)
