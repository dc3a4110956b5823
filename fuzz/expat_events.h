// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What expat makes of a text, for comparisons.
#pragma once

#include <expat.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

namespace fuzz {

/// What to do at each event; the last gets the place in the text behind the event.
struct ExpatEvents {
    std::function<void(const char* name, const char** attributes)> start;
    std::function<void(const char* name, std::size_t end)> end;
    std::function<void(std::string_view text)> text;
};

/// Parses the text; false when it is not well formed. With `separator` names are told with their namespace before it.
inline bool parseWithExpat(std::string_view text, const ExpatEvents& events, char separator = 0) {
    struct Context {
        const ExpatEvents& events;
        XML_Parser parser;
    };
    const std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)> parser(
        separator ? XML_ParserCreateNS("UTF-8", separator) : XML_ParserCreate("UTF-8"), XML_ParserFree);
    Context context{events, parser.get()};
    XML_SetUserData(parser.get(), &context);
    XML_SetElementHandler(
        parser.get(),
        [](void* user, const char* name, const char** attributes) {
            static_cast<Context*>(user)->events.start(name, attributes);
        },
        [](void* user, const char* name) {
            const Context& own = *static_cast<Context*>(user);
            const auto begin = static_cast<std::size_t>(XML_GetCurrentByteIndex(own.parser));
            own.events.end(name, begin + static_cast<std::size_t>(XML_GetCurrentByteCount(own.parser)));
        });
    XML_SetCharacterDataHandler(parser.get(), [](void* user, const char* text, int length) {
        const Context& own = *static_cast<Context*>(user);
        if (own.events.text) own.events.text({text, static_cast<std::size_t>(length)});
    });
    return XML_Parse(parser.get(), text.data(), static_cast<int>(text.size()), XML_TRUE) == XML_STATUS_OK;
}

}  // namespace fuzz
