// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <QString>

class QLockFile;

namespace oku {

class ServiceRegistry;

/// The folder of a user's settings, contact lists, history and cache, and "OKU/Info/GetProfileDir" and
/// "OKU/Info/GetCacheDir". Without a folder of its own the files lie in the user's places for settings, data and cache
/// (XDG).
class Profile {
public:
    explicit Profile(const QString& directory);
    ~Profile();

    /// Makes the folders and takes the profile for this process. An empty string, or one line with the reason; a folder
    /// that somebody else owns or could write is refused.
    [[nodiscard]] QString open();
    void provide(ServiceRegistry& services) const;

    /// Both end in the separator.
    [[nodiscard]] const QString& directory() const { return directory_; }
    [[nodiscard]] const QString& cacheDirectory() const { return cacheDirectory_; }
    [[nodiscard]] QString historyPath() const { return dataDirectory_ + QStringLiteral("history.sqlite"); }

private:
    /// Why the lock could not be taken; `error` is the system's.
    [[nodiscard]] QString lockFault(int error) const;

    QString directory_;
    QString cacheDirectory_;
    QString dataDirectory_;
    std::unique_ptr<QLockFile> lock_;
};

}  // namespace oku
