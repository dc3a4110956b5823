// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "stream/xml_probe.h"

namespace protolink {

namespace {

constexpr std::string_view kWrapperName = "mrn";
/// The length of `<?xml version="1.0" encoding="UTF-8"?><mrn>`, which stands before the text.
constexpr std::uint32_t kWrapperStart = 43;

}  // namespace

XmlProbe::XmlProbe() : scanner_(kWrapperStart, kWrapperName, names_) {}

ProbeResult XmlProbe::probeXml(std::string_view text, std::size_t settled) {
    bool balanced = false;
    if (scanner_.looked() <= settled) {
        names_.open.forget();
        balanced = scanner_.scan(text.substr(0, settled));
        then_.reset();
    }
    if (settled < text.size()) {
        if (!then_) {
            then_ = scanner_;
            names_.open.remember();
        }
        balanced = scanner_.scan(text);
    }
    if (balanced) return {true};
    const BalanceScanner::Stop& stop = scanner_.stop();
    return {false, stop.errorCode, stop.line, stop.column};
}

void XmlProbe::changed(std::size_t from) {
    if (from >= scanner_.looked()) return;
    if (!then_ || from < then_->looked()) return reset();
    scanner_ = *then_;
    names_.open.goBack();
}

void XmlProbe::reset() {
    names_.open.clear();
    names_.attributes.clear();
    then_.reset();
    scanner_ = BalanceScanner(kWrapperStart, kWrapperName, names_);
}

}  // namespace protolink
