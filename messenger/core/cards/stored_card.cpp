// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/cards/stored_card.h"

#include <algorithm>
#include <QSet>
#include <QXmlStreamReader>
#include <utility>

#include "messenger/core/values/jid_text.h"

namespace oku {
namespace {

constexpr qsizetype kMostLosses = 32;  // named; a card with more is as good as one with these
constexpr qsizetype kDeepest = 4;

struct FieldPlace {
    const char* key;
    const char* path;
};
constexpr FieldPlace kPlaces[] = {
    {"nick", "NICKNAME"}, {"name", "N/GIVEN"}, {"surname", "N/FAMILY"}, {"email", "EMAIL/USERID"},
    {"www", "URL"},       {"title", "TITLE"},  {"role", "ROLE"},        {"birth", "BDAY"},
};

/// What a loss is called: the element of the card, or the part of the name.
QString lossAt(const QString& path) {
    return path.startsWith(QLatin1String("N/")) ? path.section(u'/', 0, 1) : path.section(u'/', 0, 0);
}

/// Walks the elements of a card, each with the path of names that leads to it.
class CardWalk {
public:
    CardWalk(QXmlStreamReader& reader, QString ownJid) : reader_(reader), ownJid_(std::move(ownJid)) {
        for (const char* key : kOwnCardFields) card_.fields.insert(QString::fromLatin1(key), {});
    }

    OwnCard walk() {
        while (reader_.readNextStartElement()) element(reader_.name().toString(), 1);
        return card_;
    }

private:
    /// The text of the element at the reader, and of all in it; only the first of a name is a field.
    void element(const QString& path, qsizetype depth) {
        const bool first = !seen_.contains(path);
        seen_.insert(path);
        QString text;
        while (!reader_.atEnd() && reader_.readNext() != QXmlStreamReader::EndElement) {
            if (reader_.isCharacters()) text += reader_.text();
            if (!reader_.isStartElement()) continue;
            const QString inner = path + u'/' + reader_.name().toString();
            if (depth < kDeepest) {
                element(first ? inner : path, depth + 1);
            } else {
                // What lies deeper is not read, but it is something.
                reader_.skipCurrentElement();
                text += u'\u2026';
            }
        }
        if (!text.trimmed().isEmpty()) take(path, text, first);
    }

    void take(const QString& path, const QString& text, bool first) {
        const auto* place = std::find_if(std::begin(kPlaces), std::end(kPlaces),
                                         [&](const FieldPlace& one) { return path == QLatin1String(one.path); });
        if (first && place != std::end(kPlaces)) {
            const QString kept = cardFieldText(text);
            card_.fields.insert(QString::fromLatin1(place->key), kept);
            if (kept == text.trimmed()) return;
        }
        // The plugin writes it anew.
        if (path == QLatin1String("JABBERID") && bareJid(text.trimmed()) == ownJid_) return;
        const QString loss = lossAt(path);
        if (card_.lost.size() < kMostLosses && !card_.lost.contains(loss)) card_.lost.append(loss);
    }

    QXmlStreamReader& reader_;
    QString ownJid_;
    OwnCard card_;
    QSet<QString> seen_;
};

}  // namespace

std::optional<StoredCard> readStoredCard(const QByteArray& answer, const QString& ownJid) {
    QXmlStreamReader reader(answer);
    if (!reader.readNextStartElement() || reader.name() != QLatin1String("iq")) return std::nullopt;
    const bool error = reader.attributes().value(QLatin1String("type")) == QLatin1String("error");
    QXmlStreamReader nothing;
    StoredCard stored{CardWalk(nothing, ownJid).walk()};
    bool absent = false;
    while (reader.readNextStartElement()) {
        if (!error && reader.name() == QLatin1String("vCard")) {
            stored = {CardWalk(reader, ownJid).walk(), true};
        } else if (error && reader.name() == QLatin1String("error")) {
            while (reader.readNextStartElement()) {
                absent = absent || reader.name() == QLatin1String("item-not-found");
                reader.skipCurrentElement();
            }
        } else {
            reader.skipCurrentElement();
        }
    }
    if (reader.hasError() || (error && !absent)) return std::nullopt;
    return stored;
}

QString cardFieldText(const QString& text) {
    // Half a pair of surrogates does not come back.
    QString line = QString::fromUtf8(text.toUtf8());
    for (QChar& character : line) {
        const char16_t unit = character.unicode();
        if (unit < u' ' || unit == 0x7f || character.category() == QChar::Separator_Line) character = u' ';
        if (unit == 0xfffe || unit == 0xffff) character = QChar::ReplacementCharacter;
    }
    line = line.trimmed().left(kLongestCardField);
    if (!line.isEmpty() && line.back().isHighSurrogate()) line.chop(1);
    return line;
}

}  // namespace oku
