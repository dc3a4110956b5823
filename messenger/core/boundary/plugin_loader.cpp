// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/boundary/plugin_loader.h"

#include <dlfcn.h>
#include <algorithm>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#if !defined(OKU_PLUGIN_DIR) || !defined(OKU_PLUGIN_DIR_FROM_PROGRAM)
#error "the build sets the folder of installed modules, and how it lies relative to the programs"
#endif

namespace oku {
namespace {

/// One line, whatever the loader of the system said.
QString systemReason() {
    const char* reason = dlerror();
    return QString::fromLocal8Bit(reason ? reason : "?").simplified();
}

QString missingExport(const QString& path, const char* name) {
    return QCoreApplication::translate("PluginLoader", "Plik %1 nie jest wtyczką komunikatora: brak w nim funkcji %2.")
        .arg(path, QString::fromLatin1(name));
}

}  // namespace

PluginLoader::~PluginLoader() { close(); }

QString PluginLoader::open(const QString& path) {
    close();
    const QFileInfo file(path);
    if (!file.exists()) return QCoreApplication::translate("PluginLoader", "Nie ma pliku wtyczki: %1").arg(path);
    if (!file.isFile()) return QCoreApplication::translate("PluginLoader", "To nie jest plik wtyczki: %1").arg(path);
    dlerror();
    library_ = dlopen(QFile::encodeName(file.absoluteFilePath()).constData(), RTLD_NOW | RTLD_LOCAL);
    if (!library_) {
        return QCoreApplication::translate("PluginLoader", "Nie można wczytać wtyczki %1: %2")
            .arg(path, systemReason());
    }
    const auto query = reinterpret_cast<OKU_QUERY_PLUG_INFO>(dlsym(library_, "queryPlugInfo"));
    load_ = reinterpret_cast<OKU_PLUGIN_LOAD>(dlsym(library_, "pluginLoad"));
    unload_ = reinterpret_cast<OKU_PLUGIN_UNLOAD>(dlsym(library_, "pluginUnload"));
    QString reason;
    if (!query) reason = missingExport(path, "queryPlugInfo");
    if (!load_) reason = missingExport(path, "pluginLoad");
    if (!unload_) reason = missingExport(path, "pluginUnload");
    if (reason.isEmpty()) {
        info_ = query();
        if (!info_ || info_->size < sizeof(OKU_PLUGIN_INFO)) {
            reason = QCoreApplication::translate("PluginLoader",
                                                 "Plik %1 nie jest wtyczką komunikatora: jej opis jest niepełny.")
                         .arg(path);
        }
    }
    if (!reason.isEmpty()) close();
    return reason;
}

void PluginLoader::close() {
    if (loaded_) unload();
    if (library_) dlclose(library_);
    library_ = nullptr;
    info_ = nullptr;
    load_ = nullptr;
    unload_ = nullptr;
}

void PluginLoader::load(const OKU_FUNCTION_TABLE* table) {
    loaded_ = true;
    load_(module(), table);
}

void PluginLoader::unload() {
    loaded_ = false;
    unload_();
}

QStringList modulePlaces(const QString& programDir) {
    QStringList places;
    for (const QString& folder : {programDir, programDir + u'/' + QStringLiteral(OKU_PLUGIN_DIR_FROM_PROGRAM),
                                  QStringLiteral(OKU_PLUGIN_DIR)}) {
        places.append(QDir::cleanPath(folder + QStringLiteral("/protoLink.module")));
    }
    return places;
}

QString findModule(const QString& programDir) {
    const QStringList places = modulePlaces(programDir);
    const auto found = std::ranges::find_if(places, [](const QString& path) { return QFileInfo::exists(path); });
    return found == places.end() ? places.first() : *found;
}

QString moduleBaseName(const QString& path) { return QFileInfo(path).completeBaseName(); }

}  // namespace oku
