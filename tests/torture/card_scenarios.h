// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Pictures and cards, as an account comes across them.
#pragma once

#include "tests/torture/client.h"

namespace torture {

void logInWithNodes(Client& client);
/// Pictures that contacts announce, by each of the three roads.
void announcedPictures(Client& client);
/// A contact's card and the user's own, both ways.
void cards(Client& client);
/// The user's picture changes, is published, fetched back, and asked for.
void ownPicture(Client& client);

}  // namespace torture
