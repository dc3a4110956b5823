// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/storage/settings_service.h"

#include <algorithm>
#include <cstring>

#include "host/oku/settings.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"

namespace oku {
namespace {

/// The units before the first NUL, at most `most`.
QString boundedText(const char16_t* text, std::size_t most) {
    if (!text) return {};
    const char16_t* end = std::find(text, text + most, u'\0');
    return QString::fromUtf16(text, end - text);
}

/// Copies as much as fits with its NUL, and never half of a character.
void fillBuffer(char16_t* buffer, std::size_t capacity, const QString& text) {
    std::size_t length = std::min<std::size_t>(capacity - 1, static_cast<std::size_t>(text.size()));
    if (length > 0 && length < static_cast<std::size_t>(text.size()) &&
        text[static_cast<qsizetype>(length) - 1].isHighSurrogate()) {
        --length;
    }
    std::memcpy(buffer, text.utf16(), length * sizeof(char16_t));
    buffer[length] = u'\0';
}

}  // namespace

SettingsService::SettingsService(ServiceRegistry& services, QObject* parent) : QObject(parent) {
    services.provide(u"OKU/Settings/Init", [this](OKU_WORD path, OKU_WORD) { return init(path); });
    services.provide(u"OKU/Settings/Read", [this](OKU_WORD handle, OKU_WORD) -> OKU_WORD {
        if (auto* file = at(handle)) file->read();
        return 1;
    });
    services.provide(u"OKU/Settings/Get", [this](OKU_WORD param, OKU_WORD) { return get(param); });
    services.provide(u"OKU/Settings/Set", [this](OKU_WORD param, OKU_WORD) { return set(param); });
    services.provide(u"OKU/Settings/Write", [this](OKU_WORD handle, OKU_WORD) -> OKU_WORD {
        auto* file = at(handle);
        return file && file->write() ? 1 : 0;
    });
    services.provide(u"OKU/Settings/Destroy", [this](OKU_WORD handle, OKU_WORD) -> OKU_WORD {
        if (auto* file = at(handle)) file->write();
        return handles_.erase(handle) ? 1 : 0;
    });
}

std::shared_ptr<SettingsFile> SettingsService::store(const QString& path) {
    auto& store = stores_[path];
    if (!store) {
        store = std::make_shared<SettingsFile>(path);
        connect(store.get(), &SettingsFile::noticed, this, &SettingsService::noticed);
        connect(store.get(), &SettingsFile::changed, this,
                [this, path](const QString& key) { emit changed(path, key); });
    }
    return store;
}

void SettingsService::dropPlugin() {
    for (const auto& [path, store] : stores_) store->write();
    handles_.clear();
    lastOpened_.clear();
}

OKU_WORD SettingsService::init(OKU_WORD path) {
    const QString name = wideText(path);
    if (name.isEmpty()) return 0;
    handles_.emplace(++lastHandle_, store(name));
    lastOpened_ = name;
    emit opened(name);
    return lastHandle_;
}

SettingsFile* SettingsService::at(OKU_WORD handle) const {
    const auto found = handles_.find(handle);
    return found == handles_.end() ? nullptr : found->second.get();
}

OKU_WORD SettingsService::get(OKU_WORD param) const {
    auto* record = recordAt<OKU_SETTINGS_RECORD>(param);
    const auto* file = record ? at(record->store) : nullptr;
    const QVariant value = file ? file->value(wideText(record->key)) : QVariant();
    if (!value.isValid()) return 0;
    if (record->type == OKU_SETTING_INTEGER) {
        bool ok = false;
        const qlonglong number = value.toLongLong(&ok);
        if (ok) record->value = static_cast<OKU_WORD>(number);
        return ok ? 1 : 0;
    }
    if (record->type != OKU_SETTING_STRING || !record->value || record->length == 0) return 0;
    fillBuffer(reinterpret_cast<char16_t*>(record->value), record->length, value.toString());
    return 1;
}

OKU_WORD SettingsService::set(OKU_WORD param) {
    const auto* record = recordAt<OKU_SETTINGS_RECORD>(param);
    auto* file = record ? at(record->store) : nullptr;
    if (!file || !record->key) return 0;
    const bool isNumber = record->type == OKU_SETTING_INTEGER;
    const QVariant value = isNumber ? QVariant(static_cast<qlonglong>(record->value))
                                    : QVariant(boundedText(widePointer(record->value), record->length));
    return file->set(wideText(record->key), value) ? 1 : 0;
}

}  // namespace oku
