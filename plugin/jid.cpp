#include "plugin/jid.h"

#include "host/util/letter_case.h"

JID parseJID(std::u16string_view text) {
    JID jid;
    const std::size_t at = text.find(u'@');
    const std::size_t slash = text.find(u'/');
    jid.hasNode = at != std::u16string_view::npos;
    jid.hasResource = slash != std::u16string_view::npos;
    if (jid.hasNode) jid.node = text.substr(0, at);
    if (jid.hasResource) jid.resource = text.substr(slash + 1);

    // The two searches know nothing of each other: a "/" before the "@" leaves no room for a domain.
    const std::size_t begin = jid.hasNode ? at + 1 : 0;
    const std::size_t end = jid.hasResource ? slash : text.size();
    if (begin <= end) jid.domain = text.substr(begin, end - begin);

    jid.bare = jid.hasNode ? jid.node + u'@' + jid.domain : jid.domain;
    // The full form is made before the letters are lowered, and keeps the case of the input on purpose.
    jid.full = jid.hasResource ? jid.bare + u'/' + jid.resource : jid.bare;
    jid.domain = lowerCase(jid.domain);
    jid.node = lowerCase(jid.node);
    jid.bare = lowerCase(jid.bare);
    return jid;
}
