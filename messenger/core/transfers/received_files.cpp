// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/transfers/received_files.h"

#include <QCoreApplication>

#include "messenger/core/transfers/file_look.h"
#include "messenger/core/transfers/transfer_windows.h"
#include "messenger/core/windows/links.h"
#include "messenger/core/windows/message_boxes.h"

namespace oku {

ReceivedFiles::ReceivedFiles(TransferWindows& windows, MessageBoxes& boxes, LinkService& links, QObject* parent)
    : QObject(parent), windows_(windows), boxes_(boxes), links_(links) {}

QString ReceivedFiles::open(int number) {
    const auto transfer = windows_.transfer(number);
    if (!transfer || !isReceived(*transfer) || !transfer->path.startsWith(u'/'))
        return QCoreApplication::translate("Transfers", "Nie ma takiego pliku, który odebrano w całości.");
    if (asked_.contains(number)) return QCoreApplication::translate("Transfers", "O otwarcie tego pliku już zapytano.");
    const FileLook look = lookAtFile(transfer->path);
    if (!look.reason.isEmpty()) return look.reason;
    if (!look.program) return hand(*transfer);
    ask(*transfer);
    return {};
}

void ReceivedFiles::ask(const Transfer& transfer) {
    asked_.insert(transfer.number);
    const QString text = QCoreApplication::translate("Transfers",
                                                     "Plik „%1” od %2 może być programem, który zrobi z tym "
                                                     "komputerem, co zechce. Otworzyć go mimo to?")
                             .arg(transfer.name, transfer.contact);
    boxes_.ask(QCoreApplication::translate("Transfers", "Otwieranie pliku"), text, [this, transfer](BoxButton button) {
        asked_.erase(transfer.number);
        if (button != BoxButton::yes) return;
        // A person takes time to answer: something else may lie there by now.
        const FileLook look = lookAtFile(transfer.path);
        const QString reason = look.reason.isEmpty() ? hand(transfer) : look.reason;
        if (!reason.isEmpty()) emit noticed(transfer.account, reason);
    });
}

QString ReceivedFiles::hand(const Transfer& transfer) {
    if (links_.openFile(transfer.path)) return {};
    return QCoreApplication::translate("Transfers", "Nie ma programu, który otworzy plik %1.").arg(transfer.path);
}

}  // namespace oku
