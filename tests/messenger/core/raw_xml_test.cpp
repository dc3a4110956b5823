// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/xml/raw_xml.h"

#include "messenger/core/wire_on_host.h"
#include "tests/messenger/core/stage.h"

namespace oku::test {
namespace {

std::string fault(const char* xml) { return rawXmlFault(QString::fromUtf8(xml)).toStdString(); }

TEST(RawXml, MayBeWholeElements) {
    for (const char* xml :
         {"<presence/>", " <presence/>\n<iq type='get' id='1'><query xmlns='jabber:iq:roster'/></iq>\n",
          "<message><body>zażółć &amp; &#x1f986; 🦆<![CDATA[<x>]]></body></message>", "<a xml:lang='pl'/>",
          "<stream:features><x:a xmlns:x='urn:x'/></stream:features>"}) {
        EXPECT_EQ(fault(xml), "") << xml;
    }
}

TEST(RawXml, MustBeWellFormedOnTheStream) {
    for (const char* xml :
         {"<a>", "</a>", "<a></b>", "<a b='1' b='2'/>", "<a:b/>", "<a b:c='1'/>", "&x;", "<a>&x;</a>",
          "<?xml version='1.0'?><a/>", "</stream:stream>", "</stream:stream><stream:stream>", "<a>\x01</a>", "<"}) {
        EXPECT_EQ(fault(xml).find("To nie jest poprawny XML: "), 0U) << xml << ": " << fault(xml);
    }
    EXPECT_NE(rawXmlFault(QStringLiteral("<a/>") + QChar(0) + QStringLiteral("<b/>")), QString());
}

TEST(RawXml, MustHoldNothingThatAServerEndsTheStreamFor) {
    for (const char* xml : {"<?foo bar?>", "<!-- x -->", "<a><!-- x --></a>", "<a><?foo bar?></a>", "<!DOCTYPE a><a/>"})
        EXPECT_EQ(fault(xml), "XMPP nie dopuszcza komentarzy, instrukcji przetwarzania ani deklaracji DOCTYPE.") << xml;
    for (const char* xml : {"text", "<a/>text", "text<a/>"})
        EXPECT_EQ(fault(xml), "Poza elementem nie może stać tekst.") << xml;
    for (const char* xml : {"", " \r\n\t"}) EXPECT_EQ(fault(xml), "Nie ma elementu do wysłania.");
}

class RawXmlOfAnAccount : public Stage {};

TEST_F(RawXmlOfAnAccount, IsSentAsItIsOrNotAtAll) {
    writeAccount({}, QStringLiteral("alice@example.org/home"));
    start();
    logIn();
    plugin().log.clear();
    EXPECT_NE(wireOnHost(*core)->sendRaw(entry().jid(), QStringLiteral("<a/><!-- x -->")), QString());
    EXPECT_EQ(wireOnHost(*core)->sendRaw(entry().jid(), QStringLiteral("<a  b='1'/>")), QString());
    EXPECT_EQ(plugin().log, std::vector<std::string>{"raw <a  b='1'/>"});
}

}  // namespace
}  // namespace oku::test
