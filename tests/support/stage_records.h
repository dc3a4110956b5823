// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The records that the stage hands to the plugin.
#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "host/oku/contact.h"
#include "tests/support/stage.h"
#include "tests/support/text.h"

namespace harness {

/// Anything that travels through the table as one word.
template <typename T>
OKU_WORD word(T* pointer) {
    return reinterpret_cast<OKU_WORD>(pointer);
}

template <typename Record>
Record sized() {
    Record record;
    std::memset(&record, 0, sizeof record);
    record.size = sizeof record;
    return record;
}

/// A wide text on the heap, without a character to spare, so that a reader behind its end is caught.
class WideText {
public:
    explicit WideText(const std::string& text) {
        const auto wide = toUtf16(text);
        data_.reset(new char16_t[wide.size() + 1]);
        std::memcpy(data_.get(), wide.c_str(), (wide.size() + 1) * sizeof(char16_t));
    }
    operator const char16_t*() const { return data_.get(); }

private:
    std::unique_ptr<char16_t[]> data_;
};

template <typename Map>
auto& required(Map& map, const typename Map::key_type& key, const char* what) {
    const auto found = map.find(key);
    if (found == map.end()) throw NotThere(std::string("there is no such ") + what);
    return found->second;
}

/// Calls `use` with the contact's record, which is gone afterwards.
template <typename Use>
OKU_WORD withContact(const std::string& jid, std::uint32_t account, Use use) {
    auto record = sized<OKU_CONTACT_RECORD>();
    const WideText id(jid), pfClass("XMPP");
    record.id = id;
    record.pfClass = pfClass;
    record.netId = account;
    return use(word(&record));
}

}  // namespace harness
