#include "messenger/core/texts.h"

#include <QByteArray>

namespace oku {

bool speaksPolish() {
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const QByteArray value = qgetenv(variable).toLower();
        if (value.isEmpty() || value.startsWith("c.") || value == "c" || value == "posix") continue;
        return value.startsWith("pl");
    }
    return true;
}

QString say(const char* polish, const char* english) { return QString::fromUtf8(speaksPolish() ? polish : english); }

}  // namespace oku
