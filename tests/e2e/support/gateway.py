# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Services that one registers with (XEP-0077), as slixmpp components that keep a record of who did, and with what."""

import asyncio
import threading
import xml.sax.saxutils

import slixmpp
from slixmpp.xmlstream.handler import Callback
from slixmpp.xmlstream.matcher import MatchXPath

from oku.events import TIMEOUT, EventLog
from oku.prosody import COMPONENT_SECRET

REGISTER = "jabber:iq:register"
DATA = "{jabber:x:data}"
QUERY = f"{{{REGISTER}}}query"

_FORM = """\
<instructions>Podaj dane konta</instructions>
<x xmlns='jabber:x:data' type='form'><title>Brama</title><instructions>Wypełnij &lt;wszystko&gt;</instructions>
<field type='hidden' var='FORM_TYPE'><value>jabber:iq:register</value></field>
<field type='hidden' var='sesja'><value>a&amp;b</value></field>
<field type='fixed'><value>Regulamin: pisz z sensem.</value></field>
<field type='text-single' var='numer' label='Numer'><value>{number}</value></field>
<field type='text-private' var='haslo' label='Hasło'/>
<field type='jid-single' var='opiekun' label='Opiekun'/>
<field type='text-multi' var='opis' label='Opis'/>
<field type='boolean' var='zgoda' label='Zgoda'><value>true</value></field>
<field type='boolean' var='reklamy' label='Reklamy'/>
<field type='list-single' var='siec' label='Sieć'><option label='Pierwsza'><value>1</value></option>
<option><value>druga</value></option></field></x>"""
_PLAIN = ("<instructions>Nazwa i hasło</instructions><username>{number}</username><email/><password/>"
          "<registered/><nieznane/>")


class Gateway:
    """One service. It tells its form to whoever asks, refuses a `numer` (or user name) that is no number, and keeps in
    `members` by bare address what the others have sent. Each thing that was done is an event: `asked`, `refused`,
    `registered`, `removed`, each with `by`."""

    def __init__(self, address, server, plain=False):
        self.log = EventLog(address)
        self.wait, self.seen = self.log.wait, self.log.seen
        self.address = address
        self.members = {}
        self._plain = plain
        self._server = server
        self._loop = asyncio.new_event_loop()
        self._thread = threading.Thread(target=self._run, daemon=True)

    def start(self):
        self._thread.start()
        self.wait("online")
        return self

    def _run(self):
        asyncio.set_event_loop(self._loop)
        self._component = slixmpp.ComponentXMPP(self.address, COMPONENT_SECRET, "127.0.0.1", self._server.component_port)
        self._component.register_plugin("xep_0030")
        self._loop.run_until_complete(self._describe(self._component["xep_0030"]))
        self._component.add_event_handler("session_start", lambda _: self.log.add({"event": "online"}))
        self._component.register_handler(Callback(
            "registration", MatchXPath(f"{{jabber:component:accept}}iq/{QUERY}"), self._asked))
        self._component.connect()
        self._loop.run_forever()
        tasks = asyncio.all_tasks(self._loop)
        for task in tasks:
            task.cancel()
        self._loop.run_until_complete(asyncio.gather(*tasks, return_exceptions=True))
        self._loop.close()

    async def _describe(self, discovery):
        await discovery.add_identity("gateway", "gadu-gadu", "Brama")
        await discovery.add_feature(REGISTER)

    def _asked(self, stanza):
        by, query = stanza["from"].bare, stanza.xml.find(QUERY)
        if stanza.xml.get("type") == "get":
            self._tell("asked", by)
            number = self.members.get(by, {}).get("username" if self._plain else "numer", "")
            text = (_PLAIN if self._plain else _FORM).format(number=xml.sax.saxutils.escape(str(number)))
            self._answer(stanza, "result", f"<query xmlns='{REGISTER}'>{text}</query>")
        elif query.find(f"{{{REGISTER}}}remove") is not None:
            self._leave(stanza, by)
        else:
            self._register(stanza, by, query)

    def _leave(self, stanza, by):
        if self.members.pop(by, None) is None:
            return self._refuse(stanza, by, "registration-required", "Nikt taki tu nie jest zapisany.")
        self._tell("removed", by)
        self._answer(stanza, "result")

    def _register(self, stanza, by, query):
        form = query.find(DATA + "x")
        if self._plain:
            sent = {child.tag.split("}")[1]: child.text or "" for child in query}
            number = sent.get("username", "")
        else:
            sent = {field.get("var"): field.findtext(DATA + "value", "") for field in form} if form is not None else {}
            number = sent.get("numer", "")
        if not number.isdigit():
            return self._refuse(stanza, by, "not-acceptable", "To nie jest numer.")
        self.members[by] = sent
        self._tell("registered", by)
        self._answer(stanza, "result")

    def _refuse(self, stanza, by, condition, text):
        self._tell("refused", by)
        self._answer(stanza, "error", f"<error type='modify'><{condition} xmlns='urn:ietf:params:xml:ns:xmpp-stanzas'/>"
                     f"<text xmlns='urn:ietf:params:xml:ns:xmpp-stanzas'>{text}</text></error>")

    def _answer(self, stanza, kind, content=""):
        self._component.send_raw(f"<iq type='{kind}' id='{stanza.xml.get('id')}' from='{self.address}' "
                                 f"to='{stanza['from'].full}'>{content}</iq>")

    def _tell(self, event, by):
        self.log.add({"event": event, "by": by})

    def stop(self):
        """Takes the service away; nothing happens when it has gone already."""
        if not self._thread.is_alive():
            return

        async def leave():
            if self._component.is_connected():
                gone = self._component.disconnected
                self._component.disconnect(wait=TIMEOUT / 3)
                await asyncio.wait_for(gone, TIMEOUT)
        try:
            asyncio.run_coroutine_threadsafe(leave(), self._loop).result(TIMEOUT)
        finally:
            self._loop.call_soon_threadsafe(self._loop.stop)
            self._thread.join(TIMEOUT)
