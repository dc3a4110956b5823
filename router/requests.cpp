// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "router/requests.h"

#include "plugin/identifiers.h"

namespace protolink {

std::u16string Requests::await(Answer answer) {
    std::u16string id = generateId();
    dispatcher_.addHandler([answer = std::move(answer)](xmlElement& reply, void*) { answer(reply); }, id, this);
    return id;
}

}  // namespace protolink
