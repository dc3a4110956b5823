# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""The other side: a slixmpp client on a thread of its own, and the log of what it received."""

import asyncio
import threading

import slixmpp
from slixmpp.xmlstream.handler import Callback
from slixmpp.xmlstream.matcher import MatchXPath

from oku.events import TIMEOUT, EventLog, Unexpected

CHAT_STATES = "{http://jabber.org/protocol/chatstates}"
CLIENT = "{jabber:client}"
OLD_PICTURE = "{jabber:x:avatar}"
CAPS = "{http://jabber.org/protocol/caps}"


_send_iq = slixmpp.Iq.send


def _send_patiently(iq, callback=None, timeout=None, timeout_callback=None):
    return _send_iq(iq, callback, timeout or 2 * TIMEOUT, timeout_callback)


# slixmpp gives up a request after 120 s, and with the one that binds the whole login, for good: a server that has just
# started on a machine that is very busy takes longer. How long is too long the test alone decides.
slixmpp.Iq.send = _send_patiently


class _Client(slixmpp.ClientXMPP):
    def __init__(self, jid, password, log, authority, mechanism):
        super().__init__(jid, password, sasl_mech=mechanism)
        for plugin in ("xep_0030", "xep_0092", "xep_0199"):
            self.register_plugin(plugin)
        self.ca_certs = str(authority)
        self.roster.auto_authorize = self.roster.auto_subscribe = None
        self.log = log
        for stanza, told in (("message", self._message), ("presence", self._presence)):
            self.register_handler(Callback(f"every {stanza}", MatchXPath(CLIENT + stanza), told))
        self.answers = {}
        self.add_filter("in", self._asked)
        self.add_event_handler("session_start", self._begin)
        self.add_event_handler("roster_update", lambda iq: self.log.add({"event": "roster", "items": _items(iq)}))
        for name in ("failed_auth", "connection_failed", "disconnected"):
            self.add_event_handler(name, lambda _, name=name: self.log.add({"event": name}))

    async def _begin(self, _):
        self.log.add({"event": "online", "jid": self.boundjid.full})

    def _message(self, stanza):
        states = [child.tag[len(CHAT_STATES):] for child in stanza.xml if child.tag.startswith(CHAT_STATES)]
        self.log.add({"event": "message", "from": stanza["from"].full, "type": stanza.xml.get("type"),
                      "body": stanza.xml.findtext(CLIENT + "body"), "subject": stanza.xml.findtext(CLIENT + "subject"),
                      "states": states})

    def _presence(self, stanza):
        caps = stanza.xml.find(CAPS + "c")
        self.log.add({"event": "presence", "from": stanza["from"].full, "type": stanza.xml.get("type"),
                      "show": stanza.xml.findtext(CLIENT + "show"), "status": stanza.xml.findtext(CLIENT + "status"),
                      "priority": stanza.xml.findtext(CLIENT + "priority"),
                      "picture": stanza.xml.findtext(f"{OLD_PICTURE}x/{OLD_PICTURE}hash"),
                      "caps": None if caps is None else dict(caps.attrib)})

    def _asked(self, stanza):
        """Sees each stanza before its handler, and answers itself what a test gave an answer for."""
        if stanza is None or stanza.name != "iq" or stanza.xml.get("type") not in ("get", "set"):
            return stanza
        namespace = stanza.xml[0].tag[1:].split("}")[0] if len(stanza.xml) else None
        request = {"event": "asked", "from": stanza["from"].full, "id": stanza.xml.get("id"), "namespace": namespace}
        self.log.add(request)
        if namespace not in self.answers:
            return stanza
        answer = self.answers[namespace](request)
        if answer:
            self.send_raw(answer)
        return None


def _items(iq):
    return {str(jid): {"name": item["name"], "subscription": item["subscription"], "groups": sorted(item["groups"])}
            for jid, item in iq["roster"]["items"].items()}


class Peer:
    """A client that does what a test tells it and nothing by itself: it authorizes nobody and subscribes to nobody."""

    def __init__(self, user, password, server, authority, resource="peer", mechanism=None):
        self.jid = f"{user}@{server.domain}"
        self.full = f"{self.jid}/{resource}"
        self.log = EventLog(self.full)
        self.wait, self.seen, self.forget = self.log.wait, self.log.seen, self.log.forget
        self._server = server
        self._client = None
        self._loop = asyncio.new_event_loop()
        self._thread = threading.Thread(target=self._run, args=(password, authority, mechanism), daemon=True)

    def _run(self, password, authority, mechanism):
        asyncio.set_event_loop(self._loop)
        self._client = _Client(self.full, password, self.log, authority, mechanism)
        self._client.connect(("127.0.0.1", self._server.port), force_starttls=True)
        self._loop.run_forever()
        tasks = asyncio.all_tasks(self._loop)
        for task in tasks:
            task.cancel()
        self._loop.run_until_complete(asyncio.gather(*tasks, return_exceptions=True))
        self._loop.close()

    def connect(self):
        """Starts to log in, and does not wait."""
        self._thread.start()

    def start(self, priority=0):
        """Logs in, takes the roster and sends the first presence, which the server has then."""
        self.connect()
        self.wait("online")
        self.prepare()
        self.call(self._client.get_roster)
        self.presence(priority=priority)
        own = {"event": "presence", "from": self.full}
        self.log.wait_for(lambda event: own.items() <= event.items(), "the own presence")
        return self

    def prepare(self):
        """What a kind of peer does between its login and its first presence."""

    def call(self, function):
        """Calls the function on the client's thread, and awaits and gives the result of what it returns."""
        async def awaited():
            return await function()
        return asyncio.run_coroutine_threadsafe(awaited(), self._loop).result(TIMEOUT)

    def with_client(self, function):
        """Calls the function with the slixmpp client, on its thread, and awaits and gives the result of what it returns."""
        return self.call(lambda: function(self._client))

    def query(self, to, payload):
        """Asks with an iq of type get; gives the answer, an error too, as an element."""
        async def ask():
            iq = self._client.make_iq_get(ito=to)
            iq.xml.append(slixmpp.xmlstream.ET.fromstring(payload))
            try:
                return (await iq.send()).xml
            except slixmpp.exceptions.IqError as error:
                return error.iq.xml
        return self.call(ask)

    def check_hashes(self):
        """From now on the client asks those whose presence has a hash of what they can do, by its node, and compares.
        An event `checked` tells each hash that holds."""
        async def check():
            self._client.register_plugin("xep_0115")
            caps = self._client["xep_0115"]
            assign = caps.assign_verstring

            def told(jid, ver):
                self.log.add({"event": "checked", "from": str(jid), "ver": ver})
                return assign(jid, ver)
            caps.assign_verstring = told
        self.call(check)

    def features(self, *names):
        """Tells these features, besides its own, to those who ask."""
        async def add():
            for name in names:
                await self._client["xep_0030"].add_feature(name)
        self.call(add)

    def software(self, name, version, system):
        """What the client tells of its version."""
        async def change():
            plugin = self._client["xep_0092"]
            plugin.software_name, plugin.version, plugin.os = name, version, system
        self.call(change)

    def answer_with(self, namespace, answer):
        """From now on requests of this namespace are answered with the text that `answer` gives for an event `asked`;
        nothing when it gives None."""
        async def change():
            self._client.answers[namespace] = answer
        self.call(change)

    def leave_unanswered(self, *namespaces):
        """From now on the client answers no request of these namespaces; the test does, with `raw`, or nobody."""
        for namespace in namespaces:
            self.answer_with(namespace, lambda request: None)

    def raw(self, xml):
        self._loop.call_soon_threadsafe(self._client.send_raw, xml)

    def presence(self, show=None, status=None, priority=0, to=None, kind=None):
        self._loop.call_soon_threadsafe(lambda: self._client.send_presence(
            pshow=show, pstatus=status, ppriority=priority, pto=to, ptype=kind))

    def message(self, to, body=None, kind="chat", subject=None, state=None):
        """A message; `state` is a chat state such as `composing`."""
        def compose():
            stanza = self._client.make_message(to, mbody=body, mtype=kind, msubject=subject)
            if state:
                stanza.xml.append(slixmpp.xmlstream.ET.Element(CHAT_STATES + state))
            stanza.send()
        self._loop.call_soon_threadsafe(compose)

    def roster_set(self, jid, name="", groups=(), subscription=None):
        """Changes an entry of the account's roster and waits for the server's answer."""
        self.call(lambda: self._client.update_roster(jid, name=name, groups=list(groups), subscription=subscription))

    def stop(self):
        """Logs out and ends the thread."""
        if not self._thread.is_alive():
            return
        async def leave():
            if self._client.is_connected():
                gone = self._client.disconnected
                self._client.disconnect(wait=TIMEOUT / 3)
                await asyncio.wait_for(gone, TIMEOUT)
        try:
            asyncio.run_coroutine_threadsafe(leave(), self._loop).result(TIMEOUT)
        finally:
            self._loop.call_soon_threadsafe(self._loop.stop)
            self._thread.join(TIMEOUT)
        if self._thread.is_alive():
            raise Unexpected(f"{self.full}: its thread did not end")
