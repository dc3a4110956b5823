// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/transfers/file_offers.h"

#include <algorithm>
#include <QCoreApplication>
#include <QEventLoop>
#include <QStandardPaths>

#include "host/oku/transfer.h"
#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/nested_loop.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/roster/contact_service.h"
#include "messenger/core/transfers/file_name.h"
#include "messenger/core/transfers/received_folder.h"
#include "messenger/core/transfers/transfer_windows.h"
#include "messenger/core/values/jid_text.h"
#include "messenger/core/values/setting_keys.h"

namespace oku {
namespace {

constexpr int kPatience = 60;             // seconds
constexpr int kPause = 10;                // minutes
constexpr qsizetype kMostStrangers = 50;  // who are told of by name

/// As an address is compared where something is trusted for it: wider folding would take letters of other alphabets for
/// those of ASCII.
QString foldedAddress(QString jid) {
    for (QChar& c : jid)
        if (c >= u'A' && c <= u'Z') c = QChar(c.unicode() + (u'a' - u'A'));
    return jid;
}

OKU_WORD wordOf(OfferReply reply) {
    switch (reply) {
        case OfferReply::accept:
            return 1;
        case OfferReply::refuse:
            return OKU_FT_ANSWER_REFUSE;
        case OfferReply::ignore:
            break;
    }
    return OKU_FT_ANSWER_IGNORE;
}

QString shownName(const FileOffer& offer) {
    return QCoreApplication::translate("Transfers", "plik „%1” od %2").arg(offer.name, offer.contact);
}

}  // namespace

/// One call of the service.
struct FileOffers::Asked {
    OKU_FT_ASK_RECORD& record;
    OfferedFile file;
    FileOffer offer;
};

FileOffers::FileOffers(const Parts& parts, SetAlarm alarms, QObject* parent)
    : QObject(parent), parts_(parts), alarms_(alarms ? std::move(alarms) : SetAlarm(&systemAlarm)) {
    parts_.services.provide(u"OKU/FTAskForConfirmation", [this](OKU_WORD param, OKU_WORD) { return ask(param); });
}

OKU_WORD FileOffers::ask(OKU_WORD param) {
    auto* record = recordAt<OKU_FT_ASK_RECORD>(param);
    const auto* account = parts_.accounts.byKey(parts_.queue.owner());
    if (!record || !record->path || !account || closed_) return OKU_FT_ANSWER_IGNORE;
    Asked asked{*record, readOffer(wideText(record->question), wideText(record->sender)), {}};
    asked.offer.account = account->jid();
    asked.offer.contact = foldedAddress(wideText(record->sender));
    asked.offer.name = cleanFileName(asked.file.name);
    asked.offer.size = asked.file.size;
    asked.offer.seconds = kPatience;
    const OfferReply reply = replyOf(*account, asked.offer);
    if (reply == OfferReply::accept && !accept(*account, asked)) return OKU_FT_ANSWER_REFUSE;
    return wordOf(reply);
}

OfferReply FileOffers::replyOf(const AccountEntry& account, const FileOffer& offer) {
    const bool known = parts_.contacts.list(account).has(offer.contact);
    const bool strangersToo = account.settings->number(QString::fromUtf16(setting::filesOfStrangers), 0) != 0;
    if (!known && !strangersToo) {
        tellStranger(offer);
        return OfferReply::ignore;
    }
    const QString asker = known ? offer.contact : QString();
    return pauses_.contains(asker) ? OfferReply::ignore : replyOfUser(offer, asker);
}

OfferReply FileOffers::replyOfUser(FileOffer offer, const QString& asker) {
    offer.number = ++lastNumber_;
    const int number = offer.number;
    QEventLoop loop;
    OfferReply result = OfferReply::ignore;
    bool answered = false;
    if (held_++ == 0) emit pluginHeld(true);
    offers_.emplace(number, Open{offer, [&](OfferReply reply) {
                                     result = reply;
                                     answered = true;
                                     loop.quit();
                                 }});
    const auto alarm = alarms_(kPatience * 1000, [this, offer, asker] { nobodyAnswers(offer, asker); });
    emit opened(offer);
    // The answer may have come from a slot of opened().
    if (!answered) runNested(loop);
    if (--held_ == 0) emit pluginHeld(false);
    return result;
}

void FileOffers::nobodyAnswers(const FileOffer& offer, const QString& asker) {
    if (!answer(offer.number, OfferReply::ignore)) return;
    pause(asker);
    const QString text =
        asker.isEmpty()
            ? QCoreApplication::translate("Transfers",
                                          "Nikt nie odpowiedział, więc pominięto: %1. Pliki od nieznajomych są teraz "
                                          "pomijane bez pytania przez %2 minut.")
            : QCoreApplication::translate("Transfers",
                                          "Nikt nie odpowiedział, więc pominięto: %1. Pliki od tego nadawcy są teraz "
                                          "pomijane bez pytania przez %2 minut.");
    emit noticed(offer.account, text.arg(shownName(offer), QString::number(kPause)));
}

void FileOffers::pause(const QString& asker) {
    pauses_.insert_or_assign(asker, alarms_(kPause * 60 * 1000, [this, asker] {
                                 // A clock that rings cannot go yet.
                                 auto over = pauses_.extract(asker);
                                 if (!over.empty()) over.mapped().release()->deleteLater();
                             }));
}

void FileOffers::wroteTo(const QString& jid) { pauses_.erase(foldedAddress(jid)); }

bool FileOffers::answer(int number, OfferReply reply) {
    const auto found = offers_.find(number);
    if (found == offers_.end()) return false;
    const auto handler = std::move(found->second.answer);
    offers_.erase(found);
    emit closed(number, reply);
    handler(reply);
    return true;
}

QList<FileOffer> FileOffers::open() const {
    QList<FileOffer> list;
    for (const auto& [number, open] : offers_) list.append(open.offer);
    return list;
}

void FileOffers::close() {
    closed_ = true;
    for (const FileOffer& offer : open()) answer(offer.number, OfferReply::ignore);
}

/// Lays the folder ready; false when there is none, which the user is told.
bool FileOffers::accept(const AccountEntry& account, const Asked& asked) {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QString wanted = expandedFolder(wideText(asked.record.path), documents, asked.offer.contact);
    ReceivedFolder folder = makeReceivedFolder(wanted, asked.file.possibleNames,
                                               [this](const QString& path) { return parts_.windows.receives(path); });
    if (folder.path.size() > static_cast<qsizetype>(asked.record.capacity)) {
        folder.reason = QCoreApplication::translate("Transfers", "Ścieżka folderu %1 jest za długa.").arg(folder.path);
        folder.path.clear();
    }
    if (folder.path.isEmpty()) {
        emit noticed(
            account.jid(),
            QCoreApplication::translate("Transfers", "Odrzucono %1. %2").arg(shownName(asked.offer), folder.reason));
        return false;
    }
    std::copy_n(widePointer(folder.path), folder.path.size() + 1, asked.record.path);
    QStringList paths;
    for (const QString& name : asked.file.possibleNames) paths.append(folder.path + name);
    parts_.windows.expect({asked.offer.contact, Direction::in, asked.offer.name, folder.path + asked.file.name,
                           asked.offer.size, std::move(paths)});
    return true;
}

void FileOffers::tellStranger(const FileOffer& offer) {
    if (strangers_.contains(offer.contact) || strangers_.size() > kMostStrangers) return;
    strangers_.insert(offer.contact);
    const QString text =
        strangers_.size() > kMostStrangers
            ? QCoreApplication::translate("Transfers", "Pliki od dalszych nieznajomych pominięto bez pytania.")
            : QCoreApplication::translate("Transfers",
                                          "Pominięto %1, bo nie ma go na liście kontaktów (zmienia to %2).")
                  .arg(shownName(offer), QString::fromUtf16(setting::filesOfStrangers));
    emit noticed(offer.account, text);
}

}  // namespace oku
