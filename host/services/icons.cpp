// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/services/icons.h"

#include "host/oku/graphics.h"
#include "host/record.h"

namespace protolink {

void Icons::createClass(const std::u16string& name, const char16_t* fallbackImage) const {
    auto record = makeRecord<OKU_ICON_CLASS>();
    record.name = name.c_str();
    record.value52 = 3;
    host_.call(u"OKU/Graph/ICCreate", toWord(&record));
    host_.call(u"OKU/Graph/AddIC", toWord(name), toWord(fallbackImage));
}

void Icons::loadStatusIcons(const std::u16string& baseName, std::span<const std::uint32_t> statuses,
                            std::span<const std::uint32_t> second) const {
    auto record = makeRecord<OKU_ICON_SET>();
    record.value16 = 2;
    record.statuses = statuses.data();
    record.statusCount = static_cast<std::uint32_t>(statuses.size());
    record.second = second.data();
    record.secondCount = static_cast<std::uint32_t>(second.size());
    record.value52 = 1;
    record.baseName = baseName.c_str();
    record.pfClass = kProtocolClass;
    host_.call(u"OKU/Graph/LoadIS", toWord(&record));
}

void Icons::load(const std::u16string& name, int resource) const {
    auto record = makeRecord<OKU_ICON_LOAD>();
    record.name = name.c_str();
    record.resource = resource;
    record.module = host_.module();
    host_.call(u"OKU/Graph/Load", toWord(&record));
}

}  // namespace protolink
