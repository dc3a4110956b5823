// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <map>

#include "host/util/utf.h"
#include "platform/platform.h"
#include "plugin/account_files.h"
#include "tests/messenger/kill/kept_files.h"
#include "tests/messenger/kill/victim.h"
#include "tests/torture/client.h"

using namespace protolink;

namespace oku::test {
namespace {

constexpr int kContacts = 150;
const std::string kDatabase = "XMPPClientDB.xml";

/// The files are named after the program, as they are after a module.
std::u16string moduleName() { return moduleBaseName(platform::modulePath()); }

/// A session from load to unload: the roster is the number's, and so is the one client that it learns of. What was
/// learnt before goes first, as its file grows otherwise for ever.
class Plugin : public ReplacedFiles {
public:
    Plugin() : ReplacedFiles({wtou(moduleName()) + ".roster", kDatabase}) {}

    bool save(std::uint32_t number, const QString& folder) override {
        torture::Client client;
        client.host.directory = folder.toStdU16String();
        for (const auto& [path, file] : std::map(client.host.settings))
            client.host.settings[client.host.directory + moduleName() + u".config"] = file;
        client.logIn();
        if (!client.isReady()) return false;
        client.receive(1, rosterPush(number));
        client.receive(1, "<presence from='contact0@example.org/r'/>");
        client.receive(1, capabilities(number));
        client.unload();
        return true;
    }

private:
    static std::string rosterPush(std::uint32_t number) {
        std::string items;
        for (int i = 0; i < kContacts; ++i)
            items += "<item jid='contact" + std::to_string(i) + "@example.org' subscription='both' name='" +
                     textOfSave(number) + "'><group>Znajomi</group></item>";
        return "<iq type='set' id='p'><query xmlns='jabber:iq:roster'>" + items + "</query></iq>";
    }

    static std::string capabilities(std::uint32_t number) {
        std::string features;
        for (int i = 0; i < kContacts; ++i)
            features += "<feature var='" + textOfSave(number) + "#" + std::to_string(i) + "'/>";
        return "<iq type='result' from='contact0@example.org/r' id='x'><query node='n#h' "
               "xmlns='http://jabber.org/protocol/disco#info'>" +
               features + "</query></iq>";
    }
};

}  // namespace

std::unique_ptr<Kept> keptByThePlugin() { return std::make_unique<Plugin>(); }

}  // namespace oku::test
