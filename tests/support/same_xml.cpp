// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/support/same_xml.h"

#include <expat.h>

#include <map>
#include <memory>
#include <vector>

#include "tests/support/text.h"

namespace harness {
namespace {

struct Node {
    std::string name;
    std::map<std::string, std::string> attributes;
    std::string text;
    std::vector<Node> children;
};

struct Builder {
    std::vector<Node> open{Node{}};
};

void onStart(void* user, const XML_Char* name, const XML_Char** attributes) {
    Node node{name, {}, {}, {}};
    for (; *attributes; attributes += 2) node.attributes[attributes[0]] = attributes[1];
    static_cast<Builder*>(user)->open.push_back(std::move(node));
}

void onEnd(void* user, const XML_Char*) {
    auto& open = static_cast<Builder*>(user)->open;
    Node done = std::move(open.back());
    open.pop_back();
    open.back().children.push_back(std::move(done));
}

void onText(void* user, const XML_Char* text, int length) {
    static_cast<Builder*>(user)->open.back().text.append(text, static_cast<std::size_t>(length));
}

bool parse(std::string_view xml, Node& root, std::string& why) {
    const std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)> parser(
        XML_ParserCreate("UTF-8"), &XML_ParserFree);
    Builder builder;
    XML_SetUserData(parser.get(), &builder);
    XML_SetElementHandler(parser.get(), onStart, onEnd);
    XML_SetCharacterDataHandler(parser.get(), onText);
    const std::string wrapped = "<all>" + std::string(xml) + "</all>";
    if (XML_Parse(parser.get(), wrapped.data(), static_cast<int>(wrapped.size()), 1) != XML_STATUS_OK) {
        why = "not well-formed (" + std::string(XML_ErrorString(XML_GetErrorCode(parser.get()))) +
              "): " + std::string(xml);
        return false;
    }
    root = std::move(builder.open.front().children.front());
    return true;
}

std::string_view significant(const Node& node) {
    return !node.children.empty() && node.text.find_first_not_of(" \t\r\n") == std::string::npos ? std::string_view()
                                                                                                 : node.text;
}

bool sameValue(std::string_view expected, std::string_view actual, Variables& variables) {
    return Pattern::parse(replaceAll(std::string(expected), "\\", "\\\\")).match(actual, variables);
}

bool same(const Node& expected, const Node& actual, Variables& variables, std::string& why) {
    const auto fail = [&](const std::string& what) {
        why = "<" + actual.name + ">: " + what;
        return false;
    };
    if (expected.name != actual.name) return fail("the element should be <" + expected.name + ">");
    if (expected.attributes.size() != actual.attributes.size()) return fail("another number of attributes");
    for (const auto& [name, value] : expected.attributes) {
        const auto found = actual.attributes.find(name);
        if (found == actual.attributes.end()) return fail("no attribute " + name);
        if (!sameValue(value, found->second, variables)) return fail("attribute " + name + " is " + found->second);
    }
    if (!sameValue(significant(expected), significant(actual), variables)) return fail("text is " + actual.text);
    if (expected.children.size() != actual.children.size()) return fail("another number of children");
    for (std::size_t i = 0; i < expected.children.size(); ++i) {
        if (!same(expected.children[i], actual.children[i], variables, why)) return false;
    }
    return true;
}

}  // namespace

bool sameXml(std::string_view expected, std::string_view actual, Variables& variables, std::string& why) {
    Node left;
    Node right;
    if (!parse(expected, left, why) || !parse(actual, right, why)) return false;
    auto attempt = variables;
    if (!same(left, right, attempt, why)) return false;
    variables = std::move(attempt);
    return true;
}

}  // namespace harness
