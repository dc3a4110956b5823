# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""The options page of an account, by the names of the settings."""

from .windows import Page

# The control of each setting that the page has.
CONTROLS = {
    "XMPP/User": 7000, "XMPP/Pass": 7001, "XMPP/Priority": 6024, "XMPP/AuthType": 7030, "XMPP/MessageAsChat": 6017,
    "XMPP/XEP-118": 6019, "XMPP/XEP-107": 6023, "XMPP/GMail": 6015, "XMPP/GMailLeave": 6018, "XMPP/Avatar/Enable": 7012,
    "XMPP/Avatar/SendEnable": 6007, "XMPP/Serv/Enable": 7002, "XMPP/Serv/Host": 7007, "XMPP/Serv/SSL": 6000,
    "XMPP/Serv/SSL/Legacy": 6013, "XMPP/Serv/Compress": 6016, "XMPP/Proxy/OKU": 6014, "XMPP/Proxy/Enable": 7004,
    "XMPP/Proxy/Type": 7005, "XMPP/Proxy/Host": 7003, "XMPP/Proxy/Port": 7008, "XMPP/Proxy/Auth": 7009,
    "XMPP/Proxy/User": 7010, "XMPP/Proxy/Pass": 7011}
INPUTS = ("edit", "password", "check", "drop-down")


class OptionsPage(Page):
    def settings(self):
        """The numbers of the controls that take something in."""
        return {one["control"] for one in self.controls if one["kind"] in INPUTS and not one["readOnly"]}

    def set(self, key, value):
        kind, = [one["kind"] for one in self.controls if one["control"] == CONTROLS[key]]
        if kind == "check":
            self.check(CONTROLS[key], bool(value))
        elif kind == "drop-down":
            self.choose(CONTROLS[key], value)
        else:
            self.fill(CONTROLS[key], str(value))


def save(terminal, changes):
    """Changes the settings in the page, in their order, and saves all."""
    page = OptionsPage(terminal)
    for key, value in changes.items():
        page.set(key, value)
    page.ok()
