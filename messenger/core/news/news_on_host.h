// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "messenger/core/news/news_face.h"

namespace oku {

class Accounts;
class PersonalNews;
class Popups;

struct NewsParts {
    Accounts& accounts;
    PersonalNews& news;
    Popups& popups;
};

/// The face of news on the host's parts, which must outlive it.
std::unique_ptr<NewsFace> newsOnHost(const NewsParts& parts);

}  // namespace oku
