# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Those who take part in a long run: what each can do, what each has seen, and what became of what each has sent."""

import collections
import time

from oku.events import TIMEOUT, Unexpected

from .mcabber import Mcabber

SHOWS = {"online": None, "chat": "chat", "dnd": "dnd", "away": "away", "xa": "xa"}
CONFIRMED, UNCONFIRMED, WAITING = "confirmed", "unconfirmed", "waiting"


def wait_until(condition, what):
    limit = time.monotonic() + TIMEOUT
    while not condition():
        if time.monotonic() > limit:
            raise Unexpected(f"{what} did not happen within {TIMEOUT} s")
        time.sleep(0.05)


class Side:
    """One account of somebody. `status` is what the others should see of it."""

    def __init__(self, user, server):
        self.jid = f"{user}@{server.domain}"
        self.user = user
        self.server = server
        self.friends = []
        self.status = "online"
        self.description = ""


class TerminalSide(Side):
    """An account of a terminal messenger; `owner` is the messenger."""

    def __init__(self, owner, user, server):
        super().__init__(user, server)
        self.owner = owner

    def say(self, to, body):
        self.owner.terminal.command("message", account=self.jid, to=to, body=body)

    def show(self, status, description):
        self.owner.terminal.command("status", account=self.jid, status=status, description=description)

    def log_out(self):
        self.owner.terminal.command("status", account=self.jid, status="offline", description="")
        wait_until(lambda: self.state() == "offline", f"the end of {self.jid}")

    def log_in(self):
        self.show(self.status, self.description)
        wait_until(self.online, f"the login of {self.jid}")

    def state(self):
        states = [event["state"] for event in self.owner.terminal.seen("connection", account=self.jid)]
        return states[-1] if states else "offline"

    def online(self):
        return self.owner.running and self.state() == "online"

    def _history(self):
        answer = self.owner.terminal.ask("history", "history", account=self.jid, limit=1000000, **{"with": ""})
        # The log keeps each event; so many answers of this length would fill the memory.
        return answer.pop("messages")

    def seen(self):
        return collections.Counter(one["body"] for one in self._history() if one["direction"] == "in")

    def sent(self):
        """Each body that was sent, and what became of it."""
        words = {"sent": CONFIRMED, "queued": WAITING}
        return {one["body"]: words.get(one["state"], UNCONFIRMED) for one in self._history()
                if one["direction"] == "out"}

    def roster(self):
        entries = self.owner.terminal.ask("roster", "roster", account=self.jid)["contacts"]
        return {entry["jid"]: entry for entry in entries}

    def sees(self, jid):
        """A contact's status and its description."""
        entry = self.roster()[jid]
        return entry["status"], entry["description"]


class Messenger:
    """A terminal messenger with an account on each server, started anew as often as it ends."""

    def __init__(self, case, name, servers):
        self._case = case
        self.name = name
        self.sides = [TerminalSide(self, name, server) for server in servers]
        self.terminal = None
        self._runs = 0

    @property
    def running(self):
        return self.terminal is not None and self.terminal.child.running

    def start(self):
        self._runs += 1
        self.terminal = self._case.messenger(self.name)
        if self._runs == 1:
            # All of them first: adding one logs the others in anew, and a former login would pass for the new one.
            for side in self.sides:
                self._case.account(self.terminal, self.name, side.server)
        for side in self.sides:
            if side.server.child:
                side.show(side.status, side.description)

    def wait_online(self):
        for side in self.sides:
            if side.server.child:
                wait_until(side.online, f"the login of {side.jid}")

    def stop(self, kill):
        if kill:
            self.terminal.stop(kill=True)
        else:
            self._case.assertEqual(self.terminal.quit(), 0, self.terminal.errors())


class BotSide(Side):
    """A client of another library, which knows that a message has arrived when the server answered what followed it."""

    def __init__(self, case, user, server):
        super().__init__(user, server)
        self._case = case
        self._runs = []
        self._here = False
        self._sent = {}

    @property
    def _peer(self):
        return self._runs[-1]

    def start(self):
        self._runs.append(self._case.peer(self.user, self.server, f"bot{len(self._runs)}"))
        self._here = True
        self.show(self.status, self.description)

    def stop(self):
        self._here = False
        self._peer.stop()

    def online(self):
        return self._here

    def say(self, to, body):
        self._sent[body] = UNCONFIRMED
        self._peer.message(to, body)
        if self.hear_all() is not None:
            self._sent[body] = CONFIRMED

    def hear_all(self):
        """Waits for an answer of the server, which comes behind all that it had for this client; gives it."""
        return self._peer.query(self.server.domain, "<ping xmlns='urn:xmpp:ping'/>")

    def show(self, status, description):
        self._peer.presence(SHOWS[status], description)

    def seen(self):
        return collections.Counter(event["body"] for run in self._runs for event in run.seen("message"))

    def sent(self):
        return dict(self._sent)

    def sees(self, jid):
        """The last presence of a contact in this run: its status, `offline` for none, and its description."""
        last = [event for event in self._peer.seen("presence") if event["from"].split("/")[0] == jid]
        if not last or last[-1]["type"]:
            return "offline", ""
        status = next(status for status, show in SHOWS.items() if show == last[-1]["show"])
        return status, last[-1]["status"] or ""


class McabberSide(Side):
    """mcabber tells nothing of what became of a message; the run lets it speak only while all is quiet."""

    def __init__(self, case, user, server, password):
        super().__init__(user, server)
        self._case = case
        self._password = password
        self._client = None
        self._sent = {}

    def start(self):
        self._client = Mcabber(self._case.folder / "mcabber", self.jid, self._password, self.server.port)
        wait_until((self._client.home / "commands").exists, "mcabber's start")

    def stop(self):
        self._client.stop()

    def online(self):
        return self._client.child.running

    def say(self, to, body):
        self._sent[body] = CONFIRMED
        self._client.command(f"/say_to {to} {body}")

    def show(self, status, description):
        word = {"xa": "notavail", "chat": "free"}.get(status, status)
        self._client.command(f"/status {word} {description}")

    def seen(self):
        return collections.Counter(self._client.received())

    def sent(self):
        return dict(self._sent)
