// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The longest description that goes out.
#include <gtest/gtest.h>

#include <string>

#include "plugin/module.h"
#include "tests/support/player.h"

namespace {

constexpr harness::PluginExports kExports{queryPlugInfo, pluginLoad, pluginUnload};

/// The host sets `wanted`; `sent` goes out, and the listeners are told `told`.
void expectDescription(const std::string& wanted, const std::string& told, const std::string& sent) {
    const std::string text = "log in as alice@example.org/home\nstatus online \"" + wanted +
                             "\" -> 1\nthe own status becomes online described \"" + told +
                             "\" with icon available\nC: <presence><status>" + sent + "</status>{caps}</presence>\n";
    const auto outcome = harness::play(kExports, harness::FoldBook(PROTOLINK_FOLDS).readText("description", text), {});
    EXPECT_TRUE(outcome.passed) << outcome.report;
}

TEST(PresenceDescription, Of1024CharactersGoesOutWhole) {
    const std::string text(1024, 'd');
    expectDescription(text, text, text);
}

TEST(PresenceDescription, Of1025CharactersIsCutTo1024) {
    const std::string text(1024, 'd');
    expectDescription(text + "e", text, text);
}

TEST(PresenceDescription, IsCutBeforeItIsEscaped) {
    std::string plain;
    std::string escaped;
    for (int i = 0; i < 1024; ++i) {
        plain += '&';
        escaped += "&amp;";
    }
    expectDescription(plain + "&", plain, escaped);
}

TEST(PresenceDescription, CutInsideACharacterOfTwoUnitsGoesOutWithoutIt) {
    const std::string text(1023, 'd');
    // The host hears the half that remains; no XML can carry it.
    expectDescription(text + "\xF0\x9F\x98\x80", text + "\xEF\xBF\xBD", text);
}

TEST(PresenceDescription, OfTheSharedStatusIsCutAsWell) {
    const std::string text(1024, 'd');
    const std::string play = "log in as alice@example.org/home with a shared status\nstatus online \"" + text +
                             "e\" -> 1\nthe own status becomes online described \"" + text +
                             "\" with icon available\nC xml: <iq to=\"alice@example.org\" id=\"{shared}\" type=\"set\">"
                             "<query xmlns=\"google:shared-status\" version=\"2\"><status>" +
                             text +
                             "</status><show>available</show><status-list show=\"dnd\"><status>list</status>"
                             "</status-list><invisible value=\"false\"/></query></iq>\nC: <presence><status>" +
                             text + "</status>{caps}</presence>\n";
    const auto outcome = harness::play(kExports, harness::FoldBook(PROTOLINK_FOLDS).readText("description", play), {});
    EXPECT_TRUE(outcome.passed) << outcome.report;
}

}  // namespace
