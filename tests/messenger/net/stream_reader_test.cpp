// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <ctime>
#include <QRandomGenerator>

#include "messenger/core/net/stream_reader.h"

namespace oku::net {
namespace {

constexpr qsizetype large = 64 * 1024 * 1024;

QStringList bytesOf(const QList<Piece>& pieces) {
    QStringList texts;
    for (const Piece& piece : pieces) texts.append(QString::fromUtf8(piece.bytes));
    return texts;
}

/** All that the reader hands out when the text comes in pieces of so many bytes. */
QList<Piece> inSteps(StreamReader& reader, const QByteArray& text, qsizetype step) {
    QList<Piece> pieces;
    for (qsizetype i = 0; i < text.size(); i += step) pieces += reader.add(text.mid(i, step));
    return pieces;
}

const QByteArray conflict =
    "<stream:error><conflict xmlns='urn:ietf:params:xml:ns:xmpp-streams'/>"
    "<text xmlns='urn:ietf:params:xml:ns:xmpp-streams'>Replaced by\n new &amp; better</text></stream:error>";
const QByteArray header = "<?xml version='1.0'?><stream:stream id='1' version='1.0'>";
const QByteArray proceed = "<proceed xmlns='urn:ietf:params:xml:ns:xmpp-tls'/>";

TEST(StreamReader, HandsOutAllCompleteElementsAtOnceAndKeepsTheRest) {
    StreamReader reader(large, true);
    EXPECT_EQ(bytesOf(reader.add("<a/><b>x</b><c>")), QStringList{"<a/><b>x</b>"});
    EXPECT_EQ(reader.held(), 3);
    EXPECT_EQ(bytesOf(reader.add("y")), QStringList());
    EXPECT_EQ(bytesOf(reader.add("</c>")), QStringList{"<c>y</c>"});
    EXPECT_EQ(reader.held(), 0);
}

TEST(StreamReader, NeverCutsAnElementWhereverTheLineCutsIt) {
    const QByteArray text = "<?xml version='1.0'?><stream:stream a='>'><m><b>&lt;</b></m> <p/><m>\xc5\xbc</m>";
    const QStringList wholes{"<?xml version='1.0'?>", "<stream:stream a='>'>", "<m><b>&lt;</b></m>", " ", "<p/>",
                             "<m>\xc5\xbc</m>"};
    for (qsizetype step = 1; step <= text.size(); ++step) {
        StreamReader reader(large, true);
        QByteArray all;
        for (const Piece& piece : inSteps(reader, text, step)) {
            all += piece.bytes;
            QString left = QString::fromUtf8(piece.bytes);
            for (const QString& whole : wholes) left.remove(whole);
            EXPECT_TRUE(left.isEmpty()) << step << ' ' << left.toStdString();
        }
        EXPECT_EQ(all, text) << step;
    }
}

TEST(StreamReader, HandsOutNothingBehindTheStreamsEndInClear) {
    const QByteArray text = "<a/></stream:stream>" + proceed + "<message/></stream:stream><message/>";
    for (qsizetype step = 1; step <= text.size(); ++step) {
        StreamReader reader(large, true);
        EXPECT_EQ(bytesOf(inSteps(reader, text, step)).join(""), "<a/></stream:stream>") << step;
        EXPECT_EQ(reader.held(), 0);
    }
}

TEST(StreamReader, HandsOutWhatStandsBehindAStrayEndTag) {
    const QByteArray text = "<a/></mrn><message/>";
    for (qsizetype step = 1; step <= text.size(); ++step) {
        StreamReader reader(large, true);
        EXPECT_EQ(bytesOf(inSteps(reader, text, step)).join(""), QString(text)) << step;
    }
}

TEST(StreamReader, GivesTheStreamsEndAPieceOfItsOwn) {
    StreamReader reader(large, false);
    const QList<Piece> pieces = reader.add("<a/></stream:stream>");
    EXPECT_EQ(bytesOf(pieces), (QStringList{"<a/>", "</stream:stream>"}));
    EXPECT_FALSE(pieces[0].ends);
    EXPECT_TRUE(pieces[1].ends);
    EXPECT_EQ(bytesOf(reader.add("<half")), QStringList{"<half"}) << "behind the end nothing is worth waiting for";
}

TEST(StreamReader, PassesWhiteSpaceOnAtOnce) {
    StreamReader reader(large, true);
    EXPECT_EQ(bytesOf(reader.add(" ")), QStringList{" "});
}

TEST(StreamReader, ReadsWhyTheStreamEnds) {
    for (qsizetype step = 1; step < conflict.size(); step += 7) {
        StreamReader reader(large, true);
        const QList<Piece> pieces = inSteps(reader, "<a/>" + conflict, step);
        ASSERT_TRUE(pieces.last().fault);
        EXPECT_TRUE(pieces.last().fault->conflict);
        EXPECT_EQ(pieces.last().fault->toString(), "conflict (Replaced by new & better)");
    }
}

TEST(StreamReader, ReadsWhyALoginFailed) {
    StreamReader reader(large, false);
    const QList<Piece> pieces =
        reader.add("<failure xmlns='urn:ietf:params:xml:ns:xmpp-sasl'><not-authorized/><text>Nope</text></failure>");
    ASSERT_TRUE(pieces[0].fault);
    EXPECT_EQ(pieces[0].fault->toString(), "not-authorized (Nope)");
    EXPECT_FALSE(pieces[0].fault->conflict);
}

TEST(StreamReader, TakesNoConflictFromAnythingButAStreamError) {
    StreamReader reader(large, false);
    for (const QByteArray& text :
         {"<message><body>&lt;stream:error></body>" + conflict + "</message>",
          QByteArray("<iq type='error'><error><conflict xmlns='urn:ietf:params:xml:ns:xmpp-stanzas'/></error></iq>"),
          QByteArray("<stream:error><conflict xmlns='other'/></stream:error>"),
          QByteArray("<failure><conflict xmlns='urn:ietf:params:xml:ns:xmpp-streams'/></failure>")}) {
        const QList<Piece> pieces = reader.add(text);
        EXPECT_FALSE(pieces[0].fault && pieces[0].fault->conflict) << text.constData();
    }
}

TEST(StreamReader, HandsOutNothingBehindTheAnswerToStarttls) {
    for (qsizetype step : {qsizetype(1), qsizetype(5), qsizetype(1000)}) {
        StreamReader reader(large, true);
        EXPECT_EQ(bytesOf(inSteps(reader, "<a/>" + proceed + "<message/>", step)).join(""), "<a/>" + proceed);
        EXPECT_TRUE(reader.proceedSeen());
        EXPECT_GT(reader.held(), 0);
    }
}

TEST(StreamReader, CutsAtEachProceedWhateverItsNamespacePrefixAndAttributes) {
    for (const QByteArray& one :
         {QByteArray("<proceed/>"), QByteArray("<proceed></proceed>"), QByteArray("<proceed\n/>"),
          QByteArray("<proceed xmlns='urn:ietf:params:xml:ns:xmpp-tl&#115;'/>"),
          QByteArray("<proceed xmlns='urn:other' to='ala' a='/>'/>"), QByteArray("<proceed>a<b/>c</proceed >"),
          QByteArray("<t:proceed xmlns:t='urn:ietf:params:xml:ns:xmpp-tls'/>"),
          QByteArray("<" + QByteArray(100, 't') + ":proceed/>"), QByteArray("<!-- <a> --><proceed/>"),
          QByteArray("<![CDATA[<a>]]><proceed/>"), QByteArray("<?a <b> ?><proceed/>")}) {
        for (qsizetype step = 1; step <= one.size(); ++step) {
            StreamReader reader(large, true);
            EXPECT_EQ(bytesOf(inSteps(reader, header + one + "<message/> <m", step)).join(""), header + one) << step;
            EXPECT_TRUE(reader.proceedSeen()) << one.constData();
        }
    }
}

TEST(StreamReader, CutsAtNothingElseAndNotUnderTls) {
    StreamReader clear(large, true);
    clear.add(
        "<Proceed/><proceeds/><a:b>proceed</a:b><message><proceed xmlns='urn:ietf:params:xml:ns:xmpp-tls'/></message>");
    EXPECT_FALSE(clear.proceedSeen());
    StreamReader tls(large, false);
    tls.add(proceed);
    EXPECT_FALSE(tls.proceedSeen());
}

TEST(StreamReader, PassesOnAnElementThatGrowsPastTheLimit) {
    StreamReader reader(1000, true);
    const QByteArray start = "<a>" + QByteArray(990, 'x');
    EXPECT_TRUE(reader.add(start).isEmpty());
    const QByteArray more(10, 'y');
    EXPECT_EQ(bytesOf(reader.add(more)), QStringList{start + more});
    EXPECT_EQ(bytesOf(reader.add("zz")), QStringList{"zz"}) << "the rest of the element passes as it comes";
    EXPECT_EQ(bytesOf(reader.add("</a><b>")), QStringList{"</a>"}) << "and the next one is kept back again";
    EXPECT_EQ(reader.held(), 3);
}

TEST(StreamReader, ReleasesWhatItHoldsAndThenPassesTheRestOfThatElement) {
    StreamReader reader(large, true);
    reader.add("<a>1");
    EXPECT_EQ(reader.release(), "<a>1");
    EXPECT_EQ(bytesOf(reader.add("2")), QStringList{"2"});
    EXPECT_EQ(bytesOf(reader.add("</a>")), QStringList{"</a>"});
    EXPECT_TRUE(reader.add("<b>").isEmpty());
}

TEST(StreamReader, PassesOnWhatIsNoXml) {
    StreamReader reader(large, true);
    EXPECT_EQ(bytesOf(reader.add("HTTP/1.1 400 Bad Request\r\n")), QStringList{"HTTP/1.1 400 Bad Request\r\n"});
    EXPECT_EQ(bytesOf(reader.add("<a <b")), QStringList{"<a <b"});
    EXPECT_EQ(bytesOf(reader.add("<c>")), QStringList{"<c>"});
}

TEST(StreamReader, LosesAndReordersNoByteOfWhateverComes) {
    QRandomGenerator random(11);
    const QStringList words{"<",
                            ">",
                            "/",
                            "'",
                            "\"",
                            "!",
                            "--",
                            "[CDATA[",
                            "]]>",
                            "?",
                            "a",
                            " ",
                            "=",
                            "</a>",
                            "<a>",
                            "<a/>",
                            "<stream:stream>",
                            "</stream:stream>",
                            "<!-- -->",
                            "<stream:error>",
                            "\xc5\xbc"};
    for (int round = 0; round < 3000; ++round) {
        StreamReader reader(40, false);
        QByteArray given;
        QByteArray taken;
        for (int i = 0; i < 30; ++i) {
            QByteArray part;
            for (quint32 n = random.bounded(4); n > 0; --n) part += words[random.bounded(int(words.size()))].toUtf8();
            given += part;
            for (const Piece& piece : reader.add(part)) taken += piece.bytes;
            ASSERT_EQ(given.size(), taken.size() + reader.held());
        }
        taken += reader.release();
        ASSERT_EQ(taken, given);
    }
}

/** Forty thousand pieces of one element: re-reading or moving all of it with each piece would take minutes. */
TEST(StreamReader, TakesTimeInProportionToTheBytes) {
    StreamReader reader(large, true);
    const std::clock_t begin = std::clock();
    reader.add("<a>");
    const QByteArray piece = QByteArray(500, 'x') + "<b c='d'/>" + QByteArray(500, 'y');
    for (int i = 0; i < 40'000; ++i) EXPECT_TRUE(reader.add(piece).isEmpty());
    EXPECT_EQ(reader.add("</a>").value(0).bytes.size(), 3 + 40'000 * piece.size() + 4);
    for (int i = 0; i < 200'000; ++i) reader.add("<b/>");
    EXPECT_LT((std::clock() - begin) / CLOCKS_PER_SEC, 15) << "seconds of the processor";
}

}  // namespace
}  // namespace oku::net
