// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "messenger/core/net/element_scanner.h"

namespace oku::net {
namespace {

using Mark = ElementScanner::Mark;

/** What the scanner finds when it is fed in steps of so many bytes: "kind@end". */
QStringList marks(const QByteArray& text, qsizetype step) {
    ElementScanner scanner;
    QStringList found;
    for (qsizetype start = 0; start < text.size(); start += step) {
        const QByteArray part = text.mid(start, step);
        qsizetype position = 0;
        for (Mark mark = scanner.next(part, position); mark != Mark::None; mark = scanner.next(part, position)) {
            static const QStringList names{"none", "open", "header", "element", "end"};
            QString what = names[static_cast<int>(mark)];
            if (mark == Mark::Element || mark == Mark::Header) what += ' ' + QString::fromUtf8(scanner.name());
            if (mark != Mark::Open) found.append(QStringLiteral("%1@%2").arg(what).arg(start + position));
        }
    }
    return found;
}

struct Row {
    const char* name;
    QByteArray text;
    QStringList marks;
};

const QList<Row> rows{
    {"an element", "<a>x</a>", {"element a@8"}},
    {"two elements", "<a/><b>y</b>", {"element a@4", "element b@12"}},
    {"depth", "<a><b><c/></b></a>", {"element a@18"}},
    {"a stream's start is complete in itself",
     "<?xml version='1.0'?><stream:stream id='1'><a/>",
     {"header stream:stream@43", "element a@47"}},
    {"a stream that starts anew",
     "<stream:stream><a/><stream:stream><b/>",
     {"header stream:stream@15", "element a@19", "header stream:stream@34", "element b@38"}},
    {"the stream's name further down means nothing", "<a><stream:stream></stream:stream></a>", {"element a@38"}},
    {"the stream's end", "<a/></stream:stream>", {"element a@4", "end@20"}},
    {"brackets in attributes", "<a x='>' y=\"/>\" z='\"'/>", {"element a@23"}},
    {"a slash in an attribute", "<a x='b/'>c</a>", {"element a@15"}},
    {"comments", "<a><!-- </a> -- > <b> --></a>", {"element a@29"}},
    {"a comment that ends in many dashes", "<a><!-- ---></a>", {"element a@16"}},
    {"CDATA", "<a><![CDATA[</a>]]]]]></a>", {"element a@26"}},
    {"instructions", "<a><?p </a> ? > ?></a>", {"element a@22"}},
    {"blanks in tags", "<a >x</a >", {"element a@10"}},
    {"blanks between", " \n<a/>\t<b/> ", {"element a@6", "element b@11"}},
    {"prefixes and letters of all kinds",
     "<x:\xc5\xbc\xc3\xb3\xc5\x82w a='\xc5\xbc'/>",
     {"element x:\xc5\xbc\xc3\xb3\xc5\x82w@19"}},
};

TEST(ElementScanner, FindsTheSameMarksInWhateverPiecesTheTextComes) {
    for (const Row& row : rows) {
        const QStringList whole = marks(row.text, row.text.size());
        EXPECT_EQ(whole.join("; ").toStdString(), row.marks.join("; ").toStdString()) << row.name;
        for (qsizetype step = 1; step < row.text.size(); ++step) EXPECT_EQ(marks(row.text, step), whole) << row.name;
    }
}

TEST(ElementScanner, IsAtRestOnlyBetweenElements) {
    const QByteArray text = "<a><b x='1'/>t</a>";
    ElementScanner scanner;
    for (qsizetype i = 0; i < text.size(); ++i) {
        EXPECT_EQ(scanner.atRest(), i == 0) << i;
        qsizetype position = 0;
        scanner.next(QByteArrayView(text).sliced(i, 1), position);
    }
    EXPECT_TRUE(scanner.atRest());
}

TEST(ElementScanner, GivesUpOnWhatNoParserWouldRead) {
    for (const char* bytes :
         {"<a <b>", "< a>", "<1>", "<>", "<a x='<'>", "<a/ >", "<!DOCTYPE a>", "<a></a<", "<![CDATE[", "<a<b>"}) {
        const QByteArray text(bytes);
        ElementScanner scanner;
        qsizetype position = 0;
        while (scanner.next(text, position) != Mark::None) continue;
        EXPECT_TRUE(scanner.broken()) << bytes;
        EXPECT_TRUE(scanner.atRest()) << bytes;
        EXPECT_EQ(position, text.size()) << bytes;
    }
}

TEST(ElementScanner, KeepsNoMoreThanTheStartOfAHugeName) {
    ElementScanner scanner;
    qsizetype position = 0;
    const QByteArray text = '<' + QByteArray(1'000'000, 'n');
    while (scanner.next(text, position) != Mark::None) continue;
    EXPECT_LE(scanner.name().size(), 64);
}

TEST(ElementScanner, BearsAMillionLevels) {
    QByteArray text;
    for (int i = 0; i < 1'000'000; ++i) text += "<a>";
    for (int i = 0; i < 1'000'000; ++i) text += "</a>";
    EXPECT_EQ(marks(text, 65'536), QStringList{QStringLiteral("element a@%1").arg(text.size())});
}

}  // namespace
}  // namespace oku::net
