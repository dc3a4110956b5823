// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The user's choice of a file to send.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "transfer/session_manager.h"

namespace protolink {

class FileChoice {
public:
    FileChoice(CClientClass& client, CSessionManager& sessions) : client_(client), sessions_(sessions) {}
    ~FileChoice() { end(); }
    FileChoice(const FileChoice&) = delete;
    FileChoice& operator=(const FileChoice&) = delete;

    /// The host's service that asks for a file and offers it to a contact. 1 when a chooser has opened.
    OKU_WORD onInitSendFile(OKU_WORD contactRecord);
    /// Forgets the choosers that are still open.
    void end();

    /// A chooser that is open.
    struct Pending {
        FileChoice& owner;
        std::u16string contact;
    };

private:
    static OKU_WORD OKU_CALL onChoice(OKU_WORD choiceRecord, OKU_WORD, OKU_WORD context) noexcept;
    void forget(OKU_WORD context);

    CClientClass& client_;
    CSessionManager& sessions_;
    std::map<OKU_WORD, std::unique_ptr<Pending>> pending_;  // by context word
};

}  // namespace protolink
