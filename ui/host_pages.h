// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the host tells the plugin's pages.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "host/oku/dialogs.h"
#include "ui/options_dialog.h"

namespace protolink {

/// What the host shows over a page.
struct PageTexts {
    std::u16string title;
    std::u16string description;
};

/// The pages that are open, each under the word that its page in the host keeps for it.
class HostPages {
public:
    using Make = std::function<std::shared_ptr<COptionsDialog>()>;

    /// An event of a page, which `make` makes when it is to be shown and is not there. Gives 1 when the event could not
    /// be done.
    OKU_WORD onEvent(const OKU_PAGE_EVENT& event, const PageTexts& texts, const Make& make);
    /// Closes all pages, for good: none opens any more.
    void close();

private:
    OKU_WORD show(const OKU_PAGE_EVENT& event, const PageTexts& texts, const Make& make);
    void drop(OKU_WORD word);
    /// Null when there is none, and while its window is not open.
    std::shared_ptr<COptionsDialog> find(OKU_WORD word) const;

    std::map<OKU_WORD, std::shared_ptr<COptionsDialog>> open_;
    OKU_WORD last_ = 0;  // no word is used twice
    bool closed_ = false;
};

}  // namespace protolink
