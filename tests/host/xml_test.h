// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the tests of the XML tree share.
#pragma once

#include <ctime>
#include <string>
#include <string_view>
#include <vector>

#include "host/util/xml_parse.h"

inline std::vector<xmlElement> parsed(std::string_view text) {
    std::vector<xmlElement> out;
    lutXMLParseA(out, text);
    return out;
}

/// What was read, written again; elements one behind the other.
inline std::u16string readBack(std::string_view text) {
    std::u16string out;
    for (const xmlElement& element : parsed(text)) out += element.GetXML(1);
    return out;
}

inline std::string repeated(std::string_view text, std::size_t count) {
    std::string out;
    out.reserve(text.size() * count);
    for (; count; --count) out += text;
    return out;
}

/// Seconds of the processor, which other programs do not lengthen.
template <typename Work>
double processorSeconds(Work work) {
    const std::clock_t begin = std::clock();
    work();
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

/// How much slower a build with sanitizers may be.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr double kSlowness = 20;
#else
inline constexpr double kSlowness = 1;
#endif
