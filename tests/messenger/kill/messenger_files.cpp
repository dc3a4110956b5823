// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include "messenger/core/roster/contact_list.h"
#include "messenger/core/storage/settings_file.h"
#include "messenger/core/talk/history.h"
#include "tests/messenger/kill/kept_files.h"
#include "tests/messenger/kill/victim.h"

namespace oku::test {
namespace {

constexpr int kLines = 300;  // more than one block of the disk

QString text(std::uint32_t number) { return QString::fromStdString(textOfSave(number)); }

class Settings : public ReplacedFiles {
public:
    Settings() : ReplacedFiles({"oku.config"}) {}
    bool save(std::uint32_t number, const QString& folder) override {
        SettingsFile file(folder + QStringLiteral("oku.config"));
        file.read();
        for (int line = 0; line < kLines; ++line)
            file.set(QStringLiteral("XMPP/Key%1").arg(line), text(number) + QString(line, u'ż'));
        return file.write();
    }
};

class List : public ReplacedFiles {
public:
    List() : ReplacedFiles({"oku.contacts"}) {}
    bool save(std::uint32_t number, const QString& folder) override {
        ContactList list(folder + QStringLiteral("oku.contacts"));
        list.load();
        list.beginRebuild();
        list.setDrawing(false);
        for (int line = 0; line < kLines; ++line)
            list.add({QStringLiteral("friend%1@example.org").arg(line), text(number), QStringLiteral("Znajomi"), {}});
        list.setDrawing(true);
        return true;
    }
};

/// A message a save: what was written before stays, and at most the one that was under way may be missing.
class Archive : public Kept {
public:
    bool save(std::uint32_t number, const QString& folder) override {
        History history(folder + QStringLiteral("history.sqlite"));
        Message message;
        message.account = account_;
        message.contact = QStringLiteral("friend@example.org");
        message.direction = Direction::out;
        message.body = text(number) + QString(static_cast<int>(number % 5000), u'ć');
        message.state = DeliveryState::queued;
        message.time = QDateTime::fromSecsSinceEpoch(number);
        const qint64 written = history.addNow(message);
        history.setState(written, DeliveryState::sent, true);
        history.flush();
        return written == number;
    }

    std::string fault(std::uint32_t done, std::uint32_t begun, const QString& folder) override {
        const QString path = folder + QStringLiteral("history.sqlite");
        if (const std::string broken = brokenTables(path); broken != "ok") return "integrity_check: " + broken;
        History history(path);
        const auto messages = history.find(account_, {}, -1, {});
        const auto count = static_cast<std::uint32_t>(messages.size());
        if (count < done || count > begun) return std::to_string(count) + " messages";
        for (std::uint32_t number = 1; number <= count; ++number) {
            const Message& message = messages[static_cast<int>(number) - 1];
            if (message.number != number || message.body != text(number) + QString(int(number % 5000), u'ć'))
                return "message " + std::to_string(number) + " is another one";
            // Nobody answered, so a new start knows of none that it arrived; one may not even have been sent.
            if (message.state != DeliveryState::unconfirmed && message.state != DeliveryState::queued)
                return "message " + std::to_string(number) + " has a wrong state";
        }
        const auto found = history.find(account_, {}, -1, text(done));
        return found.size() == 1 && found[0].number == done ? "" : "the last message is not in the index";
    }

    std::uint32_t newest(const QString& folder) override {
        const auto last = History(folder + QStringLiteral("history.sqlite")).find(account_, {}, 1, {});
        return last.isEmpty() ? 0 : static_cast<std::uint32_t>(last[0].number);
    }

private:
    static std::string brokenTables(const QString& path) {
        const QString name = QStringLiteral("check");
        QString result;
        {
            auto database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
            database.setDatabaseName(path);
            if (!database.open()) return "not a database";
            QSqlQuery query(database);
            if (query.exec(QStringLiteral("PRAGMA integrity_check")) && query.next())
                result = query.value(0).toString();
        }
        QSqlDatabase::removeDatabase(name);
        return result.toStdString();
    }

    const QString account_ = QStringLiteral("ala@example.org");
};

std::string contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "(no file)";
}

}  // namespace

std::string ReplacedFiles::fault(std::uint32_t done, std::uint32_t begun, const QString& folder) {
    for (const std::string& name : names_) {
        const std::string content = contentOf(folder + QString::fromStdString(name));
        const std::uint32_t number = numberIn(content);
        if (number < done || number > begun) return name + " is that of save " + std::to_string(number);
        const QTemporaryDir undisturbed(folder + QStringLiteral("XXXXXX"));
        const QString other = undisturbed.path() + u'/';
        if (!save(number, other) || content != contentOf(other + QString::fromStdString(name)))
            return name + " is not whole: " + content;
    }
    return {};
}

std::uint32_t ReplacedFiles::newest(const QString& folder) {
    std::uint32_t newest = 0;
    for (const std::string& name : names_)
        newest = std::max(newest, numberIn(contentOf(folder + QString::fromStdString(name))));
    return newest;
}

std::unique_ptr<Kept> keptSettings() { return std::make_unique<Settings>(); }
std::unique_ptr<Kept> keptContactList() { return std::make_unique<List>(); }
std::unique_ptr<Kept> keptHistory() { return std::make_unique<Archive>(); }

}  // namespace oku::test
