// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <cstring>
#include <QString>

#include "host/oku/base.h"

/// Words and wide texts of the plugin's boundary.
namespace oku {

/// The text that a pointer or a word of a record leads to; null gives an empty one. Copies.
inline QString wideText(const char16_t* text) { return text ? QString::fromUtf16(text) : QString(); }
inline const char16_t* widePointer(OKU_WORD word) { return reinterpret_cast<const char16_t*>(word); }
inline QString wideText(OKU_WORD word) { return wideText(widePointer(word)); }

/// A text whose lines CR and LF part, with line feeds alone.
inline QString wideLines(const char16_t* text) {
    return wideText(text).replace(QLatin1String("\r\n"), QLatin1String("\n"));
}

/// The UTF-16 units of `text`, NUL-terminated; valid as long as the string is not changed.
inline const char16_t* widePointer(const QString& text) { return reinterpret_cast<const char16_t*>(text.utf16()); }

template <typename T>
OKU_WORD wordOf(T* pointer) {
    return reinterpret_cast<OKU_WORD>(pointer);
}
inline OKU_WORD wordOf(const QString& text) { return wordOf(widePointer(text)); }

/// The record that a word leads to, or null when the word is 0 or the record is smaller than this host knows it.
template <typename Record>
Record* recordAt(OKU_WORD word) {
    auto* record = reinterpret_cast<Record*>(word);
    return record && record->size >= sizeof(Record) ? record : nullptr;
}

/// A zeroed record with its size filled in.
template <typename Record>
Record makeRecord() {
    Record record;
    std::memset(&record, 0, sizeof record);
    record.size = sizeof record;
    return record;
}

}  // namespace oku
