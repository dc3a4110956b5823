// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Privacy lists (XEP-0016): blocking of single contacts, and invisibility in the manner of XEP-0126.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/util/xml_element.h"
#include "router/routing.h"
#include "router/stanza.h"
#include "stream/stream_output.h"

namespace protolink {

/// What is denied to one contact.
struct PrivacyEntry {
    std::u16string jid;
    bool presenceOut = false;
    bool presenceIn = false;
    bool message = false;
    bool iq = false;
};

class PrivacyLists {
public:
    static constexpr std::u16string_view kInvisibleList = u"okf-invisible";
    static constexpr std::u16string_view kBlockList = u"okf-privacy";

    explicit PrivacyLists(StreamOutput& output) : output_(output) {}

    /// Uploads the list that hides the account, and then fetches the list of blocked contacts or uploads it whole.
    void privacyUpdate(bool fetchFirst);
    void privacyFetch();
    /// Takes the answer to a fetch, known by its id, and uploads both lists. The id stays known afterwards. Any other
    /// element goes on.
    Routing onPrivacyReply(const Stanza& stanza);
    /// Makes a list the active one of this session.
    void privacySetActive(std::u16string_view name);
    /// The entry of exactly that JID. A missing one is appended when `create` is true, else the result is null. Valid
    /// until the list changes.
    PrivacyEntry* privacyEntry(std::u16string_view jid, bool create);

private:
    void privacyListResult(const xmlElement& element);
    void send(std::u16string_view content);
    std::u16string blockListItems() const;

    StreamOutput& output_;
    std::vector<PrivacyEntry> blockList_;
    std::u16string privacyRequestId_;
};

}  // namespace protolink
