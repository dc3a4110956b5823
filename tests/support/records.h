// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The records of the host's boundary as a host sees them: bytes at offsets. The numbers are typed in, independently of
// the headers that the plugin fills its records by.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "host/oku/base.h"
#include "tests/support/line.h"

namespace harness {

enum class FieldKind {
    Text,   // pointer to wide text; null is not shown, an empty text is
    Class,  // pointer to the protocol class; not shown when "XMPP"
    U32,    // numbers are not shown when 0
    I32,
    Word,
    Net,           // the account's number; not shown when 1
    Status,        // a status code, shown by its word
    Time,          // seconds since the epoch, shown as "now" or a number; not shown when 0
    Callback,      // must be there, not shown
    MenuClick,     // a callback that may be missing; shown as "set"
    Context,       // shown as "none" when missing
    MaybeContext,  // shown as "account" when there
    Module,        // shown as "none" when it is not the module's word
    Statuses,      // pointer to u32 values whose count stands at `other`
    Contact,       // pointer to a contact record, its fields shown in place
    Resource,      // pointer to a resource record, its fields shown in place
    Published,     // pointer to the record of a file to publish, its fields shown in place
    SameResource,  // pointer to what the field at `other` of the contact points to; shown as "other" when it is not
    Window,        // one of the plugin's own windows, shown by its template; not shown when 0
    Half,          // four bytes that are shown elsewhere, or not at all
    Skip,          // bytes that mean nothing to a reader: addresses of buffers and what the host fills in
};

struct FieldLayout {
    const char* name;
    std::size_t offset;
    FieldKind kind;
    std::size_t other = 0;
};

struct RecordLayout {
    const char* name;
    std::size_t size;
    std::span<const FieldLayout> fields;
    bool begins = true;  // with its own size
};

/// What reading a record needs to know of the world around it, and where it tells what is wrong.
struct ReadContext {
    OKU_WORD module = 0;
    std::int64_t now = 0;
    std::function<void(const std::string&)> complain;
    std::function<std::uint32_t(OKU_WORD)> templateOf = {};  // of an open window's handle; 0 for any other word
};

/// The record's fields as a line shows them. A wrong size word, a byte that should be zero and a missing callback are
/// complained about; text is copied during the call.
std::vector<Field> readRecord(const RecordLayout& layout, const void* record, const ReadContext& context);

/// A number or a pointer out of a record.
template <typename T>
T peek(const void* record, std::size_t offset) {
    T value;
    __builtin_memcpy(&value, static_cast<const char*>(record) + offset, sizeof value);
    return value;
}
template <typename T>
void poke(void* record, std::size_t offset, T value) {
    __builtin_memcpy(static_cast<char*>(record) + offset, &value, sizeof value);
}

/// The UTF-8 form of a wide text that is copied now; an empty text for null.
std::string copyText(const void* text);

/// The word of a status code ("away"), or its number.
std::string statusWord(std::uint32_t status);
/// The code of such a word or number; throws std::invalid_argument on any other text.
std::uint32_t statusCode(const std::string& word);

namespace layouts {
extern const RecordLayout kContactAvatar, kCardElement, kCardStatus, kOwnCardField, kOwnCardFieldGet, kOwnCardStatus;
extern const RecordLayout kLog, kSettings, kTimer, kHook, kHookData, kStatusData, kContact, kResource, kContactState,
    kContactAdd, kContactIdentity, kContactIcon, kMessage, kMessageSend, kProtocol, kInfo, kMenu, kDirectory,
    kIconClass, kIconLoad, kIconSet, kOptionsPage, kPropertiesPage, kContactPage, kStatusPrepare, kStatusShow,
    kStatusTexts, kMessageBox, kNotify, kPepEvent, kPepTune, kPepMood, kPepLocation, kSocketCreate, kSocketConnect,
    kSocketSend, kProxyDefaults, kTransferInit, kTransferAsk, kPublish, kPublished, kFileChooser, kWindow, kControl,
    kWindowText, kControlValue, kControlPlace, kRow, kRowField, kPopupMenu, kPopupItem;
}  // namespace layouts

}  // namespace harness
