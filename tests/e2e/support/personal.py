# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Moods, tunes and places (XEP-0107, XEP-0118, XEP-0080) as slixmpp publishes and hears them."""

from oku.events import TIMEOUT, Unexpected

# The event of the log, slixmpp's plugin, and the plugin's name for what comes.
_KINDS = (("mood", "xep_0107", "user_mood"), ("tune", "xep_0118", "user_tune"), ("location", "xep_0080", "user_location"))


class Personal:
    """What a peer publishes, and an event for each thing that it is told of: `from` and `fields`, texts by the names of
    their elements. From now on it wants to be told."""

    def __init__(self, peer):
        self._peer = peer
        peer.with_client(self._begin)
        peer.presence()

    async def _begin(self, client):
        for event, plugin, name in _KINDS:
            client.register_plugin(plugin)
            client.add_event_handler(f"{name}_publish", lambda message, event=event: self._told(event, message))
        # The next presence has the new hash.
        await client["xep_0115"].update_caps(broadcast=False)

    def _told(self, event, message):
        payload = message["pubsub_event"]["items"]["item"].xml[0]
        fields = {child.tag.split("}")[1]: child.text or "" for child in payload}
        self._peer.log.add({"event": event, "from": message["from"].bare, "fields": fields})

    def until_heard(self, *logs):
        """Until all these have heard of a mood of the peer. A server tells those of whom it knows that they want it, and
        asks them for that at a time of its own. So the same is published until all have heard of it."""
        waiting = list(logs)
        for left in range(19, -1, -1):
            self.mood("calm", str(left))
            for log in waiting[:]:
                try:
                    log.wait("mood", timeout=TIMEOUT / 20, where=lambda event: "calm" in str(event),
                             **{"from": self._peer.jid})
                    waiting.remove(log)
                except Unexpected:
                    if not left:
                        raise
            if not waiting:
                return

    def mood(self, value=None, text=None):
        self._peer.with_client(lambda client: client["xep_0107"].publish_mood(value, text))

    def tune(self, **fields):
        self._peer.with_client(lambda client: client["xep_0118"].publish_tune(**fields))

    def location(self, **fields):
        self._peer.with_client(lambda client: client["xep_0080"].publish_location(**fields))

    def withdraw(self, plugin):
        self._peer.with_client(lambda client: client[plugin].stop())
