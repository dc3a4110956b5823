// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Trees of a million levels on a stack of 256 KiB: nothing may recurse.
#include <gtest/gtest.h>
#include <pthread.h>

#include <functional>

#include "tests/host/xml_test.h"

namespace {

constexpr std::size_t kLevels = 1'000'000;
constexpr std::size_t kStack = 256 * 1024;

void* call(void* work) {
    (*static_cast<std::function<void()>*>(work))();
    return nullptr;
}

void onSmallStack(std::function<void()> work) {
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, kStack), 0);
    pthread_t thread{};
    ASSERT_EQ(pthread_create(&thread, &attributes, call, &work), 0);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
    pthread_attr_destroy(&attributes);
}

std::string nested(std::string_view opening, std::string_view closing) {
    return repeated(opening, kLevels) + repeated(closing, kLevels);
}

void liveThrough(std::string_view opening, std::string_view closing, std::string_view written) {
    onSmallStack([&] {
        std::vector<xmlElement> out = parsed(nested(opening, closing));
        ASSERT_EQ(out.size(), 1u);
        xmlElement copy(u"old");
        copy = out[0];
        out.clear();
        EXPECT_EQ(copy.GetXML(1).size(), written.size() * kLevels);
        const xmlElement* const below = copy.children.data();
        xmlElement moved = std::move(copy);
        EXPECT_EQ(moved.children.data(), below);
        moved = xmlElement();
    });
}

TEST(XmlDeep, AMillionLevels) { liveThrough("<a><b/>", "</a>", "<a><b/></a>"); }

TEST(XmlDeep, AMillionLevelsWithSiblingsBeforeAndBehind) {
    liveThrough("<a b='1'><c>x</c>", "<d/></a>", "<a b=\"1\"><c>x</c><d/></a>");
}

TEST(XmlDeep, AMillionLevelsThatNeverEnd) {
    onSmallStack([] { EXPECT_EQ(readBack("<ok/>" + repeated("<a>", kLevels)), u"<ok/>"); });
}

TEST(XmlDeep, ADeepTreeIsReplacedByItsLowestPart) {
    onSmallStack([] {
        xmlElement tree = parsed(repeated("<a>", kLevels) + "<z>end</z>" + repeated("</a>", kLevels)).at(0);
        const xmlElement* lowest = &tree;
        while (!lowest->children.empty()) lowest = &lowest->children[0];
        tree = *lowest;
        EXPECT_EQ(tree.GetXML(1), u"<z>end</z>");
    });
}

TEST(XmlDeep, ChildrenOfADeepTreeCanGoOneByOne) {
    onSmallStack([] {
        xmlElement tree(u"root");
        const xmlElement deep = parsed(nested("<a>", "</a>")).at(0);
        tree.SetChild(deep, false);
        tree.SetChild(deep, true);
        tree.children.erase(tree.children.begin());
        tree.children.pop_back();
        EXPECT_EQ(tree.GetXML(1), u"<root/>");
    });
}

TEST(XmlDeep, AMillionSiblings) {
    onSmallStack([] {
        const xmlElement wide = parsed("<a>" + repeated("<b><c/></b>", kLevels) + "</a>").at(0);
        EXPECT_EQ(wide.children.size(), kLevels);
        EXPECT_EQ(xmlElement(wide).GetXML(1).size(), 7 + 11 * kLevels);
    });
}

}  // namespace
