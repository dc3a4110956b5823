#include "messenger/core/texts.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTranslator>

namespace oku {

namespace {

Language chosen = Language::Polish;
QPointer<QTranslator> installed;  // belongs to the application

}  // namespace

Language languageOfEnvironment() {
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const QByteArray value = qgetenv(variable).toLower();
        if (value.isEmpty() || value.startsWith("c.") || value == "c" || value == "posix") continue;
        return value.startsWith("pl") ? Language::Polish : Language::English;
    }
    return Language::Polish;
}

void setLanguage(Language language) {
    chosen = language;
    delete installed;
    installed = new QTranslator(QCoreApplication::instance());
    // Polish has a file as well: the forms of what is counted.
    const QString file = language == Language::Polish ? QStringLiteral("oku_pl") : QStringLiteral("oku_en");
    if (!installed->load(file, QStringLiteral(":/translations")))
        qWarning("the translation %s is not part of this program", qUtf8Printable(file));
    QCoreApplication::installTranslator(installed);
}

Language language() { return chosen; }

}  // namespace oku
