#pragma once

#include <QString>

namespace oku {

/// Whether the user's language (LC_ALL, LC_MESSAGES, LANG, in this order) is Polish. A language that is not set counts
/// as Polish, as the plugin's own texts are.
bool speaksPolish();

/// The Polish text or its English translation, by the user's language. Both are UTF-8 and may hold %1, %2...
QString say(const char* polish, const char* english);

}  // namespace oku
