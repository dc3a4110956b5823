# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Every text that a user or a log reader sees stands in texts.golden, and every text of texts.golden in the code.

A text is a string literal that holds a blank or a letter beyond ASCII; adjacent literals are one. Texts of one plain
word cannot be told from names: they are only looked for. Whoever changes a text changes it in both places, and so knows
that users, hosts and log readers depend on it.
"""
import pathlib
import re
import sys

FOLDERS = ["plugin", "stream", "router", "im", "extensions", "profile", "transfer", "ui", "dialogs", "host/services"]
SKIPPED_LINES = re.compile(r'^\s*(#\s*include|static_assert|//)')
COMMENT = re.compile(r'//[^"\n]*$', re.MULTILINE)
LITERALS = re.compile(r'(?:u8|u|U|L)?"((?:[^"\\\n]|\\.)*)"((?:\s*(?:u8|u|U|L)?"(?:[^"\\\n]|\\.)*")*)')
MORE = re.compile(r'(?:u8|u|U|L)?"((?:[^"\\\n]|\\.)*)"')


def is_text(literal):
    if literal.startswith(("<", "(<")) or "xmlns" in literal:
        return False
    return (" " in literal.strip() or any(ord(c) > 127 for c in literal)
            or re.match(r"(\\.)+\S", literal) is not None and len(literal) > 6)


def literals_of(source):
    lines = [line for line in source.read_text(encoding="utf-8").split("\n") if not SKIPPED_LINES.match(line)]
    code = COMMENT.sub("", "\n".join(lines))
    for match in LITERALS.finditer(code):
        yield match.group(1) + "".join(MORE.findall(match.group(2)))


def sources(root):
    for folder in FOLDERS:
        yield from sorted((root / folder).rglob("*.cpp"))
        yield from sorted((root / folder).rglob("*.h"))
    yield from sorted((root / "host").glob("*.cpp"))


def main():
    root = pathlib.Path(sys.argv[1])
    golden_file = pathlib.Path(__file__).with_name("texts.golden")
    golden = [line for line in golden_file.read_text(encoding="utf-8").split("\n") if line and not line.startswith("# ")]
    found = {}
    for source in sources(root):
        for literal in literals_of(source):
            found.setdefault(literal, source.relative_to(root).as_posix())
    faults = [f"{place}: not in texts.golden: {text}" for text, place in found.items()
              if is_text(text) and text not in golden]
    faults += [f"texts.golden: not in the code: {text}" for text in golden if text not in found]
    faults += [f"texts.golden: twice: {text}" for text in sorted(set(t for t in golden if golden.count(t) > 1))]
    print("\n".join(faults) if faults else f"{len(golden)} texts are as they should be")
    return 1 if faults else 0


sys.exit(main())
