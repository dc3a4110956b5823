// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the plugin's own part of a file transfer costs, on real files in the working folder and between a host and a
// peer that do next to nothing:
//
//   transfer_bench send FILE           the file goes out in the stream
//   transfer_bench receive BYTES       so many bytes come in the stream, into the file "received"
//   transfer_bench download BYTES URL  the document, told as so many bytes, is fetched into the file "received"
//
// One line of JSON tells the processor time from the offer to the end and the resident memory. bench/files.py runs it;
// see docs/performance.md.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <thread>

#include "bench/process_cost.h"
#include "host/oku/transfer.h"
#include "host/util/base64.h"
#include "host/util/utf.h"
#include "platform/platform.h"
#include "plugin/account_files.h"
#include "tests/torture/client.h"

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kNet = 1;
constexpr char kPeer[] = "contact1@example.org/desk";
constexpr std::size_t kBlock = 4096;

/// The plugin, online, with a host that opens windows, answers questions and keeps what was said last.
class Bench {
public:
    Bench() {
        const std::u16string folder = utow(fs::current_path().string() + "/");
        client_.host.directory = folder;
        const auto settings = client_.host.settings.begin()->second;
        client_.host.settings[folder + protolink::moduleBaseName(platform::modulePath()) + u".config"] = settings;
        client_.host.before = [this, folder](const torture::Call& call) { return answer(call, folder); };
        client_.logIn();
        client_.host.onSend = [this](std::uint32_t, std::string_view text) {
            if (text.find("<iq ") != std::string_view::npos) said_ = text;
        };
        startMemory_ = bench::peakMemory();
        startTime_ = bench::cpuTime();
    }

    bool send(const std::string& file);
    bool receive(std::size_t bytes);
    bool download(std::size_t bytes, const std::string& url);

    void report(std::size_t blocks) const {
        const double seconds = (bench::cpuTime() - startTime_) / 1e6;
        std::printf(R"({"blocks": %zu, "cpu": %.6f, "idle_kib": %ld, "peak_kib": %ld})"
                    "\n",
                    blocks, seconds, startMemory_, bench::peakMemory());
    }

private:
    static OKU_WORD OKU_CALL update(OKU_WORD, OKU_WORD, OKU_WORD) { return 0; }

    std::optional<OKU_WORD> answer(const torture::Call& call, const std::u16string& folder) {
        if (call.name == u"OKU/FTInitWindow") {
            reinterpret_cast<OKU_FT_INIT_RECORD*>(call.param)->updateFn = update;
            return 5;
        }
        if (call.name == u"OKU/FTAskForConfirmation") {
            const auto& record = *reinterpret_cast<const OKU_FT_ASK_RECORD*>(call.param);
            if (folder.size() >= OKU_FT_PATH_CAPACITY) return OKU_FT_ANSWER_REFUSE;
            std::copy_n(folder.c_str(), folder.size() + 1, record.path);
            return 1;
        }
        if (call.name == u"OK7/IsEnabled") return 0;
        return std::nullopt;
    }

    /// An attribute of what was said last.
    std::string_view said(std::string_view name) const {
        const std::string marker = " " + std::string(name) + "=\"";
        const std::size_t at = said_.find(marker);
        if (at == std::string::npos) return {};
        const std::size_t begin = at + marker.size();
        return std::string_view(said_).substr(begin, said_.find('"', begin) - begin);
    }
    bool saidResult() const { return said("type") == "result"; }

    void hear(std::string_view id, const std::string& child) {
        std::string text;
        text.reserve(child.size() + 128);
        text.append("<iq type='set' from='").append(kPeer).append("' id='").append(id).append("'>");
        client_.receive(kNet, text.append(child).append("</iq>"));
    }
    void hearResult(const std::string& child = {}) {
        const std::string id(said("id"));
        said_.clear();
        client_.receive(kNet, "<iq type='result' from='" + std::string(kPeer) + "' id='" + id + "'>" + child + "</iq>");
    }
    void hearOffer(std::size_t bytes, const std::string& method) {
        hear("offer",
             "<si xmlns='http://jabber.org/protocol/si' id='s1'><file "
             "xmlns='http://jabber.org/protocol/si/profile/file-transfer' name='received' size='" +
                 std::to_string(bytes) +
                 "'/><feature xmlns='http://jabber.org/protocol/feature-neg'><x xmlns='jabber:x:data'><field "
                 "var='stream-method'><option><value>" +
                 method + "</value></option></field></x></feature></si>");
    }

    torture::Client client_;
    std::string said_;
    long startMemory_ = 0;
    double startTime_ = 0;
};

bool Bench::send(const std::string& file) {
    OKU_CONTACT_RECORD contact{};
    contact.size = sizeof contact;
    contact.id = u"contact1@example.org";
    client_.callService(kNet, u"PFInitSendFile", reinterpret_cast<OKU_WORD>(&contact), 0);
    if (client_.host.choosers.empty()) return false;
    const std::u16string path = utow(fs::absolute(file).string());
    OKU_FILE_CHOICE choice{sizeof choice, OKU_FILE_CHOSEN, path.c_str(), {}};
    client_.host.choosers.back()(reinterpret_cast<OKU_WORD>(&choice));
    hearResult(
        "<si xmlns='http://jabber.org/protocol/si'><feature xmlns='http://jabber.org/protocol/feature-neg'><x "
        "xmlns='jabber:x:data'><field var='stream-method'><value>http://jabber.org/protocol/ibb</value></field></x>"
        "</feature></si>");
    while (said_.find("<close") == std::string::npos) {
        if (said_.empty()) return false;
        hearResult();
    }
    return true;
}

bool Bench::receive(std::size_t bytes) {
    hearOffer(bytes, "http://jabber.org/protocol/ibb");
    hear("s1", "<open xmlns='http://jabber.org/protocol/ibb' sid='s1' block-size='4096' stanza='iq'/>");
    std::string block(kBlock, '\0');
    for (std::size_t i = 0; i < kBlock; ++i) block[i] = static_cast<char>(i * 7 + i / 256);
    std::string text = lutBase64Encode(block) + "</data>";
    std::size_t number = 0;
    for (std::size_t sent = 0; sent < bytes; sent += block.size(), ++number) {
        if (bytes - sent < kBlock) {
            block.resize(bytes - sent);
            text = lutBase64Encode(block) + "</data>";
        }
        if (!saidResult()) return false;
        const std::string seq = std::to_string(number % 65536);
        hear("b", "<data xmlns='http://jabber.org/protocol/ibb' sid='s1' seq='" + seq + "'>" + text);
    }
    return said_.find("<close") != std::string::npos;
}

bool Bench::download(std::size_t bytes, const std::string& url) {
    hearOffer(bytes, "jabber:iq:oob");
    hear("s1", "<query xmlns='jabber:iq:oob'><url>" + url + "</url></query>");
    while (said("id") != "s1") {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        client_.pass(100);
    }
    return saidResult() && fs::file_size("received") == bytes;
}

}  // namespace

int main(int count, char** arguments) {
    const std::string_view mode = count > 2 ? arguments[1] : "";
    Bench bench;
    bool done = false;
    std::size_t bytes = 0;
    if (mode == "send") {
        bytes = fs::file_size(arguments[2]);
        done = bench.send(arguments[2]);
    } else if (mode == "receive") {
        bytes = std::stoull(arguments[2]);
        done = bench.receive(bytes);
    } else if (mode == "download" && count > 3) {
        bytes = std::stoull(arguments[2]);
        done = bench.download(bytes, arguments[3]);
    }
    if (!done) {
        std::fputs("The transfer did not come to its end.\n", stderr);
        return 1;
    }
    bench.report((bytes + kBlock - 1) / kBlock);
    return 0;
}
