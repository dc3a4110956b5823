// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The plugin's own windows as the recording host keeps them.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <vector>

#include "host/oku/base.h"

namespace harness {

struct DialogControl {
    std::uint32_t kind = 0;
    bool enabled = true;
    bool readOnly = false;
    bool checked = false;
    bool tellsKeys = false;
    std::string text;
    std::vector<std::string> items;
    std::int64_t selection = -1;
    std::vector<std::int64_t> rows;  // in order
    std::int64_t selectedRow = 0;
};

struct DialogRow {
    std::string text;
    std::vector<std::string> fields;  // "label value"
};

struct DialogMenuItem {
    std::string text;
    bool enabled = true;
};

/// A window that is open, or was: its callback stays known, as a host may call it late.
struct DialogWindow {
    std::uint32_t templateId = 0;
    OKU_WORD parent = 0;
    bool modal = false;
    bool open = true;
    bool shown = false;
    bool enabled = true;
    bool ending = false;
    OKU_HANDLER handler = nullptr;
    OKU_WORD context = 0;
    std::string title, heading, description;
    std::map<std::uint32_t, DialogControl> controls;
    std::map<std::int64_t, DialogRow> rows;
    std::map<std::uint32_t, DialogMenuItem> menu;  // the one that is open
};

/// What waits in the host's queue.
struct DialogEvent {
    OKU_WORD window = 0;
    std::uint32_t kind = 0;
    std::int64_t number = 0;
};

struct DialogWindows {
    std::map<OKU_WORD, DialogWindow> all;  // by handle, in the order of opening
    std::deque<DialogEvent> queue;
    std::u16string lent;  // the text that was last given out

    /// Whether the user can do something in it: it is open, and no modal window is before it.
    bool takesInput(OKU_WORD handle) const;
    /// The newest window of this template, open ones first; null when there was none.
    const std::pair<const OKU_WORD, DialogWindow>* find(std::uint32_t templateId) const;
};

/// The words of the kinds of controls in transcripts ("edit"), or the number.
std::string controlWord(std::uint32_t kind);

}  // namespace harness
