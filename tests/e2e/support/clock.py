# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Moments told by somebody else's clock.

A machine has several: time() gives the one of the last tick, which lies some milliseconds behind what gettimeofday() gives,
and a server may keep one of its own. Whoever compares them to the second is wrong whenever a second begins in between."""

import datetime

# What is told in whole seconds is up to one too early, and besides that by what the clock of the last tick lies behind.
TICK = datetime.timedelta(seconds=1.1)


def now():
    return datetime.datetime.now(datetime.timezone.utc)


def not_before(moment, other):
    """Whether the moment is the other one or later, as far as two clocks can tell."""
    return moment >= other - TICK


def between(begin, moment, end):
    return not_before(moment, begin) and not_before(end, moment)
