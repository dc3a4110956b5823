// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/xml/secrets.h"

#include <algorithm>
#include <array>
#include <utility>

#include "messenger/core/xml/namespaces.h"
#include "messenger/core/xml/tag_scanner.h"
#include "messenger/core/xml/xml_data.h"

namespace oku {
namespace {

constexpr std::string_view kMask = "***";
/// Nobody writes longer tags; what is longer is not read again with each piece, but hidden.
constexpr std::size_t kLongestKept = 16384;

struct SecretElement {
    std::string_view xmlns;
    std::string_view name;
    bool all = false;  ///< all elements of that namespace, of which this is the first
};

constexpr std::array kSecretElements{
    SecretElement{ns::kRegister, "query", true},
    SecretElement{ns::kLegacyAuth, "query", true},
    SecretElement{ns::kSasl, "auth"},
    SecretElement{ns::kSasl, "challenge"},
    SecretElement{ns::kSasl, "response"},
    SecretElement{ns::kSasl, "success"},
    SecretElement{ns::kSasl2, "initial-response"},
    SecretElement{ns::kSasl2, "challenge"},
    SecretElement{ns::kSasl2, "response"},
    SecretElement{ns::kSasl2, "additional-data"},
};

/// The two sides of the colon; without one there is no prefix.
std::pair<std::string_view, std::string_view> parted(std::string_view name) {
    const std::size_t colon = name.find(':');
    if (colon == std::string_view::npos) return {{}, name};
    return {name.substr(0, colon), name.substr(colon + 1)};
}

/// The prefix that an attribute declares; nothing when it is no declaration.
std::optional<std::string_view> declaredPrefix(std::string_view attribute) {
    if (attribute == "xmlns") return std::string_view();
    const auto [prefix, name] = parted(attribute);
    return prefix == "xmlns" ? std::optional(name) : std::nullopt;
}

/// Of a form: a field that its asker calls a password, and all that somebody has filled in, as the answer does not say
/// again which of it is one.
bool hidesOfForm(std::string_view name, const XmlTag& tag) {
    const std::string_view wanted = name == "field" ? "text-private" : name == "x" ? "submit" : "";
    return !wanted.empty() && attribute(tag, "type") == wanted;
}

}  // namespace

QByteArray SecretMask::masked(const QByteArray& piece) {
    kept_.append(piece.constData(), static_cast<std::size_t>(piece.size()));
    const std::string text = std::exchange(kept_, {});
    TagScanner scanner(text);
    std::size_t read = 0;
    while (const auto markup = scanner.nextMarkup()) {
        show(std::string_view(text).substr(read, markup->begin - read));
        onMarkup(*markup, text);
        read = markup->end;
    }
    const std::size_t cut = std::min(text.find('<', read), text.size());
    show(std::string_view(text).substr(read, cut - read));
    kept_ = text.substr(cut);
    if (kept_.size() > kLongestKept) {
        blind_ = true;
        show(kept_);
        kept_.clear();
    }
    return std::exchange(shown_, {});
}

QByteArray SecretMask::finish() {
    const std::string rest = std::exchange(kept_, {});
    blind_ = blind_ || rest.find("password") != std::string::npos;
    show(rest);
    forget();
    return std::exchange(shown_, {});
}

void SecretMask::onMarkup(const XmlTag& tag, std::string_view text) {
    switch (tag.kind) {
        case XmlTag::Kind::open:
        case XmlTag::Kind::empty:
            // The stream's own tag, which has no end and is told as an empty element.
            if (tag.name == "stream:stream") forget();
            open(tag);
            showTag(tag, text);
            if (tag.kind == XmlTag::Kind::empty && tag.name != "stream:stream") {
                close(tag);
            } else if (hiddenFrom_ == 0 && hidesContent(tag)) {
                hiddenFrom_ = scopes_.size();
                blotted_ = false;
            }
            break;
        case XmlTag::Kind::close:
            close(tag);
            [[fallthrough]];
        default:
            show(text.substr(tag.begin, tag.end - tag.begin));
    }
}

void SecretMask::open(const XmlTag& tag) {
    Scope scope{std::string(tag.name), {}};
    AttributeScanner attributes(tag);
    while (const auto found = attributes.next()) {
        const auto prefix = declaredPrefix(found->name);
        if (!prefix) continue;
        scope.prefixes.emplace_back(*prefix);
        namespaces_[scope.prefixes.back()].push_back(readValue(found->value));
    }
    scopes_.push_back(std::move(scope));
}

/// An end that is not the innermost element's ends nothing.
void SecretMask::close(const XmlTag& tag) {
    if (scopes_.empty() || scopes_.back().name != tag.name) return;
    for (const std::string& prefix : scopes_.back().prefixes) {
        const auto found = namespaces_.find(prefix);
        found->second.pop_back();
        if (found->second.empty()) namespaces_.erase(found);
    }
    scopes_.pop_back();
    if (scopes_.size() < hiddenFrom_) hiddenFrom_ = 0;
}

void SecretMask::forget() {
    scopes_.clear();
    namespaces_.clear();
    hiddenFrom_ = 0;
    blotted_ = blind_ = false;
}

void SecretMask::show(std::string_view text) {
    if (hiddenFrom_ == 0 && !blind_) {
        shown_.append(text.data(), static_cast<qsizetype>(text.size()));
    } else if (!text.empty() && !std::exchange(blotted_, true)) {
        shown_.append(kMask.data(), static_cast<qsizetype>(kMask.size()));
    }
}

void SecretMask::showTag(const XmlTag& tag, std::string_view text) {
    std::size_t from = tag.begin;
    AttributeScanner attributes(tag);
    while (const auto found = attributes.next()) {
        if (declaredPrefix(found->name) || parted(found->name).second != "password") continue;
        const auto value = static_cast<std::size_t>(found->value.data() - text.data());
        show(text.substr(from, value - from));
        show(kMask);
        from = value + found->value.size();
    }
    show(text.substr(from, tag.end - from));
}

std::optional<std::string> SecretMask::namespaceOf(const XmlTag& tag) const {
    const auto found = namespaces_.find(parted(tag.name).first);
    return found == namespaces_.end() ? std::nullopt : std::optional(found->second.back());
}

bool SecretMask::hidesContent(const XmlTag& tag) const {
    const std::string_view name = parted(tag.name).second;
    if (name == "password" || name == "digest") return true;
    const auto xmlns = namespaceOf(tag);
    if ((!xmlns || *xmlns == ns::kDataForm) && hidesOfForm(name, tag)) return true;
    return std::any_of(kSecretElements.begin(), kSecretElements.end(), [&](const SecretElement& secret) {
        if (!xmlns) return name == secret.name;
        return *xmlns == secret.xmlns && (secret.all || name == secret.name);
    });
}

QByteArray maskedXml(const QByteArray& xml) {
    SecretMask mask;
    const QByteArray shown = mask.masked(xml);
    return shown + mask.finish();
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
