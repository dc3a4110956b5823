"""A messenger whose clock runs faster, so that minutes of waiting take seconds."""

import glob
import os


def fast_time(times):
    """The environment of a program for which time passes that many times as fast, timers included."""
    library = glob.glob("/usr/lib/*/faketime/libfaketimeMT.so.1")[0]
    # A sanitizer's runtime has to come before everything else.
    preload = " ".join(filter(None, (os.environ.get("OKU_SANITIZER_RUNTIME"), library)))
    return {"LD_PRELOAD": preload, "FAKETIME": f"+0 x{times}"}
