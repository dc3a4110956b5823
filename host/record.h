// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Filling and reading the records of the host's boundary.
#pragma once

#include <cstdint>
#include <string>

#include "host/oku/base.h"

namespace protolink {

/// A record of the boundary, zeroed as a whole (gaps included) and with its size set.
template <typename Record>
Record makeRecord() {
    Record record{};
    record.size = static_cast<std::uint32_t>(sizeof(Record));
    return record;
}

/// A record, or anything else that travels through the table as one word.
template <typename T>
OKU_WORD toWord(T* pointer) {
    return reinterpret_cast<OKU_WORD>(pointer);
}

inline OKU_WORD toWord(const std::u16string& text) { return toWord(text.c_str()); }

/// The record behind a word that the host gave, or null. The host owns it, and it is valid during the call only.
template <typename Record>
const Record* readRecord(OKU_WORD word) {
    return reinterpret_cast<const Record*>(word);
}

/// A text that the host gave; a null pointer reads as an empty text.
inline std::u16string readText(const char16_t* text) { return text ? std::u16string(text) : std::u16string(); }

}  // namespace protolink
