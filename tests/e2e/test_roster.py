# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""The contact list: as it comes, as another client changes it, and as the person changes it."""

import unittest

from support.case import Case


class Roster:
    """The tests; the classes below say over which server."""

    def setUp(self):
        super().setUp()
        self.server = self.serve()
        self.other = self.peer("ala", self.server, "other")

    def test_the_list_comes_with_names_and_groups(self):
        self.other.roster_set("olek@localhost", "Olek Ość", ["Rodzina & „swoi” <3"])
        self.other.roster_set("ewa@localhost")
        terminal = self.online("ala", self.server)
        roster = terminal.roster()
        self.assertEqual(set(roster), {"olek@localhost", "ewa@localhost"})
        self.assertEqual((roster["olek@localhost"]["name"], roster["olek@localhost"]["group"]),
                         ("Olek Ość", "Rodzina & „swoi” <3"))
        self.assertEqual((roster["ewa@localhost"]["name"], roster["ewa@localhost"]["group"]),
                         ("ewa@localhost", "Kontakty"))
        self.assertEqual(roster["ewa@localhost"]["subscription"], "none")
        self.assertEqual(terminal.roster()["olek@localhost"]["resources"], [])

    def test_a_contact_in_two_groups_stands_in_one_of_them(self):
        self.other.roster_set("olek@localhost", "Olek", ["Praca", "Znajomi"])
        terminal = self.online("ala", self.server)
        self.assertIn(terminal.roster()["olek@localhost"]["group"], ("Praca", "Znajomi"))

    def test_changes_by_another_client_come_as_they_happen(self):
        terminal = self.online("ala", self.server)
        self.other.roster_set("olek@localhost", "Olek", ["Praca"])
        terminal.wait("contact", jid="olek@localhost", name="Olek", group="Praca")
        self.other.roster_set("olek@localhost", "Oleś", ["Praca"])
        terminal.wait("contact", jid="olek@localhost", name="Oleś", group="Praca")
        self.other.roster_set("olek@localhost", "Oleś", ["Dom"])
        terminal.wait("contact", jid="olek@localhost", name="Oleś", group="Dom")
        self.other.roster_set("olek@localhost", subscription="remove")
        terminal.wait("removed", jid="olek@localhost")
        self.assertEqual(terminal.roster(), {})

    def test_the_person_adds_renames_moves_and_removes(self):
        terminal = self.online("ala", self.server)

        def other_sees(name, group):
            self.other.wait("roster", items=lambda items: items.get("olek@localhost", {}).get("name") == name
                            and items["olek@localhost"]["groups"] == [group])

        terminal.command("add", jid="olek@localhost", name="Olek", group="Znajomi")
        other_sees("Olek", "Znajomi")
        terminal.wait("contact", jid="olek@localhost", name="Olek", group="Znajomi", waiting=True)
        terminal.command("rename", jid="olek@localhost", name="Oleś <&> ąę")
        other_sees("Oleś <&> ąę", "Znajomi")
        terminal.wait("contact", jid="olek@localhost", name="Oleś <&> ąę", group="Znajomi")
        terminal.command("group", jid="olek@localhost", group="Praca")
        other_sees("Oleś <&> ąę", "Praca")
        terminal.wait("contact", jid="olek@localhost", name="Oleś <&> ąę", group="Praca")
        terminal.command("remove", jid="olek@localhost")
        terminal.wait("removed", jid="olek@localhost")
        self.other.wait("roster", items=lambda items: items.get("olek@localhost", {}).get("subscription") in
                        (None, "remove"))

    def test_the_last_list_is_shown_before_the_next_login(self):
        self.other.roster_set("olek@localhost", "Olek", ["Praca"])
        self.assertEqual(self.online("ala", self.server).quit(), 0)
        again = self.messenger("ala")
        self.assertEqual({(one["jid"], one["name"], one["group"]) for one in again.roster().values()},
                         {("olek@localhost", "Olek", "Praca")})


class OverProsody(Roster, Case):
    serve = Case.prosody


class OverEjabberd(Roster, Case):
    serve = Case.ejabberd


if __name__ == "__main__":
    unittest.main()
