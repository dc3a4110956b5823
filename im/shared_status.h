// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The status that all clients of one account share ("google:shared-status").
#pragma once

#include <string>

#include "host/util/xml_element.h"
#include "plugin/status.h"

namespace protolink {

class SharedStatus {
public:
    /// What a push of the server says; what it does not say stays as it was.
    struct Push {
        Status status;
        std::u16string description;
        bool invisible;
    };

    /// Keeps the server's reply, which is sent back with changes at each change of status.
    void remember(const xmlElement& iq) { sharedStatusElement_ = iq; }
    void reset() { sharedStatusElement_.reset(); }

    /// Writes the status into the remembered element and gives it as the stanza to send. The lists of texts that the
    /// server keeps are left as it sent them.
    std::u16string rewrite(const std::u16string& bareJid, Status status, const std::u16string& description);

    static Push read(const xmlElement& query, Status current, const std::u16string& currentDescription);

private:
    xmlElement sharedStatusElement_;
};

}  // namespace protolink
