# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""What ./run does once everything is built."""

import argparse
import getpass
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import threading
import time

from .certificates import Authority
from .conversation import Person, StepFailed, play
from .events import Unexpected
from .prosody import Prosody, ServerFailed
from .terminal import CommandFailed, OkuTerminal
from .view import View

BUILD = pathlib.Path(os.environ.get("OKU_BUILD", "build")).resolve()
HOME = BUILD / "run"
PACE = 1.0  # seconds between two steps when a person watches


def arguments():
    parser = argparse.ArgumentParser(
        prog="./run", description="Builds the messenger, and lets two people talk through it over a private server; then "
        "you are one of them. With no terminal on its input it ends with 0 when every step was seen on both sides.")
    parser.add_argument("--account", metavar="JID", help="connect this account of yours instead; its password is asked "
                        "for, or taken from OKU_PASSWORD")
    parser.add_argument("--talk", action="store_true", help="only play the conversation, also in a terminal")
    return parser.parse_args()


def interactive_messenger(profile, *options):
    """The command of the messenger with its own prompt, for the person's hands."""
    return [str(BUILD / "oku-terminal"), "--profile", str(profile), "--module", str(BUILD / "protoLink.module"),
            "--status", "online", *options]


class Answering:
    """Answers what the person writes, as somebody at the other side would: first typing, then the words."""

    WORDS = ("Serio? „{}”", "Też tak myślę: „{}” 🙂", "„{}” – zapiszę to sobie.")

    def __init__(self, terminal):
        self.terminal = terminal
        self.count = 0
        self.active = False

    def event(self, name, event):
        if self.active and name == self.terminal.name and event.get("event") == "message":
            threading.Thread(target=self._answer, args=(event,), daemon=True).start()

    def _answer(self, event):
        words = self.WORDS[self.count % len(self.WORDS)].format(event["body"])
        self.count += 1
        self.terminal.send("typing", to=event["from"], composing=True)
        time.sleep(PACE)
        self.terminal.send("message", to=event["from"], body=words)


def conversation(prompt):
    """The private server, two messengers, the steps; then, with `prompt`, the first account is the person's."""
    shutil.rmtree(HOME, ignore_errors=True)
    authority = Authority(HOME / "certificates")
    server = Prosody(HOME / "server", authority.issue("localhost"), {"ala": "sekret-ali", "olek": "sekret-olka"})
    view = View("ala", "olek")
    answering = None

    def watch(name, event):
        view.event(name, event)
        if answering:
            answering.event(name, event)

    terminals = [OkuTerminal(name, BUILD, HOME / name, authority.certificate, watch=watch) for name in ("ala", "olek")]
    answering = Answering(terminals[1])
    try:
        server.start()
        view.say(f"A private Prosody listens on {server.address}; all of it lies under {HOME.relative_to(BUILD.parent)}.")
        view.heading()
        ala, olek = (Person(terminal.start(), f"{terminal.name}@localhost", f"sekret-{owner}", server.address)
                     for terminal, owner in zip(terminals, ("ali", "olka")))
        play(ala, olek, lambda *step: (view.step(*step), prompt and time.sleep(PACE)))
        ala.terminal.quit()
        if prompt:
            view.quiet = True
            answering.active = True
            view.say("\nEvery step was seen on both sides. Now you are Ala: /msg olek@localhost WORDS writes to Olek, who "
                     "answers;\n/help tells the rest, /quit ends it.")
            input("Enter takes you there. ")
            return subprocess.call(interactive_messenger(ala.terminal.profile, "--ca-file", str(authority.certificate)))
        olek.terminal.quit()
        view.say("Every step was seen on both sides.")
        return 0
    finally:
        for terminal in terminals:
            terminal.stop(kill=True)
        server.stop(kill=True)


def _login_ended(event):
    """True of what ends an attempt to log in: success, a failure with its reason, or a question nobody is there for."""
    return event["event"] == "question" or event["event"] == "connection" and (
        event["state"] == "online" or event["state"] == "offline" and event.get("reason"))


def own_account(jid, prompt):
    """Connects a real account: the messenger's prompt in a terminal, otherwise a login that is reported."""
    password = os.environ.get("OKU_PASSWORD") or (getpass.getpass(f"Password of {jid}: ") if sys.stdin.isatty() else "")
    if not password:
        raise StepFailed("no password: set OKU_PASSWORD, or run it in a terminal")
    bare = jid.split("/")[0]
    profile = BUILD / "accounts" / bare.replace("/", "_")
    if prompt:
        profile.parent.mkdir(parents=True, exist_ok=True)
        # In this program's place: its environment holds the password, and the messenger takes it out of its own.
        command = interactive_messenger(profile, "--account", jid)
        for number in (signal.SIGPIPE, signal.SIGXFSZ):  # which Python ignores, and a program inherits
            signal.signal(number, signal.SIG_DFL)
        os.execve(command[0], command, {**os.environ, "OKU_PASSWORD": password})
    view = View(bare, "")
    terminal = OkuTerminal(bare, BUILD, profile, watch=view.event)
    try:
        terminal.start()
        # Nobody is there to be asked whether the password may be kept: it is not.
        terminal.command("account", jid=jid, password=password, settings={"OKU/PasswordInFile": 0})
        terminal.command("status", status="online")
        end = terminal.log.wait_for(_login_ended, "the end of the login", timeout=90)
        if end.get("state") != "online":
            raise StepFailed(end.get("reason") or end.get("text"))
        for contact in terminal.roster().values():
            view.say(f"  {contact['group']}: {contact['name']} <{contact['jid']}>")
        terminal.quit()
    finally:
        terminal.stop(kill=True)
    return 0


def main():
    options = arguments()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    signal.signal(signal.SIGHUP, lambda *_: sys.exit(129))
    prompt = sys.stdin.isatty() and sys.stdout.isatty() and not options.talk
    try:
        return own_account(options.account, prompt) if options.account else conversation(prompt)
    except (StepFailed, ServerFailed, CommandFailed, Unexpected, RuntimeError) as error:
        print(f"./run: failed: {error}", file=sys.stderr)
        return 1
    except KeyboardInterrupt:
        return 130


sys.exit(main())
