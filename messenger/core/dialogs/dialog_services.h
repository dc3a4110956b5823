// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "host/oku/dialogs.h"
#include "messenger/core/dialogs/dialog_windows.h"

namespace oku {

class DialogInput;
class ServiceRegistry;

/// "UI/Window...", "UI/Control...", "UI/Row..." and "UI/Menu...": what the plugin says of its windows.
class DialogServices {
public:
    DialogServices(ServiceRegistry& services, DialogWindows& windows, DialogInput& input);

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
    [[nodiscard]] OpenDialog* listAt(OKU_WORD window, OKU_WORD list);
    bool change(OpenDialog& dialog, DialogControl& control, const OKU_CONTROL_VALUE& value);
    void changeText(OpenDialog& dialog, DialogControl& control, const QString& text);

    DialogWindows& windows_;
    DialogInput& input_;
    OKU_WORD module_ = 0;
    QString lent_;  ///< the text that the plugin got last
};

}  // namespace oku
