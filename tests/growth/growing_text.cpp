// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/growth/growing_text.h"

#include <QByteArray>
#include <QString>

#include "host/util/xml_parse.h"
#include "messenger/core/net/stream_reader.h"
#include "messenger/core/xml/secrets.h"
#include "messenger/core/storage/settings_format.h"
#include "messenger/core/xml/tag_scanner.h"
#include "messenger/core/xml/xml_data.h"
#include "messenger/core/xml/xml_text.h"
#include "stream/received_text.h"
#include "stream/xml_probe.h"
#include "tests/growth/work_counter.h"

namespace growth {
namespace {

QByteArray bytesOf(std::string_view text) { return {text.data(), static_cast<qsizetype>(text.size())}; }

std::uint64_t receive(const std::string& text, std::size_t piece) {
    protolink::ReceivedText received;
    protolink::XmlProbe probe;
    std::uint64_t allowed = text.size();
    for (std::size_t at = 0; at < text.size(); at += piece) {
        const std::size_t before = received.size();
        const std::size_t changed = received.append(std::string_view(text).substr(at, piece));
        // What stands behind a change is looked at again.
        allowed += before - std::min(before, changed);
        probe.changed(changed);
        probe.probeXml(received.view(), received.settled());
    }
    return allowed;
}

std::uint64_t readElements(const std::string& text, std::size_t) {
    std::vector<xmlElement> elements;
    lutXMLParseA(elements, text);
    return text.size();
}

std::uint64_t splitElements(const std::string& text, std::size_t) {
    for (const oku::Stanza& stanza : oku::splitStanzas(text).stanzas) {
        oku::AttributeScanner attributes(stanza.tag);
        while (const auto found = attributes.next()) oku::readValue(found->value);
    }
    oku::readText(text);
    oku::readValue(text);
    return text.size();
}

std::uint64_t maskSecrets(const std::string& text, std::size_t) {
    oku::maskedXml(bytesOf(text));
    return text.size();
}

std::uint64_t holdElements(const std::string& text, std::size_t piece) {
    constexpr qsizetype kLimit = 1 << 20;
    oku::net::StreamReader reader(kLimit, true);
    for (std::size_t at = 0; at < text.size(); at += piece)
        reader.add(bytesOf(std::string_view(text).substr(at, piece)));
    return text.size();
}

std::uint64_t readSettings(const std::string& text, std::size_t) {
    bool ok = false;
    oku::settingsToBytes(oku::settingsFromBytes(bytesOf(text), ok));
    return text.size();
}

std::uint64_t escape(const std::string& text, std::size_t) {
    oku::xmlEscaped(QString::fromUtf8(bytesOf(text)));
    return text.size();
}

}  // namespace

const std::array<Reader, 7> kReaders{{
    {"balance check", receive},
    {"tree", readElements},
    {"stanzas for the guards", splitElements},
    {"secrets", maskSecrets},
    {"held elements", holdElements},
    {"settings", readSettings},
    {"escaping", escape},
}};

std::string Shape::text(std::size_t length) const {
    std::string result = begin;
    std::size_t round = 0;
    for (const std::string& part : repeated) round += part.size();
    for (const std::string& part : repeated)
        for (std::size_t i = 0; round > 0 && i < length / round; ++i) result += part;
    return result + rest;
}

double stepsForEachByte(const Reader& reader, const std::string& text, std::size_t piece) {
    const std::uint64_t before = workDone();
    const std::uint64_t allowed = reader.read(text, piece);
    return static_cast<double>(workDone() - before) / static_cast<double>(allowed + 1);
}

}  // namespace growth
