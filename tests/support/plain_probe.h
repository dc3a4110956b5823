// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The balance check by the letter, which the quick one is compared with.
#pragma once

#include <string_view>

#include "stream/xml_probe.h"

/// A fresh expat parser over the whole text in its wrapper.
protolink::ProbeResult probePlainly(std::string_view text);
