// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "messenger/core/cards/cards_face.h"

namespace oku {

class Accounts;
class ContactCards;
class ContactPictures;
class OwnCards;
class OwnPictureFile;

struct CardParts {
    Accounts& accounts;
    ContactCards& contactCards;
    OwnCards& ownCards;
    OwnPictureFile& ownPicture;
    ContactPictures& pictures;
};

/// The face of cards and pictures on the host's parts, which must outlive it.
std::unique_ptr<CardsFace> cardsOnHost(const CardParts& parts);

}  // namespace oku
