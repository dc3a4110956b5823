// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/transfers/transfers_on_host.h"

#include <QCoreApplication>
#include <QFileInfo>

#include "messenger/core/accounts/accounts.h"
#include "messenger/core/transfers/file_choosers.h"
#include "messenger/core/transfers/file_offers.h"
#include "messenger/core/transfers/received_files.h"
#include "messenger/core/transfers/transfer_windows.h"
#include "messenger/core/values/jid_text.h"

namespace oku {
namespace {

QString fileFault(const QString& path) {
    const QFileInfo file(path);
    if (!file.isAbsolute()) return QCoreApplication::translate("Transfers", "Potrzebna jest pełna ścieżka pliku.");
    if (!file.exists()) return QCoreApplication::translate("Transfers", "Nie ma pliku %1.").arg(path);
    if (!file.isFile() || !file.isReadable())
        return QCoreApplication::translate("Transfers", "Pliku %1 nie można odczytać.").arg(path);
    return {};
}

class TransfersOnHost final : public TransfersFace {
public:
    explicit TransfersOnHost(const TransferParts& parts) : parts_(parts) {
        connect(&parts_.windows, &TransferWindows::changed, this, &TransfersFace::transferChanged);
        connect(&parts_.offers, &FileOffers::opened, this, &TransfersFace::offerReceived);
        connect(&parts_.offers, &FileOffers::closed, this, &TransfersFace::offerClosed);
        connect(&parts_.choosers, &FileChoosers::opened, this, &TransfersFace::fileAsked);
        connect(&parts_.choosers, &FileChoosers::closed, this, &TransfersFace::fileQuestionClosed);
    }

    QString sendFile(const QString& account, const QString& to, const QString& path) override {
        return parts_.accounts.with(account, [&](AccountEntry& entry) {
            if (QString fault = addressFault(to); !fault.isEmpty()) return fault;
            if (QString fault = fileFault(path); !fault.isEmpty()) return fault;
            if (!entry.ready())
                return QCoreApplication::translate("Transfers", "Pliki można wysyłać dopiero po zalogowaniu.");
            parts_.choosers.send(entry, bareJid(to), path);
            return QString();
        });
    }

    QList<Transfer> transfers() const override { return parts_.windows.transfers(); }

    QString cancelTransfer(int number) override {
        if (parts_.windows.cancel(number)) return {};
        return QCoreApplication::translate("Transfers", "Nie ma takiego transferu, albo nie można go przerwać.");
    }

    QString openFile(int number) override { return parts_.received.open(number); }

    QString answerOffer(int number, OfferReply reply) override {
        if (parts_.offers.answer(number, reply)) return {};
        return QCoreApplication::translate("Transfers", "Nikt już nie czeka na tę odpowiedź.");
    }

    QList<FileOffer> openOffers() const override { return parts_.offers.open(); }

    QString chooseFile(int number, const QString& path) override {
        if (QString fault = path.isEmpty() ? QString() : fileFault(path); !fault.isEmpty()) return fault;
        if (parts_.choosers.choose(number, path)) return {};
        return QCoreApplication::translate("Transfers", "Nie ma takiego pytania o plik.");
    }

    QList<FileQuestion> openFileQuestions() const override { return parts_.choosers.open(); }

private:
    TransferParts parts_;
};

}  // namespace

std::unique_ptr<TransfersFace> transfersOnHost(const TransferParts& parts) {
    return std::make_unique<TransfersOnHost>(parts);
}

}  // namespace oku
