// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The text of a stream that is not balanced yet, with the changes that make its ends meet.
#pragma once

#include <cstddef>
#include <string_view>

#include "host/util/growing_text.h"

namespace protolink {

/// Collects received text. The stream's open tag, which never closes, becomes an empty element, and the two
/// characters that begin a declaration are taken out wherever they stand; the rest of a declaration stays behind as
/// character data. What was looked at once is not looked at again when more text is added, unless it stands behind a
/// place that changes: a declaration's beginning that waits for the end of one, or that comes about where another was
/// taken out. The latter is taken out with the next piece, so nested beginnings cost the text behind them once a piece.
class ReceivedText {
public:
    /// Returns the first place at which text changed that was there before; the old size when none did.
    std::size_t append(std::string_view piece);
    void clear();
    /// No later piece changes what stands before this place.
    std::size_t settled() const { return lessThanStart_; }

    char* data() { return text_.data(); }
    std::size_t size() const { return text_.size(); }
    std::string_view view() const { return text_.view(); }

private:
    /// Each returns the first place that it changed, the text's end when it changed none.
    std::size_t closeOpenTag();
    std::size_t removeDeclarations();
    /// Finds out what is settled, where no declaration begins before that place.
    void settle(std::size_t place);

    util::GrowingText text_;
    std::size_t openTagFrom_ = 0;           // no open tag begins before this
    std::size_t openTagEndFrom_ = 0;        // the open tag that has begun does not end before this
    bool openTagDone_ = false;              // the first open tag has its end
    std::size_t declarationStartFrom_ = 0;  // no declaration begins before this
    std::size_t declarationEndFrom_ = 0;    // no declaration ends before this
    std::size_t lessThanStart_ = 0;         // each character from here on is a "<" ...
    std::size_t lessThanEnd_ = 0;           // ... up to here, where a declaration begins or the text ends
};

}  // namespace protolink
