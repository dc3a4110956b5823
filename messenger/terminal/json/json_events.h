// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <QByteArray>
#include <QObject>

#include "messenger/core/messenger_face.h"

namespace oku::terminal {

/// What the messenger tells, as events of the JSON mode: each a line with its line feed; see docs/json-protocol.md.
class JsonEvents : public QObject {
public:
    using Writer = std::function<void(const QByteArray& line)>;

    /// `verbose`: the log as well. Hears the messenger from now on, for as long as this object lives.
    JsonEvents(MessengerFace& messenger, Writer write, bool verbose);

private:
    /// Each signal of the face becomes the line that `lineOf` makes of its values.
    template <typename Face, typename Signal, typename LineOf>
    void hear(Face& face, Signal signal, LineOf lineOf) {
        connect(&face, signal, this, [this, lineOf](const auto&... values) { write_(lineOf(values...)); });
    }
    void hearAccounts(AccountsFace& accounts);
    void hearRoster(RosterFace& roster);
    void hearTalk(TalkFace& talk);
    void hearDialogs(DialogsFace& dialogs);
    void hearCards(CardsFace& cards);
    void hearTransfers(TransfersFace& transfers);
    void hearNews(NewsFace& news);

    Writer write_;
};

}  // namespace oku::terminal
