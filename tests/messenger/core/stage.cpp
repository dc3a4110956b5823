// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/messenger/core/stage.h"

#include <dlfcn.h>
#include <algorithm>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

#include "host/oku/message.h"
#include "messenger/core/boundary/wide.h"

namespace oku::test {

bool waitFor(const std::function<bool()>& condition, int time) {
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.elapsed() > time) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 10);
        QThread::usleep(200);
    }
    return true;
}

void pass(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

Stage::Stage() = default;

Stage::~Stage() { QDir::setCurrent(before_); }

MessengerOptions Stage::options() const {
    MessengerOptions result;
    result.profileDir = directory.path();
    result.modulePath = QStringLiteral(TINY_MODULE);
    return result;
}

void Stage::writeAccount(const QString& name, const QString& jid, const QString& more) const {
    const QString file = name.isEmpty() ? QStringLiteral("tiny.config") : QStringLiteral("tiny_%1.config").arg(name);
    QFile out(directory.filePath(file));
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(QStringLiteral("XMPP/User = \"%1\"\nXMPP/Pass = \"hunter22\"\n%2").arg(jid, more).toUtf8());
}

void Stage::start(MessengerOptions given) {
    core = std::make_unique<HostCore>(std::move(given));
    QObject::connect(core.get(), &HostCore::noticed, core.get(),
                     [this](const QString&, const QString& text) { notices.append(text); });
    ASSERT_EQ(core->start(), QString());
    findPlugin();
}

void Stage::restart() {
    core.reset();
    start();
}

void Stage::findPlugin() {
    void* library = dlopen(TINY_MODULE, RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(library, nullptr);
    plugin_ = reinterpret_cast<tiny::StateExport>(dlsym(library, "tinyState"))();
    dlclose(library);
}

tiny::Account& Stage::account(int index) const { return *std::next(plugin_->accounts.begin(), index); }

AccountEntry& Stage::entry(int index) const { return *core->accounts.all().at(static_cast<std::size_t>(index)); }

OKU_WORD Stage::call(const char16_t* service, OKU_WORD param, OKU_WORD extra) const {
    return HostTable::table()->fnCall(service, param, extra);
}

OKU_WORD Stage::raise(std::uint32_t kind, std::uint32_t phase, OKU_WORD extra) const {
    auto hook = makeRecord<OKU_PROTOCOL_HOOK>();
    hook.pfClass = u"XMPP";
    hook.netId = static_cast<std::int32_t>(account().netId);
    hook.kind = kind;
    hook.phase = phase;
    return call(u"OKU/CallProtolHooks", wordOf(&hook), extra);
}

std::string Stage::offerIncoming(std::string text) const {
    auto data = makeRecord<OKU_HOOK_DATA>();
    data.data = text.data();
    data.length = static_cast<std::uint32_t>(text.size());
    data.flags = 1;
    raise(OKU_HOOK_STREAM_IN, OKU_PHASE_BEFORE, wordOf(&data));
    raise(OKU_HOOK_STREAM_IN, OKU_PHASE_AFTER, wordOf(&data));
    return text;
}

bool Stage::offerOutgoing(std::string text) const {
    auto data = makeRecord<OKU_HOOK_DATA>();
    data.data = text.data();
    data.length = static_cast<std::uint32_t>(text.size());
    data.flags = 1;
    return raise(OKU_HOOK_STREAM_OUT, OKU_PHASE_BEFORE, wordOf(&data)) != 0;
}

void Stage::logIn(const std::vector<std::u16string>& contacts) {
    inPlugin([&] { account().flags = OKU_FLAG_CONNECTING; });
    inPlugin([&] {
        account().flags = OKU_FLAG_CONNECTED | OKU_FLAG_ENCRYPTION_ACTIVATED | OKU_FLAG_AUTHORIZED;
        entry().line.encrypted = true;
        raise(OKU_HOOK_SESSION_BOUND, OKU_PHASE_NOTICE);
    });
    inPlugin([&] { answerRoster(contacts); });
}

void Stage::answerRoster(const std::vector<std::u16string>& contacts) {
    raise(OKU_HOOK_ROSTER_COMPLETE, OKU_PHASE_NOTICE);
    call(u"OKU/CTL/DeleteAll", wordOf(u"XMPP"), account().netId);
    call(u"OKU/CTL/EnableDrawing", 0);
    for (const auto& contact : contacts) addContact(contact, contact, u"Kontakty");
    call(u"OKU/CTL/EnableDrawing", 1);
}

void Stage::addContact(const std::u16string& jid, const std::u16string& name, const std::u16string& group) {
    auto record = makeRecord<OKU_CONTACT_ADD>();
    record.identity.id = jid.c_str();
    record.identity.pfClass = u"XMPP";
    record.identity.netId = account().netId;
    record.name = name.c_str();
    record.group = group.c_str();
    record.kind = 3;
    record.fields = OKU_CONTACT_FIELDS_PLAIN;
    call(u"OKU/CTL/AddContact", wordOf(&record));
}

void Stage::receiveMessage(const char16_t* from, const char16_t* body, std::uint32_t flags) {
    auto record = makeRecord<OKU_MESSAGE_DATA>();
    auto resource = makeRecord<OKU_RESOURCE_INFO>();
    resource.resource = u"komp";
    record.id = from;
    record.pfClass = u"XMPP";
    record.netId = account().netId;
    record.resource = record.senderResource = &resource;
    record.subject = u"";
    record.body = body;
    record.flags = flags;
    record.time = QDateTime::currentSecsSinceEpoch();
    if (!raise(OKU_HOOK_MESSAGE_IN, OKU_PHASE_BEFORE, wordOf(&record))) {
        raise(OKU_HOOK_MESSAGE_IN, OKU_PHASE_AFTER, wordOf(&record));
    }
    core->history.flush();  // as at the end of the event loop's turn
}

bool Stage::logged(const std::string& line) const {
    return std::find(plugin_->log.begin(), plugin_->log.end(), line) != plugin_->log.end();
}

}  // namespace oku::test
