// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the host opens with the program that the user's system has for it.
#pragma once

#include <string>

#include "host/host.h"
#include "host/record.h"

namespace protolink {

class Links {
public:
    explicit Links(const Host& host) : host_(host) {}

    void open(const std::u16string& address) const { host_.call(u"UI/OpenLink", toWord(address)); }

private:
    const Host& host_;
};

}  // namespace protolink
