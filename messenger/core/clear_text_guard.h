#pragma once

#include <QObject>

#include "messenger/core/hook_chain.h"

namespace oku {

/// Lets nothing out over a line that is not encrypted but what leads to TLS or to the end: the stream's header, the
/// request for TLS and the closing tag. Unless the account's settings allow clear text. Over a connection that cannot
/// go on, for this reason or another one, nothing comes in any more and nothing else goes out.
class ClearTextGuard : public QObject, public ProtocolListener {
    Q_OBJECT

public:
    using QObject::QObject;
    bool onProtocolEvent(ProtocolEvent& event) override;

signals:
    /// Something else was kept back, for the first time on this connection, which cannot go on.
    void refused(oku::AccountEntry* account);
};

}  // namespace oku
