// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

namespace oku {

/// The languages of the messenger's own texts. They stand in the sources in Polish, each in a context of its own, and
/// their English in messenger/translations/.
enum class Language { Polish, English };

/// By the first of LC_ALL, LC_MESSAGES, LANG that is set: Polish for `pl`, English for any other, `C` and none
/// included, as programs usually do.
Language languageOfEnvironment();

/// Has QCoreApplication::translate() speak this language from now on. Needs an application object.
void setLanguage(Language language);
Language language();

}  // namespace oku
