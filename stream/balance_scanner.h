// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A scanner that knows of growing text whether it is a balanced sequence of elements, and if not, where expat stops in
// it and why. What was settled once is not looked at again.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "stream/open_elements.h"
#include "stream/text_position.h"

namespace protolink {

/// What the scanner remembers of names, apart from the scanner itself: a copy of the scanner is small whatever it read.
struct ScannedNames {
    OpenElements open;
    AttributeNames attributes;  // of the present tag
};

/// Long, because it is one grammar: each of its steps may be the next one of any other.
class BalanceScanner {
public:
    /// Where expat stops in the text that its wrapper's end follows, and with which of its error codes.
    struct Stop {
        std::uint32_t errorCode = 0;
        std::uint32_t line = 0;
        std::uint32_t column = 0;
    };

    /// `startColumn` is where the text begins in the wrapper's first line; `wrapper` is the wrapper's name. The names
    /// are borrowed, and empty.
    BalanceScanner(std::uint32_t startColumn, std::string_view wrapper, ScannedNames& names)
        : wrapper_(wrapper), names_(&names), position_(1, startColumn), ahead_(1, startColumn) {}

    /// Goes on with the text, which begins with what was given last time. True when expat would find it balanced.
    bool scan(std::string_view text);
    /// Valid after `scan` found the text not balanced.
    const Stop& stop() const { return stop_; }
    /// What was found out depends on no character at or behind this place.
    std::size_t looked() const { return looked_; }

private:
    /// What stands at `pos_`. Everything that can be long is a mode of its own, so that it is scanned once.
    enum class Mode { Content, Tag, AfterName, AfterEquals, Value, EndTag, Comment, CData, Instruction };
    enum class Step { GoOn, NeedMore, Over };
    /// Whether any further text can make a difference.
    enum class Fate { Open, Wrong, WrapperClosed };
    struct NameEnd {
        Step step;
        std::size_t end;
    };

    Step step();
    Step scanContent();
    Step scanMarkup();
    Step beginTag();
    Step beginEndTag();
    Step beginDeclaration();
    Step beginInstruction();
    Step scanTag();
    Step scanAttributeName();
    Step scanAfterName();
    Step scanAfterEquals();
    Step scanValue();
    Step scanEndTag();
    Step scanReference();
    Step scanNumber();
    Step scanComment();
    Step scanCData();
    Step scanInstruction();
    Step endInstruction(std::size_t to);
    Step scanSequence();
    NameEnd scanName(std::size_t from);

    Step commit(std::size_t to, Mode mode);
    Step closeInnermost(std::size_t to);
    void skipSpace();
    bool at(std::size_t index, char wanted) const { return index < text_.size() && text_[index] == wanted; }

    /// The text is wrong, and expat tells that place.
    Step wrong(std::uint32_t code, std::size_t place);
    Step wrong(const Stop& stop);
    Step wrongToken(std::size_t place);
    /// A reference that cannot be resolved, which in a value is an error of the whole tag.
    Step wrongReference(std::uint32_t code);
    void tagIsWrong(const Stop& stop);

    bool isBalanced();
    void countTo(std::size_t to);
    Stop stopAt(std::uint32_t code, std::size_t place);
    bool stopAtEnd(std::uint32_t code, std::uint32_t beyond);

    std::string_view wrapper_;
    ScannedNames* names_;
    std::string_view text_;
    Mode mode_ = Mode::Content;
    Fate fate_ = Fate::Open;
    std::size_t looked_ = 0;
    std::size_t pos_ = 0;    // all before this is settled
    std::size_t named_ = 0;  // a name or number that begins at or behind `pos_` is known to be one up to here
    bool broken_ = false;    // a character is cut at the text's end
    std::size_t brokenAt_ = 0;
    char quote_ = '"';
    bool spaced_ = false;          // white space stands before what comes next in a tag
    bool mismatched_ = false;      // the end tag that has begun names another element than the innermost
    bool declares_ = false;        // the instruction that has begun is an XML declaration
    std::optional<Stop> tagStop_;  // the present tag is wrong, which expat tells once it is complete
    TextPosition position_;        // of `counted_`
    std::size_t counted_ = 0;
    TextPosition ahead_;  // of `countedAhead_`, which may lie behind `pos_` in a token that has not ended
    std::size_t countedAhead_ = 0;
    std::size_t tokenAt_ = 0;  // where the markup began that is being scanned
    Stop tokenStart_;          // the same place; valid once `counted_` lies behind it
    Stop stop_;
};

}  // namespace protolink
