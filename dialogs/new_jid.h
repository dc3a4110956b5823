// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The account wizard: a new account on a server, or another password for the account that is connected (XEP-0077).
#pragma once

#include <string>

#include "dialogs/dialog_account.h"
#include "host/services/message_boxes.h"
#include "stream/connection.h"
#include "ui/dialog.h"

namespace protolink {

class CWndNewJID final : public CUIWin7Dialog, public CXMLTarget {
public:
    enum class Use { NewAccount, ChangePassword };

    /// What it is given outlives the wizard's window.
    CWndNewJID(WindowFactory& windows, DialogAccount& account, Connection& connection, Use use);

    void DestroyWindow() override;
    void onXMLResult(xmlElement& element, void* user) override;

    // What the user chose, once the wizard has ended with 1.
    const std::u16string& jid() const { return jid_; }
    const std::u16string& password() const { return password_; }

private:
    WindowLayout layout() override;
    void OnOK() override;

    void changePassword();
    void registerAccount();
    /// Whether the password can be one; says why not.
    bool accepts(const std::u16string& password);
    /// All that can be changed or pressed while no answer is awaited. The way out always can.
    void setEnabled(bool enabled);
    void notice(const std::u16string& text, BoxStyle style = BoxStyle::Information, const char16_t* title = u"Błąd");

    DialogAccount& account_;
    Connection& connection_;
    Use use_;
    bool waiting_ = false;  // for the answer
    std::u16string jid_;
    std::u16string password_;
};

}  // namespace protolink
