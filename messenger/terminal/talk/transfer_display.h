// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QMap>

#include "messenger/terminal/talk/desk.h"

namespace oku::terminal {

/// Tells of offered files, and of the beginning and the end of each transfer. Where nothing else shows how far one is,
/// each quarter is told too.
class TransferDisplay : public QObject {
public:
    explicit TransferDisplay(const Desk& desk);

    /// Those that are under way, for the line that shows them.
    [[nodiscard]] QList<Transfer> underWay() const { return underWay_.values(); }

private:
    void onOffer(const FileOffer& offer);
    void onOfferClosed(int number, OfferReply reply);
    void onQuestion(const FileQuestion& question);
    void onTransfer(const Transfer& transfer);
    void tellBeginning(const Transfer& transfer);
    void tellEnd(const Transfer& transfer);
    void tellQuarter(const Transfer& before, const Transfer& transfer);

    Desk desk_;
    QMap<int, Transfer> underWay_;
};

}  // namespace oku::terminal
