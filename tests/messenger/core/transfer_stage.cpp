// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/messenger/core/transfer_stage.h"

#include <algorithm>
#include <QTimer>

namespace oku::test {

void TransferStage::SetUp() {
    writeAccount({}, QStringLiteral("alice@example.org"));
    MessengerOptions given = options();
    given.alarms = [this](int milliseconds, std::function<void()> ring) {
        const int number = ++lastAlarm_;
        alarms_.emplace(number, Alarm{milliseconds, std::move(ring)});
        auto alarm = std::make_unique<QObject>();
        QObject::connect(alarm.get(), &QObject::destroyed, [this, number] { alarms_.erase(number); });
        return alarm;
    };
    given.linkOpener = [this](const QString& address) {
        opened.append(address);
        return canOpen;
    };
    start(std::move(given));
    logIn();
    face = transfersOnHost({core->accounts, core->transfers, core->offers, core->choosers, core->received});
    QObject::connect(face.get(), &TransfersFace::transferChanged, face.get(),
                     [this](const Transfer& transfer) { told.append(transfer); });
    QObject::connect(face.get(), &TransfersFace::offerReceived, face.get(),
                     [this](const FileOffer& offer) { offers.append(offer); });
    QObject::connect(face.get(), &TransfersFace::offerClosed, face.get(), [this](int number, OfferReply reply) {
        closed.append({number, reply});
    });
}

void TransferStage::TearDown() {
    face.reset();
    Stage::TearDown();
}

OKU_WORD TransferStage::ask(const QString& name, const QString& size, const QString& sender) {
    const QString question = QStringLiteral("Czy chcesz odebrać %1 (%2b) od %3?").arg(name, size, sender);
    char16_t buffer[OKU_FT_PATH_CAPACITY] = {};
    const QString wanted = folder("%from%/");
    std::copy_n(widePointer(wanted), std::min<qsizetype>(wanted.size(), OKU_FT_PATH_CAPACITY - 1), buffer);
    auto record = makeRecord<OKU_FT_ASK_RECORD>();
    record.question = widePointer(question);
    record.path = buffer;
    record.capacity = OKU_FT_PATH_CAPACITY - 1;
    record.sender = widePointer(sender);
    const OKU_WORD answer = call(u"OKU/FTAskForConfirmation", wordOf(&record));
    path = wideText(buffer);
    return answer;
}

void TransferStage::answerNext(OfferReply reply) {
    QTimer::singleShot(0, face.get(), [this, reply] {
        ASSERT_EQ(face->openOffers().size(), 1);
        EXPECT_EQ(face->answerOffer(face->openOffers().first().number, reply), QString());
    });
}

void TransferStage::ringAlarms() {
    const auto ringing = alarms_;
    for (const auto& [number, alarm] : ringing) alarm.ring();
}

void TransferStage::ringNewestAlarm() {
    ASSERT_FALSE(alarms_.empty());
    const auto ring = alarms_.rbegin()->second.ring;
    ring();
}

QList<int> TransferStage::alarmTimes() const {
    QList<int> times;
    for (const auto& [number, alarm] : alarms_) times.append(alarm.milliseconds);
    return times;
}

OKU_WORD TransferStage::openWindow(const char16_t* contact, int whose) {
    auto identity = makeRecord<OKU_CONTACT_RECORD>();
    identity.id = contact;
    identity.pfClass = u"XMPP";
    identity.netId = account(whose).netId;
    init = makeRecord<OKU_FT_INIT_RECORD>();
    init.status = u"Negocjowanie sesji...";
    init.contactId = init.contactIdAgain = contact;
    init.contact = &identity;
    init.callbackData = wordOf(this);
    init.callback = [](OKU_WORD event, OKU_WORD, OKU_WORD context) -> OKU_WORD {
        reinterpret_cast<TransferStage*>(context)->windowEvents.push_back(
            reinterpret_cast<const OKU_FT_EVENT*>(event)->event);
        return 0;
    };
    return call(u"OKU/FTInitWindow", wordOf(&init));
}

void TransferStage::write(OKU_WORD window, std::uint32_t mask,
                          const std::function<void(OKU_FT_UPDATE_RECORD&)>& fill) const {
    auto record = makeRecord<OKU_FT_UPDATE_RECORD>();
    record.mask = mask;
    record.window = window;
    fill(record);
    init.updateFn(wordOf(&record), 0, window);
}

void TransferStage::writeStatus(OKU_WORD window, const char16_t* text) const {
    write(window, OKU_FT_STATUS_TEXT, [=](OKU_FT_UPDATE_RECORD& record) { record.status = text; });
}

void TransferStage::writePosition(OKU_WORD window, std::uint64_t position) const {
    write(window, OKU_FT_POSITION,
          [=](OKU_FT_UPDATE_RECORD& record) { record.position = record.positionAgain = position; });
}

void TransferStage::run(OKU_WORD window, std::uint64_t size) const {
    write(window, OKU_FT_STATE, [](OKU_FT_UPDATE_RECORD& record) { record.state = OKU_FT_RUNNING; });
    write(window, OKU_FT_TOTAL, [=](OKU_FT_UPDATE_RECORD& record) { record.total = record.totalAgain = size; });
}

void TransferStage::drop(OKU_WORD window) {
    inPlugin([&] { call(u"OKU/FTDropWindow", window); });
}

Transfer TransferStage::transfer(OKU_WORD window) const {
    for (const Transfer& one : face->transfers())
        if (one.number == window) return one;
    ADD_FAILURE() << "there is no transfer " << window;
    return {};
}

QString TransferStage::folder(const char* below) const {
    return directory.path() + QStringLiteral("/files/") + QString::fromUtf8(below);
}

}  // namespace oku::test
