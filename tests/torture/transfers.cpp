// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/torture/transfers.h"

#include "host/oku/transfer.h"
#include "tests/support/fake_platform.h"

namespace torture {
namespace {

constexpr std::uint32_t kNet = 1;
constexpr char kIbb[] = "http://jabber.org/protocol/ibb";
constexpr char kOob[] = "jabber:iq:oob";
constexpr char16_t kFile[] = u"/home/file";

template <typename Record>
OKU_WORD wordOf(Record& record) {
    record.size = sizeof record;
    return reinterpret_cast<OKU_WORD>(&record);
}

/// The value that stands behind the last `marker` of what the client said; empty without one.
std::string heard(Client& client, const std::string& marker) {
    const std::string& text = client.servers.at(kNet).heard();
    const std::size_t at = text.rfind(marker);
    if (at == std::string::npos) return {};
    const std::size_t begin = at + marker.size();
    return text.substr(begin, text.find('"', begin) - begin);
}

void answer(Client& client, const std::string& id) {
    if (!id.empty()) client.say(kNet, "<iq type='result' id='" + id + "' from='contact1@example.org/desk'/>");
    client.pump();
}

std::string option(const std::string& method) { return "<option><value>" + method + "</value></option>"; }

void hearOffer(Client& client, const std::string& methods) {
    client.say(kNet,
               "<iq type='set' from='contact1@example.org/desk' id='o1'><si xmlns='http://jabber.org/protocol/si' "
               "id='stream1'><file xmlns='http://jabber.org/protocol/si/profile/file-transfer' name='plik' size='6'/>"
               "<feature xmlns='http://jabber.org/protocol/feature-neg'><x xmlns='jabber:x:data'><field "
               "var='stream-method'>" +
                   methods + "</field></x></feature></si></iq>");
    client.pump();
}

void sayIbb(Client& client, const std::string& id, const std::string& child) {
    client.say(kNet, "<iq type='set' from='contact1@example.org/desk' id='" + id + "'>" + child + "</iq>");
    client.pump();
}

}  // namespace

void offerFile(Client& client) {
    harness::world().files["/home/file"] = std::string(5000, 'x');
    client.servers.at(kNet).keepHeard = true;
    client.say(kNet,
               "<presence from='contact1@example.org/desk'/>"
               "<iq type='result' from='contact1@example.org/desk' id='caps1'><query "
               "xmlns='http://jabber.org/protocol/disco#info'>"
               "<feature var='http://jabber.org/protocol/si/profile/file-transfer'/></query></iq>");
    client.pump();
    OKU_CONTACT_RECORD contact{};
    contact.id = u"contact1@example.org";
    client.callService(kNet, u"PFInitSendFile", wordOf(contact), 0);
    if (client.host.choosers.empty()) return;
    OKU_FILE_CHOICE choice{};
    choice.kind = OKU_FILE_CHOSEN;
    choice.path = kFile;
    client.host.choosers.back()(wordOf(choice));
    client.pump();
}

void takeOffer(Client& client, const std::string& method) {
    const std::string offer = heard(client, "<iq type=\"set\" id=\"");
    client.say(kNet, "<iq type='result' from='contact1@example.org/desk' id='" + offer +
                         "'><si xmlns='http://jabber.org/protocol/si'><feature "
                         "xmlns='http://jabber.org/protocol/feature-neg'><x xmlns='jabber:x:data'><field "
                         "var='stream-method'><value>" +
                         method + "</value></field></x></feature></si></iq>");
    client.pump();
}

void sendFile(Client& client) {
    offerFile(client);
    takeOffer(client, kIbb);
    answer(client, heard(client, "sid=\""));
    for (int block = 0; block < 2; ++block) answer(client, heard(client, "<iq type=\"set\" id=\""));
    answer(client, heard(client, "<iq to=\"contact1@example.org/desk\" id=\""));
}

void receiveFile(Client& client) {
    client.servers.at(kNet).keepHeard = true;
    hearOffer(client, option(kIbb));
    sayIbb(client, "stream1", "<open xmlns='http://jabber.org/protocol/ibb' sid='stream1' block-size='4096'/>");
    for (const char* block : {"Y3pl", "xZvE"})
        sayIbb(client, block,
               std::string("<data xmlns='http://jabber.org/protocol/ibb' sid='stream1'>") + block + "</data>");
    answer(client, heard(client, "<iq to=\"\" id=\""));
    sayIbb(client, "c1", "<close xmlns='http://jabber.org/protocol/ibb' sid='stream1'/>");
}

void publishFile(Client& client) {
    offerFile(client);
    takeOffer(client, kOob);
    for (const OKU_WORD state : {OK7_STATE_RUNNING, OK7_STATE_SENT}) {
        if (!client.host.publications.empty()) client.host.publications.back()(state);
        client.pump();
    }
}

void downloadFile(Client& client) {
    hearOffer(client, option(kOob) + option(kIbb));
    sayIbb(client, "stream1", "<query xmlns='jabber:iq:oob'><url>http://files.example/plik</url></query>");
    const auto downloads = harness::world().downloads;
    for (const auto& download : downloads) {
        const Side plugin(true);
        download->answer(200);
        download->block("cze");
        download->block("\xC5\x9B");
        download->end();
    }
    client.pass(1000);
}

void cancelAll(Client& client) {
    const auto windows = client.host.transferWindows;
    for (const Callback& window : windows) {
        OKU_FT_EVENT event{sizeof event, OKU_FT_EVENT_CANCELLED};
        window(reinterpret_cast<OKU_WORD>(&event));
    }
    client.pump();
}

}  // namespace torture
