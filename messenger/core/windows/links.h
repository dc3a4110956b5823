// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QObject>
#include <QString>

namespace oku {

class ServiceRegistry;

/// Opens an address with the program that the user's system has for it. False when there is none.
using LinkOpener = std::function<bool(const QString& address)>;

/// "UI/OpenLink". An address is opened when it is one of the web, of mail or of XMPP, and only while the plugin carries
/// out what the person asked for: nothing that comes from outside opens a program.
class LinkService : public QObject {
    Q_OBJECT

public:
    /// Without an opener the system's is used, which runs `xdg-open` apart from this program.
    explicit LinkService(ServiceRegistry& services, LinkOpener opener = {}, QObject* parent = nullptr);

    /// Opens the file at this whole path. Whoever calls this has seen to it that the person wants that.
    [[nodiscard]] bool openFile(const QString& path);
    /// Runs `request`, a call into the plugin that the person asked for.
    void allowDuring(const std::function<void()>& request);

signals:
    /// An address that was not opened, in words for the user.
    void noticed(const QString& text);

private:
    void open(const QString& address);

    LinkOpener opener_;
    int allowed_ = 0;
};

}  // namespace oku
