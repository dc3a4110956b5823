// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// doap.xml tells programs which protocols this one speaks. It says what the sources say.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "extensions/own_caps.h"
#include "host/util/utf.h"
#include "host/util/xml_parse.h"

using namespace protolink;

namespace {

namespace fs = std::filesystem;

using Numbers = std::set<std::string>;

std::string contentOf(const fs::path& path) {
    std::ostringstream content;
    content << std::ifstream(path).rdbuf();
    return content.str();
}

struct Entry {
    std::string status;
    std::string version;
};

/// The extensions of doap.xml: number to what it says of it.
std::map<std::string, Entry> entriesOfDoap() {
    std::vector<xmlElement> read;
    lutXMLParseA(read, contentOf(fs::path(PROTOLINK_SOURCE_DIR) / "doap.xml"));
    std::map<std::string, Entry> entries;
    for (const xmlElement& element : read.at(0).GetChild(u"Project").children) {
        const xmlElement* supported = element.GetChildPtr(u"xmpp:SupportedXep");
        if (!supported) continue;
        const std::string address = wtou(supported->GetChild(u"xmpp:xep").GetAttribute(u"rdf:resource"));
        std::smatch parts;
        EXPECT_TRUE(std::regex_match(address, parts, std::regex(R"(https://xmpp\.org/extensions/xep-(\d{4})\.html)")))
            << address;
        const Entry entry{wtou(supported->GetChild(u"xmpp:status").text),
                          wtou(supported->GetChild(u"xmpp:version").text)};
        EXPECT_TRUE(entries.emplace(parts.str(1), entry).second) << "twice: " << address;
    }
    return entries;
}

/// The comment that a file begins with.
std::string headCommentOf(const fs::path& path) {
    std::ifstream file(path);
    std::string comment;
    bool licence = true;  // comes before it
    for (std::string line; std::getline(file, line);) {
        licence = licence && (line.empty() || line.starts_with("// SPDX"));
        if (licence) continue;
        if (!line.starts_with("//")) break;
        comment += line + '\n';
    }
    return comment;
}

/// The extensions that head comments name: a file is what it says there.
Numbers implementedInSources() {
    const std::regex name(R"(XEP-(\d{4}))");
    Numbers numbers;
    for (const char* folder :
         {"plugin", "stream", "router", "im", "extensions", "profile", "transfer", "dialogs", "messenger/core"}) {
        for (const auto& file : fs::recursive_directory_iterator(fs::path(PROTOLINK_SOURCE_DIR) / folder)) {
            const std::string comment = headCommentOf(file.path());
            for (std::sregex_iterator at(comment.begin(), comment.end(), name), end; at != end; ++at)
                numbers.insert((*at)[1]);
        }
    }
    return numbers;
}

/// Which extension a feature belongs to; none for those that name no protocol.
const std::map<std::string, std::string> kExtensionOfFeature = {
    {"http://jabber.org/protocol/caps", "0115"},
    {"http://jabber.org/protocol/chatstates", "0085"},
    {"http://jabber.org/protocol/disco#info", "0030"},
    {"http://jabber.org/protocol/disco#items", "0030"},
    {"http://jabber.org/protocol/geoloc", "0080"},
    {"http://jabber.org/protocol/geoloc+notify", "0080"},
    {"http://jabber.org/protocol/http-auth", "0070"},
    {"http://jabber.org/protocol/ibb", "0047"},
    {"http://jabber.org/protocol/mood", "0107"},
    {"http://jabber.org/protocol/mood+notify", "0107"},
    {"http://jabber.org/protocol/pubsub", "0060"},
    {"http://jabber.org/protocol/si", "0095"},
    {"http://jabber.org/protocol/si/profile/file-transfer", "0096"},
    {"http://jabber.org/protocol/tune", "0118"},
    {"http://jabber.org/protocol/tune+notify", "0118"},
    {"iq", ""},
    {"jabber:iq:oob", "0066"},
    {"jabber:iq:privacy", "0016"},
    {"jabber:iq:version", "0092"},
    {"jabber:x:data", "0004"},
    {"presence", ""},
    {"sslc2s", ""},
    {"urn:xmpp:avatar:data", "0084"},
    {"urn:xmpp:avatar:metadata", "0084"},
    {"urn:xmpp:avatar:metadata+notify", "0084"},
    {"urn:xmpp:ping", "0199"},
    {"urn:xmpp:ssn", "0155"},
    {"urn:xmpp:time", "0202"},
    {"vcard-temp", "0054"},
};

TEST(Doap, NamesEveryFeatureThatIsTold) {
    const auto entries = entriesOfDoap();
    for (const std::u16string_view told : ownCaps::kFeatures) {
        const auto known = kExtensionOfFeature.find(wtou(told));
        ASSERT_NE(known, kExtensionOfFeature.end()) << "which extension is " << wtou(told) << '?';
        EXPECT_TRUE(known->second.empty() || entries.contains(known->second)) << wtou(told);
    }
}

TEST(Doap, CallsImplementedWhatTheSourcesCallSo) {
    Numbers called;
    for (const auto& [number, entry] : entriesOfDoap())
        if (entry.status != "planned") called.insert(number);
    EXPECT_EQ(called, implementedInSources());
}

TEST(Doap, GivesAStatusAndAVersionToEach) {
    const auto entries = entriesOfDoap();
    EXPECT_FALSE(entries.empty());
    for (const auto& [number, entry] : entries) {
        EXPECT_TRUE(Numbers({"complete", "partial", "planned"}).contains(entry.status)) << number << entry.status;
        EXPECT_TRUE(std::regex_match(entry.version, std::regex(R"(\d+(\.\d+)+(rc\d+)?)"))) << number << entry.version;
    }
}

}  // namespace
