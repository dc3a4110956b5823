// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The account towards the host: its registration as a protocol and what it shows of itself.
#pragma once

#include <cstdint>
#include <string>

#include "host/host.h"

namespace protolink {

/// What an account tells of itself when it registers.
struct ProtocolRegistration {
    std::u16string uuid;
    OKU_HANDLER authorizationHandler = nullptr;
    OKU_HANDLER deleteHandler = nullptr;
    OKU_WORD context = 0;
    const std::uint32_t* flags = nullptr;
};

class Protocols {
public:
    explicit Protocols(const Host& host) : host_(host) {}

    /// `netId` gets the host's number for the account, or stays what the record held when the host gives none.
    void add(const ProtocolRegistration& registration, std::uint32_t& netId) const;
    void remove(std::uint32_t netId) const;
    /// By value: the address is the account's own, which the host may change by calling back.
    void setProtocolInfo(std::uint32_t netId, std::u16string bareJid, std::u16string userName) const;

private:
    const Host& host_;
};

}  // namespace protolink
