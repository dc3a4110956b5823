// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "router/event_dispatcher.h"

#include <gtest/gtest.h>

#include <vector>

using namespace protolink;

namespace {

xmlElement stanza(std::u16string_view id) {
    xmlElement element(u"iq");
    element.SetAttribute(u"id", id);
    return element;
}

class EventDispatcher : public testing::Test {
public:
    auto noting(int number) {
        return [this, number](xmlElement&, void*) { fired.push_back(number); };
    }
    bool dispatch(std::u16string_view id) {
        auto element = stanza(id);
        return dispatcher.dispatch(element);
    }

    CProtoEventDispatcher dispatcher;
    std::vector<int> fired;
};

struct Target : CXMLTarget {
    explicit Target(std::vector<int>& list) : fired(list) {}
    void onXMLResult(xmlElement&, void*) override { fired.push_back(100); }
    std::vector<int>& fired;
};

TEST_F(EventDispatcher, IdOfOneCharacterNeverMatches) {
    dispatcher.addHandler(noting(1), u"a", nullptr);
    dispatcher.addHandler(noting(2), u"", nullptr);
    EXPECT_FALSE(dispatch(u"a"));
    EXPECT_FALSE(dispatch(u""));
    EXPECT_TRUE(fired.empty());
}

TEST_F(EventDispatcher, IdOfTwoCharactersMatches) {
    dispatcher.addHandler(noting(1), u"ab", nullptr);
    EXPECT_TRUE(dispatch(u"ab"));
}

TEST_F(EventDispatcher, EntryFiresOnce) {
    dispatcher.addHandler(noting(1), u"id", nullptr);
    EXPECT_TRUE(dispatch(u"id"));
    EXPECT_FALSE(dispatch(u"id"));
    EXPECT_EQ(fired, std::vector<int>({1}));
}

TEST_F(EventDispatcher, OlderEntryOfOneIdFiresFirst) {
    dispatcher.addHandler(noting(1), u"id", nullptr);
    dispatcher.addHandler(noting(2), u"id", nullptr);
    dispatch(u"id");
    EXPECT_EQ(fired, std::vector<int>({1}));
    dispatch(u"id");
    EXPECT_EQ(fired, std::vector<int>({1, 2}));
}

TEST_F(EventDispatcher, IdsAreComparedExactly) {
    dispatcher.addHandler(noting(1), u"Id", nullptr);
    EXPECT_FALSE(dispatch(u"id"));
    EXPECT_FALSE(dispatch(u"Id "));
    EXPECT_TRUE(dispatch(u"Id"));
}

TEST_F(EventDispatcher, TargetGetsElementAndUser) {
    Target target(fired);
    dispatcher.addTarget(target, u"id", nullptr);
    EXPECT_TRUE(dispatch(u"id"));
    EXPECT_EQ(fired, std::vector<int>({100}));
}

TEST_F(EventDispatcher, TargetThatDispatchesTheElementAgainFiresOnce) {
    struct Echo : CXMLTarget {
        explicit Echo(EventDispatcher& fixture) : test(fixture) {}
        void onXMLResult(xmlElement& element, void*) override {
            test.fired.push_back(100);
            EXPECT_FALSE(test.dispatcher.dispatch(element));
        }
        EventDispatcher& test;
    } target(*this);
    dispatcher.addTarget(target, u"id", nullptr);
    EXPECT_TRUE(dispatch(u"id"));
    EXPECT_EQ(fired, std::vector<int>({100}));
}

TEST_F(EventDispatcher, HandlerMayAddEntriesWhileItIsFired) {
    dispatcher.addHandler(
        [this](xmlElement&, void*) {
            fired.push_back(1);
            for (int i = 0; i < 100; ++i) dispatcher.addHandler(noting(2), u"id", nullptr);
        },
        u"id", nullptr);
    dispatch(u"id");
    EXPECT_EQ(fired, std::vector<int>({1}));
    dispatch(u"id");
    EXPECT_EQ(fired, std::vector<int>({1, 2}));
}

TEST_F(EventDispatcher, HandlerMayRemoveOthersAndAllWhileItIsFired) {
    int user = 0;
    Target target(fired);
    dispatcher.addHandler(
        [&](xmlElement&, void* given) {
            fired.push_back(1);
            dispatcher.removeByUser(given);
            dispatcher.removeByTarget(target);
            dispatcher.clear();
        },
        u"id", &user);
    dispatcher.addHandler(noting(2), u"id", &user);
    dispatcher.addTarget(target, u"other", nullptr);
    dispatch(u"id");
    EXPECT_FALSE(dispatch(u"id"));
    EXPECT_FALSE(dispatch(u"other"));
    EXPECT_EQ(fired, std::vector<int>({1}));
}

TEST_F(EventDispatcher, EntriesOfAUserGoTogether) {
    int one = 0;
    int two = 0;
    dispatcher.addHandler(noting(1), u"a1", &one);
    dispatcher.addHandler(noting(2), u"a2", &two);
    dispatcher.addHandler(noting(3), u"a3", &one);
    dispatcher.removeByUser(&one);
    EXPECT_FALSE(dispatch(u"a1"));
    EXPECT_TRUE(dispatch(u"a2"));
    EXPECT_FALSE(dispatch(u"a3"));
}

TEST_F(EventDispatcher, EntriesOfATargetGoTogether) {
    Target gone(fired);
    Target stays(fired);
    dispatcher.addTarget(gone, u"a1", nullptr);
    dispatcher.addTarget(stays, u"a2", nullptr);
    dispatcher.removeByTarget(gone);
    EXPECT_FALSE(dispatch(u"a1"));
    EXPECT_TRUE(dispatch(u"a2"));
}

TEST_F(EventDispatcher, ClearingDeliversNothing) {
    dispatcher.addHandler(noting(1), u"a1", nullptr);
    dispatcher.clear();
    EXPECT_FALSE(dispatch(u"a1"));
    EXPECT_TRUE(fired.empty());
}

TEST_F(EventDispatcher, HandlerMayChangeTheIdAndDispatchAgain) {
    dispatcher.addHandler(
        [this](xmlElement& element, void*) {
            fired.push_back(1);
            element.SetAttribute(u"id", u"dummy");
            dispatcher.dispatch(element);
        },
        u"id", nullptr);
    dispatcher.addHandler(noting(2), u"dummy", nullptr);
    dispatch(u"id");
    EXPECT_EQ(fired, std::vector<int>({1, 2}));
}

}  // namespace
