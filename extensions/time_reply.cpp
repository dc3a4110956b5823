// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "extensions/time_reply.h"

#include <chrono>
#include <cstdlib>

#include "host/util/format.h"
#include "host/util/xml_compose.h"
#include "platform/platform.h"
#include "router/namespaces.h"

namespace protolink {

std::u16string timeZoneOffset(std::int32_t biasMinutes) {
    return formatText(u"%02d:%02d", biasMinutes / 60, std::abs(biasMinutes % 60));
}

std::u16string utcTime(std::int64_t secondsSinceEpoch) {
    using namespace std::chrono;
    const sys_seconds moment{seconds{secondsSinceEpoch}};
    const sys_days day = floor<days>(moment);
    const year_month_day date{day};
    const hh_mm_ss time{moment - day};
    return formatText(u"%04d-%02d-%02dT%02d:%02d:%02dZ", static_cast<int>(date.year()),
                      static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), time.hours().count(),
                      time.minutes().count(), time.seconds().count());
}

void TimeReply::onTimeIq(const Stanza& iq) const {
    if (iq.type != u"get") return;
    client_.log(LogLevel::Debug, tag::kGeneral, u"Time info request form: " + std::u16string(iq.from));
    const std::u16string content =
        lutCPW(u"tzo", timeZoneOffset(platform::timeZoneBias())) + lutCPW(u"utc", utcTime(platform::now()));
    output_.sendText(lutCPW(u"iq", lutCPW(u"time", content, {{u"xmlns", ns::kTime}}),
                            {{u"type", u"result"}, {u"to", iq.from}, {u"id", iq.id}}));
}

}  // namespace protolink
