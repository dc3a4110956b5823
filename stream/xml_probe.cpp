#include "stream/xml_probe.h"

#include <expat.h>

#include <limits>
#include <memory>
#include <string>
#include <type_traits>

namespace {

constexpr std::string_view kWrapperStart = R"(<?xml version="1.0" encoding="UTF-8"?><mrn>)";
constexpr std::string_view kWrapperEnd = "</mrn>";
constexpr std::string_view kWrapperName = "mrn";

/// So many bytes behind an error cannot be part of the character that it is about.
constexpr std::size_t kSafeDistance = 8;

struct ParserFree {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using ParserPointer = std::unique_ptr<std::remove_pointer_t<XML_Parser>, ParserFree>;

struct Depth {
    std::int64_t value = 1;
};

void XMLCALL onStart(void* depth, const XML_Char*, const XML_Char**) { ++static_cast<Depth*>(depth)->value; }
void XMLCALL onEnd(void* depth, const XML_Char*) { --static_cast<Depth*>(depth)->value; }

/// Errors that expat tells at the beginning of what has not ended yet.
bool waitsForMore(std::uint32_t errorCode) {
    return errorCode == XML_ERROR_UNCLOSED_TOKEN || errorCode == XML_ERROR_UNCLOSED_CDATA_SECTION ||
           errorCode == XML_ERROR_PARTIAL_CHAR || errorCode == XML_ERROR_NO_ELEMENTS;
}

struct PlainProbe {
    ProbeResult result;
    std::size_t stoppedAt = 0;  // in the text itself; 0 when it is before it
};

PlainProbe runExpat(std::string_view text) {
    PlainProbe probe;
    const ParserPointer parser(XML_ParserCreate_MM(nullptr, nullptr, nullptr));
    const std::size_t size = kWrapperStart.size() + text.size() + kWrapperEnd.size();
    if (!parser || size > static_cast<std::size_t>(std::numeric_limits<int>::max())) return probe;
    Depth depth;
    XML_SetStartElementHandler(parser.get(), onStart);
    XML_SetEndElementHandler(parser.get(), onEnd);
    XML_SetUserData(parser.get(), &depth);
    std::string wrapped;
    wrapped.reserve(size);
    wrapped.append(kWrapperStart).append(text).append(kWrapperEnd);
    XML_Parse(parser.get(), wrapped.data(), static_cast<int>(size), XML_TRUE);
    probe.result = {depth.value == 1, static_cast<std::uint32_t>(XML_GetErrorCode(parser.get())),
                    static_cast<std::uint32_t>(XML_GetCurrentLineNumber(parser.get())),
                    static_cast<std::uint32_t>(XML_GetCurrentColumnNumber(parser.get()))};
    const auto index = static_cast<std::size_t>(std::max<XML_Index>(XML_GetCurrentByteIndex(parser.get()), 0));
    probe.stoppedAt = index > kWrapperStart.size() ? index - kWrapperStart.size() : 0;
    return probe;
}

}  // namespace

ProbeResult probePlainly(std::string_view text) { return runExpat(text).result; }

XmlProbe::XmlProbe() : scanner_(static_cast<std::uint32_t>(kWrapperStart.size()), kWrapperName) {}

ProbeResult XmlProbe::probeXml(std::string_view text) {
    if (settled_) return final_;
    switch (scanner_.scan(text)) {
        case BalanceScanner::Verdict::Balanced:
            return {true};
        case BalanceScanner::Verdict::Incomplete:
            return {false, scanner_.stop().errorCode, scanner_.stop().line, scanner_.stop().column};
        case BalanceScanner::Verdict::Unsure:
            break;
    }
    const PlainProbe plain = runExpat(text);
    settledBy_ = plain.stoppedAt + kSafeDistance;
    settled_ = !plain.result.balanced && settledBy_ < text.size() && !waitsForMore(plain.result.errorCode);
    if (settled_) final_ = plain.result;
    return plain.result;
}

void XmlProbe::changed(std::size_t from) {
    if (from < settledBy_) settled_ = false;
    scanner_.changed(from);
}

void XmlProbe::reset() {
    scanner_.reset();
    settled_ = false;
    settledBy_ = 0;
}
