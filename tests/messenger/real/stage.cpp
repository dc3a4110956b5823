// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/messenger/real/stage.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QThread>

namespace oku::test {

RealStage::~RealStage() { QDir::setCurrent(before_); }

void RealStage::TearDown() { core.reset(); }

void RealStage::start(bool guarded, const QByteArray& settings) {
    QFile file(directory.filePath(QStringLiteral("protoLink.config")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        "XMPP/User = \"alice@example.org/home\"\nXMPP/Pass = \"hunter22\"\nXMPP/Serv/Enable = 1\n"
        "XMPP/Serv/Host = \"127.0.0.1:" +
        QByteArray::number(server.port()) + "\"\n" + settings);
    file.close();
    MessengerOptions options;
    options.profileDir = directory.path();
    options.modulePath = QStringLiteral(REAL_MODULE);
    options.stanzaGuard = guarded;
    options.loginSeconds = loginSeconds;
    options.verbose = verbose;
    core = std::make_unique<HostCore>(options);
    QObject::connect(core.get(), &HostCore::noticed, core.get(),
                     [this](const QString&, const QString& text) { notices.append(text); });
    QObject::connect(&core->arrivals, &Arrivals::received, core.get(),
                     [this](const QString&, const Message& message) { received.append(message); });
    QObject::connect(
        &core->sessions, &Sessions::connectionChanged, core.get(),
        [this](const QString&, ConnectionState state, const QString&) { states.append(connectionStateWord(state)); });
    ASSERT_EQ(core->start(), QString());
}

void RealStage::logIn(bool guarded) {
    start(guarded);
    core->choices.set(entry(), Status::online, {});
    ASSERT_TRUE(waitFor([&] { return entry().ready(); })) << notices.join(u'\n').toStdString();
    settle();
    server.clear();
}

bool RealStage::waitFor(const std::function<bool()>& condition, int milliseconds) {
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.elapsed() > milliseconds) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 10);
        QThread::usleep(200);
    }
    return true;
}

void RealStage::settle() {
    // Elements are handled in the order in which they come, and a ping is answered.
    const QByteArray id = "settled-" + QByteArray::number(++settled_);
    server.say("<iq type='get' from='example.org' id='" + id + "'><ping xmlns='urn:xmpp:ping'/></iq>");
    EXPECT_TRUE(waitFor([&] { return server.heardOf(id); })) << "the plugin answers no more";
}

}  // namespace oku::test
