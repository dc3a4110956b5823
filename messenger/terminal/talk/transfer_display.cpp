// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/transfer_display.h"

#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/marks.h"
#include "messenger/terminal/talk/transfer_wording.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

constexpr qint64 kQuarters = 4;
constexpr int kBarCells = 20;

qint64 quarterOf(const Transfer& transfer) {
    return transfer.size > 0 ? transfer.position / (transfer.size / kQuarters + 1) : 0;
}

}  // namespace

TransferDisplay::TransferDisplay(const Desk& desk) : desk_(desk) {
    const TransfersFace& transfers = desk.messenger.transfers();
    connect(&transfers, &TransfersFace::offerReceived, this, &TransferDisplay::onOffer);
    connect(&transfers, &TransfersFace::offerClosed, this, &TransferDisplay::onOfferClosed);
    connect(&transfers, &TransfersFace::fileAsked, this, &TransferDisplay::onQuestion);
    connect(&transfers, &TransfersFace::transferChanged, this, &TransferDisplay::onTransfer);
}

void TransferDisplay::onOffer(const FileOffer& offer) {
    const Peer peer{offer.account, offer.contact};
    const QString text =
        say(Text::FileOffered, desk_.contacts.nameOf(peer), oneLine(offer.name), bytesText(offer.size));
    desk_.log.tellOf(peer, text + u'\n' + say(Text::FileOfferHint, offer.number, offer.seconds), Style::Question,
                     kQuestion, Shown::InSight);
}

void TransferDisplay::onOfferClosed(int number, OfferReply reply) {
    if (reply == OfferReply::accept) return;
    desk_.log.tell(say(reply == OfferReply::refuse ? Text::FileRefused : Text::FileIgnored, number));
}

void TransferDisplay::onQuestion(const FileQuestion& question) {
    const QString title = question.title.isEmpty() ? say(Text::FileWanted) : question.title;
    desk_.log.tellOf({question.account, {}}, title + u'\n' + say(Text::FileWantedHint, question.number),
                     Style::Question, kQuestion, Shown::InSight);
}

void TransferDisplay::onTransfer(const Transfer& transfer) {
    const auto known = underWay_.constFind(transfer.number);
    const bool begins = known == underWay_.constEnd();
    const Transfer before = begins ? transfer : *known;
    if (hasEnded(transfer.state)) {
        underWay_.remove(transfer.number);
        tellEnd(transfer);
    } else {
        underWay_.insert(transfer.number, transfer);
        begins ? tellBeginning(transfer) : tellQuarter(before, transfer);
    }
    desk_.display.changed();
}

void TransferDisplay::tellBeginning(const Transfer& transfer) {
    const Peer peer{transfer.account, transfer.contact};
    const Text text = transfer.direction == Direction::out ? Text::FileSending : Text::FileReceiving;
    desk_.log.tellOf(peer, say(text, transfer.number, oneLine(transfer.name), desk_.contacts.nameOf(peer)),
                     Style::Notice, kInformation);
}

void TransferDisplay::tellEnd(const Transfer& transfer) {
    const Peer peer{transfer.account, transfer.contact};
    const bool good = transfer.state == TransferState::done;
    QString text = transferRow(transfer, desk_.contacts.nameOf(peer));
    const bool kept = good || transfer.state == TransferState::incomplete;
    if (kept && transfer.direction == Direction::in) text += u'\n' + oneLine(transfer.path);
    desk_.log.tellOf(peer, text, good ? Style::Notice : Style::Error, good ? kInformation : kAlarm);
}

void TransferDisplay::tellQuarter(const Transfer& before, const Transfer& transfer) {
    if (!desk_.options.oneWindow || quarterOf(transfer) <= quarterOf(before)) return;
    desk_.log.tellOf({transfer.account, transfer.contact},
                     QStringLiteral("%1: %2").arg(oneLine(transfer.name), progressText(transfer, kBarCells)),
                     Style::Faint, kInformation);
}

}  // namespace oku::terminal
