# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Two accounts that see each other, as if they had known each other for long."""


def befriend(case, server, one, other):
    """Subscribes both accounts to each other by two clients that leave again."""
    first, second = case.peer(one, server, "befriend"), case.peer(other, server, "befriend")
    for asker, answerer in ((first, second), (second, first)):
        asker.roster_set(answerer.jid, answerer.jid.split("@")[0].capitalize(), ["Znajomi"])
        asker.presence(to=answerer.jid, kind="subscribe")
        answerer.wait("presence", type="subscribe")
        answerer.presence(to=asker.jid, kind="subscribed")
        asker.wait("presence", type="subscribed")
    for peer, friend in ((first, second), (second, first)):
        peer.wait("roster", items=lambda items: items.get(friend.jid, {}).get("subscription") == "both")
    first.stop()
    second.stop()
