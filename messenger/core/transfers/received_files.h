// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <set>

#include "messenger/core/values/transfer.h"

namespace oku {

class LinkService;
class MessageBoxes;
class TransferWindows;

/// Opens files that were received here, and no others, with the system's program. One that could be run is opened only
/// when the user says yes to that.
class ReceivedFiles : public QObject {
    Q_OBJECT

public:
    ReceivedFiles(TransferWindows& windows, MessageBoxes& boxes, LinkService& links, QObject* parent = nullptr);

    /// Why the file of this transfer is not opened; empty when it is, or when the user is asked first.
    QString open(int number);

signals:
    /// A file that was not opened after the question, in words for the user.
    void noticed(const QString& account, const QString& text);

private:
    void ask(const Transfer& transfer);
    QString hand(const Transfer& transfer);

    TransferWindows& windows_;
    MessageBoxes& boxes_;
    LinkService& links_;
    std::set<int> asked_;  ///< transfers with an open question
};

}  // namespace oku
