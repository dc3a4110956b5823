// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/texts.h"

#include <cstring>
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
        QByteArray language = qgetenv(variable).toLower();
        if (language.isEmpty()) continue;
        language.truncate(static_cast<qsizetype>(std::strcspn(language.constData(), "_.@")));
        return language == "pl" ? Language::Polish : Language::English;
    }
    return Language::English;
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
