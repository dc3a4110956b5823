// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The host's table of functions. A service's name stands in this folder only: host/services/ has one class for each
// family of services, and the rest of the plugin calls their methods.
#pragma once

#include <cstdint>
#include <string>

#include "host/oku/table.h"

namespace protolink {

/// The protocol class that all accounts share, as the host knows it.
inline constexpr char16_t kProtocolClass[] = u"XMPP";

/// The tags of log lines.
namespace tag {
inline constexpr char16_t kGeneral[] = u"XMPP";
inline constexpr char16_t kStream[] = u"XMSC";
inline constexpr char16_t kCompression[] = u"XMCM";
inline constexpr char16_t kPersonalEvents[] = u"PEPD";
inline constexpr char16_t kAvatars[] = u"XMAV";
}  // namespace tag

enum class LogLevel : std::int32_t {
    Negotiation = -1,
    Error = 0,
    Warning = 1,
    Reconnect = 2,
    Debug = 5,
    Ping = 6,
};

/// Texts in calls are the caller's and needed only during the call. A service that the host lacks answers 0, which
/// every family turns into its documented default.
class Host {
public:
    Host() = default;
    Host(const OKU_FUNCTION_TABLE* table, OKU_WORD module) : table_(table), module_(module) {}

    /// From now on no call reaches the host: everything answers 0. For an account that has ended while one of its
    /// own calls is still on the stack.
    void mute() { table_ = nullptr; }
    OKU_WORD module() const { return module_; }

    OKU_WORD call(const char16_t* service, OKU_WORD param, OKU_WORD extra = 0) const;

    // Registrations. A handle of 0 means that the host did not register it.
    /// Registers an account's service under the protocol class, the account's number and a short name.
    OKU_WORD createNetService(std::uint32_t netId, const char16_t* shortName, OKU_HANDLER handler,
                              OKU_WORD context) const;
    void destroyService(OKU_WORD handle) const;
    OKU_WORD addHook(const char16_t* event, OKU_HANDLER handler, OKU_WORD context) const;
    void removeHook(OKU_WORD handle) const;
    OKU_WORD createEvent(const char16_t* name) const;
    void destroyEvent(OKU_WORD event) const;
    /// Tells an event's listeners. Non-zero: one of them took it. An event that was not made has no listeners.
    OKU_WORD notifyEvent(OKU_WORD event, OKU_WORD param, OKU_WORD extra) const;

    // "OKU/Log". A null tag is allowed.
    void log(LogLevel level, const char16_t* tag, const std::u16string& text) const;
    /// A notice that the user must see.
    void logUser(const std::u16string& text) const;

private:
    const OKU_FUNCTION_TABLE* table_ = nullptr;
    OKU_WORD module_ = 0;
};

/// The name of one of an account's own services.
std::u16string accountServiceName(std::uint32_t netId, const char16_t* shortName);

}  // namespace protolink
