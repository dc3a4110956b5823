// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The contact list on the server (RFC 6121, 2), in the host and in the account's file.
#pragma once

#include <string>
#include <string_view>

#include "host/oku/contact.h"
#include "host/util/xml_element.h"
#include "im/contact_entry.h"
#include "plugin/client_class.h"
#include "router/stanza.h"
#include "stream/stream_output.h"

namespace protolink {

class Roster {
public:
    Roster(CClientClass& client, StreamOutput& output, Contacts& contacts)
        : client_(client), output_(output), contacts_(contacts) {}

    /// Takes the answer to the roster request, the first presence having been sent: the host's list is built anew.
    void rebuildFrom(const xmlElement& iq);
    /// Takes the items of a push.
    void onRosterPush(const Stanza& iq) { rosterItems(*iq.query()); }
    /// Takes the items of an answer or a push.
    void rosterItems(const xmlElement& query);

    /// Asks the server to remove a contact. 0 when not logged in, else the send's result.
    OKU_WORD rosterRemove(std::u16string_view jid);
    /// Sends a contact's new values to the server. 0 when not logged in, else the send's result.
    OKU_WORD rosterUpdate(std::u16string_view jid, std::u16string_view name, std::u16string_view group);

    /// A file that cannot be opened is left alone, without a word.
    void rosterSave(const std::u16string& path) const;
    /// Fills contacts and host; a missing file is made, a corrupt one gives an empty list.
    void rosterLoad(const std::u16string& path);

    /// The host's handler of a contact's removal: 1 when not logged in, else 0.
    OKU_WORD onContactDelete(OKU_WORD contactRecord);

    std::uint32_t rosterDownloaded = 0;  // 1 once the list of this connection is complete

private:
    void takeItem(const xmlElement& item);
    OKU_CONTACT_ADD contactRecord(const ContactEntry& entry) const;
    void removeFromHost(const OKU_CONTACT_ADD& record) const;

    CClientClass& client_;
    StreamOutput& output_;
    Contacts& contacts_;
};

}  // namespace protolink
