// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Any bytes as a file of settings: what was read is written so that it reads the same; and any text as a value.
#include "fuzz/input.h"
#include "messenger/core/storage/settings_format.h"

namespace {

void requireSame(const QMap<QString, QVariant>& values, const char* what) {
    bool ok = false;
    const auto again = oku::settingsFromBytes(oku::settingsToBytes(values), ok);
    fuzz::require(ok, "what was written is not of the form");
    fuzz::require(again == values, what);
}

QString textOf(std::string_view bytes) { return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size())); }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const QString key = textOf(input.text());
    const QString value = textOf(input.text());
    if (oku::canBeSettingKey(key)) requireSame({{key, value}, {key + u'x', qlonglong{-5}}}, "a value changes");
    const std::string_view file = input.rest();
    bool ok = false;
    const auto values = oku::settingsFromBytes(QByteArray(file.data(), static_cast<qsizetype>(file.size())), ok);
    for (auto at = values.begin(); at != values.end(); ++at)
        fuzz::require(oku::canBeSettingKey(at.key()), "a key is read that cannot be written");
    requireSame(values, "a file changes when it is read and written");
    return 0;
}
