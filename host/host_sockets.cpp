// The host's sockets.
#include "host/host.h"
#include "host/record.h"

void Host::socketCreate(const std::u16string& name, CallbackTarget target) const {
    auto record = makeRecord<NL_CREATE_RECORD>();
    record.kind = 2;
    record.callback = target.callback;
    record.context = target.context;
    record.name = name.c_str();
    call(u"NetLib/Create", toWord(&record));
}

void Host::socketConnect(const NL_CONNECT_RECORD& record) const { call(u"NetLib/ConnectService", toWord(&record)); }

std::int32_t Host::socketSend(const std::u16string& name, const char* data, std::uint32_t length) const {
    auto record = makeRecord<NL_SEND_RECORD>();
    record.data = data;
    record.length = length;
    record.socket = name.c_str();
    return static_cast<std::int32_t>(call(u"NetLib/Send", toWord(&record)));
}

void Host::socketStartTls(const std::u16string& name) const { call(u"NetLib/InitSSL", toWord(name)); }

OKU_WORD Host::socketClose(const std::u16string& name) const { return call(u"NetLib/Close", toWord(name)); }

void Host::socketDestroy(const std::u16string& name) const { call(u"NetLib/Destroy", toWord(name)); }

NL_PROXY_DEFAULTS Host::proxyDefaults() const {
    auto record = makeRecord<NL_PROXY_DEFAULTS>();
    call(u"OKU/NL/GetDefaultSettings", toWord(&record));
    // The texts are arrays inside the record: a host that fills one to its end leaves no room for the NUL.
    record.host[255] = record.user[255] = record.password[255] = u'\0';
    return record;
}
