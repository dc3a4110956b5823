// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The element tree as a value.
#include "host/util/xml_element.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "tests/host/xml_test.h"

namespace {

static_assert(std::is_nothrow_move_constructible_v<xmlElement> && std::is_nothrow_move_assignable_v<xmlElement>,
              "sequences of elements grow by moving");

xmlElement sample() {
    return parsed(
               "<message from='a@b/c' type='chat'>"
               "<x xmlns='jabber:x:delay' stamp='1'/><x xmlns='jabber:x:event'>composing</x>"
               "<body>first</body><body>second</body></message>")
        .at(0);
}

TEST(XmlElement, ConstructorsFillWhatTheyAreGiven) {
    const xmlElement empty;
    EXPECT_TRUE(empty.name.empty() && empty.text.empty() && empty.attributes.empty() && empty.children.empty());
    EXPECT_EQ(xmlElement(u"a").name, u"a");
    const xmlElement both(u"a", u"text");
    EXPECT_EQ(both.name, u"a");
    EXPECT_EQ(both.text, u"text");
}

TEST(XmlElement, GetChildOfAnAbsentNameIsEmptyAndCanBeChained) {
    const xmlElement element = sample();
    EXPECT_EQ(element.GetChild(u"absent").text, u"");
    EXPECT_EQ(element.GetChild(u"absent").GetChild(u"absent").text, u"");
    EXPECT_EQ(element.GetChild(u"body", u"urn:absent").name, u"");
}

TEST(XmlElement, GetAttributeOfAnAbsentNameGivesTheDefault) {
    const xmlElement element = sample();
    EXPECT_EQ(element.GetAttribute(u"absent", u"default"), u"default");
    EXPECT_EQ(element.GetAttribute(u"absent", u""), u"");
    EXPECT_EQ(element.GetAttribute(u"absent"), u"");
    EXPECT_EQ(element.GetAttribute(u"type", u"default"), u"chat");
    EXPECT_FALSE(element.HasAttribute(u"absent"));
    EXPECT_TRUE(element.HasAttribute(u"type"));
}

TEST(XmlElement, AnEmptyAttributeIsNotAbsent) {
    xmlElement element(u"a");
    element.SetAttribute(u"b", u"");
    EXPECT_TRUE(element.HasAttribute(u"b"));
    EXPECT_EQ(element.GetAttribute(u"b", u"default"), u"");
}

TEST(XmlElement, GetChildPtrWithANamespaceSkipsTheSameNameInAnother) {
    const xmlElement element = sample();
    const xmlElement* const event = element.GetChildPtr(u"x", u"jabber:x:event");
    ASSERT_NE(event, nullptr);
    EXPECT_EQ(event->text, u"composing");
    EXPECT_EQ(element.GetChildPtr(u"x", u"jabber:x:oob"), nullptr);
    EXPECT_EQ(element.GetChildPtr(u"body", u""), nullptr) << "no namespace is not the empty one";
}

TEST(XmlElement, GetChildPtrFindsByAnAttribute) {
    const xmlElement element = sample();
    const xmlElement* const delay = element.GetChildPtr(u"x", u"stamp", u"1");
    ASSERT_NE(delay, nullptr);
    EXPECT_EQ(delay->GetAttribute(u"xmlns"), u"jabber:x:delay");
    EXPECT_EQ(element.GetChildPtr(u"x", u"stamp", u"2"), nullptr);
    EXPECT_EQ(element.GetChildPtr(u"y", u"stamp", u"1"), nullptr);
}

TEST(XmlElement, OfTwoChildrenOfOneNameTheFirstIsFound) {
    const xmlElement element = sample();
    EXPECT_EQ(element.GetChild(u"body").text, u"first");
    EXPECT_EQ(element.GetChildPtr(u"body"), &element.children[2]);
}

TEST(XmlElement, OfTwoChildrenOfOneNameTheOneOfTheNamespaceIsFound) {
    xmlElement element(u"a");
    element.SetChild(xmlElement(u"x", u"plain"));
    element.SetChild(xmlElement(u"x", u"named"))->SetAttribute(u"xmlns", u"urn:present");
    EXPECT_EQ(element.GetChild(u"x", u"urn:present").text, u"named");
}

TEST(XmlElement, NamesAreComparedExactly) {
    const xmlElement element = sample();
    EXPECT_EQ(element.GetChildPtr(u"Body"), nullptr);
    EXPECT_EQ(element.GetChildPtr(u"bod"), nullptr);
    EXPECT_FALSE(element.HasAttribute(u"Type"));
}

TEST(XmlElement, AFoundChildCanBeChanged) {
    xmlElement element = sample();
    element.GetChildPtr(u"body")->text = u"changed";
    element.GetChildPtr(u"x", u"jabber:x:event")->text = u"gone";
    element.GetChildPtr(u"x", u"stamp", u"1")->text = u"late";
    EXPECT_EQ(element.children[2].text, u"changed");
    EXPECT_EQ(element.children[1].text, u"gone");
    EXPECT_EQ(element.children[0].text, u"late");
}

TEST(XmlElement, SetAttributeSetsAndReplaces) {
    xmlElement element(u"presence");
    element.SetAttribute(u"type", u"a");
    element.SetAttribute(u"to", u"b");
    element.SetAttribute(u"type", u"c");
    EXPECT_EQ(element.GetXML(1), u"<presence type=\"c\" to=\"b\"/>");
}

TEST(XmlElement, SetChildAppendsOrPutsFirst) {
    xmlElement element(u"a");
    EXPECT_EQ(element.SetChild(xmlElement(u"b"), false)->name, u"b");
    const xmlElement* stored = element.SetChild(xmlElement(u"c"), false);
    EXPECT_EQ(stored, &element.children[1]);
    stored = element.SetChild(xmlElement(u"d"), true);
    EXPECT_EQ(stored, &element.children[0]);
    EXPECT_EQ(element.GetXML(1), u"<a><d/><b/><c/></a>");
}

TEST(XmlElement, SetChildTakesACopy) {
    xmlElement child(u"b");
    xmlElement element(u"a");
    element.SetChild(child, false)->text = u"stored";
    EXPECT_EQ(child.text, u"");
    child.name = u"c";
    EXPECT_EQ(element.GetXML(1), u"<a><b>stored</b></a>");
}

TEST(XmlElement, AnElementCanBecomeItsOwnChild) {
    xmlElement element(u"a");
    element.SetChild(xmlElement(u"b"), false);
    element.SetChild(element, false);
    element.SetChild(element.children[0], true);
    EXPECT_EQ(element.GetXML(1), u"<a><b/><b/><a><b/></a></a>");
}

TEST(XmlElement, CopiesAreIndependent) {
    const xmlElement original = sample();
    xmlElement copy = original;
    EXPECT_EQ(copy.GetXML(1), original.GetXML(1));
    copy.GetChildPtr(u"body")->text = u"changed";
    copy.SetAttribute(u"type", u"headline");
    EXPECT_EQ(original.GetXML(1), sample().GetXML(1));

    xmlElement child = copy.GetChild(u"body");
    child.text = u"mine";
    EXPECT_EQ(copy.GetChild(u"body").text, u"changed");
}

TEST(XmlElement, AssignmentReplacesTheWholeTree) {
    xmlElement element = sample();
    element = parsed("<a b='c'>d<e/></a>").at(0);
    EXPECT_EQ(element.GetXML(1), u"<a b=\"c\">d<e/></a>");
    const xmlElement other(u"x");
    element = other;
    EXPECT_EQ(element.GetXML(1), u"<x/>");
}

TEST(XmlElement, ATreeCanBeReplacedByAPartOfItself) {
    xmlElement element = parsed("<a><b><c>text</c></b></a>").at(0);
    element = element.children[0];
    EXPECT_EQ(element.GetXML(1), u"<b><c>text</c></b>");
    element = std::move(element.children[0]);
    EXPECT_EQ(element.GetXML(1), u"<c>text</c>");
}

TEST(XmlElement, AssignmentToItselfChangesNothing) {
    xmlElement element = sample();
    xmlElement& same = element;
    element = same;
    EXPECT_EQ(element.GetXML(1), sample().GetXML(1));
    element = std::move(same);
    EXPECT_EQ(element.GetXML(1), sample().GetXML(1));
}

TEST(XmlElement, AMovedTreeIsTheSameTree) {
    xmlElement element = sample();
    const xmlElement* const body = element.GetChildPtr(u"body");
    const xmlElement moved = std::move(element);
    EXPECT_EQ(moved.GetChildPtr(u"body"), body) << "nothing was copied";
}

TEST(XmlElement, ResetEmptiesTheElement) {
    xmlElement element = sample();
    element.reset();
    EXPECT_TRUE(element.name.empty() && element.text.empty() && element.attributes.empty() && element.children.empty());
}

TEST(XmlElement, GetXmlEscapesTextAndValues) {
    xmlElement element(u"a", u"<&>\"'");
    element.SetAttribute(u"b", u"<&>\"'");
    EXPECT_EQ(element.GetXML(1), u"<a b=\"&lt;&amp;&gt;&quot;&apos;\">&lt;&amp;&gt;&quot;&apos;</a>");
}

TEST(XmlElement, GetXmlIsTheSameForStanzasAndFiles) { EXPECT_EQ(sample().GetXML(0), sample().GetXML(1)); }

TEST(XmlElement, GetXmlWritesTextBeforeChildren) {
    EXPECT_EQ(readBack("<a>one<b/>two</a>"), u"<a>onetwo<b/></a>");
    EXPECT_EQ(readBack("<a></a>"), u"<a/>");
    EXPECT_EQ(readBack("<a><b>x</b></a>"), u"<a><b>x</b></a>");
}

TEST(XmlElement, GetXmlKeepsWhiteSpaceThatAReaderWouldChange) {
    xmlElement element(u"a", u"\r\n\t");
    element.SetAttribute(u"b", u"\r\n\t");
    EXPECT_EQ(element.GetXML(0), u"<a b=\"&#13;&#10;&#9;\">&#13;\n\t</a>");
}

TEST(XmlElement, GetXmlLeavesOutWhatXmlDoesNotAllow) {
    const xmlElement element(u"a", std::u16string(u"x\0\x01\xFFFE\xD800y", 6));
    EXPECT_EQ(element.GetXML(1), u"<a>xy</a>");
}

TEST(XmlElement, GetXmlOfANamelessElementIsEmpty) {
    EXPECT_EQ(xmlElement().GetXML(1), u"");
    xmlElement element(u"a");
    element.SetChild(xmlElement(u"", u"lost"), false);
    EXPECT_EQ(element.GetXML(1), u"<a></a>");
}

}  // namespace
