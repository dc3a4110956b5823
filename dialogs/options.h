// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The options page of one account.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "dialogs/dialog_account.h"
#include "dialogs/new_jid.h"
#include "im/roster.h"
#include "plugin/client_class.h"
#include "profile/avatar_cache.h"
#include "stream/connection.h"
#include "ui/options_dialog.h"

namespace protolink {

/// The controls are its only state: nothing is stored until the host asks for that.
class CWndXMPPOptions final : public COptionsDialog {
public:
    /// What it is given outlives the page's window.
    CWndXMPPOptions(WindowFactory& windows, DialogAccount& account, Connection& connection, const Roster& roster,
                    const AvatarCache& avatars)
        : COptionsDialog(windows),
          windows_(windows),
          account_(account),
          client_(account.client),
          connection_(connection),
          roster_(roster),
          avatars_(avatars) {}

    void DestroyWindow() override;
    bool OptionsSave() override;

private:
    WindowLayout layout() override;
    void prepare() override;
    void OptionsLoad() override;
    void OnCommand(std::uint32_t control) override;

    void load(const ChoiceSetting& setting);
    void load(const NumberSetting& setting);
    void load(const SwitchSetting& setting);
    void load(const TextSetting& setting);
    /// What is to be stored, as the page shows it now.
    using Store = std::function<void(const AccountSettings& settings)>;
    Store shown(const ChoiceSetting& setting) const;
    Store shown(const NumberSetting& setting) const;
    Store shown(const SwitchSetting& setting) const;
    Store shown(const TextSetting& setting) const;
    std::u16string stateLine() const;

    void applyProxyStates();
    /// Enables what a switch that was clicked, or loaded, is for.
    void applySwitch(std::uint32_t control);
    void clearAvatars();
    void copyHostProxy();
    void openWizard(CWndNewJID::Use use);
    void takeOver(CWndNewJID::Use use);

    WindowFactory& windows_;
    DialogAccount& account_;
    CClientClass& client_;
    Connection& connection_;
    const Roster& roster_;
    const AvatarCache& avatars_;
    std::shared_ptr<CWndNewJID> wizard_;  // the one that opened last; null before
};

}  // namespace protolink
