// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/messenger/core/cards_stage.h"

#include <QRegularExpression>

#include "host/oku/avatar.h"
#include "host/oku/cards.h"
#include "host/oku/windows.h"
#include "messenger/core/boundary/wide.h"

namespace oku::test {

CardsStage::CardsStage() { writeAccount({}, me); }

void CardsStage::TearDown() {
    cards.reset();
    Stage::TearDown();
}

void CardsStage::begin() {
    MessengerOptions given = options();
    given.pictures = reader;
    cards.reset();
    start(given);
    cards = cardsOnHost({core->accounts, core->contactCards, core->ownCards, core->ownPicture, core->contactPictures});
    plugin().onCard = [this](tiny::Account&, const std::string&, OKU_WORD token) { tokens.push_back(token); };
    note();
    take();
}

void CardsStage::note() {
    const auto add = [this](const QStringList& words) { told.append(words.join(u'|')); };
    CardsFace* face = cards.get();
    QObject::connect(face, &CardsFace::cardReceived, face, [add](const QString&, const ContactCard& card) {
        QStringList words{QStringLiteral("card"), card.jid};
        for (const CardRow& one : card.rows)
            words.append(QString::number(static_cast<int>(one.kind)) + one.label + u'=' + one.value);
        add(words);
    });
    QObject::connect(face, &CardsFace::cardFailed, face,
                     [add](const QString&, const QString& jid, const QString& reason) {
                         add({"no card", jid, reason});
                     });
    QObject::connect(face, &CardsFace::ownCardReceived, face, [add](const QString& account, const OwnCard& card) {
        QStringList words{QStringLiteral("own card"), account};
        for (auto at = card.fields.begin(); at != card.fields.end(); ++at)
            if (!at->isEmpty()) words.append(at.key() + u'=' + at.value());
        add(words + card.lost);
    });
    QObject::connect(face, &CardsFace::ownCardStored, face, [add](const QString& account) {
        add({"stored", account});
    });
    QObject::connect(face, &CardsFace::ownCardWouldLose, face,
                     [add](const QString&, const QStringList& lost) { add(QStringList{"loses"} + lost); });
    QObject::connect(face, &CardsFace::ownCardFailed, face, [add](const QString&, const QString& reason) {
        add({"no own card", reason});
    });
    QObject::connect(face, &CardsFace::ownPictureChanged, face, [add](const OwnPicture& picture) {
        add({"own picture", picture.hash});
    });
    QObject::connect(face, &CardsFace::ownPictureFailed, face, [add](const QString& reason) {
        add({"failed", reason});
    });
    QObject::connect(face, &CardsFace::ownPicturePublished, face, [add](const QString& account) {
        add({"published", account});
    });
    QObject::connect(face, &CardsFace::ownPictureRefused, face, [add](const QString&, const QString& reason) {
        add({"refused", reason});
    });
    QObject::connect(face, &CardsFace::pictureChanged, face,
                     [add](const QString& account, const ContactPicture& picture) {
                         add({"picture", account, picture.jid, picture.hash});
                     });
    QObject::connect(face, &CardsFace::progressed, face, [add](const QString&, const QString& text) {
        add({"progress", text});
    });
    QObject::connect(face, &CardsFace::busyChanged, face, [add](bool busy) { add({busy ? "busy" : "idle"}); });
}

std::string CardsStage::asked() {
    std::string all;
    for (const std::string& line : std::exchange(plugin().log, {}))
        if (line.starts_with("PF") || line.starts_with("avatar")) all += (all.empty() ? "" : "\n") + line;
    return all;
}

OKU_WORD CardsStage::cardStatus(OKU_WORD token, const char16_t* text, std::uint32_t state) {
    auto record = makeRecord<OKU_CARD_STATUS>();
    record.token = token;
    record.text = text;
    record.state = state;
    return call(u"VCard/SetStatus", wordOf(&record));
}

OKU_WORD CardsStage::row(OKU_WORD token, std::uint32_t kind, const QString& label, const QString& value) {
    auto record = makeRecord<OKU_CARD_ELEMENT>();
    record.token = token;
    record.kind = kind;
    record.label = widePointer(label);
    record.value = widePointer(value);
    return call(u"VCard/AddElement", wordOf(&record));
}

OKU_WORD CardsStage::ownField(OKU_WORD token, const char16_t* key, const QString& value) {
    auto record = makeRecord<OKU_OWN_CARD_FIELD>();
    record.token = token;
    record.key = key;
    record.value = widePointer(value);
    return call(u"MyVCard/SetFieldValue", wordOf(&record));
}

OKU_WORD CardsStage::ownStatus(OKU_WORD token, const char16_t* text) {
    auto record = makeRecord<OKU_OWN_CARD_STATUS>();
    record.token = token;
    record.text = text;
    record.netId = account().netId;
    return call(u"MyVCard/SetStatus", wordOf(&record));
}

std::u16string CardsStage::askedField(OKU_WORD token, const char16_t* key, std::uint32_t capacity) {
    std::u16string buffer(capacity, u'?');
    auto record = makeRecord<OKU_OWN_CARD_FIELD_GET>();
    record.token = token;
    record.key = key;
    record.buffer = buffer.data();
    record.capacity = capacity;
    call(u"MyVCard/GetFieldValue", wordOf(&record));
    return buffer.c_str();
}

void CardsStage::box(std::uint32_t style, const char16_t* text) {
    auto record = makeRecord<OKU_MESSAGE_BOX>();
    record.style = style;
    record.title = u"Wizytówka";
    record.text = text;
    const auto answer =
        QObject::connect(&core->boxes, &MessageBoxes::opened, core.get(),
                         [this](const MessageBox& open) { core->boxes.answer(open.number, BoxButton::ok); });
    call(u"UI/MessageBox", wordOf(&record));
    QObject::disconnect(answer);
}

QString CardsStage::cached(const QString& name, const QByteArray& content) const {
    const QString folder = core->profile.cacheDirectory() + QStringLiteral(".xmppAvatar/");
    EXPECT_TRUE(QDir().mkpath(folder));
    QFile file(folder + name);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    return folder + name;
}

OKU_WORD CardsStage::announce(const char16_t* jid, const QString& path) {
    auto contact = makeRecord<OKU_CONTACT_RECORD>();
    contact.id = jid;
    contact.pfClass = u"XMPP";
    contact.netId = account().netId;
    auto record = makeRecord<OKU_CONTACT_AVATAR>();
    record.path = widePointer(path);
    record.kind = record.count = 1;
    record.contact = &contact;
    return call(u"OKU/CTL/SetAvatar", wordOf(&record));
}

QString CardsStage::lastQuery() const {
    for (auto line = plugin().log.rbegin(); line != plugin().log.rend(); ++line) {
        static const QRegularExpression id(QStringLiteral("^raw <iq id=\"(oku-[^\"]+)\" type=\"get\"><vCard"));
        const auto match = id.match(QString::fromStdString(*line));
        if (match.hasMatch()) return match.captured(1);
    }
    return {};
}

void CardsStage::answerQuery(const QString& content, const char* type) {
    const QString answer =
        QStringLiteral("<iq id='%1' type='%2'>%3</iq>").arg(lastQuery(), QLatin1String(type), content);
    inPlugin([&] { offerIncoming(answer.toStdString()); });
}

void CardsStage::loseConnection() {
    inPlugin([&] { account().flags = 0; });
    emit core->sockets.ended(&entry(), net::End(), true);
}

}  // namespace oku::test
