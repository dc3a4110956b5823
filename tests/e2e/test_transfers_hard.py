# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Files that go wrong: names that lead elsewhere, peers that vanish or say what they should not, disks and folders."""

import base64
import concurrent.futures
import random
import resource
import threading
import unicodedata
import unittest
from xml.sax.saxutils import quoteattr

from slixmpp.exceptions import IqError, IqTimeout

from oku.prosody import Prosody
from support.case import BUILD, Case
from support.ejabberd import Ejabberd
from support.files import IBB, SI, TRANSFER, FilePeer
from support.friends import befriend
from support.plain import PlainTerminal

MANY = 200
OVER = ("done", "incomplete", "failed", "cancelled")


def encoded(content):
    return base64.b64encode(content).decode()


def initiation(name, size, sid):
    return (f"<si xmlns='{SI}' id='{sid}' profile='{TRANSFER}'><file xmlns='{TRANSFER}' name={quoteattr(name)} size='{size}'/>"
            "<feature xmlns='http://jabber.org/protocol/feature-neg'><x xmlns='jabber:x:data' type='form'>"
            f"<field var='stream-method' type='list-single'><option><value>{IBB}</value></option></field>"
            "</x></feature></si>")


class HardTransfers:
    """The tests; the classes below say over which server."""

    def setUp(self):
        super().setUp()
        self.server = self.shared(self.kind, lambda server: befriend(self, server, "ala", "olek"))
        self.documents = self.folder / "documents"
        self.terminal = self.online("ala", self.server, options=("--verbose",),
                                    settings={"XMPP/SI/Path": f"{self.documents}/%from%/"})
        own = self.terminal.seen("presence", lambda event: event["jid"] == "ala@localhost")[0]
        self.ala = f"ala@localhost/{own['resource']}"
        self.olek = self.peer("olek", self.server, "dom", kind=FilePeer)
        self.terminal.wait("log", text=f"disco#info result form: {self.olek.full}")
        self.received = self.documents / "olek@localhost"

    def end_of(self, number):
        return self.terminal.wait("transfer", transfer=number, state=lambda state: state in OVER)

    def offering(self, name, size, sid):
        """The peer offers a file on a thread of its own; gives that, and the list that has what the peer was told when
        the thread has ended, nothing where nobody answered until the peer went."""
        told = []

        def offer():
            try:
                self.olek.offer(self.ala, name, size, sid)
                told.append("accepted")
            except IqError as error:
                told.append(error.condition)
            except (IqTimeout, concurrent.futures.CancelledError, TimeoutError):
                pass
        thread = threading.Thread(target=offer)
        thread.start()
        return thread, told

    def offered(self, name, size, sid, answer="accept"):
        """A file that the peer offers and the user answers; gives the event of the offer, and what the peer was told."""
        asking, told = self.offering(name, size, sid)
        event = self.terminal.wait("file-offer", size=size)
        self.terminal.command("answer-file", offer=event["offer"], answer=answer)
        asking.join()
        return event, "".join(told)

    def begun(self, name, size, sid):
        """A file that is accepted and opened; gives the transfer's number."""
        self.offered(name, size, sid)
        number = self.terminal.wait("transfer", size=size, direction="in")["transfer"]
        self.assertEqual(self.olek.open(self.ala, sid), "result")
        return number

    def test_names_are_shown_cleaned_and_lead_nowhere(self):
        for size, name, shown in ((101, "../../wyżej", "wyżej"), (102, "/etc/passwd", "etcpasswd"),
                                  (103, "..", "_"), (105, "a\\b", "ab"),
                                  (106, "a:b", "ab")):
            with self.subTest(name=name):
                event, told = self.offered(name, size, f"n{size}")
                self.assertEqual((event["name"], told), (shown, "accepted"))
                number = self.terminal.wait("transfer", size=size)["transfer"]
                self.assertEqual(self.olek.open(self.ala, f"n{size}"), "error")
                self.assertEqual(self.end_of(number)["state"], "failed")
        files = [path for path in self.documents.rglob("*") if path.is_file()]
        self.assertEqual(files, [])

    def test_names_with_controls_are_shown_cleaned_and_open_nothing(self):
        for size, name, shown in ((111, "a\u0085\u007fb", "ab"), (112, "../\u202e\u0085/Łódź kaliska", "Łódź kaliska")):
            with self.subTest(name=name):
                event, told = self.offered(name, size, f"c{size}")
                self.assertEqual((event["name"], told), (shown, "accepted"))
                transfer = self.terminal.wait("transfer", size=size)["transfer"]
                self.assertEqual(self.olek.open(self.ala, f"c{size}"), "error")
                self.assertEqual(self.end_of(transfer)["state"], "failed")
        self.assertEqual([path for path in self.documents.rglob("*") if path.is_file()], [])

    def test_names_that_turn_the_direction_are_shown_without_that(self):
        name = "Zażółć \u202efdp.\u2066 gęślą\u200f.exe"
        number = self.begun(name, 3, "d1")
        self.assertEqual(self.olek.block(self.ala, "d1", 0, "AAAA"), "result")
        end = self.end_of(number)
        self.assertEqual((end["state"], end["name"]), ("done", "Zażółć fdp. gęślą.exe"))
        self.assertEqual(end["path"], str(self.received / name))
        self.assertEqual([path for path in self.documents.rglob("*") if path.is_file()], [self.received / name])
        self.assertEqual(self.terminal.ask("files", "files")["transfers"][0]["name"], "Zażółć fdp. gęślą.exe")
        # What it is in truth is asked before it is opened.
        self.terminal.command("open-file", transfer=number)
        box = self.terminal.wait("question", text=lambda text: "Zażółć fdp. gęślą.exe" in text)
        self.terminal.command("answer", box=box["box"], button="no")

    def test_names_on_the_screen_are_clean(self):
        self.assertEqual(self.terminal.quit(), 0)
        self.olek.forget()
        plain = PlainTerminal(BUILD, self.folder / "ala", self.authority.certificate, "ala@localhost")
        self.addCleanup(plain.stop)
        self.ala = self.olek.wait("presence", type=None, **{"from": lambda jid: jid.startswith("ala@localhost/")})["from"]
        name = "\u202e../gpj\u0085.\u2066Zażółć\u007f.exe"
        for sid, offered, shown in (("p1", name, "gpj.Zażółć.exe"), ("p2", "Zażółć\u202e.exe", "Zażółć.exe")):
            number = self.olek.send_set(self.ala, initiation(offered, 3, sid))
            plain.wait(f"{shown} (3 B)")
            plain.type("/accept")
            self.assertEqual(self.olek.wait("answer", id=number)["type"], "result")
            plain.wait(f": odbieranie {shown} od ")
        self.assertEqual(self.olek.open(self.ala, "p1"), "error")
        plain.wait("↓ 1 gpj.Zażółć.exe ")
        self.assertEqual(self.olek.open(self.ala, "p2"), "result")
        self.assertEqual(self.olek.block(self.ala, "p2", 0, "AAAA"), "result")
        plain.wait("↓ 2 Zażółć.exe ", "3 B")
        plain.type("/files")
        plain.wait("↓ 1 gpj.Zażółć.exe ")
        self.assertEqual(plain.quit(), 0)
        strange = {c for c in plain.shown() if c != "\n" and unicodedata.category(c) in ("Cc", "Cf", "Zl", "Zp")}
        self.assertEqual(strange, set())
        self.assertEqual([path.name for path in self.documents.rglob("*") if path.is_file()], ["Zażółć\u202e.exe"])

    def test_a_file_that_is_there_stays(self):
        data = random.Random(1).randbytes(5000)
        for run, place in enumerate((self.received, self.received / "2", self.received / "3")):
            number = self.begun("Zażółć gęślą.bin", 5000 + run, f"r{run}")
            whole = data + bytes(run)
            for at in range(0, len(whole), 4096):
                self.assertEqual(self.olek.block(self.ala, f"r{run}", at // 4096, encoded(whole[at:at + 4096])), "result")
            end = self.end_of(number)
            self.assertEqual((end["state"], end["path"]), ("done", str(place / "Zażółć gęślą.bin")))
            self.assertEqual((place / "Zażółć gęślą.bin").read_bytes(), whole)
            self.assertEqual(place.stat().st_mode & 0o777, 0o700)

    def test_what_the_user_refuses_or_ignores(self):
        self.assertEqual(self.offered("a", 11, "s1", "refuse")[1], "forbidden")
        asking, told = self.offering("b", 12, "s2")
        event = self.terminal.wait("file-offer", size=12)
        self.terminal.command("answer-file", offer=event["offer"], answer="ignore")
        self.terminal.wait("file-offer-closed", offer=event["offer"], answer="ignore")
        self.assertEqual(self.terminal.ask("files", "files")["transfers"], [])
        # What the messenger says comes in order.
        self.terminal.command("message", to="olek@localhost", body="to wszystko")
        self.olek.wait("message", body="to wszystko")
        self.olek.stop()
        asking.join()
        self.assertEqual(told, [])

    def test_strangers_are_not_asked_about(self):
        ewa = self.peer("ewa", self.server, "obca", kind=FilePeer)
        ewa.send_set(self.ala, initiation("wirus", 3, "x1"))
        self.terminal.wait("notice", text=lambda text: "wirus" in text and "ewa@localhost" in text)
        self.assertEqual(self.terminal.seen("file-offer"), [])

    def test_a_folder_that_cannot_be_made(self):
        self.documents.mkdir()
        self.received.write_bytes(b"")
        self.assertEqual(self.offered("a", 11, "s1")[1], "forbidden")
        self.terminal.wait("notice", text=lambda text: str(self.received) in text)

    def test_a_disk_that_is_full(self):
        number = self.begun("a.bin", 8192, "s1")
        process = self.terminal.child.process.pid
        hard = resource.prlimit(process, resource.RLIMIT_FSIZE)[1]
        resource.prlimit(process, resource.RLIMIT_FSIZE, (100, hard))
        self.olek.send_set(self.ala, f"<data xmlns='{IBB}' sid='s1' seq='0'>{encoded(bytes(4096))}</data>")
        self.assertEqual(self.end_of(number)["state"], "failed")
        resource.prlimit(process, resource.RLIMIT_FSIZE, (hard, hard))

    def test_a_receiver_that_is_silent(self):
        self.olek.leave_unanswered(IBB)
        path = self.folder / "a.bin"
        path.write_bytes(bytes(100_000))
        self.terminal.command("send-file", to="olek@localhost", path=str(path))
        number = self.terminal.wait("transfer", direction="out")["transfer"]
        self.olek.wait("asked", namespace=IBB)
        self.terminal.command("cancel-file", transfer=number)
        self.assertEqual(self.end_of(number)["state"], "cancelled")

    def test_a_receiver_whose_connection_ends(self):
        self.olek.leave_unanswered(IBB)
        path = self.folder / "a.bin"
        path.write_bytes(bytes(100_000))
        self.terminal.command("send-file", to="olek@localhost", path=str(path))
        number = self.terminal.wait("transfer", direction="out")["transfer"]
        opened = self.olek.wait("asked", namespace=IBB)
        self.olek.raw(f"<iq type='result' id='{opened['id']}' to='{self.ala}'/>")
        self.olek.wait("asked", namespace=IBB)
        self.olek.stop()
        self.terminal.wait("presence", jid="olek@localhost", status="offline")
        self.terminal.command("cancel-file", transfer=number)
        self.assertEqual(self.end_of(number)["state"], "cancelled")

    def test_a_sender_that_closes_early_leaves_what_came(self):
        number = self.begun("a.bin", 8192, "s1")
        self.assertEqual(self.olek.block(self.ala, "s1", 0, encoded(bytes(4096))), "result")
        self.assertEqual(self.olek.close(self.ala, "s1"), "result")
        # The plugin keeps the window, and the user ends it.
        self.terminal.command("cancel-file", transfer=number)
        self.assertEqual(self.end_of(number)["state"], "cancelled")
        self.assertEqual((self.received / "a.bin").read_bytes(), bytes(4096))

    def test_blocks_that_do_not_belong(self):
        number = self.begun("a.bin", 6, "s1")
        # That stream is nobody's.
        self.olek.send_set(self.ala, f"<data xmlns='{IBB}' sid='inna' seq='0'>AAAA</data>")
        self.assertEqual(self.olek.block(self.ala, "s1", 7, "AAAA"), "result")
        self.assertEqual(self.olek.block(self.ala, "s1", 7, "!!!!%%"), "result")
        self.assertEqual(self.olek.block(self.ala, "s1", 1, "AAAAAAAA"), "result")
        self.terminal.command("cancel-file", transfer=number)
        self.assertEqual(self.end_of(number)["state"], "cancelled")

    def test_many_blocks_beyond_the_size(self):
        number = self.begun("a.bin", 6, "s1")
        for at in range(MANY):
            self.assertEqual(self.olek.block(self.ala, "s1", at, encoded(bytes([at]) * 4096)), "result")
        moved = self.terminal.wait("transfer", transfer=number, position=MANY * 4096)
        self.assertEqual((moved["size"], moved["state"]), (6, "running"))
        self.terminal.command("cancel-file", transfer=number)
        self.assertEqual(self.end_of(number)["state"], "cancelled")
        self.olek.send_set(self.ala, f"<data xmlns='{IBB}' sid='s1' seq='{MANY}'>AAAA</data>")
        self.olek.query(self.ala, "<ping xmlns='urn:xmpp:ping'/>")
        written = (self.received / "a.bin").read_bytes()
        self.assertEqual(written, b"".join(bytes([at]) * 4096 for at in range(MANY)))

    def test_many_blocks_after_the_last(self):
        number = self.begun("a.bin", 6, "s1")
        self.assertEqual(self.olek.block(self.ala, "s1", 0, "AAAAAAAA"), "result")
        self.assertEqual(self.end_of(number)["state"], "done")
        for at in range(MANY):
            self.olek.send_set(self.ala, f"<data xmlns='{IBB}' sid='s1' seq='{at + 1}'>BBBB</data>")
        self.olek.query(self.ala, "<ping xmlns='urn:xmpp:ping'/>")
        self.assertEqual((self.received / "a.bin").read_bytes(), bytes(6))

    def test_two_at_once(self):
        first, second = self.begun("a.bin", 6, "s1"), self.begun("b.bin", 7, "s2")
        for sid, more in (("s1", "AAAA"), ("s2", "BBBB"), ("s1", "AAAA"), ("s2", "BBBBBA==")):
            self.assertEqual(self.olek.block(self.ala, sid, 0, more), "result")
        self.assertEqual([self.end_of(number)["state"] for number in (first, second)], ["done", "done"])
        self.assertEqual((self.received / "a.bin").read_bytes(), bytes(6))
        self.assertEqual((self.received / "b.bin").read_bytes(), base64.b64decode("BBBB") + base64.b64decode("BBBBBA=="))

    def test_a_file_without_bytes_arrives(self):
        number = self.begun("pusty", 0, "s1")
        self.assertEqual(self.olek.close(self.ala, "s1"), "result")
        self.assertEqual((self.received / "pusty").read_bytes(), b"")
        self.terminal.command("cancel-file", transfer=number)
        self.end_of(number)


class OverProsody(HardTransfers, Case):
    kind = Prosody


class OverEjabberd(HardTransfers, Case):
    kind = Ejabberd


if __name__ == "__main__":
    unittest.main()
