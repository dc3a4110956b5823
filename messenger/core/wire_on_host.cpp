// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/wire_on_host.h"

#include "messenger/core/host_core.h"
#include "messenger/core/xml/raw_xml.h"

namespace oku {
namespace {

class WireOnHost final : public WireFace {
public:
    explicit WireOnHost(HostCore& core) : core_(core) {
        connect(&core_.log, &LogService::logged, this, &WireFace::logged);
        connect(&core_.console, &Console::seen, this, &WireFace::xmlSeen);
    }

    void setConsole(bool on) override { core_.console.setOn(on); }

    bool console() const override { return core_.console.on(); }

    QString sendRaw(const QString& account, const QString& xml) override {
        return core_.accounts.with(account, [&](AccountEntry& entry) {
            if (!entry.loggedIn()) return notConnected();
            if (QString fault = rawXmlFault(xml); !fault.isEmpty()) return fault;
            core_.queue.post(entry.key, [&core = core_, &entry, bytes = xml.toUtf8()] {
                if (!core.queries.sendRaw(entry, bytes)) emit core.noticed(entry.jid(), notConnected());
            });
            return QString();
        });
    }

private:
    HostCore& core_;
};

}  // namespace

std::unique_ptr<WireFace> wireOnHost(HostCore& core) { return std::make_unique<WireOnHost>(core); }

}  // namespace oku
