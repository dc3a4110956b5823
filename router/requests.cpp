// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "router/requests.h"

namespace protolink {

std::u16string Requests::await(Answer answer) {
    std::u16string id = generateId();
    await(id, std::move(answer));
    return id;
}

void Requests::await(const std::u16string& id, Answer answer) {
    dispatcher_.addHandler([answer = std::move(answer)](xmlElement& reply, void*) { answer(reply); }, id, this);
}

}  // namespace protolink
