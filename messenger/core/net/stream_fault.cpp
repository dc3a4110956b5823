// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/net/stream_fault.h"

#include <QXmlStreamReader>

namespace oku::net {

namespace {

constexpr qsizetype kLongestElement = 64 * 1024;
constexpr qsizetype kLongestText = 200;

QString oneLine(const QString& text) { return text.simplified().left(kLongestText); }

}  // namespace

QString StreamFault::toString() const {
    if (text.isEmpty()) return condition;
    return condition.isEmpty() ? text : QStringLiteral("%1 (%2)").arg(condition, text);
}

std::optional<StreamFault> readFault(QByteArrayView element) {
    if (element.size() > kLongestElement) return std::nullopt;
    QXmlStreamReader reader(element.toByteArray());
    reader.setNamespaceProcessing(false);  // the prefix "stream" is declared in the stream's header, not here
    if (!reader.readNextStartElement()) return std::nullopt;
    const bool ofStream = reader.qualifiedName() == QLatin1String("stream:error");
    if (!ofStream && reader.qualifiedName() != QLatin1String("failure")) return std::nullopt;

    StreamFault fault;
    while (reader.readNextStartElement()) {
        const QString name = reader.qualifiedName().toString().left(kLongestText);
        const bool ofRfc =
            reader.attributes().value(QLatin1String("xmlns")) == QLatin1String("urn:ietf:params:xml:ns:xmpp-streams");
        const QString text = oneLine(reader.readElementText(QXmlStreamReader::SkipChildElements));
        if (name == QLatin1String("text")) {
            fault.text = text;
        } else if (fault.condition.isEmpty()) {
            fault.condition = name;
            fault.conflict = ofStream && ofRfc && name == QLatin1String("conflict");
        }
    }
    return fault;
}

}  // namespace oku::net
