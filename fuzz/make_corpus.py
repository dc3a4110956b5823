#!/usr/bin/env python3
# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Makes the seeds of the fuzzers from the transcripts, and a few by hand: make_corpus.py FOLDER.

The build does so. What a search has found worth keeping stands in corpus/. Beside FOLDER, in inputs/, stands for each
fuzzer the list of all of them, in the same order wherever it is made.
"""
import base64
import os
import pathlib
import re
import sys
import zlib

ROOT = pathlib.Path(__file__).resolve().parent
MOST_OF_ONE_KIND = 40
LONGEST = 700


def received_texts(path):
    """What the server says in a transcript, its pieces joined to the whole text."""
    pieces, last = [], None
    for line in path.read_text(encoding="utf-8").splitlines():
        if line.startswith((" ", "\t")) and last is not None:
            pieces[-1] += line.strip()
        elif match := re.match(r"S(?:@\d+)?: ?(.*)", line):
            last = match
            pieces.append(match.group(1))
        else:
            last = None
    text = "".join(pieces)
    text = re.sub(r"\{base64:([^}]*)\}", lambda m: base64.b64encode(m.group(1).encode()).decode(), text)
    text = re.sub(r"\{(\w+)\}", r"\1", text)
    text = re.sub(r"\\x([0-9a-fA-F]{2})", lambda m: chr(int(m.group(1), 16)), text)
    for escape, value in (("\\r", "\r"), ("\\n", "\n"), ("\\t", "\t"), ("\\0", "\0"), ('\\"', '"'), ("\\{", "{")):
        text = text.replace(escape, value)
    return text.encode("latin-1", "ignore") if text.isascii() else text.encode()


def in_pieces(text, size=20):
    return b"".join(bytes([len(text[i : i + size]) - 1]) + text[i : i + size] for i in range(0, len(text), size))


def short(text):
    return bytes([min(len(text), 255)]) + text[:255]


def transcripts():
    texts = {}
    for path in sorted(ROOT.parent.glob("tests/*/*.transcript")):
        text = received_texts(path)
        if 10 < len(text) <= LONGEST and text not in texts.values():
            texts[path.stem] = text
    step = max(1, len(texts) // MOST_OF_ONE_KIND)
    return dict(list(texts.items())[::step])


def long(text):
    return len(text).to_bytes(2, "big") + text


def texts_with(*words):
    """What the server says in every transcript that speaks of one of these words."""
    seeds = {}
    for path in sorted(ROOT.parent.glob("tests/*/*.transcript")):
        text = received_texts(path)
        if len(text) < 4096 and any(word.encode() in text for word in words):
            seeds[path.stem] = text
    return seeds


def pubsub_seeds():
    seeds = {name: b"\x00" + long(text) for name, text in texts_with("pubsub").items()}
    seeds["break"] = b"\x00" + long(
        b"<message from='contact0@example.org/r'><event xmlns='http://jabber.org/protocol/pubsub#event'>"
        b"<items node='http://jabber.org/protocol/mood'><item><mood xmlns='http://jabber.org/protocol/mood'>"
        b"<text>a&#13;&#10;</text></mood></item></items></event></message>")
    tune = b"\x01" + b"".join(map(short, [b"3", b"A & B", b"T", b"", b"u", b"125"]))
    location = b"\x03" + short(b"1") * 22
    answers = b"\x04" + short(b"") + b"\x04" + short(b"<error/>")
    return seeds | {"publish": tune + answers + b"\x02" + short(b"<&") + b"\x01" + answers + location + answers + b"\x05\x09",
                    "switches": b"\x06\x00\x00\x06\x01\x00" + next(iter(seeds.values()))}


def mailbox_seeds():
    texts = texts_with("mailbox", "new-mail", "http-auth", "aqq:iq:rank")
    return {name: bytes([len(text) % 4]) + long(text) for name, text in texts.items()}


def write(target, seeds):
    folder = pathlib.Path(sys.argv[1]) / target
    folder.mkdir(parents=True, exist_ok=True)
    for old in folder.glob("seed-*"):
        old.unlink()
    for name, content in seeds.items():
        (folder / f"seed-{name}").write_bytes(content)
    inputs = sorted(folder.glob("seed-*")) + sorted((ROOT / "corpus" / target).glob("*"))
    lists = folder.parent.with_name("inputs")
    lists.mkdir(exist_ok=True)
    (lists / target).write_text(",".join(os.path.relpath(one, ROOT) for one in inputs), encoding="utf-8")


def numbered(contents):
    return {str(i): content for i, content in enumerate(contents)}


def folds():
    """Each phrase as a pattern with the lines that it stands for."""
    found = []
    for path in sorted(ROOT.parent.glob("tests/support/folds/*.fold")):
        phrase, *lines = path.read_text(encoding="utf-8").splitlines()
        words = re.split(r"(\$\w+)", phrase.removeprefix("phrase "))
        pattern = "".join(f"(?P<{word[1:]}>.+)" if word.startswith("$") else re.escape(word) for word in words)
        found.append((re.compile(pattern), lines))
    return found


def unfolded(lines, known):
    """The lines of a transcript with what its phrases stand for, a continued line joined to its first."""
    for line in lines:
        match = next((m for pattern, _ in known if (m := pattern.fullmatch(line))), None)
        if match is None:
            yield line
            continue
        body = next(body for pattern, body in known if pattern is match.re)
        filled = [re.sub(r"\$(\w+)(?:\.\w+)?", lambda m: match.groupdict().get(m.group(1), m.group(0)), row) for row in body]
        yield from unfolded(filled, known)


def transfer_seeds(deed, wanted):
    """What a peer says in the transcripts of file transfers, one deed for each stanza."""
    known, seeds = folds(), {}
    for path in sorted(ROOT.parent.glob("tests/transfer/*.transcript")):
        if not path.stem.startswith(wanted):
            continue
        stanzas = []
        for line in unfolded(path.read_text(encoding="utf-8").splitlines(), known):
            if line.startswith("  ") and stanzas and stanzas[-1]:
                stanzas[-1] += line.strip().replace("\\ ", " ")
            else:
                stanzas.append(line[2:].strip() if line.startswith("S:") else "")
        said = [stanza.encode() for stanza in stanzas if stanza.startswith("<iq") and "from='bob@" in stanza]
        said = [stanza.replace(b"bob@example.org", b"contact1@example.org") for stanza in said]
        seeds[path.stem] = b"".join(deed + len(stanza).to_bytes(2, "big") + stanza for stanza in said if len(stanza) < 2048)
    return {name: seed for name, seed in seeds.items() if seed}


CARD_DEEDS = {"ask for the card of ": 1, "fetch the own card": 2, "store the own card": 3, "fetch the own picture": 4,
              "publish the own picture": 5, "the own picture becomes": 6}


def card_deeds(path, known):
    """What the server says and the user does in a transcript, behind the login. An id is the newest one."""
    deeds, said = [], False
    for line in unfolded([line for line in path.read_text(encoding="utf-8").splitlines() if "log in as" not in line], known):
        if line.startswith((" ", "\t")):
            deeds[-1:] = [[0, deeds[-1][1] + line.strip()]] if said else deeds[-1:]
            continue
        said = line.startswith("S: ")
        if said:
            deeds.append([0, line[3:]])
        deeds += [[kind, line[len(start):].split(" ")[0]] for start, kind in CARD_DEEDS.items() if line.startswith(start)]
    seed = b""
    for kind, text in deeds:
        text = re.sub(r"\{base64:([^}]*)\}", lambda m: base64.b64encode(m.group(1).encode()).decode(), text)
        # The small server knows the contact by another name.
        text = re.sub(r"\{\w+\}", "@ID@", text).replace("bob@example.org", "contact0@example.org").encode()[:65535]
        seed += bytes([kind]) + len(text).to_bytes(2, "big") + text
    return seed


def card_seeds(*patterns):
    known = folds()
    paths = sorted(path for pattern in patterns for path in (ROOT.parent / "tests/profile").glob(pattern + ".transcript"))
    return {path.stem: card_deeds(path, known) for path in paths}


def stanza_seeds(texts):
    seeds = {}
    for name, text in texts.items():
        deeds = b"".join(b"\x00" + short(text[i : i + 200]) for i in range(0, len(text), 200))
        seeds[name] = b"\x00\xff" + deeds + b"\x01" + short(text)
    seeds["unload-inside"] = b"\x01\x08\x00" + short(b"<message from='a@b/c'><body>d</body></message>") + b"\x05\x12" * 20
    return seeds


def negotiation_seeds():
    login = b"\x00" + short(b"alice@example.org/home") + short(b"secret")
    header = b"\x0d" + short(b"s1") + b"\x01"
    digest = b'realm="example.org",nonce="OA6MG9tEQGm2hh",qop="auth",charset=utf-8,algorithm=md5-sess'
    bind = b"\x04" + short(b"<session/>") + b"\x01\x0a" + short(b"id") + b"\x01\x0a" + short(b"id") + b"\x01"
    bind += b"\x0b" + short(b"id") + b"\x01"
    return {
        "plain": login + header + b"\x00" + short(b"PLAIN") + b"\x01\x07" + short(b"") + b"\x01" + header + bind,
        "digest": login + header + b"\x01" + short(b"X") + b"\x01\x05" + short(digest) + b"\x01\x05" +
        short(b"rspauth=1") + b"\x01\x07" + short(b"") + b"\x01" + header + bind,
        "tls": login.replace(b"\x00", b"\x01", 1) + header + b"\x02" + short(b"") + b"\x01\x09" + short(b"") + b"\x01",
        "compression": login + header + b"\x07" + short(b"") + b"\x01" + header + b"\x03" + short(b"zlib") + b"\x01",
        "failure": login + header + b"\x08" + short(b"urn:ietf:params:xml:ns:xmpp-sasl") + b"\x01",
    }


def secrets():
    return {
        "register": b"<iq><r:query xmlns:r='jabber:iq:regis&#116;er'><r:password>x</r:password></r:query></iq>",
        "prefix": b"<a xmlns:password='u'><password:b/></a>",
        "sasl": b"<s:auth xmlns:s='urn:ietf:params:xml:ns:xmpp-sasl'>x</s:auth><digest>y</digest>",
        "inherited": b"<a xmlns='jabber:iq:auth'><b xmlns='c'><query password='d'/></b></a>",
        "form": b"<x xmlns='jabber:x:data' type='form'><field type='text-private'><value>x</value></field>"
                b"<field type='text-single'><value>y</value></field></x><field type='text-private'>z</field>",
        "submitted": b"<f:x xmlns:f='jabber:x:data' xmlns:a='b' a:type='form' type='subm&#105;t'><f:field var='c'>x</f:field></f:x>"
                     b"<f:x xmlns:f='jabber:x:data' xmlns:a='b' a:type='submit'>y</f:x><x type='submit'>z</x>",
    }


def growth():
    """Reader, size of the pieces, what stands before, three parts that are repeated one after the other, the rest."""
    rows = {
        "declaration": ["<?xml ", "a", "", ""],
        "waiting-declarations": ["<![CDATA[", "<?a<?>", "", ""],
        "split-declarations": ["?><![CDATA[", "<?", "", ""],
        "nested-declarations": ["?><![CDATA[", "<", "?", "a"],
        "ampersands": ["<a b='", "&", "", ""],
        "numbers": ["<a>", "&#1", "", ""],
        "long-name": ["<a", "a", "<?", ""],
        "attributes": ["<a", " b='c'", "", ""],
        "deep": ["", "<a>", "</a>", ""],
        "ends": ["<a ", "\\n\\r", "]]>", ""],
        "prefixes": ["", "<a xmlns:b='c'>", "</a>", ""],
    }
    seeds = {}
    for name, parts in rows.items():
        texts = b"".join(short(part.encode()) for part in parts)
        for reader in range(7):
            seeds[f"{name}-{reader}"] = bytes([reader, 0]) + texts
    return seeds


def window_seeds():
    """The browser opened and asked, and what the items, forms and commands of the transcripts hold as its answers."""
    value = b"\x00" + short(b"example.org")
    nothing = b"\x00\x00"
    begin = b"\x00\x00" + value + b"\x01\x01\x07\x00\x00\x00\x00" + value * 3

    def answer(shape, content):
        return b"\x03" + bytes([shape]) + long(content) + b"\x00"

    def command(number):
        return begin + answer(1, b"<item jid='a.example'/>") + b"\x01\x05\x00" + bytes([number]) + (
            b"\x00\x00\x00\x01\x00" + nothing)

    submit = b"\x01\x01\x00\x00\x00\x00\x01" + value * 9
    roads = (  # what is done before the answer, and after it
        (rb"disco#items'[^>]*>(.*)</query>", begin, b""),
        (rb"disco#info'[^>]*>(.*)</query>", begin + answer(1, b"<item jid='a.example'/>"), b""),
        (rb"iq:register'>(.*)</query>", command(102) + b"\x00", b"\x00" + submit),
        (rb"<query xmlns='jabber:iq:register'>.*<x [^>]*>(.*)</x>", command(102) + b"\x00", b"\x00" + submit),
        (rb"<command [^>]*><x [^>]*>(.*)</x>", command(104),
         b"\x01\x0b\x00\xc7\x00\x00\x00" + nothing + b"\x00\x00" + submit))
    def press(place, window, *values):
        return b"\x01\x01" + bytes([place]) + b"\x00" * 3 + bytes([window]) + b"".join(b"\x00" + short(one) for one in values)

    page = b"\x06\x01\x00" + nothing * 7
    password = page + press(19, 0) + b"\x00" + press(0, 1, b"secret2", b"secret2")
    account = b"\x07" + page + press(18, 0) + b"\x00" + press(0, 1, b"secret2", b"secret2", b"new@b.example")
    stored = page + press(12, 0) + nothing * 2 + press(17, 0) + b"\x06\x00" + press(15, 0) + b"\x06" + nothing * 2 + (
        b"\x06\x04" + nothing * 24)
    seeds = {"password": password + answer(0, b"") + b"\x01\x0a\x00\x01" + b"\x00\x00\x01", "account": account + b"\x05" * 3,
             "stored": stored + b"\x06\x02\x06\x03" + page,
             "contact": b"\x06\x79\x00" + nothing * 9 + b"\x06\x7c" + nothing * 20,
             "new-contact": b"\x06\x19\x00" + nothing * 9 + b"\x06\x1f" + (b"\x00" + short(b"a@b.example")) * 9,
             "information": b"\x06\xf9\x06\x85\x00" + nothing * 2 + press(34, 0) + b"\x06\x87"}
    for path in sorted((ROOT.parent / "tests/dialogs").glob("*.transcript")):
        text = path.read_bytes()
        for shape, (pattern, before, after) in enumerate(roads, 1):
            for number, content in enumerate(re.findall(pattern, text)):
                if len(content) < 1024:
                    seeds[f"{path.stem}-{shape}-{number}"] = before + answer(shape, content) + after
    return seeds


def dialog_seeds():
    """A plugin that opens windows and says things of them, and a user who works in them; see dialogs_fuzz.cpp."""
    none = b"\x00"
    heard = b"\x03" * 6  # what callbacks take, if there are any: nothing is done in them; elsewhere nothing either
    text = b"\x02" + short(b"a&b\r\nc")

    def control(kind, place, flags=0, items=()):
        return bytes([kind, place, flags]) + text + none + none + bytes([len(items)]) + b"".join(items) + (
            b"" if items else b"\x00") + b"\x03\x00"

    def window(controls, flags=0, parent=0):
        return b"\x00\x00" + bytes([len(controls)]) + b"".join(controls) + text * 3 + bytes([flags, parent, 1])

    def user(number, place, act, more=b""):
        return b"\x02" + bytes([number, place, act]) + more + b"\x03" + heard

    browser = window([control(6, 1, items=[text, text]), control(7, 5, 16, [text]), control(1, 6), control(9, 2, 8), control(8, 4)])
    form = window([control(2, 3), control(5, 1), control(4, 2)], flags=2, parent=1)
    rows = b"".join(b"\x00\x05\x02" + (text * 2 + none) * 2 + b"\x04\x01" + bytes([row]) + text for row in (4, 5, 4))
    menu = b"\x00\x06\x02" + (b"\x01" + text + b"\x02\x00") * 2 + b"\x01\x04"
    said = b"".join(b"\x00\x03" + bytes([what, 1, place, 4]) + text
                    for what in range(1, 10) for place in (0, 1, 2, 4, 5))
    asked = b"".join(b"\x00\x04" + bytes([what, 1, place, 4]) + none for what in range(1, 5) for place in (1, 4, 5))
    told = b"".join(b"\x00\x02" + bytes([which, 1]) + text for which in range(1, 4))
    worked = (user(1, 5, 0, short(b"\x00a\x00b")) + user(1, 1, 1, b"\x04") + user(1, 2, 3) + user(1, 5, 4) + user(1, 4, 5, b"\x04")
              + user(1, 4, 5, b"\xff") + user(1, 4, 6, b"\x05") + user(1, 0, 7, b"\x01") + user(1, 0, 8))
    gone = b"".join(b"\x00\x01" + bytes([what, 1, 4]) + heard for what in (4, 3, 0, 5, 2))
    modal = window([control(9, 1, 8)], flags=1, parent=1)
    return numbered([browser + rows + menu + worked, browser + form + said + asked + told, browser + form + modal + worked + gone,
                     window([], parent=1) + window([], parent=2) + gone * 2, form + modal + browser + gone])


def main():
    texts = transcripts()
    write("probe", {name: in_pieces(text) for name, text in texts.items()})
    write("received", {name: b"\x01" + short(b"\x10\x03\x20\x07") + text for name, text in texts.items()} | {
        "ending": b"\x01\x00</mrn><presence from='contact1@example.org/r'/>"})
    write("element", texts | {"none": "<a>\ufffe</a>".encode()})
    write("readers", texts | {"type": b"<!DOCTYPE a [<!ENTITY b '>'>]><iq a = 'b&#10;\t&gt;'><![CDATA[&]]><c/>\r\n</iq>",
                              "stray": b"</mrn><a/><!-- </a> --><b c='>'/>"})
    write("element_scanner", {name: b"\x06" + text for name, text in texts.items()})
    write("stream_reader", {name: b"\x01" + short(b"\x10\x03\x20\x07") + text for name, text in texts.items()})
    write("secrets", {name: short(b"\x10\x03\x20\x07") + text for name, text in (texts | secrets()).items()})
    write("settings", numbered([short(b"a b") + short(b"x\\\"\n\t") + b'# c\na = 5\nb = "\\n\\0\\""\nd = e\n',
                                short(b"#") + short(b"") + b"= 1\na\n\"b\" = \"c\nd = -0x7\n",
                                short(b"") + short(b"") + 2 * "\ufeff".encode() + b"a = 1"]))
    write("growth", growth())
    write("avatars", card_seeds("avatar_*", "own_picture_*"))
    write("cards", card_seeds("card*", "own_card_*"))
    write("stanzas", stanza_seeds(texts))
    write("negotiation", negotiation_seeds())
    offers = transfer_seeds(b"\x02\x00", ("offer", "name", "out_of_band", "session"))
    offers["web"] = b"\x01\x01\x00" + short(b"plik") + short(b"6") + b"\x00" + (127).to_bytes(2, "big") + (
        b"<iq type='set' from='contact1@example.org/desk' id='s1'><query xmlns='jabber:iq:oob'><url>http://a/b</url></query></iq>"
        .ljust(127)) + b"\x08\x00\x00\x08\x02" + short(b"abc") + b"\x08\x03\x00\x09"
    offers["early"] = offers["web"].replace(b"\x08\x00\x00", b"\x08\x02\x00", 1)
    offers["folder"] = b"\x05\x01" + offers["web"]
    write("offers", offers)
    write("in_band", transfer_seeds(b"\x00", ("in_band", "session")))
    compressor = zlib.compressobj()
    stream = compressor.compress(b"<message><body>a</body></message>") + compressor.flush(zlib.Z_SYNC_FLUSH)
    write("pubsub", pubsub_seeds())
    write("windows", window_seeds())
    write("dialogs", dialog_seeds())
    write("mailbox", mailbox_seeds())
    write("inflate", {"valid": b"\x01" + short(b"\x03\x01") + b"<presence/>" * 9, "stream": b"\x00" + short(b"\x02") + stream,
                      "damaged": b"\x00\x00" + stream[:9] + b"\xff" + stream[10:]})
    write("roster_file", numbered([
        b'<roster><element name="Bob" jid="bob@example.org" auth="both" group="Praca"/></roster>',
        b'<roster><element jid="A@b"/><element jid="a@b"/><element name="x"/></roster>', b"<roster/>", b""]))
    write("client_database", numbered([
        short(b"v=") + b'<dbRoot><entry hash="v="><query node="n#v="><feature var="f"/></query></entry></dbRoot>',
        short(b"v=") + b"<dbRoot><entry/><other hash='v='/></dbRoot><second/>", b"\x00"]))
    write("jid", numbered([b"Alice@Example.ORG/Home", b"a/b@c", b"@", b"/", "Łoś@ŻÓŁW/Ć".encode()]))
    write("base64", numbered([b"cmVhbG09", b"cm Vh\nbG0=", b"=", b"\x00\xff\x80"]))
    write("utf", numbered(["zażółć €😀".encode(), b"\xed\xa0\x80\xf4\x90\x80\x80\xc0\xaf\xe2\x82", b"\xd8\x00\xdc\x00\x00a"]))
    write("values", numbered([
        short(b"%s %d %05i %.2f %x %X %u %% %lld") + short(b"\x00a\xd8\x00") + b"20240229T12:30:00",
        short(b"%") + short(b"") + b" -9223372036854775809", short(b"%99999s") + short(b"") + b"<&>\"'\x01]]>"]))
    write("records", numbered([bytes([0] + [what, 1, 1, 65, 1, what, 2, 5, 1, 3, 97, 98, 99, 7, 7] * 4) for what in range(10)]))
    write("json", numbered([
        b'{"cmd":"accounts","id":1}', b'{"cmd":"send","account":"1","to":"bob@example.org","body":"hej"}', b"{}", b"[1]",
        b'{"cmd":"status","status":"online","id":{"a":null}}']))


if __name__ == "__main__":
    main()
