// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <QObject>

#include "host/oku/base.h"
#include "messenger/core/values/cards.h"
#include "messenger/core/values/windows.h"

namespace oku {

struct AccountEntry;
class Accounts;
class IqQueries;
class MessageBoxes;
class OwnPictureFile;
class PluginQueue;
class ServiceRegistry;
struct StoredCard;

/// The user's own card and picture on the servers: "PFGetMyVCard" and its kin, and "MyVCard/..." for what comes of
/// them. The plugin keeps one token for card and picture of an account, so there is one operation at a time.
class OwnCards : public QObject {
    Q_OBJECT

public:
    struct Parts {
        ServiceRegistry& services;
        Accounts& accounts;
        PluginQueue& queue;
        IqQueries& queries;
        MessageBoxes& boxes;
        OwnPictureFile& picture;
    };

    explicit OwnCards(Parts parts, QObject* parent = nullptr);

    /// Each gives the reason why it cannot be begun.
    QString fetchCard(AccountEntry& account);
    QString storeCard(AccountEntry& account, const CardFields& changes, bool agreed);
    QString publishPicture(AccountEntry& account);
    QString fetchPicture(AccountEntry& account);
    void connectionEnded(const AccountEntry& account);

signals:
    void cardFetched(const QString& account, const oku::OwnCard& card);
    void cardStored(const QString& account);
    void cardWouldLose(const QString& account, const QStringList& lost);
    void cardFailed(const QString& account, const QString& reason);
    void picturePublished(const QString& account);
    void pictureRefused(const QString& account, const QString& reason);
    void progressed(const QString& account, const QString& text);
    void busyChanged(bool busy);

private:
    enum class Kind { fetchCard, storeCard, publishPicture, fetchPicture };
    struct Operation {
        QString key;
        Kind kind;
        OwnCard card = {};
        CardFields changes = {};
        bool agreed = false;
        bool ending = false;  ///< what the plugin tells in a box now is about this one
    };
    using Running = std::map<OKU_WORD, Operation>;

    void provideServices(ServiceRegistry& services);
    QString begin(AccountEntry& account, Operation operation);
    void askServer(OKU_WORD token);
    void takeStored(OKU_WORD token, const StoredCard& stored);
    void call(OKU_WORD token);
    OKU_WORD setField(OKU_WORD param);
    OKU_WORD getField(OKU_WORD param);
    OKU_WORD setStatus(OKU_WORD param);
    OKU_WORD signalBusyness(bool busy);
    void takeBox(const MessageBox& box);
    void takePicture(OKU_WORD token, const QString& path);
    void callReturned(OKU_WORD token);
    void succeed(OKU_WORD token);
    void fail(OKU_WORD token, const QString& reason);
    [[nodiscard]] Running::iterator runningOf(const QString& key);
    [[nodiscard]] QString accountOf(const Operation& operation) const;

    Parts parts_;
    Running running_;         ///< by token
    OKU_WORD lastToken_ = 0;  ///< none is used twice
};

}  // namespace oku
