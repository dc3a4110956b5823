// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "dialogs/new_jid.h"

#include "host/util/xml_compose.h"
#include "plugin/identifiers.h"
#include "router/namespaces.h"
#include "router/registration.h"

namespace protolink {

namespace {

constexpr std::uint32_t kJid = 7032;
constexpr std::uint32_t kPassword = 7033;
constexpr std::uint32_t kConfirmation = 7034;

constexpr std::size_t kShortestPassword = 2;
constexpr std::size_t kShortestDomain = 3;

}  // namespace

CWndNewJID::CWndNewJID(WindowFactory& windows, DialogAccount& account, Connection& connection, Use use)
    : CUIWin7Dialog(windows), account_(account), connection_(connection), use_(use) {
    if (use_ == Use::NewAccount) {
        SetHeaders(u"Rejestracja", u"Zakładanie nowego konta...");
    } else {
        SetHeaders(u"Zmiana hasła", u"");
    }
}

WindowLayout CWndNewJID::layout() {
    Control jid{.kind = ControlKind::Edit, .id = kJid};
    if (use_ == Use::ChangePassword) {
        // The password is that of the account that is connected, whatever might be typed here.
        jid.text = account_.client.jid.bare;
        jid.disabled = true;
    }
    WindowLayout window{.templateId = 7003, .title = u"Nowe konto XMPP / zmiana hasła"};
    window.controls = {
        {.kind = ControlKind::Label, .text = u"JID:"},
        std::move(jid),
        {.kind = ControlKind::Label, .text = u"Hasło:"},
        {.kind = ControlKind::Password, .id = kPassword},
        {.kind = ControlKind::Label, .text = u"Potw. hasła:"},
        {.kind = ControlKind::Password, .id = kConfirmation},
        {.kind = ControlKind::Button, .id = kOkButton, .text = u"&OK", .isDefault = true},
        {.kind = ControlKind::Button, .id = kCancelButton, .text = u"&Anuluj"},
    };
    return window;
}

void CWndNewJID::DestroyWindow() {
    account_.dispatcher.removeByTarget(*this);
    if (use_ == Use::NewAccount) connection_.leaveRegistration();
    CUIWin7Dialog::DestroyWindow();
}

void CWndNewJID::OnOK() {
    // The button rests while an answer is awaited, also for a host that tells of it all the same.
    if (waiting_) return;
    if (use_ == Use::NewAccount) {
        registerAccount();
    } else {
        changePassword();
    }
}

void CWndNewJID::changePassword() {
    CClientClass& client = account_.client;
    if (!(client.flags & FLAG_AUTHORIZED)) return notice(u"Musisz być połączony z siecią aby zmienić hasło.");
    const std::u16string password = view().text(kPassword);
    if (!accepts(password)) return;
    const std::u16string id = generateId();
    const std::u16string content = lutCPW(u"username", client.jid.node, {}) + lutCPW(u"password", password, {});
    const std::u16string query = lutCPW(u"query", content, {{u"xmlns", ns::kRegister}});
    account_.dispatcher.addTarget(*this, id, this);
    setEnabled(false);
    account_.output.sendText(lutCPW(u"iq", query, {{u"id", id}, {u"type", u"set"}}));
}

void CWndNewJID::registerAccount() {
    CClientClass& client = account_.client;
    if (client.flags & FLAG_AUTHORIZED) return notice(u"Przy rejestracji musisz się rozłączyć z siecią XMPP.");
    const std::u16string password = view().text(kPassword);
    if (!accepts(password)) return;
    client.password = password;
    client.jid = parseJID(view().text(kJid));
    if (!client.jid.hasNode || client.jid.domain.size() < kShortestDomain) return notice(u"Musisz podać pełen JID.");
    account_.dispatcher.addTarget(*this, Registration::kDialogId, this);
    setEnabled(false);
    connection_.beginRegistration();
    connection_.setStatus(Status::Online, client.statusDescription, 0);
}

bool CWndNewJID::accepts(const std::u16string& password) {
    if (password.size() < kShortestPassword) {
        notice(u"Musisz ustawić jakieś hasło (min 2 znaki).");
        return false;
    }
    // The confirmation is read from the password's own field, so what stands in its own counts for nothing.
    if (view().text(kPassword) != password) {
        notice(u"Hasło i jego potwierdzenie nie są identyczne.");
        return false;
    }
    return true;
}

void CWndNewJID::onXMLResult(xmlElement& element, void*) {
    setEnabled(true);
    if (element.GetAttribute(u"type") != u"result")
        return notice(u"Serwer zwrócił błąd.", BoxStyle::Error, u"Rezultat");
    const bool isNew = use_ == Use::NewAccount;
    notice(isNew ? u"Konto zostało zarejestrowane." : u"Hasło zostało zmienione.", BoxStyle::Information, u"Rezultat");
    jid_ = view().text(kJid);
    password_ = view().text(kPassword);
    EndDialog(static_cast<std::int32_t>(kOkButton));
}

void CWndNewJID::setEnabled(bool enabled) {
    waiting_ = !enabled;
    if (use_ == Use::NewAccount) view().setEnabled(kJid, enabled);
    view().setEnabled(kOkButton, enabled);
    view().setEnabled(kPassword, enabled);
    view().setEnabled(kConfirmation, enabled);
}

void CWndNewJID::notice(const std::u16string& text, BoxStyle style, const char16_t* title) {
    MessageBoxes(account_.client.host).show(text, title, style, handle());
}

}  // namespace protolink
