// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <QObject>

#include "host/oku/base.h"
#include "messenger/core/values/cards.h"

namespace oku {

struct AccountEntry;
class Accounts;
class CheckedPictures;
class PluginQueue;
class ServiceRegistry;

/// Cards of contacts: "PFGetContactVCard", and "VCard/..." for what comes of it.
class ContactCards : public QObject {
    Q_OBJECT

public:
    ContactCards(ServiceRegistry& services, Accounts& accounts, PluginQueue& queue, CheckedPictures& pictures,
                 QObject* parent = nullptr);

    /// Gives the reason why it cannot be asked for. Somebody whose card is being asked for is not asked again.
    QString ask(AccountEntry& account, const QString& jid);
    void connectionEnded(const AccountEntry& account);

signals:
    void received(const QString& account, const oku::ContactCard& card);
    void failed(const QString& account, const QString& jid, const QString& reason);
    void progressed(const QString& account, const QString& text);

private:
    struct Request {
        QString key;
        ContactCard card;
        bool coming = false;  ///< its rows are
    };

    OKU_WORD setStatus(OKU_WORD param);
    OKU_WORD addElement(OKU_WORD param);
    void call(OKU_WORD token);
    void complete(OKU_WORD token);
    void showPicture(OKU_WORD token, const QString& file);
    void tell(OKU_WORD token);
    void fail(OKU_WORD token, const QString& reason);

    ServiceRegistry& services_;
    Accounts& accounts_;
    PluginQueue& queue_;
    CheckedPictures& pictures_;
    std::map<OKU_WORD, Request> requests_;  ///< by token
    OKU_WORD lastToken_ = 0;                ///< none is used twice
};

}  // namespace oku
