// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A picture in its node on a server (XEP-0084).
#pragma once

#include <string>
#include <string_view>

#include "host/util/xml_element.h"

namespace protolink {

/// The picture in the answer to a request for it.
struct PublishedAvatar {
    std::u16string id;                 // of its item, a hash as the publisher told it
    const xmlElement* data = nullptr;  // its text is Base64; null when the answer holds no picture
};

/// What `iq` holds. `data` is good as long as `iq` is.
PublishedAvatar readPublishedAvatar(const xmlElement& iq);

/// The element of requests about nodes.
std::u16string pubSub(std::u16string_view content);

}  // namespace protolink
