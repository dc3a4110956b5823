#!/usr/bin/env python3
# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""A slixmpp client that sends one file in the stream, or receives one; bench/files.py measures its process.

    slixmpp_file.py JID PASSWORD PORT AUTHORITY receive FILE
    slixmpp_file.py JID PASSWORD PORT AUTHORITY send FILE

Whoever sends reads the receiver's full JID from standard input and begins then. It says what happens in lines of JSON:
`online` with its JID, `done` with the bytes that went over. It ends with its input."""

import asyncio
import json
import os
import sys

import slixmpp
from slixmpp.xmlstream.handler import CoroutineCallback
from slixmpp.xmlstream.matcher import StanzaPath

IBB = "http://jabber.org/protocol/ibb"
SI = "http://jabber.org/protocol/si"
FILES = "http://jabber.org/protocol/si/profile/file-transfer"
SOCKS5 = "http://jabber.org/protocol/bytestreams"
BLOCK = 4096


def say(event, **fields):
    print(json.dumps({"event": event, **fields}), flush=True)


class Client(slixmpp.ClientXMPP):
    def __init__(self, jid, password, authority):
        super().__init__(jid, password)
        self.ca_certs = authority
        for plugin in ("xep_0030", "xep_0047", "xep_0096", "xep_0115"):
            self.register_plugin(plugin)
        # The library gives the offer to a handler that nobody awaits.
        self.remove_handler("SI Request")
        self.register_handler(CoroutineCallback("SI Request", StanzaPath("iq@type=set/si"),
                                                self["xep_0095"]._handle_request))
        self["xep_0095"].unregister_method(SOCKS5)
        self.bytes = 0
        self.done = asyncio.get_event_loop().create_future()
        self.add_event_handler("session_start", self.begin)

    async def begin(self, _):
        for feature in (IBB, SI, FILES):
            await self["xep_0030"].add_feature(feature)
        await self.get_roster()
        self.send_presence()
        say("online", jid=self.boundjid.full)

    def end(self, *_):
        if not self.done.done():
            self.done.set_result(None)


class Receiver(Client):
    def __init__(self, path, *login):
        super().__init__(*login)
        self.file = open(path, "wb")
        self.add_event_handler("si_request", self.accept)
        self.add_event_handler("ibb_stream_data", self.take)
        self.add_event_handler("ibb_stream_end", self.end)

    async def accept(self, offer):
        await self["xep_0095"].accept(offer["from"], offer["si"]["id"], ifrom=offer["to"])

    def take(self, stream):
        self.bytes += self.file.write(stream.read())

    def end(self, *_):
        self.file.close()
        super().end()


class Sender(Client):
    def __init__(self, path, *login):
        super().__init__(*login)
        self.path = path

    async def begin(self, session):
        await super().begin(session)
        receiver = await self.loop.run_in_executor(None, sys.stdin.readline)
        await self["xep_0096"].request_file_transfer(
            receiver.strip(), sid="bench", name="received", size=os.path.getsize(self.path),
            methods=[{"value": IBB, "label": "IBB"}], timeout=None)
        stream = await self["xep_0047"].open_stream(receiver.strip(), sid="bench", block_size=BLOCK, timeout=None)
        with open(self.path, "rb") as file:
            await stream.sendfile(file)
            self.bytes = file.tell()
        # A receiver that has all by then may answer this or not.
        stream.close(timeout=60).add_done_callback(lambda answer: answer.cancelled() or answer.exception())
        self.end()


def main():
    jid, password, port, authority, direction, path = sys.argv[1:]
    login = jid, password, authority
    client = Receiver(path, *login) if direction == "receive" else Sender(path, *login)
    client.connect(("127.0.0.1", int(port)), force_starttls=True)
    client.loop.run_until_complete(client.done)
    say("done", bytes=client.bytes)
    client.loop.run_until_complete(client.loop.run_in_executor(None, sys.stdin.read))


if __name__ == "__main__":
    main()
