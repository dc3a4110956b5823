// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QString>

#include "messenger/terminal/screen/line_editor.h"
#include "messenger/terminal/talk/account_display.h"
#include "messenger/terminal/talk/card_display.h"
#include "messenger/terminal/talk/chosen_account.h"
#include "messenger/terminal/talk/commands.h"
#include "messenger/terminal/talk/contact_directory.h"
#include "messenger/terminal/talk/contact_display.h"
#include "messenger/terminal/talk/contact_offers.h"
#include "messenger/terminal/talk/contact_view.h"
#include "messenger/terminal/talk/conversation_display.h"
#include "messenger/terminal/talk/conversations.h"
#include "messenger/terminal/talk/desk.h"
#include "messenger/terminal/talk/dialog_prompt.h"
#include "messenger/terminal/talk/news_display.h"
#include "messenger/terminal/talk/notice_display.h"
#include "messenger/terminal/talk/presence_display.h"
#include "messenger/terminal/talk/secret_prompt.h"
#include "messenger/terminal/talk/session_view.h"
#include "messenger/terminal/talk/talk_log.h"
#include "messenger/terminal/talk/transfer_display.h"
#include "messenger/terminal/talk/typing_sender.h"
#include "messenger/terminal/talk/windows.h"

namespace oku::terminal {

/// The interactive messenger without its display: made of who keeps the log and the windows, who turns what the
/// messenger tells into words, and who takes the lines that are typed.
class Session : public QObject {
public:
    Session(MessengerFace& messenger, Display& display, SessionOptions options);

    /// Starts the messenger and says how things are. Gives the reason of a failure.
    QString start();
    /// Unloads the plugin; Display::ended follows.
    void quit();

    /// A line that was typed: a command, a text for the open conversation, or a secret that was asked for.
    void submit(const QString& typed);
    /// The line being typed has changed.
    void typed(const QString& text);
    [[nodiscard]] Completion complete(const QString& text, qsizetype cursor) const {
        return commands_.complete(text, cursor);
    }
    /// A line of the log that the messenger knows nothing of.
    void warn(const LogLine& line) { notices_.onLogLine(line); }

    /// Its parts, for those who show them and for commands.
    [[nodiscard]] MessengerFace& messenger() const { return messenger_; }
    [[nodiscard]] const Display& display() const { return display_; }
    [[nodiscard]] const SessionOptions& options() const { return options_; }
    [[nodiscard]] const Windows& windows() const { return windows_; }
    [[nodiscard]] const ContactDirectory& contacts() const { return contacts_; }
    [[nodiscard]] const SessionView& view() const { return view_; }
    [[nodiscard]] const AccountDisplay& accountDisplay() const { return accounts_; }
    [[nodiscard]] const TransferDisplay& transferDisplay() const { return transfers_; }
    TalkLog& log() { return log_; }
    [[nodiscard]] const TalkLog& log() const { return log_; }
    SecretPrompt& secret() { return secret_; }
    [[nodiscard]] const SecretPrompt& secret() const { return secret_; }
    ChosenAccount& chosen() { return chosen_; }
    [[nodiscard]] const ChosenAccount& chosen() const { return chosen_; }
    ContactView& contactView() { return contactView_; }
    [[nodiscard]] const ContactView& contactView() const { return contactView_; }
    Conversations& conversations() { return conversations_; }
    ContactDisplay& contactDisplay() { return contactDisplay_; }
    CardDisplay& cards() { return cards_; }
    DialogPrompt& dialogs() { return dialogs_; }
    [[nodiscard]] const DialogPrompt& dialogs() const { return dialogs_; }

    ContactOffers& contactOffers() { return offers_; }

    /// An export would replace this file; the same command once more agrees.
    QString& offeredExport() { return offeredExport_; }

private:
    MessengerFace& messenger_;
    Display& display_;
    const SessionOptions options_;
    Windows windows_;
    TalkLog log_{display_, windows_, options_.oneWindow};
    ContactDirectory contacts_{messenger_, windows_};
    const Desk desk_{messenger_, display_, options_, windows_, log_, contacts_};
    SecretPrompt secret_{display_, log_};
    ChosenAccount chosen_{desk_, secret_};
    ContactView contactView_{desk_, chosen_};
    TypingSender typing_{messenger_, options_.typingPause};
    Conversations conversations_{desk_, typing_};
    AccountDisplay accounts_{desk_, chosen_};
    ContactDisplay contactDisplay_{desk_};
    PresenceDisplay presences_{desk_};
    CardDisplay cards_{desk_};
    DialogPrompt dialogs_{desk_, secret_};
    ContactOffers offers_{desk_, dialogs_};
    ConversationDisplay conversationDisplay_{desk_, conversations_};
    NewsDisplay news_{desk_};
    NoticeDisplay notices_{desk_};
    TransferDisplay transfers_{desk_};
    SessionView view_{*this};
    Commands commands_{*this};
    QString offeredExport_;
    bool ending_ = false;
};

}  // namespace oku::terminal
