// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/torture/shapes.h"

namespace torture {
namespace {

using Make = std::function<std::string(std::size_t)>;

std::string times(const std::string& part, std::size_t length) {
    std::string text;
    text.reserve(length + part.size());
    while (text.size() < length) text += part;
    return text;
}

Make repeated(std::string part) {
    return [part](std::size_t length) { return times(part, length); };
}

/// One part over and over, between a beginning and an end.
Make between(std::string begin, std::string part, std::string end) {
    return [=](std::size_t length) { return begin + times(part, length) + end; };
}

/// Numbered parts: "%" in `part` becomes the number.
Make numbered(std::string begin, std::string part, std::string end) {
    return [=](std::size_t length) {
        std::string text = begin;
        for (std::size_t i = 0; text.size() < length; ++i)
            for (const char c : part) text += c == '%' ? std::to_string(i) : std::string(1, c);
        return text + end;
    };
}

Make nested(std::string open, std::string close) {
    return [=](std::size_t length) {
        const std::size_t levels = length / (open.size() + close.size());
        return times(open, levels * open.size()) + times(close, levels * close.size());
    };
}

/// Many letters, each the name of an element of its own.
std::string strangeNames(std::size_t length) {
    constexpr unsigned kFirst = 0x4E00, kLast = 0x9FA5;
    std::string text = "<m>";
    for (unsigned code = kFirst; text.size() < length; code = code == kLast ? kFirst : code + 1)
        text += std::string("<") + static_cast<char>(0xE0 | code >> 12) + static_cast<char>(0x80 | (code >> 6 & 0x3F)) +
                static_cast<char>(0x80 | (code & 0x3F)) + "/>";
    return text + "</m>";
}

}  // namespace

const std::vector<Shape>& shapes() {
    static const std::vector<Shape> kShapes{
        // Text that the balance check has to wait for.
        {"OpenTags", repeated("<a>")},
        {"Levels", nested("<a>", "</a>")},
        {"LevelsOfTwoNames", nested("<a><b>", "</b></a>")},
        {"LevelsWithNamespaces", nested("<a xmlns='jabber:client' id='1'>", "</a>")},
        {"LongElementName", between("<", "a", "")},
        {"LongNameOfOtherLetters", between("<a", "\xC5\x82", "")},
        {"StrangeNames", strangeNames},
        {"LongAttributeName", between("<a ", "b", "")},
        {"LongEndName", between("<a></", "a", "")},
        {"LongInstructionName", between("<a><?", "a", "")},
        {"LongAttributeValue", between("<a b='", "c", "'/>")},
        {"ManyAttributes", numbered("<a", " b%='c'", "/>")},
        {"AttributesOfOneName", between("<a", " b='c'", "/>")},
        {"BlanksInATag", between("<a ", " ", "/>")},
        {"LongText", between("<a>", "b", "</a>")},
        {"Lines", between("<a>", "\r", "</a>")},
        {"OtherLetters", between("<a>", "\xC5\x82\xF0\x9F\x98\x80", "</a>")},
        {"BrokenLetters", between("<a>", "\xC5", "</a>")},
        {"ControlCharacters", between("<a>", "\x01", "</a>")},
        {"Entities", between("<a>", "&amp;", "</a>")},
        {"UnknownEntities", between("<a>", "&b;", "</a>")},
        {"Ampersands", between("<a>", "&", "</a>")},
        {"LongEntity", between("<a>&", "b", "")},
        {"LongEntityOfOtherLetters", between("<a>&", "\xC5\x82", "")},
        {"LongNumber", between("<a>&#", "0", "")},
        {"LargeNumber", between("<a>&#", "9", "")},
        {"LargeHexadecimalNumber", between("<a>&#x", "f", "")},
        {"Numbers", between("<a>", "&#x41;", "</a>")},
        {"Comment", between("<a><!--", " -", " --></a>")},
        {"DashesInAComment", between("<a><!-- ", "-", "--></a>")},
        {"CData", between("<a><![CDATA[", "]]", "]]></a>")},
        {"Brackets", between("<a>", "]", "</a>")},
        {"BracketsAndEnd", between("<a>", "]]>", "</a>")},
        {"Instruction", between("<a><!-- ?> --><?b ", "?", "")},
        {"LessThan", repeated("<")},
        {"GreaterThan", between("<a>", ">", "</a>")},
        {"Declarations", between("<a>", "<?", "</a>")},
        {"DeclarationsBehindAnEnd", between("<a>?>", "<?", "</a>")},
        {"DeclarationsThatJoin", between("<a>?>", "<<??b ", "</a>")},
        {"DeclarationsThatEnd", between("<a>", "<?b?>", "</a>")},
        {"DeclarationsThatVanish", between("<a>", "<?>", "</a>")},
        {"StreamTags", repeated("<stream:stream ")},
        {"StreamTagsThatEnd", between("<a>", "<stream:stream >", "</a>")},
        {"StreamTagThatJoins", between("<a>?>", "<str<?eam:stream b='<?'", "</a>")},
        {"LongStreamTag", between("<stream:stream ", " ", "")},
        {"TextBehindAnError", between("<a></b>", "c", "")},
        {"TagsBehindAnError", between("<a></b>", "<c/>", "")},
        {"TextBeforeAnErrorAndBehind",
         [](std::size_t length) { return "<a>" + times("b", length / 2) + "</c>" + times("b", length / 2); }},
        {"DocumentType", between("<!DOCTYPE a [<!ENTITY b 'c'>]><a>", "&b;", "</a>")},
        {"WrapperTags", between("<a>", "</mrn><mrn>", "</a>")},
        {"LevelsOfTheWrapper", nested("<mrn>", "</mrn>")},
        // Whole stanzas that handlers have to take.
        {"SmallMessages", repeated("<message/>")},
        {"MessagesOfOneContact", repeated("<message from='a@b/c'><body>d</body></message>")},
        {"Strangers", numbered("", "<presence from='s%@example.org/r'/>", "")},
        {"ResourcesOfOneContact", numbered("", "<presence from='contact0@example.org/r%'/>", "")},
        {"RosterItems",
         numbered("<iq type='set'><query xmlns='jabber:iq:roster'>", "<item jid='r%@b'/>", "</query></iq>")},
        {"RosterItemsOfOneContact",
         between("<iq type='set'><query xmlns='jabber:iq:roster'>", "<item jid='r@b'/>", "</query></iq>")},
        {"RemovedItems", numbered("<iq type='set'><query xmlns='jabber:iq:roster'>",
                                  "<item jid='contact%@example.org' subscription='remove'/>", "</query></iq>")},
        {"Features", numbered("<iq type='result' from='contact0@example.org/r0'>"
                              "<query xmlns='http://jabber.org/protocol/disco#info' node='n#v'>",
                              "<feature var='f%'/>", "</query></iq>")},
        {"Queries", between("<iq type='set'>", "<query xmlns='a'/>", "</iq>")},
        {"Mechanisms", between("<stream:features><mechanisms xmlns='urn:ietf:params:xml:ns:xmpp-sasl'>",
                               "<mechanism>X</mechanism>", "</mechanisms></stream:features>")},
        {"Methods",
         between("<stream:features><compression>", "<method>x</method>", "</compression></stream:features>")},
        {"Challenges", repeated("<challenge xmlns='urn:ietf:params:xml:ns:xmpp-sasl'>cmVhbG09</challenge>")},
        {"LongChallenge", between("<challenge xmlns='urn:ietf:params:xml:ns:xmpp-sasl'>", "cmVhbG09", "</challenge>")},
        {"Subscriptions", numbered("", "<presence type='subscribe' from='s%@b'/>", "")},
        {"Versions", repeated("<iq type='get'><query xmlns='jabber:iq:version'/></iq>")},
        {"Errors", repeated("<message type='error'><body>a</body><error code='1'/></message>")},
        {"LongAddress", between("<message from='", "@/", "'><body>b</body></message>")},
        {"LongStatus",
         between("<presence from='contact0@example.org/r'><status>", "&lt;&amp;amp;", "</status></presence>")},
        {"LongPriority", between("<presence from='a@b/c'><priority>", "9", "</priority></presence>")},
        {"LongId", between("<iq type='get' id='", "i", "'><ping xmlns='urn:xmpp:ping'/></iq>")},
        {"BlanksBetweenStanzas", repeated(" \r\n\t")},
    };
    return kShapes;
}

}  // namespace torture
