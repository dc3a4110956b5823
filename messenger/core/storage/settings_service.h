// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <memory>
#include <QObject>

#include "host/oku/base.h"
#include "messenger/core/storage/settings_file.h"

namespace oku {

class ServiceRegistry;

/// "OKU/Settings/...": each Init gives a handle to the file's store. Stores are shared with the messenger itself by
/// their path, so that both see a change at once.
class SettingsService : public QObject {
    Q_OBJECT

public:
    explicit SettingsService(ServiceRegistry& services, QObject* parent = nullptr);

    /// The store of a file; made, and not read, when it is not there yet.
    std::shared_ptr<SettingsFile> store(const QString& path);
    /// The path of the store that was opened last; empty when none was.
    [[nodiscard]] const QString& lastOpened() const { return lastOpened_; }
    /// Writes all files, and forgets the plugin's handles.
    void dropPlugin();

signals:
    /// Something is wrong with a file; one line for the user.
    void noticed(const QString& text);
    void changed(const QString& path, const QString& key);
    void opened(const QString& path);

private:
    OKU_WORD init(OKU_WORD path);
    SettingsFile* at(OKU_WORD handle) const;
    OKU_WORD get(OKU_WORD param) const;
    OKU_WORD set(OKU_WORD param);

    std::map<QString, std::shared_ptr<SettingsFile>> stores_;
    std::map<OKU_WORD, std::shared_ptr<SettingsFile>> handles_;
    OKU_WORD lastHandle_ = 0;
    QString lastOpened_;
};

}  // namespace oku
