// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Stream compression (XEP-0138): the two zlib streams of one connection.
#pragma once

#include <zlib.h>

#include <string>
#include <string_view>

namespace protolink {

/// One zlib stream for each direction, from `zStart` to `zEnd`.
class CZipStream {
public:
    CZipStream();
    virtual ~CZipStream();
    CZipStream(const CZipStream&) = delete;
    CZipStream& operator=(const CZipStream&) = delete;

    /// Starts both directions at level 9. A failure shows at the first use.
    void zStart();

    /// Inflates `input` into `buffer`. `size` is the buffer's room on entry and the number of bytes produced on return.
    /// Returns 0 or a negative zlib code; Z_BUF_ERROR when the output filled the buffer. Each further round starts at
    /// the front of the buffer again, so `size` then tells how much there was, and the buffer does not hold it.
    int zInflate(char* buffer, std::size_t& size, std::string_view input);

    /// Compresses `data` and flushes, so that the other side can read all of it. False on a fault.
    bool zDeflate(std::string_view data, std::string& compressed);

    /// Ends both directions and forgets their state, whether or not they had been started. Always 1.
    int zEnd();

private:
    z_stream inflateStream_;
    z_stream deflateStream_;
};

}  // namespace protolink
