// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/support/plain_probe.h"

#include <expat.h>

#include <limits>
#include <memory>
#include <string>
#include <type_traits>

namespace {

constexpr std::string_view kWrapperStart = R"(<?xml version="1.0" encoding="UTF-8"?><mrn>)";
constexpr std::string_view kWrapperEnd = "</mrn>";

struct ParserFree {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using ParserPointer = std::unique_ptr<std::remove_pointer_t<XML_Parser>, ParserFree>;

struct Depth {
    std::int64_t value = 1;
};

void XMLCALL onStart(void* depth, const XML_Char*, const XML_Char**) { ++static_cast<Depth*>(depth)->value; }
void XMLCALL onEnd(void* depth, const XML_Char*) { --static_cast<Depth*>(depth)->value; }

}  // namespace

protolink::ProbeResult probePlainly(std::string_view text) {
    const ParserPointer parser(XML_ParserCreate_MM(nullptr, nullptr, nullptr));
    const std::size_t size = kWrapperStart.size() + text.size() + kWrapperEnd.size();
    if (!parser || size > static_cast<std::size_t>(std::numeric_limits<int>::max())) return {};
    Depth depth;
    XML_SetStartElementHandler(parser.get(), onStart);
    XML_SetEndElementHandler(parser.get(), onEnd);
    XML_SetUserData(parser.get(), &depth);
    std::string wrapped;
    wrapped.reserve(size);
    wrapped.append(kWrapperStart).append(text).append(kWrapperEnd);
    XML_Parse(parser.get(), wrapped.data(), static_cast<int>(size), XML_TRUE);
    return {depth.value == 1, static_cast<std::uint32_t>(XML_GetErrorCode(parser.get())),
            static_cast<std::uint32_t>(XML_GetCurrentLineNumber(parser.get())),
            static_cast<std::uint32_t>(XML_GetCurrentColumnNumber(parser.get()))};
}
