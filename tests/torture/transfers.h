// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// File transfers of one account, as hosts, peers and the web make them.
#pragma once

#include <string>

#include "tests/torture/client.h"

namespace torture {

/// Offers a file through the chooser to a contact whose client takes files. The offer's id stands in what was heard.
void offerFile(Client& client);
/// The peer takes the offer by a method, such as the namespace of the bytes in the stream.
void takeOffer(Client& client, const std::string& method);
/// A file from its offer to its last block, in the stream.
void sendFile(Client& client);
/// The same the other way.
void receiveFile(Client& client);
/// A file that the host publishes.
void publishFile(Client& client);
/// A peer's file that the web gives.
void downloadFile(Client& client);
/// The user cancels whatever has a window.
void cancelAll(Client& client);

}  // namespace torture
