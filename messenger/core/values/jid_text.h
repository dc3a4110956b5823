// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <string_view>

/// The parts of an address as they stand; nothing is checked.
namespace oku {

/// Without the resource, lower case.
QString bareJid(const QString& jid);
/// Everything behind the first slash.
inline QString resourceOf(const QString& jid) { return jid.section(u'/', 1); }
/// Between the at sign and the slash, lower case; all of it without an at sign.
inline QString domainOf(const QString& jid) { return bareJid(jid).section(u'@', -1); }
/// Before the at sign, lower case; empty without one.
inline QString nodeOf(const QString& jid) {
    const QString bare = bareJid(jid);
    return bare.contains(u'@') ? bare.section(u'@', 0, -2) : QString();
}
/// Whether it can be the address of a person: one at sign with something on both sides, and no blanks or controls.
bool looksLikeJid(const QString& jid);
/// Why nothing can be sent to this address; empty when it looks like a person's, a server's or a service's.
QString addressFault(const QString& jid);

/// Without the resource, as it stands.
inline std::string_view bareAddress(std::string_view jid) { return jid.substr(0, jid.find('/')); }
/// Whether two addresses are one where something is trusted for it: byte by byte, ASCII letters in either case. Wider
/// folding would take letters of other alphabets for those of ASCII, and somebody else's address for a known one.
bool sameAddress(std::string_view one, std::string_view other);
}  // namespace oku
