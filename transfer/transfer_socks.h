// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The place of a third way to move a file. It is not one yet, and nothing makes an instance.
#pragma once

#include "transfer/transfer_base.h"

namespace protolink {

/// Bytes through a SOCKS5 proxy, XEP-0065.
class CTransferSocks : public CTransferBase {
public:
    ~CTransferSocks() override = default;
};

}  // namespace protolink
