// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "messenger/core/wire/hook_chain.h"

namespace oku {

/// Has the server prove in DIGEST-MD5 that it knows the password, which the plugin does not ask for. A wrong proof is
/// kept from the plugin and ends the login; so does one that is missing, where the line is not encrypted and nothing
/// else tells who the server is.
class DigestCheck : public QObject, public ProtocolListener {
    Q_OBJECT

public:
    using QObject::QObject;
    bool onProtocolEvent(ProtocolEvent& event) override;

signals:
    /// The proof is wrong, or missing (`sent` false); the login cannot go on.
    void refused(oku::AccountEntry* account, bool sent);

private:
    enum class Verdict { good, wrong, missing };

    static void noteOutgoing(const ProtocolEvent& event);
    static Verdict judge(const ProtocolEvent& event);
    /// Looks for the proof in the content of an element; false when it is there and wrong.
    static bool readProof(DigestLogin& login, const QByteArray& content);
};

}  // namespace oku
