// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <QObject>
#include <QSet>

#include "host/oku/base.h"
#include "messenger/core/values/alarm.h"
#include "messenger/core/values/transfer.h"

namespace oku {

class Accounts;
struct AccountEntry;
class ContactService;
class PluginQueue;
class ServiceRegistry;
class TransferWindows;

/// "OKU/FTAskForConfirmation": a file that somebody offers. It holds the call that asks, with an event loop of its own,
/// until it is answered, or ignored because nobody answered in time. Strangers are not asked about, and for a while
/// neither is who offered what nobody answered: offer upon offer would hold the plugin for as long as nobody is there.
class FileOffers : public QObject {
    Q_OBJECT

public:
    struct Parts {
        ServiceRegistry& services;
        Accounts& accounts;
        PluginQueue& queue;
        ContactService& contacts;
        TransferWindows& windows;
    };
    /// Without `alarms` the system's timers are used.
    FileOffers(const Parts& parts, SetAlarm alarms, QObject* parent = nullptr);

    /// False when there is no such offer.
    bool answer(int number, OfferReply reply);
    [[nodiscard]] QList<FileOffer> open() const;
    /// The user writes to him, so somebody is there: his files are asked about again.
    void wroteTo(const QString& jid);
    /// Ignores all offers. From then on new ones are ignored at once, until they are allowed again.
    void close();
    void allow() { closed_ = false; }

signals:
    void opened(const oku::FileOffer& offer);
    void closed(int number, oku::OfferReply reply);
    void noticed(const QString& account, const QString& text);
    /// The first offer was opened, or the last was answered: true while one holds the plugin.
    void pluginHeld(bool held);

private:
    struct Open {
        FileOffer offer;
        std::function<void(OfferReply)> answer;
    };
    struct Asked;

    OKU_WORD ask(OKU_WORD param);
    OfferReply replyOf(const AccountEntry& account, const FileOffer& offer);
    OfferReply replyOfUser(FileOffer offer, const QString& asker);
    void nobodyAnswers(const FileOffer& offer, const QString& asker);
    void pause(const QString& asker);
    bool accept(const AccountEntry& account, const Asked& asked);
    void tellStranger(const FileOffer& offer);

    Parts parts_;
    SetAlarm alarms_;
    std::map<int, Open> offers_;
    QSet<QString> strangers_;  ///< who were told of
    /// Who are not asked about for a while, with its end. All strangers are one, without a name.
    std::map<QString, std::unique_ptr<QObject>> pauses_;
    int lastNumber_ = 0;
    int held_ = 0;
    bool closed_ = false;
};

}  // namespace oku
