// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "dialogs/options_layout.h"

#include <algorithm>
#include <utility>

#include "plugin/account_settings.h"

namespace protolink::options {

namespace {

using Controls = std::vector<Control>;

Control label(std::u16string text) { return {.kind = ControlKind::Label, .text = std::move(text)}; }
Control edit(const TextSetting& setting) { return {.kind = ControlKind::Edit, .id = setting.control}; }
Control password(const TextSetting& setting) { return {.kind = ControlKind::Password, .id = setting.control}; }
Control check(const SwitchSetting& setting, std::u16string text) {
    return {.kind = ControlKind::Check, .id = setting.control, .text = std::move(text)};
}
Control button(std::uint32_t id, std::u16string text) {
    return {.kind = ControlKind::Button, .id = id, .text = std::move(text)};
}
Control named(Control control, std::u16string name) {
    control.name = std::move(name);
    return control;
}

void addLogin(Controls& page) {
    page.insert(page.end(),
                {CUISeparator(6020, u"Dane logowania"), label(u"Użytkownik (format: uzytkownik@serwer/zasób):"),
                 edit(setting::kUser), button(kNewAccount, u"Nowy..."), label(u"Hasło:"), password(setting::kPassword),
                 button(kChangePassword, u"Zmień...")});
}

void addHabits(Controls& page) {
    Control answers{.kind = ControlKind::DropDown, .id = setting::kAuthType.control};
    answers.items.assign(kAnswers.begin(), kAnswers.end());
    page.insert(page.end(),
                {CUISeparator(6021, u"Opcje"), label(u"Autoryzacja:"), std::move(answers),
                 label(u"Priorytet połączenia:"), Control{.kind = ControlKind::Edit, .id = setting::kPriority.control},
                 check(setting::kMessageAsChat, u"Traktuj standardowe wiadomości jako \"chat\""),
                 check(setting::kTune, u"Włącz odbiór informacji o tym czego słuchają moje kontakty"),
                 check(setting::kMood, u"Włącz odbiór informacji o nastroju moich kontaktów"),
                 check(setting::kMail, u"Włącz powiadomienia poczty z GMail (gTalk)"),
                 check(setting::kKeepMailNotice, u"Zostaw powiadomienie do czasu kliknięcia w nie"),
                 check(setting::kAvatars, u"Włącz pobieranie awatarów"),
                 check(setting::kSendAvatar, u"Włącz wysyłanie awatarów"),
                 button(kClearAvatars, u"Wyczyść pamięć podręczną awatarów")});
}

void addServer(Controls& page) {
    page.insert(page.end(), {CUISeparator(6022, u"Opcje połączenia"),
                             check(setting::kOwnServer, u"Określ serwer połączenia ręcznie"),
                             named(edit(setting::kServer), u"Serwer:"), check(setting::kTls, u"Włącz obsługę SSL/TLS"),
                             check(setting::kTlsFromTheFirstByte, u"Używaj SSL zamiast TLS/start-tls"),
                             check(setting::kCompression, u"Włącz obsługę kompresji")});
}

void addProxy(Controls& page) {
    page.insert(page.end(), {check(setting::kHostProxy, u"Globalne parametry serwera proxy (sekcja 'sieci')"),
                             check(setting::kOwnProxy, u"Serwer proxy"),
                             named({.kind = ControlKind::DropDown, .id = setting::kProxyType.control}, u"Typ:"),
                             label(u"Host:"), edit(setting::kProxyHost), label(u"Port:"), edit(setting::kProxyPort),
                             check(setting::kProxyLogin, u"Autoryzacja"), label(u"Użytkownik:"),
                             edit(setting::kProxyUser), label(u"Hasło:"), password(setting::kProxyPassword)});
}

}  // namespace

WindowLayout layout() {
    WindowLayout page{.templateId = 9};
    addLogin(page.controls);
    addHabits(page.controls);
    addServer(page.controls);
    addProxy(page.controls);
    page.controls.push_back({.kind = ControlKind::Edit, .id = kState, .name = u"Stan:", .readOnly = true});
    return page;
}

bool hasControl(std::uint32_t control) {
    const WindowLayout page = layout();
    return std::any_of(page.controls.begin(), page.controls.end(),
                       [control](const Control& row) { return row.id == control; });
}

}  // namespace protolink::options
