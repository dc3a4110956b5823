// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "messenger/core/talk/talk_face.h"

namespace oku {

class Accounts;
class Arrivals;
class ContactService;
class Delivery;
class History;
class TypingNotices;

struct TalkParts {
    Accounts& accounts;
    ContactService& contacts;
    History& history;
    Delivery& delivery;
    Arrivals& arrivals;
    TypingNotices& typing;
};

/// The face of messages on the host's parts, which must outlive it.
std::unique_ptr<TalkFace> talkOnHost(const TalkParts& parts);

}  // namespace oku
