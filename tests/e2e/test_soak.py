# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""A long run: two servers, two messengers, two other clients, and everything starts anew in a random order.

OKU_SOAK_SECONDS is how long it goes on, a minute unless it is set; OKU_SOAK_SEED repeats the order of another run. What
is done is told as it is done: what a failure needs to be understood."""

import os
import random
import sys
import time
import unittest

from oku.events import TIMEOUT
from oku.prosody import Prosody
from support.case import PASSWORDS, Case
from support.ejabberd import Ejabberd
from support.friends import befriend
from support.soak import (CONFIRMED, SHOWS, WAITING, BotSide, McabberSide, Messenger, wait_until)

SECONDS = float(os.environ.get("OKU_SOAK_SECONDS", "60"))
SEED = int(os.environ.get("OKU_SOAK_SEED", random.SystemRandom().getrandbits(32)))
GROUPS = ("Znajomi", "Praca", "Rodzina")


class Soak(Case):
    def setUp(self):
        super().setUp()
        self.random = random.Random(SEED)
        self.begin = time.monotonic()
        self.number = 0
        self.marks = 0
        self.messages = []  # (sender, receiver, body)
        self.counts = {}
        self.servers = [self.server(Prosody, "prosody.test"), self.server(Ejabberd, "ejabberd.test")]
        self.messengers = [Messenger(self, name, self.servers) for name in ("ala", "olek")]
        self.bots = [BotSide(self, "ewa", server) for server in self.servers]
        self.mcabber = McabberSide(self, "jan", self.servers[0], PASSWORDS["ewa"])
        self.terminal_sides = [side for messenger in self.messengers for side in messenger.sides]
        self.sides = self.terminal_sides + self.bots + [self.mcabber]

    def tell(self, what):
        print(f"{time.monotonic() - self.begin:8.2f} {what}", file=sys.stderr, flush=True)

    def server(self, kind, domain):
        accounts = {**PASSWORDS, "jan": PASSWORDS["ewa"]}
        server = kind(self.folder / domain, self.authority.issue(domain), accounts, domain=domain)
        self.addCleanup(lambda: server.stop(kill=True))
        return server.start()

    def peer(self, user, server, *options, **named):
        PASSWORDS.setdefault("jan", PASSWORDS["ewa"])
        return super().peer(user, server, *options, **named)

    def make_friends(self):
        for server in self.servers:
            here = [side for side in self.sides if side.server is server]
            for side in here:
                side.friends = [other for other in here if other is not side]
            for index, side in enumerate(here):
                for other in here[index + 1:]:
                    befriend(self, server, side.user, other.user)

    # What may happen ------------------------------------------------------------------------------------------------

    def message(self, sender=None):
        """Gives who has sent it."""
        sender = sender or self.random.choice([side for side in self.sides if side.server.child])
        self.say(sender, self.random.choice(sender.friends))
        return sender

    def say(self, sender, receiver, text=None):
        """Gives the body, which is like no other one. What only a busy machine asks for is given its `text`: the order of
        a run hangs on its seed alone."""
        self.number += 1
        text = text or "".join(self.random.choice("aąćę 🦆<&>'\"") for _ in range(12)).strip()
        body = f"m{self.number} {text}."
        self.tell(f"{sender.jid} -> {receiver.jid}: {body}")
        sender.say(receiver.jid, body)
        self.messages.append((sender, receiver, body))
        return body

    def presence(self):
        side = self.random.choice([side for side in self.sides if side.server.child])
        side.status, side.description = self.random.choice(tuple(SHOWS)), f"opis{self.random.randrange(100)}"
        side.show(side.status, side.description)

    def contact(self):
        side = self.random.choice([side for side in self.terminal_sides if side.server.child])
        friend = self.random.choice(side.friends)
        if self.random.random() < 0.5:
            side.owner.terminal.command("rename", account=side.jid, jid=friend.jid,
                                        name=f"Imię {self.random.randrange(1000)}")
        else:
            side.owner.terminal.command("group", account=side.jid, jid=friend.jid, group=self.random.choice(GROUPS))

    def burst(self, senders):
        """Messages right before an end: what becomes of them is for their sender to know. Gives who has sent them."""
        return [self.message(self.random.choice(senders)) for _ in range(self.random.randrange(4))]

    def burst_to_the_absent(self, senders):
        """Messages that are with their servers before somebody comes back, where that one could lose them otherwise."""
        for sender in self.burst(senders):
            if sender.server.loses_at_login:
                self.wait_until_read(sender)

    def wait_until_read(self, sender):
        """Until the server has read, and handed on or stored, all that the side has sent."""
        wait_until(lambda: WAITING not in sender.sent().values(), f"seed {SEED}: the sending of what {sender.jid} has")
        self.wait_until_seen(sender)

    def restart_messenger(self):
        messenger = self.random.choice(self.messengers)
        kill = self.random.random() < 0.4
        if kill:
            # What a server hands to a program that is killed, nobody can know of.
            self.quieten()
        else:
            # One that quits waits three seconds for its servers. What others have sent to it is handed over by then,
            # also by a server that stands still for longer.
            for side in self.sides:
                if side not in messenger.sides and any(own in side.friends for own in messenger.sides):
                    self.wait_until_seen(side)
        for side in messenger.sides:
            self.wait_until_seen(side)
        self.burst(messenger.sides)
        self.tell(f"{messenger.name} {'is killed' if kill else 'quits'}")
        messenger.stop(kill)
        # A server that stood still has a session yet of one that has given it up.
        for side in messenger.sides:
            self.wait_until_gone(side)
        self.burst_to_the_absent([side for side in self.sides if side.server.child and side not in messenger.sides])
        messenger.start()
        messenger.wait_online()
        self.wait_until_heard_of(messenger.sides)

    def end_other_client(self, client):
        """Other clients do not read to the end of their stream: what still comes to them while they go is lost."""
        self.wait_until_seen(client)
        client.stop()
        self.wait_until_gone(client)

    def seen_by_a_witness(self, side):
        """The side's status and description as somebody on its server sees them."""
        friends = (other for other in self.terminal_sides + self.bots if other in side.friends)
        return next(other for other in friends if other.online()).sees(side.jid)

    def wait_until_seen(self, side):
        """Until a presence that is new is seen. Its server has then routed all that the side has sent before, and the
        witness no longer takes a side that it has not seen yet for one that has gone."""
        self.marks += 1
        side.description = f"znak{self.marks}"
        side.show(side.status, side.description)
        wait_until(lambda: self.seen_by_a_witness(side)[1] == side.description,
                   f"seed {SEED}: the presence {side.description} of {side.jid}")

    def wait_until_gone(self, gone):
        """Only for those that were seen."""
        wait_until(lambda: self.seen_by_a_witness(gone)[0] == "offline", f"the end of {gone.jid}")

    def wait_until_heard_of(self, sides):
        """A side that is online has said so, but its server may not have read that yet, and could lose what comes for
        it while it does."""
        for side in sides:
            if side.server.loses_at_login:
                self.wait_until_seen(side)

    def restart_bot(self):
        bot = self.random.choice(self.bots)
        self.quieten()
        self.end_other_client(bot)
        self.burst_to_the_absent([side for side in bot.friends if side is not self.mcabber])
        bot.start()

    def restart_mcabber(self):
        self.quieten()
        self.end_other_client(self.mcabber)
        self.burst_to_the_absent([side for side in self.mcabber.friends if side is not self.mcabber])
        self.mcabber.start()
        self.wait_for_mcabber()

    def restart_server(self):
        server = self.random.choice(self.servers)
        self.quieten()
        others = [side for side in (*self.bots, self.mcabber) if side.server is server]
        for side in others:
            self.end_other_client(side)
        here = [side for side in self.terminal_sides if side.server is server]
        kill = self.random.random() < 0.5
        if kill and server.store_delay:
            # The server's own clock counts: while it stands still it stores nothing.
            for _ in range(server.store_delay):
                time.sleep(1)
                self.wait_until_seen(here[0])
        else:
            self.burst(here)
        self.tell(f"{server.domain} {'is killed' if kill else 'ends'}")
        server.stop(kill)
        self.burst(here)
        for side in here:
            # Otherwise the former connection would pass for the new login.
            wait_until(lambda: not side.online(), f"the loss of {side.jid}")
        if server.loses_at_login:
            self.come_back_in_turn(server, others, here)
        else:
            self.come_back_at_once(server, others, here)
        self.wait_for_mcabber()

    def come_back_at_once(self, server, others, here):
        server.start()
        for side in others:
            side.start()
        for side in here:
            wait_until(side.online, f"the login of {side.jid}")

    def come_back_in_turn(self, server, others, here):
        """What each has written meanwhile is with the server before the next one comes."""
        for side in here:
            side.log_out()
        server.start()
        for side in others:
            side.start()
        for side in here:
            side.log_in()
            self.wait_until_read(side)

    # Rest -----------------------------------------------------------------------------------------------------------

    def wait_for_mcabber(self):
        side = self.messengers[0].sides[0]
        wait_until(lambda: side.sees(self.mcabber.jid)[0] != "offline", "mcabber's login")
        self.mcabber.show(self.mcabber.status, self.mcabber.description)

    def missing(self):
        """Messages that should have been seen by now, and those that wait."""
        seen = {side: side.seen() for side in self.sides}
        sent = {side: side.sent() for side in self.sides}
        return [(sender.jid, receiver.jid, body, sent[sender].get(body)) for sender, receiver, body in self.messages
                if not seen[receiver][body] and sent[sender].get(body, CONFIRMED) in (CONFIRMED, WAITING)]

    def quieten(self):
        """Until all is seen that was sent. What a crash took away is unconfirmed by then."""
        if self.wait_for_missing(8):
            self.log_in_anew()
        if missing := self.wait_for_missing(TIMEOUT):
            self.fail(f"seed {SEED}: never seen, and not said to be unconfirmed: {missing}")

    def log_in_anew(self):
        """A server that took a message between a receiver's login and its first presence may keep it until the next."""
        self.let_all_arrive()
        for side in {self.side_of(receiver) for _, receiver, *_ in self.missing()}:
            self.counts["login anew"] = self.counts.get("login anew", 0) + 1
            if side in self.terminal_sides:
                side.log_out()
                side.log_in()
                self.wait_until_heard_of([side])
            else:
                self.end_other_client(side)
                side.start()
        self.wait_for_mcabber()

    def let_all_arrive(self):
        """What is on its way to another client that leaves is lost: waits until all has come, or is kept by a server."""
        wait_until(lambda: all(state != WAITING for *_, state in self.missing()),
                   f"seed {SEED}: the sending of what waited")
        for side in self.sides:
            self.wait_until_seen(side)
        for bot in self.bots:
            bot.hear_all()
        # mcabber answers nothing, but it reads one after the other.
        last = self.say(self.bots[0], self.mcabber, "koniec")
        wait_until(lambda: self.mcabber.seen()[last], f"seed {SEED}: the last message to {self.mcabber.jid}")

    def wait_for_missing(self, seconds):
        limit = time.monotonic() + seconds
        while (missing := self.missing()) and time.monotonic() < limit:
            time.sleep(0.2)
        return missing

    def side_of(self, jid):
        return next(side for side in self.sides if side.jid == jid)

    def check_once(self):
        seen = {side: side.seen() for side in self.sides}
        twice = [(sender.jid, receiver.jid, body) for sender, receiver, body in self.messages
                 if seen[receiver][body] > 1]
        self.assertEqual(twice, [], f"seed {SEED}: seen more than once")

    def check_lists(self):
        for side in self.terminal_sides:
            checker = super().peer(side.user, side.server, "checker", start=False)
            checker.connect()
            checker.wait("online")
            checker.call(checker._client.get_roster)
            wanted = checker.wait("roster")["items"]
            checker.stop()

            def agrees():
                have = {jid: (entry["name"], entry["group"], entry["subscription"])
                        for jid, entry in side.roster().items()}
                return have == {jid: (item["name"], item["groups"][0], item["subscription"])
                                for jid, item in wanted.items()}
            wait_until(agrees, f"seed {SEED}: {side.jid} agrees with its server, which has {wanted}")

    def check_presences(self):
        for side in self.terminal_sides:
            for friend in side.friends:
                wait_until(lambda: side.sees(friend.jid)[0] == friend.status,
                           f"seed {SEED}: {side.jid} sees {friend.jid} as {friend.status}")
        for bot in self.bots:
            for friend in bot.friends:
                wait_until(lambda: bot.sees(friend.jid)[0] == friend.status,
                           f"seed {SEED}: {bot.jid} sees {friend.jid} as {friend.status}")

    def test_everything_is_seen_once_or_said_to_be_unconfirmed(self):
        print(f"OKU_SOAK_SEED={SEED}", file=sys.stderr, flush=True)
        self.make_friends()
        for bot in self.bots:
            bot.start()
        for messenger in self.messengers:
            messenger.start()
            messenger.wait_online()
        self.mcabber.start()
        self.wait_for_mcabber()
        self.wait_until_heard_of(self.terminal_sides)
        acts = {self.message: 60, self.presence: 14, self.contact: 8, self.restart_messenger: 8, self.restart_bot: 3,
                self.restart_mcabber: 2, self.restart_server: 5}
        end = time.monotonic() + SECONDS
        while time.monotonic() < end:
            act = self.random.choices(list(acts), list(acts.values()))[0]
            self.counts[act.__name__] = self.counts.get(act.__name__, 0) + 1
            self.tell(act.__name__)
            act()
        self.quieten()
        time.sleep(3)  # what comes twice would come by now
        self.check_once()
        self.check_lists()
        self.check_presences()
        unconfirmed = sum(state != CONFIRMED for side in self.terminal_sides for state in side.sent().values())
        print(f"{len(self.messages)} messages, {unconfirmed} of them unconfirmed; {self.counts}", file=sys.stderr)


if __name__ == "__main__":
    unittest.main()
