#include "messenger/terminal/json/json_mode.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <QLocale>
#include <utility>

#include "messenger/terminal/json/json_event.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

constexpr qsizetype kLongestLine = 16 << 20;

constexpr double kLargestWhole = 9007199254740992.0;  // up to it a JSON number is exact

// A setting's value: numbers and booleans are integers in the settings files. Nothing for a number that is none.
std::optional<QVariant> settingOf(const QJsonValue& value) {
    if (value.isBool()) return value.toBool() ? 1 : 0;
    if (!value.isDouble()) return value.toVariant();
    const double number = value.toDouble();
    if (number != std::floor(number) || std::abs(number) > kLargestWhole) return std::nullopt;
    return value.toInteger();
}

QString noInteger(const QJsonValue& value) {
    return say(Text::BadNumber, QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest));
}

}  // namespace

struct JsonMode::Row {
    const char* name;
    bool needsAccount;
    Handler handler;
};

const JsonMode::Row JsonMode::kRows[] = {
    {"account", false, &JsonMode::onAccount},
    {"status", true, &JsonMode::onStatus},
    {"message", true, &JsonMode::onMessage},
    {"resend", false, &JsonMode::onResend},
    {"cancel", false, &JsonMode::onCancel},
    {"remove-account", false, &JsonMode::onRemoveAccount},
    {"typing", true, &JsonMode::onTyping},
    {"add", true, &JsonMode::onAdd},
    {"rename", true, &JsonMode::onRename},
    {"group", true, &JsonMode::onGroup},
    {"remove", true, &JsonMode::onRemove},
    {"subscribe", true, &JsonMode::onSubscribe},
    {"authorize", true, &JsonMode::onAuthorize},
    {"deny", true, &JsonMode::onDeny},
    {"answer", false, &JsonMode::onAnswer},
    {"roster", true, &JsonMode::onRoster},
    {"history", true, &JsonMode::onHistory},
    {"set", true, &JsonMode::onSet},
    {"get", true, &JsonMode::onGet},
    {"raw", true, &JsonMode::onRaw},
    {"console", false, &JsonMode::onConsole},
    {"info", true, &JsonMode::onInfo},
    {"server", true, &JsonMode::onServer},
    {"quit", false, &JsonMode::onQuit},
};

JsonMode::JsonMode(MessengerFace& messenger, Writer write, bool verbose, QString account,
                   std::function<void()> onFinished)
    : messenger_(messenger),
      write_(std::move(write)),
      verbose_(verbose),
      account_(std::move(account)),
      onFinished_(std::move(onFinished)) {
    const auto hear = [this](auto& face, auto signal, auto function) {
        QObject::connect(&face, signal, &context_,
                         [this, function](const auto&... values) { (this->*function)(values...); });
    };
    hear(messenger_.accounts(), &AccountsFace::accountChanged, &JsonMode::accountChanged);
    hear(messenger_.accounts(), &AccountsFace::accountRemoved, &JsonMode::accountRemoved);
    hear(messenger_.accounts(), &AccountsFace::connectionChanged, &JsonMode::connectionChanged);
    hear(messenger_.accounts(), &AccountsFace::ownStatusChanged, &JsonMode::ownStatusChanged);
    hear(messenger_.accounts(), &AccountsFace::certificateRefused, &JsonMode::certificateRefused);
    hear(messenger_.roster(), &RosterFace::rosterComplete, &JsonMode::rosterComplete);
    hear(messenger_.roster(), &RosterFace::contactChanged, &JsonMode::contactChanged);
    hear(messenger_.roster(), &RosterFace::contactRemoved, &JsonMode::contactRemoved);
    hear(messenger_.roster(), &RosterFace::presenceReceived, &JsonMode::presenceReceived);
    hear(messenger_.roster(), &RosterFace::authorizationRequested, &JsonMode::authorizationRequested);
    hear(messenger_.roster(), &RosterFace::infoReceived, &JsonMode::infoReceived);
    hear(messenger_.roster(), &RosterFace::infoComplete, &JsonMode::infoComplete);
    hear(messenger_.roster(), &RosterFace::serverInfoReceived, &JsonMode::serverInfoReceived);
    hear(messenger_.talk(), &TalkFace::messageReceived, &JsonMode::messageReceived);
    hear(messenger_.talk(), &TalkFace::messageSent, &JsonMode::messageSent);
    hear(messenger_.talk(), &TalkFace::messageQueued, &JsonMode::messageQueued);
    hear(messenger_.talk(), &TalkFace::messageStateChanged, &JsonMode::messageStateChanged);
    hear(messenger_.talk(), &TalkFace::typingReceived, &JsonMode::typingReceived);
    hear(messenger_.windows(), &WindowsFace::boxOpened, &JsonMode::boxOpened);
    hear(messenger_.windows(), &WindowsFace::boxClosed, &JsonMode::boxClosed);
    hear(messenger_.windows(), &WindowsFace::noticed, &JsonMode::noticed);
    hear(messenger_.wire(), &WireFace::logged, &JsonMode::logged);
    hear(messenger_.wire(), &WireFace::xmlSeen, &JsonMode::xmlSeen);
    hear(messenger_, &MessengerFace::finished, &JsonMode::finished);
}

QString JsonMode::start() {
    const QString reason = messenger_.start();
    if (reason.isEmpty())
        emitEvent(jsonReady(messenger_.accounts().accounts(), messenger_.profileDir()));
    else
        emitEvent(jsonError({}, QJsonValue(QJsonValue::Undefined), reason));
    return reason;
}

void JsonMode::setStatusAtStart(Status status) {
    const QString account = chosenAccount({});
    const QString reason =
        account.isEmpty() ? say(Text::NoAccount) : messenger_.accounts().setStatus(account, status, {});
    if (!reason.isEmpty()) emitEvent(jsonNotice(account, reason));
}

void JsonMode::feed(const QByteArray& bytes) {
    qsizetype start = 0;
    while (start < bytes.size()) {
        const qsizetype end = bytes.indexOf('\n', start);
        if (!skipping_) input_ += bytes.mid(start, end < 0 ? -1 : end - start);
        if (!skipping_ && input_.size() > kLongestLine) {
            takeLine(input_);
            input_.clear();
            skipping_ = end < 0;
        } else if (end >= 0) {
            if (!std::exchange(skipping_, false)) takeLine(std::exchange(input_, {}));
        }
        if (end < 0) return;
        start = end + 1;
    }
}

void JsonMode::end() {
    if (!input_.isEmpty()) takeLine(std::exchange(input_, {}));
    if (!std::exchange(ending_, true)) messenger_.shutdown();
}

void JsonMode::takeLine(const QByteArray& line) {
    if (line.trimmed().isEmpty()) return;
    const auto read = readJsonCommand(line);
    if (const auto* fault = std::get_if<JsonFault>(&read))
        emitEvent(jsonError(fault->name, fault->id, fault->reason));
    else
        run(std::get<JsonCommand>(read));
}

void JsonMode::run(const JsonCommand& command) {
    const auto* row = std::find_if(std::begin(kRows), std::end(kRows),
                                   [&](const Row& one) { return command.name == QLatin1String(one.name); });
    const QString account = chosenAccount(command);
    Outcome outcome;
    if (ending_)
        outcome.reason = say(Text::JsonEnding);
    else if (row->needsAccount && account.isEmpty())
        outcome.reason = say(Text::NoAccount);
    else
        outcome = (this->*row->handler)(account, command);
    if (outcome.later) return;
    emitEvent(outcome.reason.isEmpty() ? jsonOk(command) : jsonError(command.name, command.id, outcome.reason));
}

QString JsonMode::chosenAccount(const JsonCommand& command) const {
    if (!command.account.isEmpty()) return bareJid(command.account);
    if (!account_.isEmpty()) return account_;
    const QList<Account> accounts = messenger_.accounts().accounts();
    return accounts.isEmpty() ? QString() : accounts.first().jid;
}

void JsonMode::answerWaiting(const QString& account, const QString& jid) {
    const auto fits = [&](const Waiting& one) { return one.account == account && one.jid == jid; };
    for (const Waiting& one : waiting_)
        if (fits(one)) emitEvent(jsonOk(one.command));
    std::erase_if(waiting_, fits);
}

JsonMode::Outcome JsonMode::onAccount(const QString&, const JsonCommand& command) {
    QVariantMap settings;
    const QJsonObject given = command.fields.value(QLatin1String("settings")).toObject();
    for (auto at = given.begin(); at != given.end(); ++at) {
        const auto value = settingOf(at.value());
        if (!value) return {noInteger(at.value())};
        settings.insert(at.key(), *value);
    }
    return {messenger_.accounts().addAccount(command.text("jid"), command.text("password"), settings)};
}

JsonMode::Outcome JsonMode::onStatus(const QString& account, const JsonCommand& command) {
    bool known = false;
    const Status status = statusFromWord(command.text("status"), &known);
    if (!known || status == Status::error) return {say(Text::BadStatus, command.text("status"))};
    return {messenger_.accounts().setStatus(account, status, command.text("description"))};
}

JsonMode::Outcome JsonMode::onMessage(const QString& account, const JsonCommand& command) {
    const QString kind = command.text("kind");
    if (!kind.isEmpty() && kind != QLatin1String("chat") && kind != QLatin1String("normal"))
        return {say(Text::BadKind, kind)};
    const bool normal = kind == QLatin1String("normal");
    return {messenger_.talk().sendMessage(account, command.text("to"), command.text("body"),
                                          normal ? MessageKind::normal : MessageKind::chat,
                                          normal ? command.text("subject") : QString())};
}

// The number alone says which account wrote the message.
JsonMode::Outcome JsonMode::onResend(const QString&, const JsonCommand& command) {
    return {messenger_.talk().resendMessage(command.whole("message", 0))};
}

JsonMode::Outcome JsonMode::onCancel(const QString&, const JsonCommand& command) {
    return {messenger_.talk().cancelMessage(command.whole("message", 0))};
}

JsonMode::Outcome JsonMode::onRemoveAccount(const QString&, const JsonCommand& command) {
    return {messenger_.accounts().removeAccount(command.text("jid"), command.flag("history", false))};
}

JsonMode::Outcome JsonMode::onTyping(const QString& account, const JsonCommand& command) {
    return {messenger_.talk().sendTyping(account, command.text("to"), command.flag("composing", false))};
}

JsonMode::Outcome JsonMode::onAdd(const QString& account, const JsonCommand& command) {
    return {messenger_.roster().addContact(account, command.text("jid"), command.text("name"), command.text("group"))};
}

JsonMode::Outcome JsonMode::onRename(const QString& account, const JsonCommand& command) {
    return {messenger_.roster().renameContact(account, command.text("jid"), command.text("name"))};
}

JsonMode::Outcome JsonMode::onGroup(const QString& account, const JsonCommand& command) {
    return {messenger_.roster().moveContact(account, command.text("jid"), command.text("group"))};
}

JsonMode::Outcome JsonMode::onRemove(const QString& account, const JsonCommand& command) {
    return {messenger_.roster().removeContact(account, command.text("jid"))};
}

JsonMode::Outcome JsonMode::onSubscribe(const QString& account, const JsonCommand& command) {
    return {messenger_.roster().subscribe(account, command.text("jid"))};
}

JsonMode::Outcome JsonMode::onAuthorize(const QString& account, const JsonCommand& command) {
    return {messenger_.roster().authorize(account, command.text("jid"), command.flag("ask", false))};
}

JsonMode::Outcome JsonMode::onDeny(const QString& account, const JsonCommand& command) {
    return {messenger_.roster().deny(account, command.text("jid"))};
}

JsonMode::Outcome JsonMode::onAnswer(const QString&, const JsonCommand& command) {
    const auto button = buttonFromWord(command.text("button"));
    if (!button) return {say(Text::BadButton, command.text("button"))};
    return {messenger_.windows().answerBox(command.whole("box", 0), *button)};
}

JsonMode::Outcome JsonMode::onRoster(const QString& account, const JsonCommand&) {
    emitEvent(jsonRoster(account, messenger_.roster().contacts(account)));
    return {};
}

JsonMode::Outcome JsonMode::onHistory(const QString& account, const JsonCommand& command) {
    const int limit = command.whole("limit", 20);
    if (limit < 1) return {say(Text::BadLimit)};
    const QString with = command.text("with");
    emitEvent(jsonHistory(account, with, messenger_.talk().history(account, with, limit, command.text("search"))));
    return {};
}

JsonMode::Outcome JsonMode::onSet(const QString& account, const JsonCommand& command) {
    const QJsonValue given = command.fields.value(QLatin1String("value"));
    const auto value = settingOf(given);
    return {value ? messenger_.accounts().setSetting(account, command.text("key"), *value) : noInteger(given)};
}

JsonMode::Outcome JsonMode::onGet(const QString& account, const JsonCommand& command) {
    const QString key = command.text("key");
    emitEvent(jsonSetting(account, key, shownSetting(key, messenger_.accounts().settingValue(account, key))));
    return {};
}

JsonMode::Outcome JsonMode::onRaw(const QString& account, const JsonCommand& command) {
    return {messenger_.wire().sendRaw(account, command.text("xml"))};
}

JsonMode::Outcome JsonMode::onConsole(const QString&, const JsonCommand& command) {
    messenger_.wire().setConsole(command.flag("on", false));
    return {};
}

JsonMode::Outcome JsonMode::onInfo(const QString& account, const JsonCommand& command) {
    const QString jid = bareJid(command.text("jid"));
    waiting_.push_back({command, account, jid});
    const std::size_t place = waiting_.size();
    const QString reason = messenger_.roster().requestInfo(account, jid);
    if (reason.isEmpty()) return {{}, true};
    if (waiting_.size() == place) waiting_.pop_back();
    return {reason};
}

JsonMode::Outcome JsonMode::onServer(const QString& account, const JsonCommand& command) {
    waiting_.push_back({command, account, {}});
    const std::size_t place = waiting_.size();
    const QString reason = messenger_.roster().requestServerInfo(account);
    if (reason.isEmpty()) return {{}, true};
    if (waiting_.size() == place) waiting_.pop_back();
    return {reason};
}

JsonMode::Outcome JsonMode::onQuit(const QString&, const JsonCommand& command) {
    emitEvent(jsonOk(command));
    ending_ = true;
    messenger_.shutdown();
    return {{}, true};
}

}  // namespace oku::terminal
