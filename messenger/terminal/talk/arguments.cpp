// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/talk/arguments.h"

#include <utility>

namespace oku::terminal {
namespace {

// The end of the quoted text that begins at 0, behind its closing quote; the whole length when it is not closed.
qsizetype quotedEnd(const QString& text) {
    for (qsizetype at = 1; at < text.size(); ++at) {
        if (text.at(at) == u'\\')
            ++at;
        else if (text.at(at) == u'"')
            return at + 1;
    }
    return text.size();
}

QString unquoted(const QString& text) {
    QString result;
    const qsizetype end = text.size() > 1 && text.endsWith(u'"') ? text.size() - 1 : text.size();
    for (qsizetype at = 1; at < end; ++at) {
        if (text.at(at) == u'\\' && at + 1 < end) ++at;
        result += text.at(at);
    }
    return result;
}

}  // namespace

QString Arguments::word() {
    if (rest_.isEmpty()) return {};
    if (rest_.startsWith(u'"')) {
        const qsizetype end = quotedEnd(rest_);
        const QString taken = rest_.left(end);
        rest_ = rest_.mid(end).trimmed();
        return unquoted(taken);
    }
    qsizetype end = 0;
    while (end < rest_.size() && !rest_.at(end).isSpace()) ++end;
    const QString taken = rest_.left(end);
    rest_ = rest_.mid(end).trimmed();
    return taken;
}

QString Arguments::rest() {
    if (rest_.startsWith(u'"') && quotedEnd(rest_) == rest_.size()) return unquoted(std::exchange(rest_, {}));
    return verbatim();
}

QString Arguments::verbatim() { return std::exchange(rest_, {}); }

QString quoted(const QString& text) {
    bool plain = !text.isEmpty() && !text.startsWith(u'"');
    for (const QChar c : text) plain = plain && !c.isSpace();
    if (plain) return text;
    QString result = text;
    result.replace(u'\\', QStringLiteral("\\\\")).replace(u'"', QStringLiteral("\\\""));
    return u'"' + result + u'"';
}

}  // namespace oku::terminal
