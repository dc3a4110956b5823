// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/transfers/file_publisher.h"

#include <algorithm>
#include <QCoreApplication>
#include <QUrl>
#include <utility>
#include <vector>

#include "host/oku/transfer.h"
#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/transfers/transfer_windows.h"
#include "messenger/core/values/setting_keys.h"

namespace oku {
namespace {

QString noAddress() { return QCoreApplication::translate("Transfers", "Pliku nie można udostępnić na tym adresie."); }

QString notAllowed() {
    return QCoreApplication::translate("Transfers",
                                       "Odbiorca chciał pobrać plik z tego komputera, a to jest wyłączone.");
}

}  // namespace

struct FilePublisher::Published {
    QString key;  ///< of the account
    int window = 0;
    QString path;
    OKU_HANDLER stateCallback = nullptr;
    OKU_WORD stateData = 0;
    OKU_HANDLER progressCallback = nullptr;
    OKU_WORD progressData = 0;
    FileServer* server = nullptr;
    QString name;
    qint64 position = 0;
    qint64 total = 0;
    bool moving = false;  ///< the plugin will be told of the position
};

FilePublisher::FilePublisher(Parts parts, QObject* parent) : QObject(parent), parts_(std::move(parts)) {
    parts_.services.provide(u"OK7/IsEnabled", [this](OKU_WORD, OKU_WORD) -> OKU_WORD {
        return enabled(parts_.accounts.byKey(parts_.queue.owner())) ? 1 : 0;
    });
    parts_.services.provide(u"OK7/PrepareFile", [this](OKU_WORD param, OKU_WORD) { return prepare(param); });
    connect(&parts_.windows, &TransferWindows::ended, this, &FilePublisher::withdraw);
}

FilePublisher::~FilePublisher() = default;

bool FilePublisher::enabled(const AccountEntry* account) const {
    return account && account->settings->number(QString::fromUtf16(setting::publishFiles), 0) != 0;
}

OKU_WORD FilePublisher::prepare(OKU_WORD param) {
    const auto* record = recordAt<OK7_PREPARE_RECORD>(param);
    auto* result = record ? recordAt<OK7_PREPARE_RESULT>(wordOf(record->result)) : nullptr;
    if (!result || !record->stateCallback || !record->progressCallback) return 0;
    const auto* account = parts_.accounts.byKey(parts_.queue.owner());
    Published published;
    published.key = parts_.queue.owner();
    published.path = wideText(result->path);
    published.stateCallback = record->stateCallback;
    published.stateData = record->stateData;
    published.progressCallback = record->progressCallback;
    published.progressData = record->progressData;
    published.window = windowFor(account, published.path);
    QString url;
    const QString reason =
        published.window == 0 ? (enabled(account) ? noAddress() : notAllowed()) : open(*account, published, url);
    if (!reason.isEmpty() && account) emit noticed(account->jid(), reason);
    if (url.isEmpty()) {
        tellFailed(published);
        return 0;
    }
    std::copy_n(widePointer(url), url.size() + 1, result->url);
    published_.insert_or_assign(published.window, std::move(published));
    return 1;
}

/// 0 for none. The plugin does not tell for which of its transfers it has a file published, and one file may be on its
/// way to several people.
int FilePublisher::windowFor(const AccountEntry* account, const QString& path) const {
    // Whoever receives may choose this way though it was not offered.
    if (!enabled(account)) return 0;
    const QList<int> windows = parts_.windows.sending(*account, path);
    const auto found =
        std::find_if(windows.begin(), windows.end(), [this](int window) { return !published_.contains(window); });
    return found == windows.end() ? 0 : *found;
}

quint16 FilePublisher::portOf(const AccountEntry& account) {
    return static_cast<quint16>(
        std::clamp<qlonglong>(account.settings->number(QString::fromUtf16(setting::publishPort), 0), 0, 65535));
}

QString FilePublisher::open(const AccountEntry& account, Published& published, QString& url) {
    const QString wished = account.settings->text(QString::fromUtf16(setting::publishAddress));
    const quint16 port = portOf(account);
    const QString host = wished.isEmpty() ? parts_.address(account).toString() : wished;
    QUrl whole;
    whole.setScheme(QStringLiteral("http"));
    whole.setHost(host, QUrl::StrictMode);
    if (whole.host().isEmpty()) return noAddress();
    QHostAddress bound(host);
    FileServer& server = serverFor(host, port);
    QString reason = server.listen(bound.isNull() ? QHostAddress(QHostAddress::Any) : bound, port);
    // An address that leads here from elsewhere is none of this computer's.
    if (!reason.isEmpty() && !wished.isEmpty() && !bound.isNull()) reason = server.listen(QHostAddress::Any, port);
    if (!reason.isEmpty()) return portFault(account, port, reason);
    whole.setPort(server.port());
    published.server = &server;
    published.name = server.publish(publicationOf(published));
    whole.setPath(u'/' + published.name);
    url = QString::fromLatin1(whole.toEncoded());
    if (url.size() < OKU_OK7_URL_CAPACITY) return {};
    server.withdraw(published.name);
    url.clear();
    return noAddress();
}

/// Why the port cannot be had. Two accounts may have one only where they have the address in common too.
QString FilePublisher::portFault(const AccountEntry& account, quint16 port, const QString& reason) const {
    for (const auto& [window, published] : published_) {
        const auto* other = parts_.accounts.byKey(published.key);
        if (port == 0 || !other || other->key == account.key || portOf(*other) != port) continue;
        return QCoreApplication::translate("Transfers",
                                           "Pliku nie można udostępnić: na porcie %1 udostępnia teraz pliki konto %2. "
                                           "Inny port ustawia się w %3.")
            .arg(QString::number(port), other->jid(), QString::fromUtf16(setting::publishPort));
    }
    return QCoreApplication::translate("Transfers", "Pliku nie można udostępnić na porcie %1: %2")
        .arg(QString::number(port), reason);
}

Publication FilePublisher::publicationOf(const Published& published) {
    const int window = published.window;
    Publication publication;
    publication.path = published.path;
    publication.begun = [this, window] { tellState(window, OK7_STATE_RUNNING); };
    publication.moved = [this, window](qint64 position, qint64 total) { tellProgress(window, position, total); };
    publication.ended = [this, window](bool whole) { tellState(window, whole ? OK7_STATE_SENT : OK7_STATE_FAILED); };
    return publication;
}

void FilePublisher::tellState(int window, OKU_WORD state) {
    const auto found = published_.find(window);
    if (found == published_.end()) return;
    parts_.queue.post(found->second.key, [this, window, state] {
        const auto still = published_.find(window);
        if (still != published_.end()) still->second.stateCallback(state, 0, still->second.stateData);
    });
}

// While the plugin is held only the newest position waits for it.
void FilePublisher::tellProgress(int window, qint64 position, qint64 total) {
    const auto found = published_.find(window);
    if (found == published_.end()) return;
    found->second.position = position;
    found->second.total = total;
    if (std::exchange(found->second.moving, true)) return;
    parts_.queue.post(found->second.key, [this, window] {
        const auto still = published_.find(window);
        if (still == published_.end()) return;
        Published& published = still->second;
        published.moving = false;
        published.progressCallback(static_cast<OKU_WORD>(published.position), static_cast<OKU_WORD>(published.total),
                                   published.progressData);
    });
}

// Not from inside the call. What ended by then has taken its data back, and the plugin does nothing.
void FilePublisher::tellFailed(const Published& published) {
    parts_.queue.post(published.key,
                      [this, load = loads_, callback = published.stateCallback, data = published.stateData] {
                          if (load == loads_) callback(OK7_STATE_FAILED, 0, data);
                      });
}

void FilePublisher::reconsider() {
    std::vector<Published> ended;
    for (const auto& [window, published] : published_)
        if (!enabled(parts_.accounts.byKey(published.key))) ended.push_back(published);
    for (const Published& one : ended) {
        withdraw(one.window);
        tellFailed(one);
    }
}

void FilePublisher::withdraw(int window) {
    const auto found = published_.find(window);
    if (found == published_.end()) return;
    const Published published = std::move(found->second);
    published_.erase(found);
    published.server->withdraw(published.name);
}

FileServer& FilePublisher::serverFor(const QString& address, quint16 port) {
    auto& server = servers_[{address, port}];
    if (!server) server = std::make_unique<FileServer>();
    return *server;
}

}  // namespace oku
