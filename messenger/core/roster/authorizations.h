// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace oku {

class Accounts;
struct AccountEntry;
class ServiceRegistry;

/// "OKU/PFAskForAuth": who asks to see the own presence. Each account keeps them until they have an answer.
class Authorizations : public QObject {
    Q_OBJECT

public:
    Authorizations(ServiceRegistry& services, Accounts& accounts, QObject* parent = nullptr);

signals:
    void requested(const QString& account, const QString& jid);
    void noticed(const QString& account, const QString& text);

private:
    void ask(AccountEntry& account, const QString& jid);
};

}  // namespace oku
