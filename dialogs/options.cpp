// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "dialogs/options.h"

#include <optional>
#include <utility>
#include <vector>

#include "dialogs/options_layout.h"
#include "host/services/message_boxes.h"
#include "host/services/sockets.h"
#include "host/util/format.h"
#include "host/util/numbers.h"
#include "plugin/account_settings.h"
#include "plugin/boundary.h"

namespace protolink {

namespace {

/// A switch, and the field that is for use only with it.
struct SwitchedField {
    std::uint32_t control;
    std::uint32_t field;
};
constexpr SwitchedField kSwitchedFields[] = {
    {setting::kOwnServer.control, setting::kServer.control},
    {options::kUnusedSwitch, options::kUnusedField},
    {setting::kTls.control, setting::kTlsFromTheFirstByte.control},
};

constexpr std::int32_t kHighestPriority = 127;
constexpr std::int32_t kLowestPriority = -127;

std::int32_t clampPriority(std::int32_t priority) {
    if (priority <= kLowestPriority) return kLowestPriority;
    return priority >= kHighestPriority ? kHighestPriority : priority;
}

}  // namespace

WindowLayout CWndXMPPOptions::layout() {
    WindowLayout page = options::layout();
    page.title = client_.files.displayName;
    return page;
}

void CWndXMPPOptions::prepare() {
    applyProxyStates();
    applySwitch(setting::kOwnServer.control);
    view().focus(setting::kUser.control);
}

void CWndXMPPOptions::OnCommand(std::uint32_t control) {
    switch (control) {
        case setting::kOwnProxy.control:
        case setting::kProxyLogin.control:
        case setting::kHostProxy.control:
            return applyProxyStates();
        case options::kClearAvatars:
            return clearAvatars();
        case options::kNewAccount:
            return openWizard(CWndNewJID::Use::NewAccount);
        case options::kChangePassword:
            return openWizard(CWndNewJID::Use::ChangePassword);
        case options::kCopyProxy:
            return copyHostProxy();
        default:
            return applySwitch(control);
    }
}

void CWndXMPPOptions::DestroyWindow() {
    if (wizard_) wizard_->DestroyWindow();
    COptionsDialog::DestroyWindow();
}

void CWndXMPPOptions::openWizard(CWndNewJID::Use use) {
    if (wizard_ && wizard_->isOpen()) return;
    // The one before may still be on the stack.
    releaseAfterCall(std::exchange(wizard_, std::make_shared<CWndNewJID>(windows_, account_, connection_, use)));
    wizard_->DoModal(handle(), [this, use](std::int32_t result) {
        if (result == static_cast<std::int32_t>(kOkButton)) takeOver(use);
    });
}

void CWndXMPPOptions::takeOver(CWndNewJID::Use use) {
    view().setText(setting::kPassword.control, wizard_->password());
    if (use == CWndNewJID::Use::NewAccount) view().setText(setting::kUser.control, wizard_->jid() + u"/oku");
}

void CWndXMPPOptions::OptionsLoad() {
    view().clearItems(setting::kProxyType.control);
    for (const char16_t* type : options::kProxyTypes) view().addItem(setting::kProxyType.control, type);
    for (const setting::OnPage& setting : setting::kOnPage)
        std::visit([this](const auto* row) { load(*row); }, setting);
    applyProxyStates();
    for (const SwitchedField& row : kSwitchedFields) applySwitch(row.control);
    view().setText(options::kState, stateLine());
}

void CWndXMPPOptions::load(const ChoiceSetting& setting) {
    const std::int32_t item = client_.settings.get(setting);
    // A stored number that names no item leaves none chosen.
    if (item >= 0 && std::cmp_less(item, options::kProxyTypes.size()))
        view().select(setting.control, static_cast<std::size_t>(item));
}

void CWndXMPPOptions::load(const NumberSetting& setting) {
    view().setText(setting.control, formatText(u"%d", client_.settings.get(setting)));
}

void CWndXMPPOptions::load(const SwitchSetting& setting) {
    view().setChecked(setting.control, client_.settings.get(setting));
}

void CWndXMPPOptions::load(const TextSetting& setting) {
    view().setText(setting.control, client_.settings.get(setting));
}

bool CWndXMPPOptions::OptionsSave() {
    // All is read before anything is stored: what a window that goes meanwhile would tell is empty.
    std::vector<Store> all;
    for (const setting::OnPage& setting : setting::kOnPage)
        std::visit([&](const auto* row) { all.push_back(shown(*row)); }, setting);
    if (!isOpen()) return false;
    for (const Store& store : all) store(client_.settings);
    return true;
}

CWndXMPPOptions::Store CWndXMPPOptions::shown(const ChoiceSetting& setting) const {
    const std::optional<std::size_t> chosen = view().selection(setting.control);
    const std::int32_t item = chosen ? static_cast<std::int32_t>(*chosen) : -1;
    return [&setting, item](const AccountSettings& settings) { settings.set(setting, item); };
}

CWndXMPPOptions::Store CWndXMPPOptions::shown(const NumberSetting& setting) const {
    const std::int32_t priority = clampPriority(parseInt32(view().text(setting.control)));
    return [&setting, priority](const AccountSettings& settings) { settings.set(setting, priority); };
}

CWndXMPPOptions::Store CWndXMPPOptions::shown(const SwitchSetting& setting) const {
    const bool on = view().checked(setting.control);
    return [&setting, on](const AccountSettings& settings) { settings.set(setting, on); };
}

CWndXMPPOptions::Store CWndXMPPOptions::shown(const TextSetting& setting) const {
    return [&setting, text = view().text(setting.control)](const AccountSettings& settings) {
        settings.set(setting, text);
    };
}

std::u16string CWndXMPPOptions::stateLine() const {
    const auto part = [](bool holds, const char16_t* yes, const char16_t* no) { return holds ? yes : no; };
    const std::uint32_t flags = client_.flags;
    std::u16string line = u"Stan: ";
    line += part(flags & FLAG_ENCRYPTION_ACTIVATED, u"FLAG_ENCRYPTION_ACTIVATED; ", u"FLAG_ENCRYPTION_NOT_ACTIVE; ");
    line += part(flags & FLAG_AUTHORIZED, u"FLAG_AUTHORIZED; ", u"FLAG_NOT_AUTHORIZED; ");
    line += part(roster_.rosterDownloaded, u"FLAG_ROSTER_DOWNLOADED; ", u"FLAG_ROSTER_UNKNOWN; ");
    line += part(flags & FLAG_CONNECTED, u"FLAG_CONNECTED; ", u"FLAG_DISCONNECTED; ");
    return line;
}

void CWndXMPPOptions::applyProxyStates() {
    const bool own = !view().checked(setting::kHostProxy.control);
    if (own) view().setEnabled(setting::kOwnProxy.control, true);
    const bool used = own && view().checked(setting::kOwnProxy.control);
    const bool login = used && view().checked(setting::kProxyLogin.control);
    view().setEnabled(setting::kProxyHost.control, used);
    view().setEnabled(setting::kProxyPort.control, used);
    view().setEnabled(setting::kProxyUser.control, login);
    view().setEnabled(setting::kProxyPassword.control, login);
    view().setEnabled(setting::kProxyType.control, used);
    view().setEnabled(setting::kProxyLogin.control, used);
}

void CWndXMPPOptions::applySwitch(std::uint32_t control) {
    for (const SwitchedField& row : kSwitchedFields) {
        if (row.control == control && options::hasControl(control))
            view().setEnabled(row.field, view().checked(control));
    }
}

void CWndXMPPOptions::clearAvatars() {
    const MessageBoxes boxes(client_.host);
    const bool wanted =
        boxes.askUnlessNo(u"Czy jesteś pewien? Ta operacja usunie pamięć podręczną awatarów ze WSZYSTKICH kont XMPP.",
                          u"Pewnyś?", handle());
    if (!wanted) return;
    if (avatars_.clear()) {
        boxes.show(u"Wyczyszczono.", u"Gotowe", BoxStyle::Information, handle());
    } else {
        boxes.show(u"Podczas wykonywania operacji wystąpił jakiś błąd.", u"Błąd", BoxStyle::Error, handle());
    }
}

void CWndXMPPOptions::copyHostProxy() {
    const bool wanted =
        MessageBoxes(client_.host)
            .askUnlessNo(u"Czy chcesz zastapić obecne ustawienia ustawieniami domyślnymi z zakladli \"sieć\"?",
                         u"Zastąpić...", handle());
    if (!wanted) return;
    const NL_PROXY_DEFAULTS defaults = Sockets(client_.host).proxyDefaults();
    view().setChecked(setting::kOwnProxy.control, defaults.enabled != 0);
    view().setChecked(setting::kProxyLogin.control, defaults.auth != 0);
    view().setText(setting::kProxyHost.control, defaults.host);
    view().setText(setting::kProxyUser.control, defaults.user);
    view().setText(setting::kProxyPassword.control, defaults.password);
    view().setText(setting::kProxyPort.control, formatText(u"%d", defaults.port));
    applyProxyStates();
}

}  // namespace protolink
