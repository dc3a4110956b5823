// The commands of the interactive program: one table says how each is written, what it does and what completes it.
#pragma once

#include <QString>
#include <span>

#include "messenger/core/messenger_face.h"
#include "messenger/core/values/contact.h"
#include "messenger/terminal/screen/line_editor.h"
#include "messenger/terminal/screen/log_entry.h"
#include "messenger/terminal/talk/arguments.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {

class Session;
class Commands;

// What a command's argument names; decides what Tab offers.
enum class ArgumentKind { None, Contact, Request, Account, Setting, Command, Switch, Button, Group, View };

struct CommandRow {
    using Handler = QString (Commands::*)(Arguments& arguments);

    const char* name;
    const char* arguments;  // as help shows them
    const char* help;
    ArgumentKind first;
    ArgumentKind second;
    bool needsAccount;
    Handler handler;
};

// A setting of an account that a person may want to change.
struct SettingRow {
    const char* key;
    bool number;
    const char* help;
};

std::span<const CommandRow> commandTable();
std::span<const SettingRow> settingTable();
const CommandRow* findCommand(const QString& name);

class Commands {
public:
    explicit Commands(Session& session) : session_(session) {}

    // Carries a line out that begins with a slash. Gives the reason why it could not be; an empty text when it was.
    QString run(const QString& line);

    // What Tab offers for the text up to the cursor.
    Completion complete(const QString& text, qsizetype cursor) const;

private:
    friend std::span<const CommandRow> commandTable();

    QString help(Arguments& arguments);
    QString account(Arguments& arguments);
    QString online(Arguments& arguments);
    QString chat(Arguments& arguments);
    QString away(Arguments& arguments);
    QString xa(Arguments& arguments);
    QString dnd(Arguments& arguments);
    QString invisible(Arguments& arguments);
    QString offline(Arguments& arguments);
    QString roster(Arguments& arguments);
    QString contacts(Arguments& arguments);
    QString add(Arguments& arguments);
    QString rename(Arguments& arguments);
    QString group(Arguments& arguments);
    QString remove(Arguments& arguments);
    QString subscribe(Arguments& arguments);
    QString authorize(Arguments& arguments);
    QString deny(Arguments& arguments);
    QString message(Arguments& arguments);
    QString me(Arguments& arguments);
    QString chatWith(Arguments& arguments);
    QString close(Arguments& arguments);
    QString window(Arguments& arguments);
    QString history(Arguments& arguments);
    QString exportTo(Arguments& arguments);
    QString resend(Arguments& arguments);
    QString cancel(Arguments& arguments);
    QString info(Arguments& arguments);
    QString server(Arguments& arguments);
    QString answer(Arguments& arguments);
    QString console(Arguments& arguments);
    QString raw(Arguments& arguments);
    QString set(Arguments& arguments);
    QString get(Arguments& arguments);
    QString typing(Arguments& arguments);
    QString pin(Arguments& arguments);
    QString clear(Arguments& arguments);
    QString quit(Arguments& arguments);

    QString setStatus(Status status, Arguments& arguments);
    void listAccounts();
    QString removeAccount(Arguments& arguments);
    QString passwordFor(const QString& jid, const QString& server);
    QString pickAccount(const QString& text);
    void listContact(const Contact& contact);
    // The contact that the next word names; in a conversation without a word, the other side.
    QString takeContact(Arguments& arguments, Peer& peer);
    QString takeRequest(Arguments& arguments, Peer& peer);
    QStringList candidates(ArgumentKind kind, const QString& typed) const;

    Session& session_;
    QString offeredFile_;  // an export would replace it; the same command once more agrees
};

}  // namespace oku::terminal
