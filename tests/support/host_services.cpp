// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/support/host_services.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "tests/support/text.h"

namespace harness {
namespace {

using K = ServiceArgument::Kind;

const ServiceRow* find(const std::string& service) {
    static const std::array kFamilies{settingsServices(), timerServices(),  accountServices(),
                                      windowServices(),   socketServices(), contactServices(),
                                      hookServices(),     cardServices(),   transferServices(),
                                      dialogServices()};
    for (const auto& family : kFamilies) {
        for (const auto& row : family) {
            if (service == row.name) return &row;
        }
    }
    return nullptr;
}

void show(RecordingHost& host, Line& line, const ServiceArgument& argument, OKU_WORD word) {
    switch (argument.kind) {
        case K::Zero:
            return;
        case K::Number:
            line.field(argument.name, word);
            return;
        case K::Text:
            line.field(argument.name, copyText(reinterpret_cast<const void*>(word)));
            return;
        case K::Module:
            if (word != host.module) line.field(argument.name, word);
            return;
        case K::Net:
            if (word != 1) line.field(argument.name, word);
            return;
        case K::Class:
            if (const auto text = copyText(reinterpret_cast<const void*>(word)); text != "XMPP") {
                line.field(argument.name, text);
            }
            return;
        case K::Contact: {
            const auto found = host.contacts.find(word);
            line.field(argument.name, found == host.contacts.end() ? "none" : found->second.substr(2));
            return;
        }
        case K::TimerName: {
            bool byReference = false;
            line.field(argument.name, timerName(word, byReference));
            if (byReference) line.fields.push_back({"shape", {"reference", false}});
            return;
        }
        case K::Record:
            for (auto& field : readRecord(*argument.layout, reinterpret_cast<const void*>(word), host.context())) {
                line.fields.push_back(std::move(field));
            }
            return;
    }
}

}  // namespace

void copyWide(void* to, const std::string& text, std::size_t capacity) {
    const auto wide = toUtf16(text).substr(0, capacity - 1);
    std::memcpy(to, wide.c_str(), (wide.size() + 1) * sizeof(char16_t));
}

std::string timerName(OKU_WORD param, bool& byReference) {
    if (param == 0) return {};
    // A name holds four characters or more, so that the upper half of its first word is never zero; a pointer's is.
    const auto first = peek<std::uint64_t>(recordAt(param), 0);
    byReference = (first >> 48) == 0;
    return copyText(byReference ? recordAt(static_cast<OKU_WORD>(first)) : recordAt(param));
}

OKU_WORD callService(RecordingHost& host, const std::string& service, OKU_WORD param, OKU_WORD extra) {
    const ServiceRow* row = find(service);
    if (row && row->tellAndAct) return row->tellAndAct(host, param, extra);
    Line line{"call " + service, {}, {}, {}};
    if (!row) {
        host.complain("the host has no service " + service);
        host.plain(std::move(line));
        return 0;
    }
    show(host, line, row->param, param);
    if (row->param.kind == K::Zero && param != 0) line.field("param", param);
    show(host, line, row->extra, extra);
    if (row->extra.kind == K::Zero && extra != 0) line.field("extra", extra);
    // What is scripted is taken before the event is told: a trigger may call again.
    const auto answer = host.scripted(service);
    host.plain(std::move(line));
    return answer ? *answer : row->act(host, param, extra);
}

}  // namespace harness
