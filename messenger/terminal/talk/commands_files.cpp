// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Commands about files that are sent and received.
#include <array>

#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/command_families.h"
#include "messenger/terminal/talk/session.h"
#include "messenger/terminal/talk/transfer_wording.h"
#include "messenger/terminal/talk/typed_path.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

QString pathOf(const Session& session, const QString& typed) {
    return wholePath(session.options().startDirectory, typed);
}

QString sendFile(Session& session, Arguments& arguments) {
    if (arguments.empty()) return say(Text::Usage);
    const QString first = arguments.word();
    Peer peer = session.windows().partner();
    QString path = first;
    if (!arguments.empty()) {
        peer.account = session.chosen().jid();
        if (const QString reason = session.contacts().find(peer.account, first, peer.jid); !reason.isEmpty())
            return reason;
        path = arguments.rest();
    }
    if (peer.none()) return say(Text::Usage);
    return session.messenger().transfers().sendFile(peer.account, peer.jid, pathOf(session, path));
}

// Without a number the only one, or the oldest.
template <typename List>
QString takeNumber(const List& list, Arguments& arguments, Text none, int& number) {
    const QString word = arguments.word();
    if (word.isEmpty()) {
        if (list.isEmpty()) return say(none);
        number = list.first().number;
        return {};
    }
    bool isNumber = false;
    number = word.toInt(&isNumber);
    return isNumber ? QString() : say(Text::BadNumber, word);
}

QString reply(Session& session, Arguments& arguments, OfferReply reply) {
    TransfersFace& transfers = session.messenger().transfers();
    int number = 0;
    const QString reason = takeNumber(transfers.openOffers(), arguments, Text::NoOffer, number);
    return reason.isEmpty() ? transfers.answerOffer(number, reply) : reason;
}

QString accept(Session& session, Arguments& arguments) { return reply(session, arguments, OfferReply::accept); }
QString refuse(Session& session, Arguments& arguments) { return reply(session, arguments, OfferReply::refuse); }
QString ignore(Session& session, Arguments& arguments) { return reply(session, arguments, OfferReply::ignore); }

QString files(Session& session, Arguments&) {
    const TransfersFace& transfers = session.messenger().transfers();
    for (const FileQuestion& question : transfers.openFileQuestions()) {
        const QString title = question.title.isEmpty() ? say(Text::FileWanted) : oneLine(question.title);
        session.log().list(QStringLiteral("%1 (%2) /choose %3").arg(title, question.account).arg(question.number));
    }
    for (const FileOffer& offer : transfers.openOffers()) {
        const QString name = session.contacts().nameOf({offer.account, offer.contact});
        session.log().list(say(Text::FileOffered, name, offer.name, bytesText(offer.size)) +
                           QStringLiteral(" /accept ") + QString::number(offer.number));
    }
    const QList<Transfer> list = transfers.transfers();
    if (list.isEmpty() && transfers.openOffers().isEmpty() && transfers.openFileQuestions().isEmpty())
        session.log().tell(say(Text::NoFiles));
    for (const Transfer& one : list)
        session.log().list(transferRow(one, session.contacts().nameOf({one.account, one.contact})));
    return {};
}

QString stop(Session& session, Arguments& arguments) {
    QList<Transfer> running;
    for (const Transfer& one : session.messenger().transfers().transfers())
        if (one.cancellable && !hasEnded(one.state)) running.append(one);
    int number = 0;
    const QString reason = takeNumber(running, arguments, Text::NoFiles, number);
    return reason.isEmpty() ? session.messenger().transfers().cancelTransfer(number) : reason;
}

// Without a number the newest.
QString open(Session& session, Arguments& arguments) {
    QList<Transfer> received;
    for (const Transfer& one : session.messenger().transfers().transfers())
        if (isReceived(one)) received.prepend(one);
    int number = 0;
    const QString reason = takeNumber(received, arguments, Text::NoReceivedFile, number);
    return reason.isEmpty() ? session.messenger().transfers().openFile(number) : reason;
}

// Nothing behind the number chooses no file.
QString choose(Session& session, Arguments& arguments) {
    TransfersFace& transfers = session.messenger().transfers();
    int number = 0;
    const QString reason = takeNumber(transfers.openFileQuestions(), arguments, Text::NoFileQuestion, number);
    if (!reason.isEmpty()) return reason;
    return transfers.chooseFile(number, arguments.empty() ? QString() : pathOf(session, arguments.rest()));
}

using Kind = ArgumentKind;

constexpr const char* kOffer = QT_TRANSLATE_NOOP("Commands", "[NUMER]");

constexpr std::array kRows = std::to_array<CommandRow>({
    {"file", QT_TRANSLATE_NOOP("Commands", "[KTO] PLIK"), QT_TRANSLATE_NOOP("Commands", "wysyła plik"),
     Kind::ContactOrFile, Kind::File, true, &sendFile},
    {"accept", kOffer, QT_TRANSLATE_NOOP("Commands", "odbiera plik, który ktoś chce przysłać"), Kind::None, Kind::None,
     false, &accept},
    {"refuse", kOffer, QT_TRANSLATE_NOOP("Commands", "odmawia przyjęcia pliku"), Kind::None, Kind::None, false,
     &refuse},
    {"ignore", kOffer, QT_TRANSLATE_NOOP("Commands", "zostawia plik bez odpowiedzi"), Kind::None, Kind::None, false,
     &ignore},
    {"files", kNothing, QT_TRANSLATE_NOOP("Commands", "pliki wysyłane i odbierane"), Kind::None, Kind::None, false,
     &files},
    {"stop", kOffer, QT_TRANSLATE_NOOP("Commands", "przerywa przesyłanie pliku"), Kind::None, Kind::None, false, &stop},
    {"open", kOffer, QT_TRANSLATE_NOOP("Commands", "otwiera odebrany plik programem systemu"), Kind::Received,
     Kind::None, false, &open},
    {"choose", QT_TRANSLATE_NOOP("Commands", "NUMER [PLIK]"),
     QT_TRANSLATE_NOOP("Commands", "wskazuje plik, o który pyta wtyczka, albo żaden"), Kind::None, Kind::File, false,
     &choose},
});

}  // namespace

std::span<const CommandRow> fileCommands() { return kRows; }

}  // namespace oku::terminal
