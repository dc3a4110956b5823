// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "profile/client_database.h"

#include "host/util/utf.h"
#include "host/util/xml_parse.h"
#include "platform/platform.h"

namespace protolink {

namespace {

constexpr char16_t kFileName[] = u"XMPPClientDB.xml";

}  // namespace

void CClientDatabase::load(const std::u16string& directory) {
    const auto content = platform::readFile(directory + kFileName);
    if (!content) return;
    lutXMLParseA(roots_, *content);
    if (!dbRootPtr()) return;
    const auto& entries = dbRootPtr()->children;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (entries[i].name == u"entry" && entries[i].HasAttribute(u"hash"))
            index_.emplace(entries[i].GetAttribute(u"hash"), i);
    }
}

void CClientDatabase::save(const std::u16string& directory) const {
    platform::replaceFile(directory + kFileName, dbRootPtr() ? wtou(dbRootPtr()->GetXML(0)) : std::string());
}

const xmlElement* CClientDatabase::find(std::u16string_view hash) const {
    const auto found = index_.find(hash);
    return found == index_.end() ? nullptr : &dbRootPtr()->children[found->second];
}

void CClientDatabase::add(const xmlElement& query, std::u16string_view hash) {
    if (index_.contains(hash)) return;
    if (roots_.empty()) roots_.emplace_back(u"dbRoot");
    auto& entries = roots_.front().children;
    xmlElement entry(u"entry");
    entry.SetAttribute(u"hash", hash);
    entry.SetChild(query, false);
    // Entries that move take their children along without moving them.
    entries.push_back(std::move(entry));
    index_.emplace(hash, entries.size() - 1);
}

}  // namespace protolink
