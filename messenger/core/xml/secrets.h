// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <string>
#include <string_view>
#include <vector>

namespace oku {

struct XmlTag;

/// Blots out what must not be shown of a stream of XML that comes in pieces: the content of SASL elements, of
/// passwords, of registration forms and of forms that were filled in, whatever their prefixes, and passwords in
/// attributes. A namespace that was declared before is known later. An element whose prefix nobody declared counts as
/// one of those that it could be.
class SecretMask {
public:
    /// What may be shown now. A tag or section that is cut at the end is kept back and shown with the next piece.
    QByteArray masked(const QByteArray& piece);
    /// What was kept back; the next piece begins a new stream.
    QByteArray finish();

private:
    /// An element that is open.
    struct Scope {
        std::string name;
        std::vector<std::string> prefixes;  // that it declares
    };

    void onMarkup(const XmlTag& tag, std::string_view text);
    void open(const XmlTag& tag);
    void close(const XmlTag& tag);
    void forget();
    void show(std::string_view text);
    void showTag(const XmlTag& tag, std::string_view text);
    [[nodiscard]] std::optional<std::string> namespaceOf(const XmlTag& tag) const;
    [[nodiscard]] bool hidesContent(const XmlTag& tag) const;

    std::string kept_;
    QByteArray shown_;
    std::vector<Scope> scopes_;
    std::map<std::string, std::vector<std::string>, std::less<>> namespaces_;  // by prefix, the innermost last
    std::size_t hiddenFrom_ = 0;  // so many elements are open with the one whose content is hidden; 0: none is
    bool blotted_ = false;        // the mask stands in the place of that content
    bool blind_ = false;          // nothing is shown up to the next stream
};

/// A piece by itself with everything blotted out that must not be shown. What is not well formed is shown up to the
/// point where it breaks.
QByteArray maskedXml(const QByteArray& xml);

/// A log line without the given passwords, and with maskedXml() applied to XML in it.
QString maskedText(const QString& text, const QStringList& passwords);

}  // namespace oku
