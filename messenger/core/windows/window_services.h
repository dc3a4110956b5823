// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QString>
#include <vector>

#include "host/oku/base.h"

namespace oku {

class ServiceRegistry;

/// What the plugin hands over for windows: icons, pages of options and properties. All of it is kept as values; user
/// interfaces show what they can.
class WindowServices {
public:
    struct Icon {
        QString name;
        QString fallback;     ///< of a class of contact icons
        qint64 resource = 0;  ///< in the module, or 0
    };
    struct Page {
        QString id;
        QString parent;
        QString caption;
        OKU_HANDLER callback = nullptr;
        OKU_WORD context = 0;
        QString pfClass = {};  ///< whose contacts it is for; empty for options
        std::uint32_t netId = 0;
    };

    explicit WindowServices(ServiceRegistry& services);

    [[nodiscard]] const std::vector<Icon>& icons() const { return icons_; }
    [[nodiscard]] const std::vector<Page>& optionPages() const { return optionPages_; }
    [[nodiscard]] const std::vector<Page>& propertyPages() const { return propertyPages_; }
    /// The pages that the plugin has for one contact: those that it adds while `raise` tells it of this word.
    std::vector<Page> contactPages(const std::function<void(OKU_WORD word)>& raise);
    void dropPlugin();

private:
    void provideGraphics(ServiceRegistry& services);
    OKU_WORD addOptionsPage(OKU_WORD extra);
    OKU_WORD addPropertiesPage(OKU_WORD param);
    OKU_WORD addContactPage(OKU_WORD param, OKU_WORD word);

    std::vector<Icon> icons_;
    std::vector<Page> optionPages_;
    std::vector<Page> propertyPages_;
    std::vector<Page> contactPages_;  ///< those that were added for the word below
    OKU_WORD word_ = 0;
    bool asking_ = false;
};

}  // namespace oku
