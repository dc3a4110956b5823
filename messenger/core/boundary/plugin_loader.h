// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include "host/oku/table.h"

namespace oku {

/// The plugin's file and its three exports.
class PluginLoader {
public:
    PluginLoader() = default;
    ~PluginLoader();
    PluginLoader(const PluginLoader&) = delete;
    PluginLoader& operator=(const PluginLoader&) = delete;

    /// Opens the file and checks that it is a plugin. Returns an empty string, or one line with the reason. Nothing of
    /// the plugin has run then but queryPlugInfo.
    [[nodiscard]] QString open(const QString& path);
    /// Closes the file. pluginUnload must have returned.
    void close();
    [[nodiscard]] bool isOpen() const { return library_ != nullptr; }

    /// pluginLoad with this table, and pluginUnload. Only for an open one.
    void load(const OKU_FUNCTION_TABLE* table);
    void unload();
    /// The word that the plugin gets for itself.
    [[nodiscard]] OKU_WORD module() const { return reinterpret_cast<OKU_WORD>(library_); }
    /// Whether load() was called and unload() was not.
    [[nodiscard]] bool loaded() const { return loaded_; }

    /// The static description; valid while the file is open.
    [[nodiscard]] const OKU_PLUGIN_INFO* info() const { return info_; }

private:
    void* library_ = nullptr;
    const OKU_PLUGIN_INFO* info_ = nullptr;
    OKU_PLUGIN_LOAD load_ = nullptr;
    OKU_PLUGIN_UNLOAD unload_ = nullptr;
    bool loaded_ = false;
};

/// Where the module's file may lie when no option names it, the best place first: beside the program; in the folder of
/// modules as it lies relative to the program in an installation, so that one may be moved as a whole; in the folder
/// that the build was configured for. `programDir` is the folder of the running program.
QStringList modulePlaces(const QString& programDir);

/// The first of modulePlaces() where a file is; the first of all when there is none, for the message that tells so.
QString findModule(const QString& programDir);

/// The name that stands before the files of the plugin's accounts: the module's file name up to its last dot.
QString moduleBaseName(const QString& path);

}  // namespace oku
