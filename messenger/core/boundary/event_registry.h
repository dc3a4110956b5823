// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "host/oku/base.h"

namespace oku {

/// Events and the handlers that are attached to them. An event is known by its name: a handler may be attached before
/// the event is made, and stays when the event goes.
class EventRegistry {
public:
    OKU_WORD createEvent(std::u16string_view name);
    void destroyEvent(OKU_WORD event);
    /// Tells the listeners of an event by its handle; 0 for an unknown one.
    OKU_WORD notify(OKU_WORD event, OKU_WORD param, OKU_WORD extra);

    OKU_WORD addHook(std::u16string_view name, OKU_HANDLER handler, OKU_WORD context);
    void removeHook(OKU_WORD handle);
    /// Calls the handlers in the order in which they were attached, up to the first that gives something other than 0,
    /// and returns that. A handler may attach and remove any handler meanwhile: one that is removed is not called any
    /// more, one that is added waits for the next time.
    OKU_WORD fire(std::u16string_view name, OKU_WORD param, OKU_WORD extra);

    [[nodiscard]] std::size_t hooks() const { return hooks_.size(); }
    void dropPlugin();

private:
    struct Hook {
        std::u16string name;
        OKU_HANDLER handler;
        OKU_WORD context;
    };
    std::map<OKU_WORD, Hook> hooks_;  ///< handles grow, so this is the order of attachment
    std::map<OKU_WORD, std::u16string> events_;
    OKU_WORD lastHandle_ = 0;
};

}  // namespace oku
