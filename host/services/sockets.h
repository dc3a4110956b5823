// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The host's sockets, by name.
#pragma once

#include <string>
#include <string_view>

#include "host/callback_target.h"
#include "host/host.h"
#include "host/oku/netlib.h"

namespace protolink {

class Sockets {
public:
    explicit Sockets(const Host& host) : host_(host) {}

    void create(const std::u16string& name, CallbackTarget target) const;
    void connect(const NL_CONNECT_RECORD& record) const;
    /// Sends all of `data`. Gives the host's result, the number of bytes taken or -1.
    std::int32_t send(const std::u16string& name, std::string_view data) const;
    void startTls(const std::u16string& name) const;
    OKU_WORD close(const std::u16string& name) const;
    void destroy(const std::u16string& name) const;
    /// The host's own proxy settings; all zero when it has none.
    NL_PROXY_DEFAULTS proxyDefaults() const;

private:
    const Host& host_;
};

}  // namespace protolink
