#include "messenger/core/jid_text.h"

#include <algorithm>

namespace oku {

bool looksLikeJid(const QString& jid) {
    const QString bare = bareJid(jid);
    const bool clean = std::none_of(bare.begin(), bare.end(), [](QChar letter) {
        return letter.isSpace() || letter.category() == QChar::Other_Control ||
               QStringLiteral("\"&'<>:").contains(letter);
    });
    return clean && bare.count(u'@') == 1 && !nodeOf(bare).isEmpty() && !domainOf(bare).isEmpty();
}

}  // namespace oku
