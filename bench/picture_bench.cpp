// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the pictures of many contacts cost, on real files: so many of 16 KiB each (2,000, or the number that is given),
// announced and answered one after the other, by the contacts' servers and by their cards. See docs/performance.md.
#include <malloc.h>
#include <stdlib.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "bench/process_cost.h"
#include "host/util/base64.h"
#include "host/util/utf.h"
#include "platform/platform.h"
#include "plugin/account_files.h"
#include "tests/torture/client.h"

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kNet = 1;
constexpr int kUsualContacts = 2000;
constexpr int kQuarters = 4;
constexpr std::size_t kBytes = 16 * 1024;

std::string jid(int contact) { return "contact" + std::to_string(contact) + "@example.org"; }

struct Road {
    const char* name;
    std::string (*announcement)(int contact);
    std::string (*answer)(int contact, const std::string& id, const std::string& base64);
};

const Road kRoads[] = {
    {"by the server (XEP-0084)",
     [](int contact) {
         const std::string hash = "published" + std::to_string(contact);
         return "<message from='" + jid(contact) +
                "'><event xmlns='http://jabber.org/protocol/pubsub#event'><items node='urn:xmpp:avatar:metadata'>"
                "<item id='" +
                hash + "'><metadata xmlns='urn:xmpp:avatar:metadata'><info id='" + hash +
                "'/></metadata></item></items></event></message>";
     },
     [](int contact, const std::string& id, const std::string& base64) {
         return "<iq type='result' from='" + jid(contact) + "' id='" + id +
                "'><pubsub xmlns='http://jabber.org/protocol/pubsub'><items node='urn:xmpp:avatar:data'><item "
                "id='published" +
                std::to_string(contact) + "'><data xmlns='urn:xmpp:avatar:data'>" + base64 +
                "</data></item></items></pubsub></iq>";
     }},
    {"with the card (XEP-0153)",
     [](int contact) {
         return "<presence from='" + jid(contact) + "/r'><x xmlns='vcard-temp:x:update'><photo>photo" +
                std::to_string(contact) + "</photo></x></presence>";
     },
     [](int contact, const std::string& id, const std::string& base64) {
         return "<iq type='result' from='" + jid(contact) + "' id='" + id +
                "'><vCard xmlns='vcard-temp'><PHOTO><TYPE>image/png</TYPE><BINVAL>" + base64 +
                "</BINVAL></PHOTO></vCard></iq>";
     }},
};

void measure(torture::Client& client, int contacts, const Road& road, const std::string& base64) {
    std::string id;
    int told = 0;
    client.host.onSend = [&id](std::uint32_t, std::string_view sent) {
        if (id.empty()) id = torture::idIn(sent);
    };
    client.host.before = [&told](const torture::Call& call) -> std::optional<OKU_WORD> {
        told += call.name == u"OKU/CTL/SetAvatar";
        return std::nullopt;
    };
    const std::size_t memory = mallinfo2().uordblks;
    std::printf("%-26s", road.name);
    for (int quarter = 0; quarter < kQuarters; ++quarter) {
        const double begin = bench::cpuTime();
        const int part = contacts / kQuarters;
        for (int contact = quarter * part; contact < (quarter + 1) * part; ++contact) {
            id.clear();
            client.receive(kNet, road.announcement(contact));
            client.receive(kNet, road.answer(contact, id, base64));
        }
        std::printf(" %7.1f", (bench::cpuTime() - begin) / part);
    }
    std::printf(" us of CPU each, by quarters; %zu bytes kept each; %d of %d told; at most %ld KiB resident\n",
                (mallinfo2().uordblks - memory) / static_cast<std::size_t>(contacts), told, contacts,
                bench::peakMemory());
}

}  // namespace

int main(int count, char** arguments) {
    const int contacts = count > 1 ? std::stoi(arguments[1]) : kUsualContacts;
    std::string name = (fs::temp_directory_path() / "picture-bench-XXXXXX").string();
    if (!mkdtemp(name.data())) return 1;
    fs::current_path(name);
    {
        torture::Client client({.contacts = contacts});
        client.host.directory = utow(name + "/");
        const auto settings = client.host.settings.begin()->second;
        const std::u16string base = protolink::moduleBaseName(platform::modulePath());
        client.host.settings[client.host.directory + base + u".config"] = settings;
        client.logIn();
        const std::string base64 = lutBase64Encode(std::string(kBytes, '\x5A'));
        std::printf("%ld KiB resident with %d contacts\n", bench::peakMemory(), contacts);
        for (const Road& road : kRoads) measure(client, contacts, road, base64);
    }
    fs::current_path("/");
    fs::remove_all(name);
    return 0;
}
