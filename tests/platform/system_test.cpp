// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Clock, random values and what the system tells about itself.
#include <gtest/gtest.h>
#include <sys/utsname.h>
#include <time.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <optional>
#include <set>

#include "host/util/utf.h"
#include "platform/platform.h"

namespace {

/// Sets a variable of the environment for a test.
class Environment {
public:
    Environment(const char* name, const char* value) : name_(name) {
        if (const char* const before = std::getenv(name)) before_ = before;
        setenv(name, value, 1);
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    ~Environment() {
        if (before_)
            setenv(name_, before_->c_str(), 1);
        else
            unsetenv(name_);
    }

private:
    const char* name_;
    std::optional<std::string> before_;
};

TEST(Clock, NowIsTheSystemsTime) {
    // Two clocks of one system: the coarse one may lie a tick behind the other.
    const std::int64_t before = std::time(nullptr);
    const std::int64_t now = platform::now();
    EXPECT_GE(now, before - 1);
    EXPECT_LE(now, std::time(nullptr) + 1);
}

TEST(Clock, TicksAreMilliseconds) {
    const std::uint32_t before = platform::tickCount();
    usleep(30'000);
    const std::uint32_t passed = platform::tickCount() - before;
    EXPECT_GE(passed, 30u);
    EXPECT_LT(passed, 600'000u);
}

TEST(Clock, TheBiasIsTheOneOfStandardTime) {
    // Zones by their rules: no database of zones is needed.
    const std::pair<const char*, std::int32_t> zones[] = {
        {"UTC0", 0},
        {"CET-1CEST,M3.5.0,M10.5.0/3", -60},     // daylight saving in July
        {"EST5EDT,M3.2.0,M11.1.0", 300},         // west of Greenwich
        {"AEST-10AEDT,M10.1.0,M4.1.0/3", -600},  // daylight saving in January
        {"IST-5:30", -330},
        {"NST3:30NDT,M3.2.0,M11.1.0", 210},
        {"IST-1GMT0,M10.5.0,M3.5.0/1", 0},  // winter called the exception
    };
    for (const auto& [zone, bias] : zones) {
        const Environment environment("TZ", zone);
        EXPECT_EQ(platform::timeZoneBias(), bias) << zone;
    }
    tzset();
}

TEST(Random, ValuesDoNotRepeat) {
    std::set<std::uint32_t> values;
    for (int i = 0; i < 1000; ++i) values.insert(platform::nextRandom());
    EXPECT_GE(values.size(), 998u);
}

TEST(Random, EveryBitIsOneHalfOfTheTime) {
    constexpr int kValues = 20'000;
    int ones[32] = {};
    for (int i = 0; i < kValues; ++i) {
        const std::uint32_t value = platform::nextRandom();
        for (int bit = 0; bit < 32; ++bit) ones[bit] += value >> bit & 1;
    }
    // Seven standard deviations: a good generator fails once in ten billion runs.
    for (const int count : ones) EXPECT_NEAR(count, kValues / 2, 500);
}

TEST(Random, ASeedDoesNotMakeItPredictable) {
    std::set<std::uint32_t> values;
    for (int i = 0; i < 200; ++i) {
        platform::seedRandom(1);
        values.insert(platform::nextRandom());
    }
    EXPECT_GE(values.size(), 199u);
}

TEST(System, TheModulePathIsTheWholePathOfThisProgram) {
    const std::filesystem::path path = wtou(platform::modulePath());
    EXPECT_TRUE(path.is_absolute());
    EXPECT_TRUE(std::filesystem::equivalent(path, "/proc/self/exe")) << path;
}

TEST(System, TheOperatingSystemIsNameMachineVersion) {
    utsname names{};
    ASSERT_EQ(uname(&names), 0);
    int major = 0, minor = 0;
    ASSERT_EQ(std::sscanf(names.release, "%d.%d", &major, &minor), 2);
    const std::string expected =
        std::string(names.sysname) + " " + names.machine + " " + std::to_string(major) + "." + std::to_string(minor);
    EXPECT_EQ(wtou(platform::operatingSystem()), expected);
}

TEST(System, MultibyteTextInAPlainLocaleIsAscii) {
    const Environment environment("LC_ALL", "C");
    EXPECT_EQ(platform::wtom(u"abc"), "abc");
    EXPECT_EQ(platform::wtom(u"a\u017C\u20AC\U0001F600z"), "a???z");
    EXPECT_EQ(platform::mtow("abc"), u"abc");
    EXPECT_EQ(platform::mtow("a\xC5\xBCz"), u"a??z");
    EXPECT_EQ(platform::wtom(u""), "");
}

TEST(System, MultibyteTextInAUtf8LocaleIsUtf8) {
    const Environment environment("LC_ALL", "C.UTF-8");
    EXPECT_EQ(platform::wtom(u"za\u017C\U0001F600"), "za\xC5\xBC\xF0\x9F\x98\x80");
    EXPECT_EQ(platform::mtow("za\xC5\xBC\xF0\x9F\x98\x80"), u"za\u017C\U0001F600");
    EXPECT_EQ(platform::mtow("a\xFFz"), u"a?z");
    EXPECT_EQ(platform::mtow(std::string(3000, 'x')), std::u16string(3000, u'x'));
}

}  // namespace
