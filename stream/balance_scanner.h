// A scanner that knows of growing text whether it is a balanced sequence of elements, at a cost in proportion to what
// was added. It answers where it is certain of what expat would say, and leaves all else to expat.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "stream/text_position.h"

class BalanceScanner {
public:
    enum class Verdict {
        Balanced,    // expat would find the text balanced
        Incomplete,  // expat would stop where `stop` tells, and more text may mend it
        Unsure,      // the text is wrong, or of a form that is not followed here
    };

    /// Where expat stops in an incomplete text that its wrapper's end follows, and with which of its error codes.
    struct Stop {
        std::uint32_t errorCode = 0;
        std::uint32_t line = 0;
        std::uint32_t column = 0;
    };

    /// `startColumn` is where the text begins in the wrapper's first line; `wrapper` is the wrapper's name.
    BalanceScanner(std::uint32_t startColumn, std::string_view wrapper)
        : startColumn_(startColumn), wrapper_(wrapper), position_(1, startColumn), ahead_(1, startColumn) {}

    /// Goes on with the text, which begins with what was given last time.
    Verdict scan(std::string_view text);
    /// Valid after `scan` found the text incomplete.
    const Stop& stop() const { return stop_; }

    /// The text was changed from that place on since the last scan.
    void changed(std::size_t from);
    /// A new text begins.
    void reset();

private:
    /// What stands at `pos_`. Everything that can be long is a mode of its own, so that it is scanned once.
    enum class Mode { Content, Tag, AfterName, AfterEquals, Value, EndTag, Comment, CData, Instruction };
    enum class Step { GoOn, NeedMore, Unsure };
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
    Step scanSequence();
    NameEnd scanName(std::size_t from);

    Step commit(std::size_t to, Mode mode);
    Step begin(Mode mode, std::size_t length);
    void skipSpace();
    bool at(std::size_t index, char wanted) const { return index < text_.size() && text_[index] == wanted; }
    bool addAttribute(std::string_view name);
    std::string_view innermost() const;
    void closeInnermost();

    Verdict incomplete();
    void countTo(std::size_t to);
    Verdict stopAtEnd(std::uint32_t code, std::uint32_t beyond);

    std::uint32_t startColumn_;
    std::string_view wrapper_;
    std::string_view text_;
    Mode mode_ = Mode::Content;
    std::size_t pos_ = 0;    // all before this is settled
    std::size_t named_ = 0;  // a name or number that begins at or behind `pos_` is known to be one up to here
    bool broken_ = false;    // a character is cut at the text's end
    std::size_t brokenAt_ = 0;
    char quote_ = '"';
    bool spaced_ = false;      // white space stands before what comes next in a tag
    bool repeated_ = false;    // the present tag has two attributes of one name
    bool mismatched_ = false;  // the end tag that has begun names another element than the innermost
    std::string openNames_;    // the names of the open elements, one behind the other
    std::vector<std::size_t> openStarts_;
    std::vector<std::pair<std::size_t, std::size_t>> attributes_;  // place and length of the names in the present tag
    // The same names, when they are many; in order, as a sender chooses them and could let them meet in a hash table.
    std::set<std::string> manyAttributes_;
    TextPosition position_;  // of `counted_`
    std::size_t counted_ = 0;
    TextPosition ahead_;  // of `countedAhead_`, which may lie behind `pos_` in a token that has not ended
    std::size_t countedAhead_ = 0;
    Stop tokenStart_;  // of the comment or instruction that has begun
    Stop stop_;
};
