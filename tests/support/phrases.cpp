// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/support/phrases.h"

#include <array>
#include <string_view>

#include "tests/support/text.h"

namespace harness {
namespace {

bool begins(const std::string& line, std::string_view phrase) {
    if (!startsWith(line, phrase)) return false;
    return phrase.back() == ' ' || line.size() == phrase.size() || line[phrase.size()] == ' ';
}

}  // namespace

const Phrase* findPhrase(const std::string& line) {
    static const std::array kFamilies{worldPhrases(),      hostPhrases(),    playerPhrases(),
                                      connectionPhrases(), contactPhrases(), cardPhrases(),
                                      transferPhrases(),   dialogPhrases(),  pagePhrases()};
    const Phrase* longest = nullptr;
    for (const auto& family : kFamilies) {
        for (const auto& phrase : family) {
            const std::string_view text = phrase.text;
            if (begins(line, text) && (!longest || text.size() > std::string_view(longest->text).size()))
                longest = &phrase;
        }
    }
    return longest;
}

}  // namespace harness
