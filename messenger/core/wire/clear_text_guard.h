// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "messenger/core/wire/hook_chain.h"

namespace oku {

/// Lets nothing out over a line that is not encrypted but what leads to TLS or to the end: the stream's header, the
/// request for TLS and the closing tag. Unless the account's settings allow clear text. Over a connection that cannot
/// go on, for this reason or another one, nothing comes in any more and nothing else goes out.
class ClearTextGuard : public QObject, public ProtocolListener {
    Q_OBJECT

public:
    using QObject::QObject;
    bool onProtocolEvent(ProtocolEvent& event) override;
    /// The user has allowed or forbidden clear text: a session in clear that is not allowed any more cannot go on.
    void permissionChanged(AccountEntry& account);

signals:
    /// For the first time on this connection, which cannot go on: something else was kept back, or its session is one
    /// in clear and not allowed any more.
    void refused(oku::AccountEntry* account);

private:
    void refuse(AccountEntry& account);
};

}  // namespace oku
