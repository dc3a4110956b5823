// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "dialogs/browser_rows.h"

#include "host/util/format.h"
#include "im/child_text.h"
#include "router/namespaces.h"

namespace protolink::browser {

namespace {

/// A feature that is looked for: what it makes of the row, and how it is called.
struct Feature {
    std::u16string_view var;
    std::u16string_view marker;  // empty: none
    std::u16string_view summary;
};
constexpr Feature kFeatures[] = {
    {ns::kRegister, u"register", u"Rejestracja, "},
    {ns::kSearch, u"search", u"Wyszukiwanie, "},
    {ns::kLegacyTime, u"", u"Czas, "},
    {ns::kVCard, u"vcard", u"Wizytówka, "},
    {ns::kDiscoItems, u"browsable", u"Disco#Items, "},
    {ns::kDiscoInfo, u"", u"Disco#Info, "},
    {ns::kCommands, u"commands", u"Komendy, "},
    {ns::kVersion, u"", u"Wersja, "},
};
constexpr std::size_t kSummaryEnd = 2;  // the comma and the blank behind the last one

void addFilled(CUITreeNode& row, std::u16string_view key, std::u16string_view label, std::u16string_view value) {
    if (!value.empty()) row.addDataField(key, label, false, value);
}

}  // namespace

std::u16string rowKey(std::u16string_view jid, std::u16string_view node) { return formatText(u"%s/%s", jid, node); }

CUITreeNode rowOf(const xmlElement& item) {
    const std::u16string_view jid = item.GetAttribute(u"jid");
    const std::u16string_view name = item.GetAttribute(u"name");
    CUITreeNode row{std::u16string(name.empty() ? jid : name)};
    row.addDataField(u"jid", u"", true, jid);
    addFilled(row, u"node", u"Gałąź:", item.GetAttribute(u"node"));
    return row;
}

bool addInfo(CUITreeNode& row, std::u16string_view jid, const xmlElement& query) {
    if (const xmlElement* const identity = query.GetChildPtr(u"identity")) {
        const std::u16string_view name = identity->GetAttribute(u"name");
        if (!name.empty()) row.setText(formatText(u"%s (%s)", name, jid));
        addFilled(row, u"cat", u"Kategoria:", identity->GetAttribute(u"category"));
        addFilled(row, u"type", u"Typ:", identity->GetAttribute(u"type"));
    }
    std::u16string summary;
    for (const Feature& feature : kFeatures) {
        if (!query.GetChildPtr(u"feature", u"var", feature.var)) continue;
        if (!feature.marker.empty()) row.addDataField(feature.marker, u"", true);
        summary += feature.summary;
    }
    if (!summary.empty())
        row.addDataField(u"caps", u"Możliwości:", false, summary.substr(0, summary.size() - kSummaryEnd));
    return query.GetChildPtr(u"feature", u"var", ns::kVersion) != nullptr;
}

void addVersion(CUITreeNode& row, const xmlElement& query) {
    std::u16string text = childText(query, u"name");
    const std::u16string& version = childText(query, u"version");
    const std::u16string& os = childText(query, u"os");
    if (!version.empty()) text += u" (" + version + u")";
    if (!os.empty()) text += u" @" + os;
    addFilled(row, u"version", u"Info:", text);
}

std::array<MenuRow, 6> menuOf(const CUITreeNode& row) {
    const bool registers = row.hasDataField(u"register");
    const bool executes = row.hasDataField(u"commands") && row.getDataValue(u"type") == u"command-node";
    return {{
        {kGoTo, u"Przejdź", row.hasDataField(u"browsable"), true},
        {},
        {kRegisterWith, u"Rejestracja...", registers},
        {kUnregister, u"Wyrejestruj...", registers},
        {},
        {kExecute, u"Wykonaj polecenie...", executes},
    }};
}

}  // namespace protolink::browser
