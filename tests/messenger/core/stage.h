// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>
#include <functional>
#include <memory>
#include <QDir>
#include <QTemporaryDir>
#include <string>

#include "messenger/core/host_core.h"
#include "tests/messenger/core/tiny_plugin.h"

namespace oku::test {

/// Lets the event loop run until `condition` holds. False when it does not within the time (milliseconds).
bool waitFor(const std::function<bool()>& condition, int time = 60'000);
/// Lets the event loop run for a time.
void pass(int milliseconds);

/// A host with the tiny plugin, in a profile of its own that goes with the test.
class Stage : public testing::Test {
protected:
    Stage();
    ~Stage() override;
    /// Before the members of a test's own class go, as the host still speaks to them at its end.
    void TearDown() override { core.reset(); }

    MessengerOptions options() const;
    /// Writes the settings file of the first account (empty `name`) or of a further one.
    void writeAccount(const QString& name, const QString& jid, const QString& more = {}) const;
    /// Makes a host and starts it; the plugin is loaded then.
    void start(MessengerOptions given);
    void start() { start(options()); }
    /// The host in place of which another one is started.
    void restart();

    tiny::State& plugin() const { return *plugin_; }
    tiny::Account& account(int index = 0) const;
    AccountEntry& entry(int index = 0) const;

    /// Runs as a call into the plugin, the way its own code is reached.
    void inPlugin(const std::function<void()>& call) { core->queue.post(entry().key, call); }
    OKU_WORD call(const char16_t* service, OKU_WORD param = 0, OKU_WORD extra = 0) const;
    OKU_WORD raise(std::uint32_t kind, std::uint32_t phase, OKU_WORD extra = 0) const;
    /// Offers received text to the listeners, and returns what is left of it.
    std::string offerIncoming(std::string text) const;
    /// Offers text that is about to be sent; true when a listener took it away.
    bool offerOutgoing(std::string text) const;

    /// Takes the account through a login up to the complete roster with these contacts (bare JIDs).
    void logIn(const std::vector<std::u16string>& contacts = {u"bob@example.org"});
    /// What the plugin does with the answer to its roster request.
    void answerRoster(const std::vector<std::u16string>& contacts);
    void addContact(const std::u16string& jid, const std::u16string& name, const std::u16string& group);
    void receiveMessage(const char16_t* from, const char16_t* body, std::uint32_t flags = 5);
    bool logged(const std::string& line) const;

    QTemporaryDir directory;
    std::unique_ptr<HostCore> core;
    QStringList notices;

    /// Finds the module that a host has loaded.
    void findPlugin();

private:
    tiny::State* plugin_ = nullptr;
    QString before_ = QDir::currentPath();
};

}  // namespace oku::test
