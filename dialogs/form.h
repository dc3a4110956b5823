// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A form that somebody else wants filled in: registration with a service (XEP-0077), by a data form (XEP-0004) or by
// the plain list of fields; the form of a command (XEP-0050); and what a command has to say, to be read only.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dialogs/dialog_account.h"
#include "dialogs/form_field.h"
#include "ui/dialog.h"

namespace protolink {

/// The page inside the form's window that holds the fields.
class CWndFormChild final : public CUIWin7Dialog {
public:
    explicit CWndFormChild(WindowFactory& windows) : CUIWin7Dialog(windows) {}

    /// Opens inside the window `parent` with these controls, in place of what it showed before.
    void show(OKU_WORD parent, std::vector<Control> controls, std::uint32_t contentHeight);
    void setEnabled(bool enabled);
    /// Null while it shows nothing.
    const WindowView* page() const { return isOpen() ? &view() : nullptr; }

private:
    WindowLayout layout() override;
    // The buttons are the form's.
    void OnOK() override {}
    void OnCancel() override {}

    std::vector<Control> controls_;
    std::uint32_t contentHeight_ = 0;
};

class CWndForm final : public CUIWin7Dialog, public CXMLTarget {
public:
    enum class Mode { Registration, Command, Result };

    /// A registration with `target`.
    CWndForm(WindowFactory& windows, DialogAccount& account, std::u16string target);
    /// The form `x` of a command, or its result.
    CWndForm(WindowFactory& windows, DialogAccount& account, std::u16string target, Mode mode, const xmlElement& form,
             std::u16string_view node, std::u16string_view sessionId);

    void DestroyWindow() override;
    void onXMLResult(xmlElement& element, void* user) override;

private:
    WindowLayout layout() override;
    void OnInitDialog() override;
    void OnCommand(std::uint32_t control) override;
    void OnOK() override;
    void OnCancel() override;
    bool OnEvent(const WindowEvent& event) override;

    void requestRegistration();
    /// Sends with the stanza's fresh id, which is awaited first.
    std::u16string send(std::u16string_view type, const std::u16string& content);
    std::u16string plainFields() const;
    std::u16string formFields() const;

    void onSubmitted(const xmlElement& stanza, std::u16string_view from);
    void onError(const xmlElement& stanza, std::u16string_view from);
    void onRegistration(const xmlElement& query, const xmlElement& stanza);
    void showPlainForm(const xmlElement& query, std::u16string_view from);

    /// Shows the fields of an `x` element; with a stanza also where it came from.
    void render(const xmlElement& x, const xmlElement* stanza);
    void addField(const xmlElement& field);
    void addField(CWndFormField field);
    void finishLayout();
    void beginFields();
    /// Of all that can be filled in and sent. The window can always be left.
    void enableAll(bool enabled);
    void becomeReadOnly();
    void notice(const std::u16string& text, std::u16string_view title);

    DialogAccount& account_;
    CWndFormChild child_;
    std::vector<CWndFormField> fields_;
    std::vector<Control> controls_;  // of the fields, until the page opens
    std::optional<xmlElement> form_;
    std::u16string target_;
    std::u16string pendingId_;
    std::u16string node_;
    std::u16string sessionId_;
    bool plainForm_ = false;
    bool enabled_ = true;
    std::uint32_t layoutY_ = 25;
    Mode mode_ = Mode::Registration;
};

}  // namespace protolink
