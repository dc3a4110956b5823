// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "messenger/core/transfers/transfers_face.h"

namespace oku {

class Accounts;
class FileChoosers;
class FileOffers;
class ReceivedFiles;
class TransferWindows;

struct TransferParts {
    Accounts& accounts;
    TransferWindows& windows;
    FileOffers& offers;
    FileChoosers& choosers;
    ReceivedFiles& received;
};

/// The face of transfers on the host's parts, which must outlive it.
std::unique_ptr<TransfersFace> transfersOnHost(const TransferParts& parts);

}  // namespace oku
