#pragma once

namespace oku {

/// The languages of the messenger's own texts. They stand in the sources in Polish, each in a context of its own, and
/// their English in messenger/translations/.
enum class Language { Polish, English };

/// By LC_ALL, LC_MESSAGES, LANG, in this order. A language that is not set counts as Polish, as the plugin's own texts
/// are; one that is neither gets English.
Language languageOfEnvironment();

/// Has QCoreApplication::translate() speak this language from now on. Needs an application object.
void setLanguage(Language language);
Language language();

}  // namespace oku
