// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the host writes into the buffer of the own card's form.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "host/services/cards.h"

using namespace protolink;

namespace {

/// Fills the buffer to its last character, as a host may that takes the capacity for the text's.
OKU_WORD OKU_CALL fill(const char16_t*, OKU_WORD param, OKU_WORD) {
    const auto* field = reinterpret_cast<const OKU_OWN_CARD_FIELD_GET*>(param);
    std::fill_n(field->buffer, field->capacity, u'a');
    return 1;
}

OKU_WORD OKU_CALL leave(const char16_t*, OKU_WORD, OKU_WORD) { return 0; }

Host hostThat(OKU_FUNCTION_TABLE& table, decltype(table.fnCall) does) {
    table.fnCall = does;
    return {&table, 0};
}

TEST(CardForm, ATextWithoutItsEndEndsWithTheBuffer) {
    OKU_FUNCTION_TABLE table{};
    const Host host = hostThat(table, fill);
    EXPECT_EQ(OwnCardReader(host, 7).field(u"nick"), std::u16string(OKU_OWN_CARD_CAPACITY, u'a'));
}

TEST(CardForm, ABufferThatTheHostLeavesIsEmpty) {
    OKU_FUNCTION_TABLE table{};
    const Host host = hostThat(table, leave);
    EXPECT_EQ(OwnCardReader(host, 7).field(u"nick"), u"");
}

}  // namespace
