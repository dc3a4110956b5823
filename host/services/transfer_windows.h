// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The host's windows of file transfers, and its question about an offered file.
#pragma once

#include <cstdint>
#include <string>

#include "host/callback_target.h"
#include "host/host.h"
#include "host/oku/contact.h"
#include "host/oku/transfer.h"

namespace protolink {

/// What it takes to write to a transfer's window. Without a window every update is skipped. It is a plain value that
/// calls nothing but the host, so that a thread may have its own.
class TransferWindowLink {
public:
    TransferWindowLink() = default;
    TransferWindowLink(OKU_WORD window, OKU_HANDLER updateFn, OKU_WORD updateData)
        : window_(window), updateFn_(updateFn), updateData_(updateData) {}

    OKU_WORD window() const { return window_; }

    void setStatusText(const std::u16string& text) const;
    /// Both empty: no link.
    void setLink(const std::u16string& text, const std::u16string& target) const;
    void setTotalSize(std::uint64_t bytes) const;
    void setProgress(std::uint64_t bytes) const;
    /// `OKU_FT_RUNNING` or `OKU_FT_FAILED`.
    void setState(std::uint32_t state) const;
    void setCancelEnabled(bool enabled) const;
    /// The value that a file's publication writes with 0.
    void clearValue96() const;

private:
    void update(OKU_FT_UPDATE_RECORD record) const;

    OKU_WORD window_ = 0;
    OKU_HANDLER updateFn_ = nullptr;
    OKU_WORD updateData_ = 0;
};

/// How the user answered an offer.
enum class OfferAnswer { Accept, Ignore, Refuse };

class TransferWindows {
public:
    explicit TransferWindows(const Host& host) : host_(host) {}

    /// Opens a window; the result has none when the host opened none.
    TransferWindowLink open(const char16_t* title, const OKU_CONTACT_RECORD& contact, CallbackTarget target) const;
    void drop(OKU_WORD window) const;
    /// Asks the user, and returns when he has answered. `folder` is cut to what the host's buffer holds, and becomes
    /// the folder to save in.
    OfferAnswer ask(const std::u16string& question, const std::u16string& sender, std::u16string& folder) const;

private:
    const Host& host_;
};

}  // namespace protolink
