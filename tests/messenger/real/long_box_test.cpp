// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A message box that stays open for minutes. The clock of this process runs faster (see CMakeLists.txt), so that the
// minutes are those of the plugin, of the messenger and of the server alike.
#include "tests/messenger/real/stage.h"

#include "host/oku/windows.h"
#include "messenger/core/boundary/wide.h"

namespace oku::test {
namespace {

constexpr int kMinute = 60000;

/// Opens a box while the plugin hands this message over, so that the plugin is on the stack for as long.
class BoxOpener : public ProtocolListener {
public:
    bool onProtocolEvent(ProtocolEvent& event) override {
        if (!event.is(OKU_HOOK_MESSAGE_IN, OKU_PHASE_BEFORE) || opened) return false;
        opened = true;
        auto record = makeRecord<OKU_MESSAGE_BOX>();
        record.text = u"Czy na pewno?";
        record.title = u"Pytanie";
        record.style = OKU_BOX_QUESTION;
        button = services->call(u"UI/MessageBox", wordOf(&record), 0);
        return false;
    }
    bool opened = false;
    OKU_WORD button = 0;
    ServiceRegistry* services = nullptr;
};

class LongBox : public RealStage {
protected:
    /// A busy machine may need seconds for what is quick otherwise, and ten of them are a minute here. The clock must
    /// not run faster: the plugin gives up its connection after three silent minutes, of which one may have passed.
    LongBox() {
        patience = 45 * kMinute;
        loginSeconds = 45 * 60;
    }
    ~LongBox() override { patience = ordinary_; }

    void sayNumber(int number) {
        server.say("<message type='chat' from='bob@example.org/dom'><body>" + QByteArray::number(number) +
                   "</body></message>");
    }
    /// The numbers in the bodies of what the server heard.
    QStringList sentBodies() const {
        QStringList bodies;
        for (const QByteArray& one : server.heard()) {
            const qsizetype at = one.indexOf("<body>");
            if (at >= 0) bodies.append(QString::fromUtf8(one.mid(at + 6, one.indexOf('<', at + 6) - at - 6)));
        }
        return bodies;
    }
    void sendMessage(const QString& body) {
        Message message;
        message.account = entry().jid();
        message.contact = QStringLiteral("bob@example.org");
        message.direction = Direction::out;
        message.body = body;
        message.time = QDateTime::currentDateTime();
        EXPECT_GT(core->delivery.send(entry(), message), 0);
    }

    BoxOpener opener;

private:
    const int ordinary_ = patience;
};

TEST_F(LongBox, LosesAndReordersNothingAndKeepsTheConnection) {
    logIn(true);
    const int dialled = server.connections();  // a first dial may have come to nothing
    opener.services = &core->services;
    core->hooks.add(opener);
    states.clear();
    sayNumber(0);
    constexpr int kSteps = 50;
    QStringList toSend;
    // The box has an event loop of its own, inside ours: what happens meanwhile hangs on a timer.
    QTimer steps;
    QObject::connect(&steps, &QTimer::timeout, &steps, [&, step = 0]() mutable {
        if (core->boxes.open().isEmpty()) return;
        if (++step > kSteps) {
            steps.stop();
            EXPECT_TRUE(received.isEmpty()) << "nothing reaches the plugin, so nothing comes of it";
            EXPECT_TRUE(sentBodies().isEmpty());
            EXPECT_TRUE(core->boxes.answer(core->boxes.open().front().number, BoxButton::yes));
            return;
        }
        sayNumber(step);
        toSend.append(QStringLiteral("w%1").arg(step));
        sendMessage(toSend.back());
        if (step == 20) core->choices.set(entry(), Status::away, QStringLiteral("przerwa"));
    });
    steps.start(5 * kMinute / kSteps);

    ASSERT_TRUE(waitFor([&] { return received.size() > kSteps && sentBodies().size() == kSteps; }));
    QStringList bodies;
    for (const Message& message : received) bodies.append(message.body);
    QStringList expected;
    for (int number = 0; number <= kSteps; ++number) expected.append(QString::number(number));
    EXPECT_EQ(bodies, expected);
    EXPECT_EQ(sentBodies(), toSend);
    EXPECT_EQ(opener.button, OKU_WORD{OKU_BUTTON_YES});
    EXPECT_TRUE(waitFor([&] { return entry().status == Status::away; }));
    waitFor([] { return false; }, 4 * kMinute);
    EXPECT_TRUE(entry().ready());
    EXPECT_EQ(server.connections(), dialled);
    EXPECT_FALSE(states.contains(QStringLiteral("offline"))) << states.join(u' ').toStdString();
}

}  // namespace
}  // namespace oku::test
