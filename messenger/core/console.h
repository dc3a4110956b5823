#pragma once

#include <QObject>

#include "messenger/core/hook_chain.h"

namespace oku {

/// Shows the traffic of all accounts, with secrets masked, while it is on.
class Console : public QObject, public ProtocolListener {
    Q_OBJECT

public:
    using QObject::QObject;
    void setOn(bool on) { on_ = on; }
    [[nodiscard]] bool on() const { return on_; }
    bool onProtocolEvent(ProtocolEvent& event) override;

signals:
    void seen(const QString& account, bool incoming, const QString& data);

private:
    bool on_ = false;
};

}  // namespace oku
