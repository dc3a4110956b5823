// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QStringList>
#include <utility>

#include "host/oku/dialogs.h"
#include "messenger/core/dialogs/dialog_windows.h"

namespace oku {

class DialogInput;
class ServiceRegistry;

/// "UI/Window...", "UI/Control...", "UI/Row..." and "UI/Menu...": what the plugin says of its windows.
class DialogServices {
public:
    DialogServices(ServiceRegistry& services, DialogWindows& windows, DialogInput& input);

    /// Who knows the groups of the contacts.
    void setGroups(std::function<QStringList()> groups) { groups_ = std::move(groups); }
    /// Of the plugin that is loaded: a window that names another module is not opened.
    void setModule(OKU_WORD module) { module_ = module; }

private:
    void provideWindows(ServiceRegistry& services);
    void provideControls(ServiceRegistry& services);
    [[nodiscard]] OpenDialog* windowAt(OKU_WORD handle);
    OKU_WORD open(OKU_WORD param);
    OKU_WORD setText(OKU_WORD param);
    OKU_WORD setValue(OKU_WORD param);
    OKU_WORD getValue(OKU_WORD param);
    OKU_WORD setRow(OKU_WORD param);
    OKU_WORD clearRows(OKU_WORD window, OKU_WORD list);
    OKU_WORD openMenu(OKU_WORD param);
    OKU_WORD listGroups(OKU_WORD window, OKU_WORD control);
    [[nodiscard]] OpenDialog* listAt(OKU_WORD window, OKU_WORD list);
    bool change(OpenDialog& dialog, DialogControl& control, const OKU_CONTROL_VALUE& value);
    void addItem(const OpenDialog& dialog, DialogControl& control, const QString& item);
    void changeText(OpenDialog& dialog, DialogControl& control, const QString& text);

    DialogWindows& windows_;
    DialogInput& input_;
    std::function<QStringList()> groups_;
    OKU_WORD module_ = 0;
    QString lent_;  ///< the text that the plugin got last
};

}  // namespace oku
