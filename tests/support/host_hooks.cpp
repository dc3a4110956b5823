// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the plugin tells the host's listeners.
#include <algorithm>
#include <cstring>

#include "tests/support/host_services.h"
#include "tests/support/text.h"

namespace harness {
namespace {

using K = ServiceArgument::Kind;

const char* phaseWord(std::uint32_t phase) {
    return phase == 1 ? "before" : phase == 2 ? "after" : phase == 0 ? "notice" : "in no known phase";
}

/// Blanks the texts that a listener does not want to reach the parser, in place.
void blank(char* data, std::size_t length, const std::vector<std::string>& texts) {
    std::string_view view(data, length);
    for (const auto& text : texts) {
        for (auto at = view.find(text); at != std::string_view::npos; at = view.find(text, at + 1)) {
            std::memset(data + at, ' ', text.size());
        }
    }
}

void showHookExtra(RecordingHost& host, Line& line, std::uint32_t kind, OKU_WORD extra) {
    const RecordLayout* layout = kind == 3   ? &layouts::kContactState
                                 : kind == 4 ? &layouts::kStatusData
                                 : kind == 5 ? &layouts::kMessage
                                 : kind == 6 ? &layouts::kMessageSend
                                             : nullptr;
    if (!layout) {
        if (extra != 0) line.field("extra", extra);
        return;
    }
    for (auto& field : readRecord(*layout, reinterpret_cast<const void*>(extra), host.context())) {
        line.fields.push_back(std::move(field));
    }
    if (kind == 5) {
        const auto* message = reinterpret_cast<const void*>(extra);
        if (peek<OKU_WORD>(message, 56) != peek<OKU_WORD>(message, 112)) {
            host.complain("OKU_MESSAGE_DATA names two different resources");
        }
    }
}

void tellStreamHook(RecordingHost& host, Line line, std::uint32_t kind, std::uint32_t phase, OKU_WORD extra) {
    const auto* record = reinterpret_cast<const void*>(extra);
    auto fields = readRecord(layouts::kHookData, record, host.context());
    auto* data = peek<char*>(record, 8);
    const std::size_t length = peek<std::uint32_t>(record, 16);
    if (std::strlen(data) != length) host.complain("OKU_HOOK_DATA tells another length than its text has");
    const auto flags = peek<std::uint32_t>(record, 20);
    if (flags != 1 && flags != 33) host.complain("OKU_HOOK_DATA has the flags " + std::to_string(flags));
    const std::string text(data, std::strlen(data));
    if (kind == 1 && phase == 1) blank(data, text.size(), host.blanks);
    if (kind == 2 && (phase == 1 || phase == 2)) host.lastOut[phase - 1] = text;
    for (auto& field : fields) {
        if (field.name == "flags" && field.value.text != "1") line.fields.push_back(std::move(field));
    }
    host.record({Event::Category::StreamHook, std::move(line.text(text)), {}});
    // What a listener writes when the act is done must change nothing.
    if (phase == 2) std::memset(data, ' ', length);
}

/// The contact that a hook is about. Of a message to be sent it is the one in the record of whoever sends it.
void showSubject(RecordingHost& host, Line& line, std::uint32_t kind, std::uint32_t net, const void* subject) {
    constexpr std::size_t kClass = 24, kNet = 32;
    const bool sendersOwn = kind == 6;
    const auto fields =
        sendersOwn ? readRecord(layouts::kContactIdentity, subject, {host.module, 0, [](const std::string&) {}})
                   : readRecord(layouts::kContact, subject, host.context());
    const auto jid = std::find_if(fields.begin(), fields.end(), [](const Field& f) { return f.name == "jid"; });
    line.field("of", jid == fields.end() ? "" : jid->value.text);
    if (sendersOwn) return;
    if (copyText(peek<const void*>(subject, kClass)) != "XMPP")
        host.complain("the subject of a hook has another class");
    if (peek<std::uint32_t>(subject, kNet) != net) host.complain("the subject of a hook is of another account");
}

OKU_WORD hook(RecordingHost& host, OKU_WORD param, OKU_WORD extra) {
    const auto* record = reinterpret_cast<const void*>(param);
    const auto fields = readRecord(layouts::kHook, record, host.context());
    const auto kind = peek<std::uint32_t>(record, 20);
    const auto phase = peek<std::uint32_t>(record, 24);
    Line line{"hook " + hookWord(kind) + " " + phaseWord(phase), {}, {}, {}};
    for (const auto& field : fields) {
        if (field.name == "net" || field.name == "class") line.fields.push_back(field);
    }
    const auto net = peek<std::uint32_t>(record, 16);
    if (const auto* subject = peek<const void*>(record, 32)) showSubject(host, line, kind, net, subject);
    auto answer = host.scripted("OKU/CallProtolHooks");
    if (const auto veto = host.vetoes.find(kind); veto != host.vetoes.end() && phase == 1) {
        host.vetoes.erase(veto);
        answer = 1;
    }
    if (answer.value_or(0) != 0) line.result = std::to_string(*answer);
    if (kind == 1 || kind == 2) {
        if (phase == 1 && answer.value_or(0) != 0) {
            // A taken piece matters even where stream hooks are left out.
            Line taken{"taken " + hookWord(kind), {}, {}, {}};
            host.plain(std::move(taken));
        }
        tellStreamHook(host, std::move(line), kind, phase, extra);
    } else {
        showHookExtra(host, line, kind, extra);
        host.plain(std::move(line));
    }
    return answer.value_or(0);
}

// clang-format off
constexpr ServiceRow kRows[] = {
    {.name = "OKU/CallProtolHooks", .tellAndAct = hook},
};
// clang-format on

}  // namespace

std::span<const ServiceRow> hookServices() { return kRows; }

}  // namespace harness
