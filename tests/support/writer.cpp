// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/support/writer.h"

#include <cctype>
#include <map>
#include <set>

#include "tests/support/text.h"

namespace harness {
namespace {

/// The ids in a sent text, in order.
std::vector<std::string> idsIn(const std::string& text) {
    std::vector<std::string> ids;
    for (const std::string_view mark : {" id=\"", " id='"}) {
        for (auto at = text.find(mark); at != std::string::npos; at = text.find(mark, at + 1)) {
            const auto start = at + mark.size();
            const auto end = text.find(mark.back(), start);
            if (end != std::string::npos && end > start) ids.push_back(text.substr(start, end - start));
        }
    }
    return ids;
}

}  // namespace

std::string writeTranscript(const std::vector<JournalEntry>& journal) {
    std::string out;
    std::map<std::string, std::string> names;  // of ids that the plugin chose
    std::set<std::string> foreign;             // ids that the other side chose first
    for (const auto& entry : journal) {
        const bool sent = !entry.isStimulus && startsWith(entry.text, "C");
        for (const auto& id : idsIn(entry.text)) {
            if (names.count(id) || foreign.count(id)) continue;
            if (sent) {
                names[id] = "{id" + std::to_string(names.size() + 1) + "}";
            } else {
                foreign.insert(id);
            }
        }
        auto text = entry.text;
        for (const auto& [id, name] : names) {
            text = replaceAll(replaceAll(text, "\"" + id + "\"", "\"" + name + "\""), "'" + id + "'", "'" + name + "'");
        }
        if (entry.isStimulus) out += "\n";
        out += text + "\n";
    }
    return out;
}

}  // namespace harness
