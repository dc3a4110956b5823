// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/xml/raw_xml.h"

#include <QCoreApplication>
#include <QXmlStreamReader>

#include "messenger/core/xml/xml_text.h"

namespace oku {
namespace {

// The stream's own start tag, so that the text is read with the namespaces that are declared where it will stand.
const QString kStart =
    QStringLiteral("<stream:stream xmlns=\"jabber:client\" xmlns:stream=\"http://etherx.jabber.org/streams\">");
const QString kEnd = QStringLiteral("</stream:stream>");

QString notXml(const QString& reason) {
    return QCoreApplication::translate("HostCore", "To nie jest poprawny XML: %1").arg(reason);
}

}  // namespace

QString rawXmlFault(const QString& xml) {
    if (!isXmlText(xml)) return notXml(QCoreApplication::translate("HostCore", "niedozwolony znak"));
    QXmlStreamReader reader(kStart + xml + kEnd);
    int depth = 0;
    int elements = 0;
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
            case QXmlStreamReader::StartElement:
                elements += depth++ == 1;
                break;
            case QXmlStreamReader::EndElement:
                --depth;
                break;
            case QXmlStreamReader::Characters:
                if (depth > 1 || reader.isWhitespace()) break;
                return QCoreApplication::translate("HostCore", "Poza elementem nie może stać tekst.");
            case QXmlStreamReader::Comment:
            case QXmlStreamReader::ProcessingInstruction:
            case QXmlStreamReader::DTD:
                // RFC 6120, section 11.1.
                return QCoreApplication::translate(
                    "HostCore", "XMPP nie dopuszcza komentarzy, instrukcji przetwarzania ani deklaracji DOCTYPE.");
            default:
                break;
        }
    }
    if (reader.hasError()) return notXml(reader.errorString());
    return elements > 0 ? QString() : QCoreApplication::translate("HostCore", "Nie ma elementu do wysłania.");
}

}  // namespace oku
