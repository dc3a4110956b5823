#pragma once

#include <QObject>

#include "messenger/core/hook_chain.h"

namespace oku {

/// Takes login data away before it leaves over a line that is not encrypted, unless the account's settings allow it.
class ClearTextGuard : public QObject, public ProtocolListener {
    Q_OBJECT

public:
    using QObject::QObject;
    bool onProtocolEvent(ProtocolEvent& event) override;

signals:
    /// Login data was taken away; the login cannot go on.
    void refused(oku::AccountEntry* account);
};

}  // namespace oku
