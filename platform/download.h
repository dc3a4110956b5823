// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Fetching one document over HTTP in a thread of its own. Part of the platform: see platform.h.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace platform {

/// What is told of a download, in this order and always on the download's own thread. Nothing else may be touched there
/// than what belongs to the listener.
class DownloadListener {
public:
    virtual ~DownloadListener() = default;
    /// The thread has begun.
    virtual void onBegin() = 0;
    /// The server has answered with this status. False ends the download.
    virtual bool onAnswer(int status) = 0;
    /// The next bytes of the document, as many as came at once. False ends the download.
    virtual bool onBytes(std::string_view bytes) = 0;
    /// The last word, and it always comes: also when there was no answer, when the document broke off, when the
    /// listener or `stop` ended it, and when something was thrown.
    virtual void onEnd() noexcept = 0;
};

/// A download that is under way. Going, it stops and waits until the thread has ended; a thread that is held up
/// elsewhere (in the host, on a disk that does not answer) is given up 5 s after it was told to stop, and the code that
/// it runs then stays in memory.
class Download {
public:
    virtual ~Download() = default;
    Download(const Download&) = delete;
    Download& operator=(const Download&) = delete;

    /// Tells the thread to end, and does not wait for it.
    virtual void stop() noexcept = 0;

protected:
    Download() = default;
};

/// Fetches `url` with GET, whatever its scheme, over plain HTTP on the URL's own port, through the proxy that the
/// system names for plain HTTP. Follows no redirect, and asks for the origin's copy. Null when no thread can be
/// started, or the system has no libcurl; the listener then hears nothing.
std::unique_ptr<Download> startDownload(const std::u16string& url, const std::u16string& userAgent,
                                        std::shared_ptr<DownloadListener> listener);

}  // namespace platform
