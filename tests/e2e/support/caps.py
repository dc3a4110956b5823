# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""What an entity tells about itself (XEP-0030), its hash (XEP-0115, section 5.1), and presences that carry one."""

import base64
import hashlib
import xml.etree.ElementTree as ElementTree

DISCO = "http://jabber.org/protocol/disco#info"
CAPS = "http://jabber.org/protocol/caps"
CHAT_STATES = "http://jabber.org/protocol/chatstates"
LANGUAGE = "{http://www.w3.org/XML/1998/namespace}lang"
VERSION = "jabber:iq:version"
ASK_DISCO = f"<query xmlns='{DISCO}'/>"
ASK_VERSION = f"<query xmlns='{VERSION}'/>"


def identities(query):
    """The identities of an answer's `query` in its order: category, type, language and name."""
    return [(one.get("category", ""), one.get("type", ""), one.get(LANGUAGE, ""), one.get("name", ""))
            for one in query.findall(f"{{{DISCO}}}identity")]


def features(query):
    return [one.get("var") for one in query.findall(f"{{{DISCO}}}feature")]


def verification(query):
    """The hash of an answer without forms, by the rules for whoever checks it."""
    known = {f"{{{DISCO}}}identity", f"{{{DISCO}}}feature"}
    if any(child.tag not in known for child in query) or len(set(features(query))) != len(features(query)):
        raise ValueError("ill-formed by the rules, or with a form")
    lines = sorted("/".join(one) for one in identities(query)) + sorted(features(query))
    text = "".join(line + "<" for line in lines)
    return base64.b64encode(hashlib.sha1(text.encode()).digest()).decode()


class OtherClient:
    """A client as it tells about itself: one identity and its features."""

    def __init__(self, name, *features):
        self.query = ElementTree.Element(f"{{{DISCO}}}query")
        ElementTree.SubElement(self.query, f"{{{DISCO}}}identity", category="client", type="pc", name=name)
        for feature in sorted(features):
            ElementTree.SubElement(self.query, f"{{{DISCO}}}feature", var=feature)
        self.hash = verification(self.query)

    def content(self):
        """What it answers, as text."""
        text = ElementTree.tostring(self.query, "unicode")
        return text.replace("ns0:", "").replace("xmlns:ns0=", "xmlns=").replace(" />", "/>")

    def presence(self, kind="sha-1"):
        """A presence with its hash."""
        return (f"<presence><c xmlns='{CAPS}' hash='{kind}' node='https://other.example' ver='{self.hash}'/>"
                "</presence>")

    def answer(self, request):
        """The answer to a request, an event `asked` of a peer."""
        return f"<iq type='result' to='{request['from']}' id='{request['id']}'>{self.content()}</iq>"
