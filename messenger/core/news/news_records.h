// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include "host/oku/pep.h"
#include "messenger/core/values/news.h"

/// Personal events as records and as values.
namespace oku {

/// The records of values; they point into these, which must outlive them. What is empty is null.
OKU_PEP_TUNE_DATA recordOf(const Tune& tune);
OKU_PEP_MOOD_DATA recordOf(const Mood& mood);
OKU_PEP_LOCATION_DATA recordOf(const Location& location);

Tune valueOf(const OKU_PEP_TUNE_DATA& record);
Mood valueOf(const OKU_PEP_MOOD_DATA& record);
Location valueOf(const OKU_PEP_LOCATION_DATA& record);

}  // namespace oku
