# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""A session's bus of a test's own, and a player of music on it (MPRIS)."""

import pathlib
import secrets
import threading

from jeepney import DBusAddress, HeaderFields, MessageType, message_bus, new_error, new_method_return, new_signal
from jeepney.io.blocking import Proxy, open_dbus_connection

from oku.events import TIMEOUT, EventLog
from oku.process import Child, open_private

# No service can be started by a name: what a test talks to is there, or is not.
_CONFIGURATION = """\
<busconfig>
  <type>session</type>
  <listen>unix:abstract=protoLink-{name}</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""
_PATH = "/org/mpris/MediaPlayer2"
_PROPERTIES = "org.freedesktop.DBus.Properties"
_PLAYER = "org.mpris.MediaPlayer2.Player"


class Bus:
    """A bus that ends with the test. `address` is what a session has in DBUS_SESSION_BUS_ADDRESS."""

    def __init__(self, home):
        home = pathlib.Path(home)
        home.mkdir()
        (home / "bus.conf").write_text(_CONFIGURATION.format(name=secrets.token_hex(16)))
        log = EventLog("dbus-daemon")
        with open_private(home / "stderr") as errors:
            self._child = Child(["dbus-daemon", "--config-file", str(home / "bus.conf"), "--nofork", "--print-address"],
                                home / "output", lambda line: log.add({"event": "line", "text": line.decode()}),
                                lambda: log.end(f"it ended (see {home}/stderr)"), stderr=errors)
        self.address = log.wait("line")["text"].strip()

    def stop(self):
        self._child.end()


class Player:
    """A player with a name on the bus. It answers what it is asked on a thread of its own, and tells what changes."""

    def __init__(self, bus, name):
        self._state = {"PlaybackStatus": ("s", "Stopped"), "Metadata": ("a{sv}", {})}
        self._connection = open_dbus_connection(bus.address, auth_timeout=TIMEOUT)
        self._sending = threading.Lock()  # also between a look at the state and what is sent of it
        owned = Proxy(message_bus, self._connection, timeout=TIMEOUT).RequestName(f"org.mpris.MediaPlayer2.{name}")
        assert owned == (1,), owned
        self._thread = threading.Thread(target=self._serve, daemon=True)
        self._thread.start()

    def play(self, title, artist="Artysta", album="Album", track=3, seconds=185):
        self._tell("Playing", {"xesam:title": ("s", title), "xesam:artist": ("as", [artist]), "xesam:album": ("s", album),
                               "xesam:trackNumber": ("i", track), "xesam:url": ("s", "file:///home/ala/sekret.ogg"),
                               "mpris:length": ("x", seconds * 1_000_000)})

    def halt(self):
        """Plays no more, and stays on the bus."""
        self._tell("Stopped", {})

    def leave(self):
        """Goes without a word; nothing happens when it has gone."""
        if not self._connection:
            return
        with self._sending:
            self._connection.send(message_bus.GetId())  # whose answer is the last thing that the thread reads
        self._thread.join(TIMEOUT)
        self._connection.close()
        self._connection = None

    def _tell(self, status, metadata):
        with self._sending:
            self._state = {"PlaybackStatus": ("s", status), "Metadata": ("a{sv}", metadata)}
            self._connection.send(new_signal(DBusAddress(_PATH, interface=_PROPERTIES), "PropertiesChanged",
                                             "sa{sv}as", (_PLAYER, self._state, [])))

    def _serve(self):
        while True:
            message = self._connection.receive()
            kind = message.header.message_type
            if kind in (MessageType.method_return, MessageType.error):
                return
            if kind is MessageType.method_call:
                with self._sending:
                    self._connection.send(self._answer(message))

    def _answer(self, message):
        if message.header.fields.get(HeaderFields.member) == "GetAll" and message.body == (_PLAYER,):
            return new_method_return(message, "a{sv}", (self._state,))
        return new_error(message, "org.freedesktop.DBus.Error.UnknownMethod")
