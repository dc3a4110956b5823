#include "messenger/core/secrets.h"

#include <string_view>

#include "messenger/core/tag_scanner.h"

namespace oku {
namespace {

constexpr std::string_view kMask = "***";

bool hidesContent(const XmlTag& tag) {
    constexpr std::string_view sasl = "urn:ietf:params:xml:ns:xmpp-sasl";
    if (tag.name == "password" || tag.name == "digest") return true;
    if (tag.name == "query") {
        const auto xmlns = attribute(tag, "xmlns");
        return xmlns == "jabber:iq:register" || xmlns == "jabber:iq:auth";
    }
    const bool isSasl =
        tag.name == "auth" || tag.name == "response" || tag.name == "challenge" || tag.name == "success";
    return isSasl && attribute(tag, "xmlns") == sasl;
}

}  // namespace

QByteArray maskedXml(const QByteArray& xml) {
    const std::string_view text(xml.data(), static_cast<std::size_t>(xml.size()));
    QByteArray result;
    TagScanner scanner(text);
    std::size_t shown = 0;     // up to here the text is in the result
    std::size_t hiddenAt = 0;  // depth inside an element whose content is hidden; 0 outside
    std::size_t hiddenFrom = 0;
    while (const auto tag = scanner.next()) {
        if (hiddenAt > 0) {
            if (tag->kind == XmlTag::Kind::open) ++hiddenAt;
            if (tag->kind != XmlTag::Kind::close || --hiddenAt > 0) continue;
            if (tag->begin > hiddenFrom) result.append(kMask.data(), static_cast<qsizetype>(kMask.size()));
            shown = tag->begin;
        } else if (tag->kind == XmlTag::Kind::open && hidesContent(*tag)) {
            result.append(text.substr(shown, tag->end - shown).data(), static_cast<qsizetype>(tag->end - shown));
            hiddenAt = 1;
            hiddenFrom = shown = tag->end;
        }
    }
    if (hiddenAt > 0) return result + kMask.data();
    return result.append(text.substr(shown).data(), static_cast<qsizetype>(text.size() - shown));
}

QString maskedText(const QString& text, const QStringList& passwords) {
    QString result = text;
    for (const QString& password : passwords) {
        // Shorter ones would blot out half of the log, and are no secret that a log could keep.
        if (password.size() >= 3) result.replace(password, QString::fromLatin1(kMask.data()));
    }
    if (!result.contains(u'<')) return result;
    return QString::fromUtf8(maskedXml(result.toUtf8()));
}

}  // namespace oku
