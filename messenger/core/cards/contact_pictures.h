// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <QDateTime>
#include <QObject>

#include "host/oku/base.h"
#include "messenger/core/cards/checked_pictures.h"
#include "messenger/core/values/cards.h"

namespace oku {

class Accounts;
class ContactService;
class ServiceRegistry;

/// "OKU/CTL/SetAvatar": the pictures of the contacts on the lists. Those of others are not looked at.
/// Of each contact one file waits to be read at most, and then the newest: who announces another all the time keeps
/// nobody from theirs.
class ContactPictures : public QObject {
    Q_OBJECT

public:
    ContactPictures(ServiceRegistry& services, Accounts& accounts, ContactService& contacts, CheckedPictures& checked,
                    QObject* parent = nullptr);

    /// What is known; an empty path when there is no picture.
    [[nodiscard]] ContactPicture picture(const QString& key, const QString& jid) const;

signals:
    void changed(const QString& account, const oku::ContactPicture& picture);

private:
    using Owner = std::pair<QString, QString>;  ///< key of the account, bare JID
    /// A file as it was looked at last. The plugin names it with each presence.
    struct Source {
        QString path;
        qint64 size = -1;
        QDateTime written;
        bool operator==(const Source&) const = default;
    };
    struct Known {
        Source source;
        CheckedPicture picture;
        bool checking = false;
    };

    OKU_WORD set(OKU_WORD param);
    void check(const Owner& owner, Known& known);
    void take(const Owner& owner, const Source& source, const CheckedPicture& picture);
    void release(const CheckedPicture& picture);
    void forgetUnused(const CheckedPicture& picture);

    Accounts& accounts_;
    ContactService& contacts_;
    CheckedPictures& checked_;
    std::map<Owner, Known> known_;
    std::map<QString, int> uses_;  ///< how many contacts have the picture of this hash
};

}  // namespace oku
