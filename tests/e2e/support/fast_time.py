# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""A messenger whose clock runs faster, so that minutes of waiting take seconds."""

import glob
import os
import threading
import time

# Seconds: what a test needs to answer in the messenger's time, with room to spare.
STANDSTILL = 0.3


def fast_time(times):
    """The environment of a program for which time passes that many times as fast, timers included."""
    library = glob.glob("/usr/lib/*/faketime/libfaketimeMT.so.1")[0]
    # A sanitizer's runtime has to come before everything else.
    preload = " ".join(filter(None, (os.environ.get("OKU_SANITIZER_RUNTIME"), library)))
    return {"LD_PRELOAD": preload, "FAKETIME": f"+0 x{times}"}


class Watch:
    """Sees whether the machine kept this program waiting. Minutes of the messenger's time pass in such a moment, in which
    the other side says nothing, whatever the test meant it to say."""

    def __init__(self):
        self.longest = 0
        self._ended = threading.Event()
        self._thread = threading.Thread(target=self._look, daemon=True)

    def __enter__(self):
        self._thread.start()
        return self

    def __exit__(self, *_):
        self._ended.set()
        self._thread.join()

    def _look(self):
        last = time.monotonic()
        while not self._ended.wait(0.02):
            now = time.monotonic()
            self.longest, last = max(self.longest, now - last), now

    @property
    def stood_still(self):
        return self.longest > STANDSTILL
