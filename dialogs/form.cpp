// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "dialogs/form.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "dialogs/server_error.h"
#include "host/services/message_boxes.h"
#include "host/util/format.h"
#include "host/util/xml_compose.h"
#include "im/child_text.h"
#include "plugin/identifiers.h"
#include "router/namespaces.h"

namespace protolink {

namespace {

constexpr std::uint32_t kFirstY = 25;
constexpr std::uint32_t kBelowFields = 25;
constexpr std::uint32_t kClosingDelay = 100;  // milliseconds in which the success can be seen
constexpr char16_t kCloseText[] = u"&Zamknij";

/// The fields of a plain registration that are asked for.
struct PlainField {
    std::u16string_view name;
    const char16_t* label;
    std::u16string_view type;
};
constexpr PlainField kPlainFields[] = {
    {u"username", u"Użytkownik:", u"text-single"},
    {u"email", u"E-Mail:", u"text-single"},
    {u"password", u"Hasło:", u"text-private"},
};

}  // namespace

void CWndFormChild::show(OKU_WORD parent, std::vector<Control> controls, std::uint32_t contentHeight) {
    DestroyWindow();
    controls_ = std::move(controls);
    contentHeight_ = contentHeight;
    CreateChild(parent);
    controls_.clear();
}

WindowLayout CWndFormChild::layout() {
    return {.templateId = 6005,
            .controls = std::move(controls_),
            .width = 350,
            .height = static_cast<std::int32_t>(contentHeight_)};
}

void CWndFormChild::setEnabled(bool enabled) {
    if (isOpen()) view().setEnabled(kWholeWindow, enabled);
}

CWndForm::CWndForm(WindowFactory& windows, DialogAccount& account, std::u16string target)
    : CUIWin7Dialog(windows), account_(account), child_(windows), target_(std::move(target)) {
    SetHeaders(u"Formularz", u"Pobieranie formularza...");
}

CWndForm::CWndForm(WindowFactory& windows, DialogAccount& account, std::u16string target, Mode mode,
                   const xmlElement& form, std::u16string_view node, std::u16string_view sessionId)
    : CWndForm(windows, account, std::move(target)) {
    form_ = form;
    node_ = node;
    sessionId_ = sessionId;
    mode_ = mode;
}

WindowLayout CWndForm::layout() {
    return {.templateId = 6004,
            .title = u"Formularz",
            .controls =
                {{.kind = ControlKind::Button,
                  .id = kOkButton,
                  .text = u"&Wyślij",
                  .place = {200, 395, 75, 23},
                  .isDefault = true},
                 {.kind = ControlKind::Button, .id = kCancelButton, .text = u"&Anuluj", .place = {283, 395, 75, 23}}},
            .width = 370,
            .height = 430};
}

void CWndForm::OnInitDialog() {
    switch (mode_) {
        case Mode::Registration:
            requestRegistration();
            return SetWindowText(u"Rejestracja @" + target_);
        case Mode::Command:
            SetHeaders(u"Formularz", u"Wykonaj polecenie");
            return render(*form_, nullptr);
        case Mode::Result:
            SetHeaders(u"Polecenie", u"Wynik wykonania polecenia");
            render(*form_, nullptr);
            return becomeReadOnly();
    }
}

void CWndForm::DestroyWindow() {
    account_.dispatcher.removeByTarget(*this);
    child_.DestroyWindow();
    CUIWin7Dialog::DestroyWindow();
}

void CWndForm::OnCommand(std::uint32_t control) {
    // The submit button rests while an answer is awaited, also for a host that tells of it all the same.
    if (control == kOkButton && !enabled_) return;
    CUIWin7Dialog::OnCommand(control);
}

void CWndForm::OnCancel() {
    CUIWin7Dialog::OnCancel();
    DestroyWindow();
}

bool CWndForm::OnEvent(const WindowEvent& event) {
    if (event.kind == WindowEventKind::Timer) {
        view().killTimer();
        DestroyWindow();
    }
    return false;
}

void CWndForm::requestRegistration() {
    account_.dispatcher.removeByTarget(*this);
    send(u"get", lutCPW(u"query", {}, {{u"xmlns", ns::kRegister}}));
    enableAll(false);
}

std::u16string CWndForm::send(std::u16string_view type, const std::u16string& content) {
    std::u16string id = generateId();
    account_.dispatcher.addTarget(*this, id, this);
    account_.output.sendText(lutCPW(u"iq", content, {{u"to", target_}, {u"id", id}, {u"type", type}}));
    return id;
}

void CWndForm::OnOK() {
    enableAll(false);
    const std::u16string content = plainForm_ ? plainFields() : formFields();
    if (form_) {
        const auto command =
            lutCPW(u"command", content, {{u"xmlns", ns::kCommands}, {u"node", node_}, {u"sessionid", sessionId_}});
        pendingId_ = send(u"set", command);
    } else {
        pendingId_ = send(u"set", lutCPW(u"query", content, {{u"xmlns", ns::kRegister}}));
    }
}

std::u16string CWndForm::plainFields() const {
    std::u16string content;
    const WindowView* const page = child_.page();
    for (const CWndFormField& field : fields_) {
        if (page) content += lutCPW(field.var(), lutXMLEscapeW(field.text(*page))) + u"\r\n";
    }
    return content;
}

std::u16string CWndForm::formFields() const {
    std::u16string content;
    const WindowView* const page = child_.page();
    for (const CWndFormField& field : fields_) {
        const auto value = field.submitted(page);
        if (!value) continue;
        content += lutCPW(u"field", lutCPW(u"value", lutXMLEscapeW(*value)), {{u"var", field.var()}}) + u"\r\n";
    }
    return lutCPW(u"x", content, {{u"xmlns", ns::kDataForms}, {u"type", u"submit"}});
}

void CWndForm::onXMLResult(xmlElement& stanza, void*) {
    const std::u16string_view from = stanza.GetAttribute(u"from");
    const std::u16string_view type = stanza.GetAttribute(u"type");
    if (type == u"result" && stanza.GetAttribute(u"id") == pendingId_) onSubmitted(stanza, from);
    if (type == u"error") onError(stanza, from);
    // The window may have gone in a box.
    if (!isOpen()) return;
    const xmlElement* const query = stanza.GetChildPtr(u"query", ns::kRegister);
    if (query && type == u"result") onRegistration(*query, stanza);
}

void CWndForm::onSubmitted(const xmlElement& stanza, std::u16string_view from) {
    const xmlElement* const command = stanza.GetChildPtr(u"command");
    if (const xmlElement* const x = command ? command->GetChildPtr(u"x", ns::kDataForms) : nullptr) {
        render(*x, nullptr);
        becomeReadOnly();
    } else {
        notice(u"Operacja wykonana pomyślnie.", from);
        EndDialog(kOkButton);
    }
}

void CWndForm::onError(const xmlElement& stanza, std::u16string_view from) {
    const MessageBoxes boxes(account_.client.host);
    boxes.show(unexpectedAnswer(stanza), std::u16string(from), BoxStyle::Warning, handle());
    enableAll(true);
}

void CWndForm::onRegistration(const xmlElement& query, const xmlElement& stanza) {
    if (query.children.empty()) {
        notice(u"Operacja przebiegła poprawnie.", u"Zarejestrowano");
        view().startTimer(kClosingDelay);
        return;
    }
    const xmlElement* const x = query.GetChildPtr(u"x", ns::kDataForms);
    const std::u16string_view type = x ? x->GetAttribute(u"type") : std::u16string_view();
    if (x && (type.empty() || type == u"form")) {
        render(*x, &stanza);
        enableAll(true);
        plainForm_ = false;
    } else {
        showPlainForm(query, stanza.GetAttribute(u"from"));
    }
}

void CWndForm::showPlainForm(const xmlElement& query, std::u16string_view from) {
    plainForm_ = true;
    beginFields();
    SetHeaders(std::u16string(from), childText(query, u"instructions"));
    for (const xmlElement& child : query.children) {
        const auto known = std::find_if(std::begin(kPlainFields), std::end(kPlainFields),
                                        [&child](const PlainField& row) { return row.name == child.name; });
        if (known == std::end(kPlainFields)) continue;
        addField(CWndFormField(*CWndFormField::typeOf(known->type), child.name, known->label, child.text));
    }
    finishLayout();
    enableAll(true);
}

void CWndForm::render(const xmlElement& x, const xmlElement* stanza) {
    if (stanza) {
        const std::u16string from(stanza->GetAttribute(u"from"));
        SetHeaders(from, childText(x, u"instructions"));
        SetWindowText(from);
    }
    beginFields();
    for (const xmlElement& child : x.children) {
        // A box about a field may have seen the window go.
        if (!isOpen()) return;
        if (child.name == u"field") addField(child);
    }
    finishLayout();
}

void CWndForm::addField(const xmlElement& element) {
    const std::u16string_view type = element.GetAttribute(u"type");
    const FormFieldType* const known = CWndFormField::typeOf(type);
    if (!known) {
        const MessageBoxes boxes(account_.client.host);
        boxes.show(formatText(u"Typ pola '%s' nie jest jeszcze obsługiwany.", type), u"Nieobsługiwany typ pola",
                   BoxStyle::Warning, handle());
        return;
    }
    CWndFormField field(*known, std::u16string(element.GetAttribute(u"var")),
                        std::u16string(element.GetAttribute(u"label")), childText(element, u"value"));
    field.readOptions(element);
    addField(std::move(field));
}

void CWndForm::addField(CWndFormField field) {
    layoutY_ += field.addControls(controls_, layoutY_);
    fields_.push_back(std::move(field));
}

void CWndForm::beginFields() {
    child_.DestroyWindow();
    fields_.clear();
    controls_.clear();
    layoutY_ = kFirstY;
}

void CWndForm::finishLayout() {
    // A box about a field may have seen the window go.
    if (isOpen()) child_.show(handle(), std::exchange(controls_, {}), layoutY_ + kBelowFields);
}

void CWndForm::enableAll(bool enabled) {
    enabled_ = enabled;
    child_.setEnabled(enabled);
    view().setEnabled(kOkButton, enabled);
}

void CWndForm::becomeReadOnly() {
    enableAll(false);
    view().setText(kCancelButton, kCloseText);
}

void CWndForm::notice(const std::u16string& text, std::u16string_view title) {
    const MessageBoxes boxes(account_.client.host);
    boxes.show(text, std::u16string(title), BoxStyle::Information, handle());
}

}  // namespace protolink
