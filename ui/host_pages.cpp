// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "ui/host_pages.h"

#include <algorithm>
#include <utility>

#include "plugin/boundary.h"

namespace protolink {

namespace {

/// Cut to the host's buffer, which may be missing.
void fill(char16_t* buffer, const std::u16string& text) {
    if (!buffer) return;
    const std::size_t length = std::min<std::size_t>(text.size(), OKU_PAGE_TEXT_CAPACITY - 1);
    std::copy_n(text.begin(), length, buffer);
    buffer[length] = u'\0';
}

Rectangle placeOf(const OKU_PAGE_EVENT& event) { return {event.x, event.y, event.width, event.height}; }

}  // namespace

OKU_WORD HostPages::onEvent(const OKU_PAGE_EVENT& event, const PageTexts& texts, const Make& make) {
    if (!event.page) return 0;
    if (event.event == OKU_PAGE_SHOW) return show(event, texts, make);
    if (event.event == OKU_PAGE_DESTROY) {
        drop(std::exchange(*event.page, 0));
        return 0;
    }
    // Whatever the page calls may drop it.
    const std::shared_ptr<COptionsDialog> page = find(*event.page);
    if (!page) return 0;
    switch (event.event) {
        case OKU_PAGE_HIDE:
            page->ShowWindow(false);
            return 0;
        case OKU_PAGE_APPLY:
        case OKU_PAGE_OK:
            return page->OptionsSave() ? 0 : 1;
        case OKU_PAGE_ADD:
            return page->OptionsAdd() ? 0 : 1;
        case OKU_PAGE_PLACE:
            page->MoveWindow(placeOf(event));
            return 0;
        default:
            return 0;
    }
}

OKU_WORD HostPages::show(const OKU_PAGE_EVENT& event, const PageTexts& texts, const Make& make) {
    fill(event.title, texts.title);
    fill(event.description, texts.description);
    if (const std::shared_ptr<COptionsDialog> page = find(*event.page)) {
        page->MoveWindow(placeOf(event));
        page->ShowWindow(true);
        return 0;
    }
    if (closed_) return 1;
    // One whose opening did not come to its end.
    drop(*event.page);
    const OKU_WORD word = ++last_;
    const std::shared_ptr<COptionsDialog> page = make();
    open_.emplace(word, page);
    *event.page = word;
    if (page->CreateChild(event.parent, placeOf(event)) && find(word)) return 0;
    // No window opened, or the page was dropped meanwhile, and then perhaps another one stands here.
    if (*event.page == word) *event.page = 0;
    drop(word);
    page->DestroyWindow();
    return 1;
}

void HostPages::close() {
    closed_ = true;
    while (!open_.empty()) drop(open_.begin()->first);
}

void HostPages::drop(OKU_WORD word) {
    const auto found = open_.find(word);
    if (found == open_.end()) return;
    const std::shared_ptr<COptionsDialog> page = std::move(found->second);
    open_.erase(found);
    page->DestroyWindow();
    // One of its calls may be further out on the stack.
    releaseAfterCall(page);
}

std::shared_ptr<COptionsDialog> HostPages::find(OKU_WORD word) const {
    const auto found = open_.find(word);
    return found == open_.end() || !found->second->isOpen() ? nullptr : found->second;
}

}  // namespace protolink
