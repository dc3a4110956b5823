// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

namespace oku::setting {

/// Keys of the messenger's own settings of an account, beside the plugin's `XMPP/...`.
inline constexpr char16_t allowClearText[] = u"OKU/AllowClearText";  ///< 1: the session may run in clear
inline constexpr char16_t publishTune[] = u"OKU/PublishTune";        ///< 1: publish what the player plays; default 0
inline constexpr char16_t tuneToldOf[] = u"OKU/TuneToldOf";  ///< 1: the server may have a tune that a player played
inline constexpr char16_t sendTyping[] = u"OKU/SendTyping";  ///< 0: send no typing notices; default 1
inline constexpr char16_t passwordInFile[] = u"OKU/PasswordInFile";            ///< 1: may lie in the file, 0: may not
inline constexpr char16_t passwordInRing[] = u"OKU/PasswordInRing";            ///< 1: lies in the key ring
inline constexpr char16_t proxyPasswordInRing[] = u"OKU/ProxyPasswordInRing";  ///< the same for that of the proxy
inline constexpr char16_t contactList[] = u"OKU/ContactList";      ///< 1: the terminal's list is shown, 0: not
inline constexpr char16_t tellPictures[] = u"OKU/TellPictures";    ///< 1: the terminal tells of contacts' new pictures
inline constexpr char16_t reachableOnly[] = u"OKU/ReachableOnly";  ///< 1: that list shows who can be reached
inline constexpr char16_t pinnedCertificate[] = u"OKU/PinnedCertificate";  ///< SHA-256 fingerprints, accepted
inline constexpr char16_t filesOfStrangers[] = u"OKU/FilesOfStrangers";    ///< 1: offers of strangers are asked about
inline constexpr char16_t publishFiles[] = u"OKU/PublishFiles";            ///< 1: files may be fetched from here
inline constexpr char16_t publishAddress[] = u"OKU/PublishAddress";  ///< where from; empty: that of the connection
inline constexpr char16_t publishPort[] = u"OKU/PublishPort";        ///< 0: any that is free

/// Keys of the plugin's settings, as far as the messenger looks at them itself.
inline constexpr char16_t user[] = u"XMPP/User";
inline constexpr char16_t password[] = u"XMPP/Pass";
inline constexpr char16_t proxyPassword[] = u"XMPP/Proxy/Pass";
inline constexpr char16_t tls[] = u"XMPP/Serv/SSL";
inline constexpr char16_t compression[] = u"XMPP/Serv/Compress";
inline constexpr char16_t ownPictureHash[] = u"AV/Hash";

}  // namespace oku::setting
