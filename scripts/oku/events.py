# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Events that come on one thread and are waited for on another."""

import json
import os
import threading
import time

# Seconds until whoever waits for anything gives up: the one limit of servers, messengers and tests. Nothing that works
# comes near it, also not on a machine that has much else to do, so tests set it high; it is what a failure costs.
TIMEOUT = float(os.environ.get("OKU_TEST_TIMEOUT", "45"))


class Unexpected(AssertionError):
    """What was waited for did not come; the text shows what came instead."""


def _brief(event):
    text = json.dumps(event, ensure_ascii=False, default=str)
    return text if len(text) <= 300 else text[:297] + "..."


def _fits(event, kind, where, fields):
    if event.get("event") != kind:
        return False
    for key, wanted in fields.items():
        value = event.get(key)
        if not (wanted(value) if callable(wanted) else value == wanted):
            return False
    return where is None or bool(where(event))


class EventLog:
    """Keeps every event (a dictionary with `event` in it). Each can be waited for once; `wait` takes the oldest that
    fits. A field that is to be compared may be given as a predicate."""

    def __init__(self, name):
        self.name = name
        self._events = []
        self._taken = set()
        self._end = None
        self._news = threading.Condition()

    def add(self, event):
        with self._news:
            self._events.append(event)
            self._news.notify_all()

    def end(self, reason):
        """No event comes any more; whoever waits is told `reason`."""
        with self._news:
            self._end = reason
            self._news.notify_all()

    def all(self):
        with self._news:
            return list(self._events)

    def seen(self, kind, /, where=None, **fields):
        """All events that fit so far, whether waited for or not."""
        return [event for event in self.all() if _fits(event, kind, where, fields)]

    def wait(self, kind, /, where=None, timeout=None, **fields):
        """The oldest event not yet waited for that fits; raises Unexpected after `timeout` seconds."""
        index = self._find(lambda i, event: i not in self._taken and _fits(event, kind, where, fields), timeout,
                           lambda: f"{kind} { {k: '(a condition)' if callable(v) else v for k, v in fields.items()} }")
        self._taken.add(index)
        return self._events[index]

    def wait_for(self, predicate, what, timeout=None):
        """The oldest event, waited for before or not, that the predicate is true of."""
        return self._events[self._find(lambda _, event: predicate(event), timeout, lambda: what)]

    def _find(self, fits, timeout, what):
        limit = time.monotonic() + (timeout or TIMEOUT)
        checked = 0
        with self._news:
            while True:
                for index in range(checked, len(self._events)):
                    if fits(index, self._events[index]):
                        return index
                checked = len(self._events)
                left = limit - time.monotonic()
                if self._end or left <= 0:
                    raise Unexpected(self._report(what()))
                self._news.wait(left)

    def forget(self):
        """From here on, only events that are still to come are waited for."""
        with self._news:
            self._taken.update(range(len(self._events)))

    def _report(self, what):
        last = "\n  ".join(_brief(event) for event in self._events[-25:])
        return f"{self.name}: {self._end or 'the time was up'} while waiting for {what}; the last events:\n  {last}"
