// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/services/file_publishing.h"

#include <algorithm>
#include <iterator>

#include "host/oku/transfer.h"
#include "host/record.h"

namespace protolink {

bool FilePublishing::enabled() const { return host_.call(u"OK7/IsEnabled", 0) != 0; }

std::u16string FilePublishing::prepare(const std::u16string& path, CallbackTarget state,
                                       CallbackTarget progress) const {
    auto result = makeRecord<OK7_PREPARE_RESULT>();
    result.path = path.c_str();
    auto record = makeRecord<OK7_PREPARE_RECORD>();
    record.result = &result;
    record.stateCallback = state.callback;
    record.stateData = state.context;
    record.progressCallback = progress.callback;
    record.progressData = progress.context;
    host_.call(u"OK7/PrepareFile", toWord(&record));
    // A host that fills the array to its last character leaves no room for the NUL.
    return std::u16string(std::begin(result.url), std::find(std::begin(result.url), std::end(result.url) - 1, u'\0'));
}

}  // namespace protolink
