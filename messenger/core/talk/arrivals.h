// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "messenger/core/values/message.h"
#include "messenger/core/wire/hook_chain.h"

namespace oku {

class ContactService;
class History;
class StreamWatch;
class TypingNotices;

/// Messages as they come out of the plugin: each goes to the history, and is told when it stands there.
class Arrivals : public QObject, public ProtocolListener {
    Q_OBJECT

public:
    struct Parts {
        StreamWatch& watch;
        TypingNotices& typing;
        ContactService& contacts;
        History& history;
    };
    explicit Arrivals(Parts parts, QObject* parent = nullptr) : QObject(parent), parts_(parts) {}

    bool onProtocolEvent(ProtocolEvent& event) override;

signals:
    void received(const QString& account, const oku::Message& message);

private:
    Parts parts_;
};

}  // namespace oku
