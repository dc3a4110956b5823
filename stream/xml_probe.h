// The balance check of received text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "stream/balance_scanner.h"

/// What a check found: where expat stops in the text put into its wrapper, and with which error code.
struct ProbeResult {
    bool balanced = false;
    std::uint32_t errorCode = 0;
    std::uint32_t line = 0;
    std::uint32_t column = 0;
};

/// The check by the letter: a fresh expat parser over the whole text in its wrapper. Text that is cut short and text
/// that is wrong look the same: both are waiting for their next part.
ProbeResult probePlainly(std::string_view text);

/// The same results for text that grows, at a cost in proportion to what was added. Where the quick scanner is not
/// certain, expat decides over the whole text; an error that no further text can mend is found once.
class XmlProbe {
public:
    XmlProbe();

    /// Checks the text, which begins with what was given last time unless `changed` told otherwise.
    ProbeResult probeXml(std::string_view text);
    /// The text was changed from that place on.
    void changed(std::size_t from);
    /// The next text has nothing to do with the last.
    void reset();

private:
    BalanceScanner scanner_;
    bool settled_ = false;       // `final_` holds whatever follows
    std::size_t settledBy_ = 0;  // as long as the text before this stays what it is
    ProbeResult final_;
};
