// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

/// Names of the namespaces that the messenger itself looks for or asks in.
namespace oku::ns {

inline constexpr char kDelay[] = "urn:xmpp:delay";                           ///< XEP-0203
inline constexpr char kHttpAuth[] = "http://jabber.org/protocol/http-auth";  ///< XEP-0070
inline constexpr char kLegacyAuth[] = "jabber:iq:auth";                      ///< XEP-0078
inline constexpr char kLegacyDelay[] = "jabber:x:delay";                     ///< XEP-0091
inline constexpr char kDataForm[] = "jabber:x:data";                         ///< XEP-0004
inline constexpr char kRegister[] = "jabber:iq:register";                    ///< XEP-0077
inline constexpr char kRoster[] = "jabber:iq:roster";                        ///< RFC 6121
inline constexpr char kSasl2[] = "urn:xmpp:sasl:2";                          ///< XEP-0388
inline constexpr char kSasl[] = "urn:ietf:params:xml:ns:xmpp-sasl";          ///< RFC 6120
inline constexpr char kSession[] = "urn:ietf:params:xml:ns:xmpp-session";    ///< RFC 3921
inline constexpr char kSharedStatus[] = "google:shared-status";

}  // namespace oku::ns
