// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/transfers/file_choosers.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <utility>

#include "host/oku/contact.h"
#include "host/oku/transfer.h"
#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/transfers/file_name.h"
#include "messenger/core/transfers/transfer_windows.h"

namespace oku {

FileChoosers::FileChoosers(ServiceRegistry& services, Accounts& accounts, PluginQueue& queue, TransferWindows& windows,
                           QObject* parent)
    : QObject(parent), services_(services), accounts_(accounts), queue_(queue), windows_(windows) {
    connect(&accounts, &Accounts::unregistered, this, [this](const AccountEntry* account) { close(account->key); });
    services.provide(u"UI/FileChooser", [this](OKU_WORD param, OKU_WORD) { return show(param); });
}

void FileChoosers::send(AccountEntry& account, const QString& to, const QString& path) {
    queue_.post(account.key, [this, &account, to, path] {
        bool taken = false;
        if (account.ready()) {
            auto contact = makeRecord<OKU_CONTACT_RECORD>();
            contact.id = widePointer(to);
            contact.pfClass = widePointer(account.pfClass);
            contact.netId = account.netId;
            sending_ = Sending{to, path};
            taken = services_.call(account.service(u"PFInitSendFile"), wordOf(&contact), 0) != 0;
            sending_.reset();
        }
        if (taken) return;
        emit noticed(account.jid(), QCoreApplication::translate("Transfers", "Pliku %1 nie wysłano.").arg(path));
    });
}

OKU_WORD FileChoosers::show(OKU_WORD param) {
    const auto* record = recordAt<OKU_FILE_CHOOSER>(param);
    if (!record || !record->callback) return 0;
    Chooser chooser;
    chooser.key = queue_.owner();
    chooser.callback = record->callback;
    chooser.context = record->context;
    if (const auto sending = std::exchange(sending_, {})) {
        answer(chooser, sending->path, sending->to);
        return 1;
    }
    const auto* account = accounts_.byKey(chooser.key);
    chooser.question.number = ++lastNumber_;
    chooser.question.account = account ? account->jid() : QString();
    chooser.question.title = wideText(record->title);
    chooser.question.filter = wideText(record->filter);
    const FileQuestion question = chooser.question;
    choosers_.emplace(question.number, std::move(chooser));
    emit opened(question);
    return 1;
}

void FileChoosers::answer(const Chooser& chooser, const QString& path, const QString& to) {
    queue_.post(chooser.key, [this, chooser, path, to, load = loads_] {
        if (load != loads_) return;
        if (!to.isEmpty()) {
            const QFileInfo file(path);
            windows_.expect({to, Direction::out, cleanFileName(file.fileName()), path, file.size()});
        }
        auto choice = makeRecord<OKU_FILE_CHOICE>();
        choice.kind = path.isEmpty() ? OKU_FILE_CHOICE_CANCELLED : OKU_FILE_CHOSEN;
        choice.path = path.isEmpty() ? nullptr : widePointer(path);
        chooser.callback(wordOf(&choice), 0, chooser.context);
    });
}

bool FileChoosers::choose(int number, const QString& path) {
    const auto found = choosers_.find(number);
    if (found == choosers_.end()) return false;
    const Chooser chooser = std::move(found->second);
    choosers_.erase(found);
    emit closed(number);
    answer(chooser, path, {});
    return true;
}

// The plugin hears of an end all the same; whoever asked is gone, and it knows that.
void FileChoosers::close(const QString& key) {
    QList<int> numbers;
    for (const auto& [number, chooser] : choosers_)
        if (chooser.key == key) numbers.append(number);
    for (const int number : numbers) choose(number, {});
}

QList<FileQuestion> FileChoosers::open() const {
    QList<FileQuestion> list;
    for (const auto& [number, chooser] : choosers_) list.append(chooser.question);
    return list;
}

void FileChoosers::dropPlugin() {
    ++loads_;
    for (const FileQuestion& question : open()) {
        choosers_.erase(question.number);
        emit closed(question.number);
    }
}

}  // namespace oku
