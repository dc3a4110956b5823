// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What an account registers with the host: name and member.
#include "assembly/entries.h"

#include "assembly/account_parts.h"
#include "plugin/boundary.h"

namespace protolink {

namespace {

template <auto Part, auto Member>
struct EntryHandler;

/// What the host gets for an account's registration: it finds the account by the context word and calls the part's
/// member. An account that has gone answers 0.
template <typename Type, Type AccountParts::*Part, auto Member>
struct EntryHandler<Part, Member> {
    static OKU_WORD OKU_CALL handle(OKU_WORD param, OKU_WORD extra, OKU_WORD context) noexcept {
        return atBoundary([&]() -> OKU_WORD {
            AccountParts* account = AccountParts::find(context);
            return account ? call(*account, param, extra) : 0;
        });
    }

    static OKU_WORD call(AccountParts& account, OKU_WORD param, [[maybe_unused]] OKU_WORD extra) {
        if constexpr (std::is_invocable_v<decltype(Member), Type&, OKU_WORD, OKU_WORD>) {
            return (account.*Part.*Member)(param, extra);
        } else if constexpr (std::is_invocable_v<decltype(Member), Type&, OKU_WORD>) {
            return (account.*Part.*Member)(param);
        } else {
            return (account.*Part.*Member)();
        }
    }
};

template <auto Part, auto Member>
constexpr OKU_HANDLER entry = &EntryHandler<Part, Member>::handle;

/// A registration that the host may count on and that has nothing to do.
OKU_WORD OKU_CALL notServed(OKU_WORD, OKU_WORD, OKU_WORD) noexcept { return 0; }

}  // namespace

const AccountEntries& accountEntries() {
    using A = AccountParts;
    static const AccountEntries entries{
        .services =
            {
                {u"PFStatusSet", entry<&A::statusMenu, &StatusMenu::onStatusSet>},
                {u"PFRawSend", entry<&A::output, &StreamOutput::onRawSend>},
                {u"PFMessageSend", entry<&A::messages, &Messages::onSendMessage>},
                {u"PFTNSend", entry<&A::messages, &Messages::onSendTyping>},
                {u"PFGetContactVCard", entry<&A::contactCards, &ContactVCards::onGetContactVCard>},
                {u"PFGetMyAvatar", entry<&A::avatarPublication, &AvatarPublication::onGetMyAvatar>},
                {u"PFSetMyAvatar", entry<&A::avatarPublication, &AvatarPublication::onSetMyAvatar>},
                {u"PFGetMyVCard", entry<&A::ownCard, &OwnVCard::onGetMyVCard>},
                {u"PFSetMyVCard", entry<&A::ownCard, &OwnVCard::onSetMyVCard>},
                {u"PFInitSendFile", entry<&A::fileChoice, &FileChoice::onInitSendFile>},
                {u"PFEPublishData", entry<&A::pepPublisher, &PepPublisher::onPublishData>},
            },
        .hintHook = {u"OKU/OnHintDataRequest", notServed},
        .hooks =
            {
                {u"OKU/OnAvatarChanged", entry<&A::ownAvatar, &OwnAvatar::onAvatarChanged>},
                {u"OKU/OnMenuRebuild", entry<&A::contactItems, &ContactItems::onMenuRebuild>},
                {u"OKU/PropertiesAddPages", entry<&A::pages, &AccountPages::onAddPages>},
            },
        .authorization = entry<&A::subscriptions, &Subscriptions::onContactAuth>,
        .contactDelete = entry<&A::roster, &Roster::onContactDelete>,
        .statusMenu = entry<&A::statusMenu, &StatusMenu::onStatusMenu>,
        .statusWindow = entry<&A::statusMenu, &StatusMenu::onStatusWindow>,
        .statusResult = entry<&A::statusMenu, &StatusMenu::onStatusResult>,
        .optionsPage = entry<&A::pages, &AccountPages::onOptionsPage>,
        .propertiesPage = entry<&A::pages, &AccountPages::onPropertiesPage>,
        .socketEvent = entry<&A::socketEvents, &SocketEvents::onSocketEvent>,
        .keepaliveTick = entry<&A::keepalive, &Keepalive::onTimer>,
    };
    return entries;
}

OKU_WORD OKU_CALL reconnectTick(OKU_WORD param, OKU_WORD extra, OKU_WORD context) noexcept {
    return entry<&AccountParts::connection, &Connection::onReconnectTimer>(param, extra, context);
}

OKU_WORD OKU_CALL informationPage(OKU_WORD param, OKU_WORD extra, OKU_WORD context) noexcept {
    return entry<&AccountParts::pages, &AccountPages::onInformationPage>(param, extra, context);
}

OKU_WORD OKU_CALL downloadTick(OKU_WORD param, OKU_WORD extra, OKU_WORD context) noexcept {
    return entry<&AccountParts::sessionManager, &CSessionManager::onDownloadTick>(param, extra, context);
}

}  // namespace protolink
