// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The balance check of received text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "stream/balance_scanner.h"

namespace protolink {

/// What a check found: where expat stops in the text put into its wrapper, and with which error code.
struct ProbeResult {
    bool balanced = false;
    std::uint32_t errorCode = 0;
    std::uint32_t line = 0;
    std::uint32_t column = 0;
};

/// The check of text that grows: what a fresh expat parser would say of the whole text in its wrapper. Text that is cut
/// short and text that is wrong look the same: both are waiting for their next part.
///
/// Whatever the text, a check costs in proportion to what was added since the last and to what stands behind the place
/// where the text was changed. (Besides, expat is asked once about each alphabet of which a name is made.)
class XmlProbe {
public:
    XmlProbe();
    XmlProbe(const XmlProbe&) = delete;
    XmlProbe& operator=(const XmlProbe&) = delete;

    /// Checks the text, which begins with what was given last time unless `changed` told otherwise. No later change
    /// begins before `settled`: one that does all the same costs a look at the whole text.
    ProbeResult probeXml(std::string_view text, std::size_t settled);
    /// The same for text that nobody changes.
    ProbeResult probeXml(std::string_view text) { return probeXml(text, text.size()); }
    /// The text was changed from that place on.
    void changed(std::size_t from);
    /// The next text has nothing to do with the last.
    void reset();

private:
    ScannedNames names_;
    BalanceScanner scanner_;
    std::optional<BalanceScanner> then_;  // as it was when it had seen what is settled, if it has seen more since
};

}  // namespace protolink
