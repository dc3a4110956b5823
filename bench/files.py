#!/usr/bin/env python3
# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""What pictures and files cost, as tables. Needs a build with -DPROTOLINK_BENCH=ON and the tests, the packages of the
end-to-end tests, and the system's Python, which has slixmpp:

    bench/files.py build                                     # everything
    bench/files.py build web stream --folder DIR             # two tables, with the files in DIR

Tables: `pictures` of many contacts; `web`, a document that the plugin fetches, beside curl; `stream`, the plugin's own
part of files in the stream; `others`, the messenger beside slixmpp and libpurple over one Prosody. Files lie in each
--folder in turn. Figures are the least of --rounds rounds, those of `others` of one round."""

import argparse
import filecmp
import functools
import http.server
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import threading
import time

os.environ.setdefault("OKU_TEST_TIMEOUT", "3600")  # a slow side is no trouble; read by what is imported below
ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path[:0] = [str(ROOT / "tests/e2e"), str(ROOT / "scripts")]
from oku.certificates import Authority  # noqa: E402
from oku.events import EventLog  # noqa: E402
from oku.process import Child  # noqa: E402
from oku.prosody import Prosody  # noqa: E402
from oku.terminal import OkuTerminal  # noqa: E402
from support.purple import Purple  # noqa: E402

MIB = 1 << 20
TICK = os.sysconf("SC_CLK_TCK")


def table(*heads):
    print("\n| " + " | ".join(heads) + " |\n|" + "---|" * len(heads), flush=True)


def row(*cells):
    print("| " + " | ".join(str(cell) for cell in cells) + " |", flush=True)


def kind_of(folder):
    return subprocess.run(["stat", "-f", "-c", "%T", folder], capture_output=True, text=True, check=True).stdout.strip()


def make_file(path, size):
    """Random bytes; behind the first 64 MiB zeros, which cost nobody less here."""
    with open(path, "wb") as file:
        for _ in range(min(size, 64 * MIB) // MIB):
            file.write(os.urandom(MIB))
        file.truncate(size)


def most_resident(pid):
    """In MiB; what the kernel tells at a process's end counts the one that started it as well."""
    found = re.search(r"VmHWM:\s+(\d+)", pathlib.Path(f"/proc/{pid}/status").read_text())
    return int(found.group(1)) / 1024 if found else 0


def measured(command, folder):
    """Runs it in the folder; gives seconds of processor time, most resident MiB, and what it printed."""
    process = subprocess.Popen([str(part) for part in command], cwd=folder, stdout=subprocess.PIPE)
    resident = 0
    while not os.waitid(os.P_PID, process.pid, os.WEXITED | os.WNOHANG | os.WNOWAIT):
        resident = max(resident, most_resident(process.pid))
        time.sleep(0.001)
    output = process.stdout.read().decode()
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    process.stdout.close()
    if process.returncode:
        raise SystemExit(f"{command[0]} failed")
    return usage.ru_utime + usage.ru_stime, resident, output


def pictures(build, folder, rounds):
    table("Road", "Contacts", "Files in", "µs each", "Kept for each", "Resident before and after")
    for contacts in (500, 1000, 2000, 8000):
        best = {}
        for _ in range(rounds):
            command = ["env", f"TMPDIR={folder}", build / "picture_bench", contacts]
            output = measured(command, folder)[2]
            before = int(re.match(r"\d+", output).group())
            for line in output.splitlines()[1:]:
                road, *quarters, kept, after = re.match(
                    r"(.*\))" + r" +([\d.]+)" * 4 + r".*?(\d+) bytes kept.*at most (\d+)", line).groups()
                cost = sum(map(float, quarters)) / 4
                if road not in best or cost < best[road][0]:
                    best[road] = cost, kept, before, int(after)
        for road, (cost, kept, before, after) in best.items():
            row(road, f"{contacts:,}", kind_of(folder), f"{cost:.0f}", f"{kept} bytes",
                f"{before / 1024:.1f}, {after / 1024:.1f} MiB")


class Documents(http.server.BaseHTTPRequestHandler):
    """Files of a folder as the kernel sends them."""

    protocol_version = "HTTP/1.1"

    def do_GET(self):  # noqa: N802
        with open(self.server.folder + self.path, "rb") as file:
            self.send_response(200)
            self.send_header("Content-Length", str(os.fstat(file.fileno()).st_size))
            self.end_headers()
            self.connection.sendfile(file)

    def log_message(self, *_):
        pass


def fetch(command, folder):
    result = measured(command, folder)
    (folder / "received").unlink()
    return result


def web(build, folder, rounds):
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Documents)
    server.folder = str(folder)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    table("Document", "Files in", "Plugin s", "curl s", "Ratio", "Plugin resident", "curl resident")
    for size in (1 * MIB, 64 * MIB, 1024 * MIB):
        name = str(size)
        make_file(folder / name, size)
        url = f"http://127.0.0.1:{server.server_port}/{name}"
        commands = {"plugin": [build / "transfer_bench", "download", size, url],
                    "curl": ["curl", "--silent", "--noproxy", "*", "-o", "received", url]}
        best = {}
        # One after the other in each round, so that what the machine does besides meets both.
        for _ in range(rounds):
            for who, command in commands.items():
                seconds, resident, _ = fetch(command, folder)
                best[who] = min(best.get(who, (seconds, resident)), (seconds, resident))
        (folder / name).unlink()
        (plugin, its_memory), (curl, other_memory) = best["plugin"], best["curl"]
        row(f"{size // MIB:,} MiB", kind_of(folder), f"{plugin:.3f}", f"{curl:.3f}", f"{plugin / curl:.2f}",
            f"{its_memory:.1f} MiB", f"{other_memory:.1f} MiB")
    server.shutdown()


def stream(build, folder, rounds):
    table("File", "Files in", "Sent, µs each block", "Resident", "Received, µs each block", "Resident")
    for size in (1 * MIB, 16 * MIB, 64 * MIB):
        make_file(folder / "file", size)
        cells = []
        for command in (["send", folder / "file"], ["receive", size]):
            results = [json.loads(measured([build / "transfer_bench", *command], folder)[2]) for _ in range(rounds)]
            best = min(results, key=lambda result: result["cpu"])
            cells += [f"{best['cpu'] / best['blocks'] * 1e6:.1f}", f"{best['peak_kib'] / 1024:.1f} MiB"]
        row(f"{size // MIB} MiB", kind_of(folder), *cells)


class Process:
    """A client whose process is measured from `begin` to `end`."""

    def begin(self):
        self._before = self._cpu()
        self._at = time.monotonic()

    def end(self):
        """Seconds of processor time, seconds, and most resident MiB so far."""
        return self._cpu() - self._before, time.monotonic() - self._at, most_resident(self.pid)

    def _cpu(self):
        fields = pathlib.Path(f"/proc/{self.pid}/stat").read_text().rpartition(")")[2].split()
        return (int(fields[11]) + int(fields[12])) / TICK


class Messenger(Process):
    name = "oku-terminal"
    block = 4096

    def __init__(self, stage, user, size):
        self.folder = stage.folder / user
        self.terminal = OkuTerminal(user, stage.build, self.folder / "profile", stage.authority.certificate)
        self.terminal.start()
        self.pid = self.terminal.child.process.pid
        self.terminal.command("account", jid=f"{user}@localhost", password=user, settings={
            "XMPP/Serv/Enable": 1, "XMPP/Serv/Host": stage.server.address, "OKU/PasswordInFile": 1,
            "XMPP/SI/Path": f"{self.folder}/"})
        self.terminal.command("status", status="online")
        own = self.terminal.wait("presence", jid=f"{user}@localhost")
        self.jid = f"{user}@localhost/{own['resource']}"

    def send(self, path, receiver):
        self.terminal.command("send-file", to=receiver.partition("/")[0], path=str(path))

    def accept(self):
        offer = self.terminal.wait("file-offer")
        self.terminal.command("answer-file", offer=offer["offer"], answer="accept")

    def finish(self):
        end = self.terminal.wait("transfer", state=lambda state: state not in ("negotiating", "running"))
        if end["state"] != "done":
            raise SystemExit(f"the messenger's transfer: {end}")
        return pathlib.Path(end["path"])

    def stop(self):
        self.terminal.stop(kill=True)


class Slixmpp(Process):
    name = "slixmpp"
    block = 4096

    def __init__(self, stage, user, size):
        self.folder = stage.folder / user
        self.folder.mkdir()
        self.path = self.folder / "received"
        sends = user == SENDER
        self.log = EventLog(user)
        self.child = Child(
            [sys.executable, str(ROOT / "bench/slixmpp_file.py"), f"{user}@localhost/slixmpp", user,
             str(stage.server.port), str(stage.authority.certificate), "send" if sends else "receive",
             str(stage.file if sends else self.path)], self.folder / "events",
            lambda line: self.log.add(json.loads(line)), lambda: self.log.end("it ended"), stdin=subprocess.PIPE,
            stderr=subprocess.DEVNULL)
        self.pid = self.child.process.pid
        self.jid = self.log.wait("online")["jid"]

    def send(self, path, receiver):
        self.child.process.stdin.write(receiver.encode() + b"\n")
        self.child.process.stdin.flush()

    def accept(self):
        pass

    def finish(self):
        self.log.wait("done")
        return self.path

    def stop(self):
        self.child.end(True)
        self.child.process.stdin.close()


class Libpurple(Process):
    name = "libpurple"
    block = 3070  # of the bytes that it sends

    def __init__(self, stage, user, size):
        self.size = size
        self.path = stage.folder / f"received by {user}"
        self.client = Purple(stage.build / "purple-bot", stage.folder / user, user, user, stage.server,
                             stage.authority.certificate, options=["quiet"])
        self.client.start()
        self.pid = self.client.child.process.pid
        self.jid = self.client.full

    def send(self, path, receiver):
        self.client.command("send", receiver, path)

    def accept(self):
        offer = self.client.wait("offered")
        self.client.command("accept", offer["number"], self.path)

    def finish(self):
        end = self.client.wait("ended")
        if (end["how"], end["bytes"]) != ("complete", self.size):
            raise SystemExit(f"libpurple's transfer: {end}")
        return self.path

    def stop(self):
        self.client.stop()


SENDER, RECEIVER = "ala", "olek"
PAIRS = ((Messenger, Slixmpp), (Slixmpp, Messenger), (Messenger, Libpurple), (Libpurple, Messenger),
         (Messenger, Messenger))
SETTLED = 3  # seconds until clients that have logged in have asked each other what they can do


class Stage:
    """A server with two accounts that know each other."""

    def __init__(self, build, folder, size):
        self.build, self.folder = build, folder
        self.authority = Authority(folder / "authority")
        self.server = Prosody(folder / "prosody", self.authority.issue("localhost"), {SENDER: SENDER, RECEIVER: RECEIVER})
        rosters = folder / "prosody/data/localhost/roster"
        rosters.mkdir(parents=True)
        for user, friend in ((SENDER, RECEIVER), (RECEIVER, SENDER)):
            (rosters / f"{user}.dat").write_text(
                f'return {{ [false] = {{ version = 1; }}; ["{friend}@localhost"] = {{ subscription = "both"; '
                "groups = {}; }; };\n")
        self.file = folder / "file"
        make_file(self.file, size)
        self.server.start()


def transfer(stage, kinds, size):
    """One file from one client to the other; gives what each cost."""
    receiver, sender = kinds[1](stage, RECEIVER, size), kinds[0](stage, SENDER, size)
    time.sleep(SETTLED)
    for side in (sender, receiver):
        side.begin()
    sender.send(stage.file, receiver.jid)
    receiver.accept()
    arrived = receiver.finish()
    sender.finish()
    costs = sender.end(), receiver.end()
    for side in (sender, receiver):
        side.stop()
    if not filecmp.cmp(stage.file, arrived, shallow=False):
        raise SystemExit("what arrived is not what was sent")
    return costs


def others(build, folder, sizes=(1, 16, 64)):
    table("MiB", "From", "To", "Sender s", "µs each block", "Resident", "Receiver s", "µs each block", "Resident",
          "Took s")
    for size in sizes:
        for kinds in PAIRS:
            if Libpurple in kinds and not (build / "purple-bot").exists():
                print("(purple-bot is not built: libpurple is left out)", file=sys.stderr)
                continue
            place = pathlib.Path(tempfile.mkdtemp(prefix="pair-", dir=folder))
            stage = Stage(build, place, size * MIB)
            try:
                costs = transfer(stage, kinds, size * MIB)
            finally:
                stage.server.stop(kill=True)
            shutil.rmtree(place)
            cells = []
            for cpu, _, resident in costs:
                cells += [f"{cpu:.2f}", f"{cpu / (size * MIB / kinds[0].block) * 1e6:.0f}", f"{resident:.0f} MiB"]
            row(size, *(kind.name for kind in kinds), *cells, f"{costs[1][1]:.1f}")


TABLES = {"pictures": pictures, "web": web, "stream": stream, "others": others}


def main():
    arguments = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    arguments.add_argument("build", type=pathlib.Path, help="the build tree")
    arguments.add_argument("tables", nargs="*", metavar="TABLE", help=", ".join(TABLES))
    arguments.add_argument("--folder", action="append", metavar="DIR", help="where files lie; may be given again")
    arguments.add_argument("--rounds", type=int, default=5)
    chosen = arguments.parse_args()
    for name in chosen.tables or TABLES:
        for parent in chosen.folder or [tempfile.gettempdir()]:
            with tempfile.TemporaryDirectory(prefix="files-", dir=parent) as folder:
                run = functools.partial(TABLES[name], chosen.build.resolve(), pathlib.Path(folder))
                run() if name == "others" else run(chosen.rounds)


if __name__ == "__main__":
    main()
