# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Each text in the messenger's sources has its translation, finished and with the same blanks, and no translation is left
of a text that is gone.

check_translations.py LUPDATE CHECKOUT: has LUPDATE take the texts of the sources over into copies of the translations,
and goes through what comes out.
"""
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

BLANK = re.compile(r"%(?:L?[1-9]|L?n)")
# Translation, the options of lupdate, the forms of a number in its language.
TRANSLATIONS = [("oku_en.ts", [], 2), ("oku_pl.ts", ["-pluralonly"], 3)]
LEAST_TEXTS = {"oku_en.ts": 300, "oku_pl.ts": 2}  # fewer: the sources were not understood


def forms_of(message):
    translation = message.find("translation")
    if message.get("numerus") == "yes":
        return [form.text or "" for form in translation.findall("numerusform")]
    return [translation.text or ""]


def message_faults(message, plural_forms):
    source = message.findtext("source") or ""
    state = message.find("translation").get("type")
    if state in ("vanished", "obsolete"):
        yield "is in no source any more"
        return
    if state == "unfinished":
        yield "has no finished translation"
        return
    forms = forms_of(message)
    if len(forms) != (plural_forms if message.get("numerus") == "yes" else 1) or not all(forms):
        yield "lacks a translation or a form of it"
    for form in forms:
        if sorted(BLANK.findall(form)) != sorted(BLANK.findall(source)):
            yield f"has other blanks in {form!r}"


def faults(text, plural_forms):
    """The faults of a translation's XML, and the number of its texts."""
    root = ElementTree.fromstring(text)
    found, count = [], 0
    for context in root.iter("context"):
        for message in context.iter("message"):
            count += 1
            found += [f"{context.findtext('name')}: {message.findtext('source')!r} {fault}"
                      for fault in message_faults(message, plural_forms)]
    return found, count


def taken_over(lupdate, checkout, translation, options):
    """The translation as it is when lupdate has taken the texts of the sources over."""
    folders = [checkout / "messenger" / folder for folder in ("core", "terminal")]
    with tempfile.TemporaryDirectory() as scratch:
        copy = pathlib.Path(scratch) / translation.name
        shutil.copy(translation, copy)
        subprocess.run([lupdate, "-silent", "-locations", "none", "-no-ui-lines", *options, *folders, "-ts", copy],
                       check=True, stderr=subprocess.DEVNULL)
        return copy.read_text(encoding="utf-8")


def main():
    lupdate, checkout = sys.argv[1], pathlib.Path(sys.argv[2])
    found, counts = [], []
    for name, options, plural_forms in TRANSLATIONS:
        translation = checkout / "messenger" / "translations" / name
        updated = taken_over(lupdate, checkout, translation, options)
        these, count = faults(updated, plural_forms)
        if count < LEAST_TEXTS[name]:
            these.append(f"only {count} texts were found")
        if not these and updated != translation.read_text(encoding="utf-8"):
            these.append("the file is not as lupdate writes it: ninja update-translations")
        found += [f"{name}: {fault}" for fault in these]
        counts.append(f"{count} texts in {name}")
    print("\n".join(found) if found else ", ".join(counts) + ": all translated")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
