// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "plugin/account_settings.h"

#include <gtest/gtest.h>

#include "tests/support/recording_host.h"

using namespace protolink;

namespace {

class AccountSettingsTest : public testing::Test {
protected:
    AccountSettingsTest() {
        file["number"] = {false, 7, {}};
        file["text"] = {true, 0, "wartość"};
        settings.open(u"/profile/x.config");
    }
    ~AccountSettingsTest() override {
        settings.close();
        EXPECT_TRUE(host.complaints.empty()) << host.complaints.front();
    }

    harness::RecordingHost host;
    harness::SettingsFile& file = host.settingsFiles["/profile/x.config"];
    Host proxy{host.table(), host.module};
    AccountSettings settings{proxy};
};

TEST_F(AccountSettingsTest, ReadWhatTheHostHas) {
    EXPECT_EQ(settings.get(NumberSetting{u"number", 1}), 7);
    EXPECT_EQ(settings.get(TextSetting{u"text", u"other"}), u"wartość");
}

TEST_F(AccountSettingsTest, MissingNumberIsTheDefault) {
    EXPECT_EQ(settings.get(NumberSetting{u"none", 42}), 42);
    EXPECT_EQ(settings.get(NumberSetting{u"text", 42}), 42);
}

TEST_F(AccountSettingsTest, SwitchesAreOnWithAnyOtherNumberThanZero) {
    file["on"] = {false, -2, {}};
    file["off"] = {false, 0, {}};
    settings.open(u"/profile/x.config");
    EXPECT_TRUE(settings.get(SwitchSetting{u"on", false}));
    EXPECT_FALSE(settings.get(SwitchSetting{u"off", true}));
    EXPECT_TRUE(settings.get(SwitchSetting{u"none", true}));
    EXPECT_FALSE(settings.get(SwitchSetting{u"none", false}));
}

TEST_F(AccountSettingsTest, MissingTextIsTheDefault) {
    EXPECT_EQ(settings.get(TextSetting{u"none", u"other"}), u"other");
    EXPECT_EQ(settings.get(TextSetting{u"none", u""}), u"");
}

TEST_F(AccountSettingsTest, MissingTextIsTheDefaultCutToTheBuffer) {
    EXPECT_EQ(settings.get(TextSetting{u"none", std::u16string(4095, u'x').c_str()}), std::u16string(4095, u'x'));
    EXPECT_EQ(settings.get(TextSetting{u"none", std::u16string(5000, u'x').c_str()}), std::u16string(4095, u'x'));
}

TEST_F(AccountSettingsTest, LongTextOfTheHostFillsTheBuffer) {
    host.change("/profile/x.config", "long", harness::Setting{true, 0, std::string(5000, 'y')});
    EXPECT_EQ(settings.get(TextSetting{u"long", u""}), std::u16string(4095, u'y'));
}

TEST_F(AccountSettingsTest, NegativeNumbersKeepTheirSign) {
    settings.set(NumberSetting{u"negative", 0}, -5);
    EXPECT_EQ(settings.get(NumberSetting{u"negative", 0}), -5);
}

TEST_F(AccountSettingsTest, WhatWasSetIsReadAndSaved) {
    settings.set(TextSetting{u"new", u""}, u"");
    settings.set(NumberSetting{u"one", 0}, 1);
    EXPECT_EQ(settings.get(TextSetting{u"new", u"other"}), u"");
    settings.save();
    EXPECT_TRUE(file.count("new"));
    EXPECT_EQ(file["one"].number, 1);
}

}  // namespace
