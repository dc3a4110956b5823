// All texts of the program itself, Polish with the English beside. What the plugin and the core tell is shown as it is.
#pragma once

#include <QString>
#include <span>
#include <type_traits>

namespace oku::terminal {

enum class Language { Polish, English };

// The core's choice: Polish when LC_ALL, LC_MESSAGES or LANG says so or none names a language, English otherwise.
Language languageOfEnvironment();
void setLanguage(Language language);
Language language();

// A text that stands in both languages; `%1` and so on are filled in by QString::arg.
struct Words {
    const char* polish;
    const char* english;
};

// The words in the chosen language.
QString say(const Words& words);

enum class Text {
    // JSON mode
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
    // Values
    BadStatus,
    BadKind,
    BadLimit,
    BadButton,
    BadNumber,
    NoAccount,
    // Start and end
    CannotStart,
    OptionUnknown,
    OptionNeedsValue,
    OptionTwice,
    OptionUnexpected,
    TryHelp,
    FileUnreadable,
    AccountRefused,
    // Delivery
    DeliverySent,
    DeliveryUnconfirmed,
    DeliveryFailed,
    DeliveryQueued,
    CertificateNotice,
    // States
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
    NotJid,
    // Interactive mode
    TextCut,
    ScrolledBack,
    SearchPrompt,
    Welcome,
    NoAccountYet,
    AccountChosen,
    AccountIsThere,
    NoSuchAccount,
    Ending,
    NoConversation,
    SecretCancelled,
    PasswordQuestion,
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
    MainTitle,
    MainWindow,
    NotOnRoster,
    UnknownCommand,
    Usage,
    HelpKeys,
    ConsoleOn,
    ConsoleOff,
    NoQuestion,
    SettingUnset,
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
    NothingUnread,
    NoSuchWindow,
    HistoryEmpty,
    Exported,
    HowToQuit,
    Count
};

struct TextRow {
    Text id;
    Words words;
};

std::span<const TextRow> allTexts();

// A text of the table in the chosen language.
QString say(Text id);

template <typename... Values>
QString say(Text id, const Values&... values) {
    const auto asText = [](const auto& value) {
        if constexpr (std::is_arithmetic_v<std::decay_t<decltype(value)>>)
            return QString::number(value);
        else
            return QString(value);
    };
    return say(id).arg(asText(values)...);  // all at once: a value may hold a percent sign
}

}  // namespace oku::terminal
