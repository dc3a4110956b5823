# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""The plugin's windows as a script works with them: by what their controls are called."""

COMMANDS = "http://jabber.org/protocol/commands"


def field(row, label):
    """The value of a row's field."""
    return next((one["value"] for one in row["fields"] if one["label"] == label), "")


def called(control):
    """What a person calls a control."""
    return control["name"] or control["text"]


class Window:
    """One window that is open. `controls` are those that it had when it opened."""

    def __init__(self, terminal, event):
        self.terminal = terminal
        self.window = event["window"]
        self.event = event
        self.controls = event["controls"]

    def control(self, name):
        """The number of the control of that name, or the number that is given; the first one where several fit."""
        if isinstance(name, int):
            return name
        return next(one["control"] for one in self.controls if called(one) == name and one["kind"] != "label")

    def text(self, name):
        wanted = self.control(name)
        return next(one["text"] for one in self.controls if one["control"] == wanted)

    def command(self, cmd, **fields):
        self.terminal.command(cmd, window=self.window, **fields)

    def fill(self, name, text):
        self.command("window-fill", control=self.control(name), text=text)

    def check(self, name, checked):
        self.command("window-check", control=self.control(name), checked=checked)

    def choose(self, name, choice):
        self.command("window-choose", control=self.control(name), choice=choice)

    def press(self, name):
        self.command("window-press", control=self.control(name))

    def wait_closed(self):
        self.terminal.wait("window-closed", window=self.window)


def notice(terminal, text, style="information"):
    """Answers the box that says so, and gives it."""
    box = terminal.wait("question", style=style, text=lambda told: text in told)
    terminal.command("answer", box=box["box"], button="ok")
    return box


class Browser(Window):
    """The service browser."""

    def __init__(self, terminal):
        menu = terminal.ask("menu", "menu")
        item, = [one["item"] for one in menu["items"] if "rzegląd" in one["caption"]]
        terminal.command("menu-item", item=item)
        super().__init__(terminal, terminal.wait("window", kind="window"))
        self.jid, self.node, self.go = (self.control(name) for name in ("JID:", "Gałąź:", "Przejdź"))
        self.list, = [control["control"] for control in self.controls if control["kind"] == "list"]

    def browse(self, jid, node=""):
        self.terminal.forget()
        self.fill(self.jid, jid)
        self.fill(self.node, node)
        self.press(self.go)

    def row(self, where):
        """The row that comes to fit, whether it does at once or when more of it is known."""
        return self.terminal.wait("window-row", where, window=self.window, control=self.list)

    def choose_from_menu(self, row, text):
        """Chooses the item that begins so from a row's menu."""
        self.command("window-row-menu", control=self.list, row=row["row"])
        menu = self.terminal.wait("window-menu", window=self.window)
        item, = [one for one in menu["items"] if one["text"].startswith(text)]
        assert item["enabled"], menu
        self.command("window-menu-item", item=item["item"])

    def execute(self, node):
        """Runs the command of the row with this node by its menu."""
        self.choose_from_menu(
            self.row(lambda row: field(row, "Gałąź:") == node and field(row, "Typ:") == "command-node"), "Wykonaj")


class Form(Window):
    """A form that the plugin has opened, by the controls of its page; it opens when the page is there."""

    def __init__(self, terminal):
        self.dialog = Window(terminal, terminal.wait("window", kind="modal"))
        super().__init__(terminal, terminal.wait("window", kind="child", parent=self.dialog.window))

    def fields(self, kind):
        return [one["control"] for one in self.controls if one["kind"] == kind]

    def send(self):
        button, = [one["control"] for one in self.dialog.controls if one.get("default")]
        self.dialog.press(button)

    def wait_usable(self):
        """Waits until it can be sent, again or for the first time."""
        self.terminal.wait("window-changed", window=self.window, input=True)

    def wait_gone(self):
        self.dialog.wait_closed()


class Page(Window):
    """A page of the messenger's, by the controls of what the plugin has put into it."""

    def __init__(self, terminal, cmd="options", **fields):
        terminal.command(cmd, **fields)
        self.frame = terminal.wait("window", kind="page")["window"]
        super().__init__(terminal, terminal.wait("window", kind="child", parent=self.frame))

    def apply(self):
        self.terminal.command("page-apply", window=self.frame)

    def ok(self):
        """Confirms the page and waits until it is gone: then all is saved."""
        self.terminal.command("page-ok", window=self.frame)
        self.terminal.wait("window-closed", window=self.frame)
