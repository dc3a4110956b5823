#include "plugin/account_settings.h"

#include <gtest/gtest.h>

#include "tests/support/recording_host.h"

namespace {

class AccountSettingsTest : public testing::Test {
protected:
    AccountSettingsTest() {
        file["number"] = {false, 7, {}};
        file["text"] = {true, 0, "wartość"};
        settings.open(Host(host.table(), host.module), u"/profile/x.config");
    }
    ~AccountSettingsTest() override {
        settings.close();
        EXPECT_TRUE(host.complaints.empty()) << host.complaints.front();
    }

    harness::RecordingHost host;
    harness::SettingsFile& file = host.settingsFiles["/profile/x.config"];
    AccountSettings settings;
};

TEST_F(AccountSettingsTest, ReadWhatTheHostHas) {
    EXPECT_EQ(settings.getInt(u"number", 1), 7);
    EXPECT_EQ(settings.getString(u"text", u"other"), u"wartość");
}

TEST_F(AccountSettingsTest, MissingNumberIsTheDefault) {
    EXPECT_EQ(settings.getInt(u"none", 42), 42);
    EXPECT_EQ(settings.getInt(u"text", 42), 42);
}

TEST_F(AccountSettingsTest, MissingTextIsTheDefault) {
    EXPECT_EQ(settings.getString(u"none", u"other"), u"other");
    EXPECT_EQ(settings.getString(u"none"), u"");
}

TEST_F(AccountSettingsTest, MissingTextIsTheDefaultCutToTheBuffer) {
    EXPECT_EQ(settings.getString(u"none", std::u16string(4095, u'x')), std::u16string(4095, u'x'));
    EXPECT_EQ(settings.getString(u"none", std::u16string(5000, u'x')), std::u16string(4095, u'x'));
}

TEST_F(AccountSettingsTest, LongTextOfTheHostFillsTheBuffer) {
    host.change("/profile/x.config", "long", harness::Setting{true, 0, std::string(5000, 'y')});
    EXPECT_EQ(settings.getString(u"long"), std::u16string(4095, u'y'));
}

TEST_F(AccountSettingsTest, NegativeNumbersKeepTheirSign) {
    settings.setInt(u"negative", -5);
    EXPECT_EQ(settings.getInt(u"negative", 0), -5);
}

TEST_F(AccountSettingsTest, WhatWasSetIsReadAndSaved) {
    settings.setString(u"new", u"");
    settings.setInt(u"one", 1);
    EXPECT_EQ(settings.getString(u"new", u"other"), u"");
    settings.save();
    EXPECT_TRUE(file.count("new"));
    EXPECT_EQ(file["one"].number, 1);
}

}  // namespace
