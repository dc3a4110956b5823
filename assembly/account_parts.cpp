// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "assembly/account_parts.h"

#include <utility>

#include "plugin/boundary.h"

namespace protolink {

namespace {

/// Outlives the plugin's state, which is made later: accounts take themselves out when they go.
LiveObjects<AccountParts> g_liveAccounts;

}  // namespace

AccountParts::AccountParts(CClientClass& account, std::shared_ptr<SharedParts> sharedParts)
    : client(account), shared(std::move(sharedParts)) {
    output.attach(connection);
    client.context = g_liveAccounts.add(*this);
    shared->dialogAccounts.push_back(&dialogAccount);
}

AccountParts::~AccountParts() {
    retire(client.context);
    std::erase(shared->dialogAccounts, &dialogAccount);
}

AccountParts* AccountParts::find(OKU_WORD context) { return g_liveAccounts.find(context); }

void AccountParts::retire(OKU_WORD context) { g_liveAccounts.remove(context); }

void AccountParts::setStatus(Status status, const std::u16string& description, OKU_WORD flagsWord) {
    connection.setStatus(status, description, flagsWord);
}

void AccountParts::forgetRetries() { reconnection.forgetRetries(); }
void AccountParts::resetState() { connection.resetState(); }
void AccountParts::disconnect(bool closeSocket) { connection.disconnect(closeSocket); }
void AccountParts::dropReconnection() { reconnection.drop(); }
void AccountParts::freeZInput() { connection.input().freeZInput(); }
void AccountParts::rosterLoad() { roster.rosterLoad(client.files.rosterPath); }
void AccountParts::rosterSave() { roster.rosterSave(client.files.rosterPath); }

void AccountParts::stopDownloads() { sessionManager.stopDownloads(); }

void AccountParts::endTransfers() {
    fileChoice.end();
    sessionManager.end();
}

void AccountParts::closeWindows() { pages.close(); }

void AccountParts::forgetSession() { login.sessionAsked = false; }

void AccountParts::onStateReset() {
    roster.rosterDownloaded = 0;
    login.authStep = 0;
    presence.resetSharedStatus();
    // Of all accounts, as they share it. A picture that never came is asked for again.
    shared->avatars.avatarFetchesInFlight.clear();
}

void AccountParts::onSocketConnected() {
    contacts.clear();
    roster.rosterDownloaded = 0;
    features = {};
}

void AccountParts::onSocketClosed() { requests.forgetAll(); }

void AccountParts::routeElements(XmlSequence& batch) { router.routeElements(batch); }

void AccountParts::publishStatus(Status status, const std::u16string& description) {
    presence.sendPresence(status, description);
}

void AccountParts::onServerDiscoInfo(xmlElement& iq) { serverDiscovery.onServerDiscoInfo(iq); }

void AccountParts::rosterResult(xmlElement& iq) {
    // With the shared status the first presence goes out when that is known.
    if (!features.serverHasSharedStatus) presence.sendPresence(client.status, client.statusDescription);
    roster.rebuildFrom(iq);
}

std::shared_ptr<CClientClass> assembleAccount(const AccountFiles& files, const Host& host,
                                              std::shared_ptr<SharedParts> shared) {
    auto account = std::make_shared<CClientClass>(files, host);
    account->session = std::make_unique<AccountParts>(*account, std::move(shared));
    return account;
}

}  // namespace protolink
