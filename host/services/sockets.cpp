// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/services/sockets.h"

#include "host/record.h"

namespace protolink {

void Sockets::create(const std::u16string& name, CallbackTarget target) const {
    auto record = makeRecord<NL_CREATE_RECORD>();
    record.kind = 2;
    record.callback = target.callback;
    record.context = target.context;
    record.name = name.c_str();
    host_.call(u"NetLib/Create", toWord(&record));
}

void Sockets::connect(const NL_CONNECT_RECORD& record) const { host_.call(u"NetLib/ConnectService", toWord(&record)); }

std::int32_t Sockets::send(const std::u16string& name, std::string_view data) const {
    auto record = makeRecord<NL_SEND_RECORD>();
    record.data = data.data();
    record.length = static_cast<std::uint32_t>(data.size());
    record.socket = name.c_str();
    return static_cast<std::int32_t>(host_.call(u"NetLib/Send", toWord(&record)));
}

void Sockets::startTls(const std::u16string& name) const { host_.call(u"NetLib/InitSSL", toWord(name)); }

OKU_WORD Sockets::close(const std::u16string& name) const { return host_.call(u"NetLib/Close", toWord(name)); }

void Sockets::destroy(const std::u16string& name) const { host_.call(u"NetLib/Destroy", toWord(name)); }

NL_PROXY_DEFAULTS Sockets::proxyDefaults() const {
    auto record = makeRecord<NL_PROXY_DEFAULTS>();
    host_.call(u"OKU/NL/GetDefaultSettings", toWord(&record));
    // The texts are arrays inside the record: a host that fills one to its end leaves no room for the NUL.
    record.host[255] = record.user[255] = record.password[255] = u'\0';
    return record;
}

}  // namespace protolink
