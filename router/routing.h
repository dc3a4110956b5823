// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What became of an element.
#pragma once

namespace protolink {

enum class Routing {
    Done,     // it has found its place
    Next,     // the rows behind are asked
    Abandon,  // it has found its place, and what stands behind it in the same batch belongs to a stream that has ended
};

}  // namespace protolink
