// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// The texts of the program itself. What the plugin and the core tell is shown as it is.
#pragma once

#include <QString>
#include <type_traits>

namespace oku::terminal {

enum class Text {
    /// JSON mode
    JsonLineTooLong,
    JsonSyntax,
    JsonNoObject,
    JsonNoCommand,
    JsonUnknownCommand,
    JsonFieldMissing,
    JsonFieldType,
    JsonTypeText,
    JsonTypeWhole,
    JsonTypeFlag,
    JsonTypeObject,
    JsonTypeAny,
    JsonEnding,
    JsonCardLosses,
    /// Values
    BadStatus,
    BadKind,
    BadLimit,
    BadButton,
    BadNumber,
    NoAccount,
    /// Start and end
    CannotStart,
    OutputUnread,
    OptionUnknown,
    OptionNeedsValue,
    OptionTwice,
    OptionUnexpected,
    TryHelp,
    FileUnreadable,
    AccountRefused,
    /// Delivery
    DeliverySent,
    DeliveryUnconfirmed,
    DeliveryFailed,
    DeliveryCancelled,
    DeliveryQueued,
    CertificateNotice,
    /// States
    StatusOnline,
    StatusChat,
    StatusDnd,
    StatusAway,
    StatusXa,
    StatusInvisible,
    StatusOffline,
    StatusError,
    ConnectionOffline,
    ConnectionConnecting,
    ConnectionConnected,
    ConnectionEncrypted,
    ConnectionAuthorized,
    ConnectionOnline,
    NotEncrypted,
    NotJid,
    /// Interactive mode
    TextCut,
    ScrolledBack,
    SearchPrompt,
    SearchFailed,
    Welcome,
    NoAccountYet,
    AccountChosen,
    AccountIsThere,
    NoSuchAccount,
    Ending,
    NoConversation,
    SecretCancelled,
    PasswordQuestion,
    PasswordTaken,
    NoSuchContact,
    ManyContacts,
    OwnStatus,
    ContactAdded,
    ContactRenamed,
    ContactMoved,
    ContactSubscription,
    ContactRemoved,
    SubscriptionNone,
    SubscriptionFrom,
    SubscriptionTo,
    SubscriptionBoth,
    SubscriptionUnknown,
    SubscriptionWaiting,
    WithSubject,
    WrittenAt,
    StillQueued,
    StillUnconfirmed,
    ResendHint,
    IsTyping,
    WantsPresence,
    AnswerHint,
    PinHint,
    InfoPresence,
    InfoPriority,
    InfoChanged,
    InfoClient,
    InfoSystem,
    InfoFeatures,
    InfoDone,
    CardOf,
    CardEmpty,
    CardFailed,
    OwnCardOf,
    OwnCardChanged,
    OwnCardHolds,
    OwnCardLosses,
    OwnCardStored,
    OwnCardUnchanged,
    OwnCardForgotten,
    OwnCardWaits,
    NoSuchField,
    OwnPictureIs,
    OwnPictureNone,
    OwnPictureSet,
    OwnPictureGone,
    OwnPicturePublished,
    PictureChanged,
    MainTitle,
    MainWindow,
    NotOnRoster,
    Strangers,
    StrangersTitle,
    UnknownCommand,
    Usage,
    HelpKeys,
    ConsoleOn,
    ConsoleOff,
    NoQuestion,
    Answered,
    SettingUnset,
    SettingsLeft,
    UnknownSetting,
    TypingOn,
    TypingOff,
    NoCertificate,
    Pinned,
    PinTakenBack,
    RosterEmpty,
    RosterNoneFits,
    RosterGroup,
    NoResource,
    AskedForPresence,
    NoRequests,
    ManyRequests,
    Authorized,
    AuthorizedAndAsked,
    Denied,
    PaneHint,
    PaneNeedsScreen,
    NothingUnread,
    NewMessages,
    NoSuchWindow,
    HistoryEmpty,
    Exported,
    ExportExists,
    NothingWaits,
    AccountGone,
    HowToQuit,
    Count
};

/// A text of the table in the chosen language; `%1` and so on are filled in by QString::arg.
QString say(Text id);

/// A text that counts something, in the form that belongs to the number; `%n` is the number.
QString sayCounted(Text id, qsizetype count);

template <typename... Values>
QString say(Text id, const Values&... values) {
    const auto asText = [](const auto& value) {
        if constexpr (std::is_arithmetic_v<std::decay_t<decltype(value)>>)
            return QString::number(value);
        else
            return QString(value);
    };
    return say(id).arg(asText(values)...);  ///< all at once: a value may hold a percent sign
}

}  // namespace oku::terminal
