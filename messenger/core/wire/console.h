// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <QObject>

#include "messenger/core/wire/hook_chain.h"
#include "messenger/core/xml/secrets.h"

namespace oku {

/// Shows the traffic of all accounts, with secrets masked, while it is on.
class Console : public QObject, public ProtocolListener {
    Q_OBJECT

public:
    using QObject::QObject;
    void setOn(bool on);
    [[nodiscard]] bool on() const { return on_; }
    bool onProtocolEvent(ProtocolEvent& event) override;

signals:
    void seen(const QString& account, bool incoming, const QString& data);

private:
    /// What is hidden of each direction of a connection.
    struct Masks {
        SecretMask incoming;
        SecretMask outgoing;
    };

    bool on_ = false;
    std::map<const AccountEntry*, Masks> masks_;
};

}  // namespace oku
