// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "plugin/module.h"

#include <array>
#include <utility>

#include "assembly/account_parts.h"
#include "assembly/entries.h"
#include "assembly/shared_parts.h"
#include "extensions/own_caps.h"
#include "host/services/directories.h"
#include "host/services/icons.h"
#include "host/services/menus.h"
#include "platform/platform.h"
#include "plugin/account_files.h"
#include "plugin/boundary.h"
#include "plugin/client_class.h"
#include "plugin/deployment.h"
#include "plugin/plugin_state.h"

namespace protolink {
namespace {

constexpr OKU_PLUGIN_INFO kDescription{
    sizeof(OKU_PLUGIN_INFO),
    u"Protokół XMPP",
    u"Obsługa protokołu XMPP dla komunikatora OKU",
    deployment::kLegalLine,
    deployment::kAuthor,
    deployment::kEmail,
    deployment::kSite,
    deployment::kUpdateUrl,
    {1200, 131072, 3999007, 7, 1},
    {},
};

/// The menu item of the service browser: opens its window, or shows the one that is open.
OKU_WORD OKU_CALL onInternalBrowser(OKU_WORD, OKU_WORD, OKU_WORD) noexcept {
    return atBoundary([]() -> OKU_WORD {
        const std::shared_ptr<PluginState> state = pluginState();
        if (!state || state->ending) return 0;
        SharedParts& shared = *state->shared;
        if (!shared.browser)
            shared.browser = std::make_shared<CWndBrowser>(shared.windows, state->host, shared.dialogAccounts);
        shared.browser->open();
        return 0;
    });
}

void closeBrowser(SharedParts& shared) {
    if (!shared.browser) return;
    shared.browser->DestroyWindow();
    // One of its calls may be further out on the stack.
    releaseAfterCall(std::exchange(shared.browser, nullptr));
}

void addBrowserItem(const Host& host) {
    MenuItem item;
    item.id = u"XMPP/InternalBrowser";
    item.parent = u"OKU/Menu/Main/Opt";
    item.caption = u"Przeglądarka usług XMPP";
    item.order = -10000001;
    item.callback = onInternalBrowser;
    Menus(host).add(item);
}

void loadIcons(const Host& host) {
    const Icons icons(host);
    icons.createClass(u"XMPP/UserTune", u"Image/Audio");
    icons.createClass(u"XMPP/UserMood", u"Image/Mood");
    constexpr std::array<std::uint32_t, 8> kStatuses{7, 2, 3, 4, 5, 6, 8, 1};
    constexpr std::array<std::uint32_t, 1> kSecond{1};
    icons.loadStatusIcons(u"XMPP/Icon", kStatuses, kSecond);
    icons.load(u"XMPP/MainIcon32", 105);
    icons.load(u"XMPP/MainIcon16", 106);
}

void beginAccount(PluginState& state, const AccountFiles& files) {
    // The host may have unloaded the plugin from within one of the calls before.
    if (state.ending) return;
    const auto account = assembleAccount(files, state.host, state.shared);
    // Listed first, so that what it has registered is taken back even when a step of it fails.
    state.accounts.push_back(account);
    account->init(accountEntries(), state.shared->own);
}

void load(OKU_WORD module, const OKU_FUNCTION_TABLE* table) {
    // Accounts of an earlier load would be lost while the host still knows them.
    if (pluginState()) return;
    auto state = std::make_shared<PluginState>();
    state->host = Host(table, module);
    state->shared = std::make_shared<SharedParts>(state->host);
    // Known only now that it is whole: unloading asks for its parts also when a later step fails.
    pluginState() = state;
    // The profile directory is not known yet: the file is looked for in the current directory.
    state->shared->clientDb.load(state->shared->directories.profile);
    state->host.log(LogLevel::Warning, tag::kGeneral, u"XMPP protocol plugin starting up...");
    state->shared->own.ownCapsVer = ownCaps::buildOwnCaps();
    state->shared->directories = askDirectories(state->host);
    state->shared->avatars.open(state->shared->directories.cache);
    addBrowserItem(state->host);
    loadIcons(state->host);
    state->shared->pepEvent = state->host.createEvent(u"XMPP/OnPEPEvent");
    const std::u16string base = moduleBaseName(platform::modulePath());
    const std::u16string& profile = state->shared->directories.profile;
    beginAccount(*state, defaultAccount(profile, base));
    // Looked for only now: a host may write the other accounts' files when it hears of the first.
    for (const AccountFiles& files : furtherAccounts(profile, base)) beginAccount(*state, files);
}

void unload() {
    const std::shared_ptr<PluginState> state = pluginState();
    if (!state || state->ending) return;
    state->ending = true;
    tolerate([&] { closeBrowser(*state->shared); });
    // All at once, so that one wait is enough for all of them.
    for (const auto& account : state->accounts) account->session->stopDownloads();
    for (const auto& account : state->accounts) {
        account->shutdown();
        AccountParts::retire(account->context);
        // A call of this account may be further out on the stack; its memory goes when that call has returned.
        tolerate([&] { releaseAfterCall(account); });
    }
    state->host.destroyEvent(std::exchange(state->shared->pepEvent, 0));
    tolerate([&] { state->shared->clientDb.save(state->shared->directories.profile); });
    // A load may be further out on the stack: what it does from here on reaches nobody.
    state->host.mute();
    state->accounts.clear();
    tolerate([&] { releaseAfterCall(state); });
    pluginState().reset();
}

}  // namespace
}  // namespace protolink

using namespace protolink;

const OKU_PLUGIN_INFO* OKU_CALL queryPlugInfo() { return &kDescription; }

OKU_WORD OKU_CALL pluginLoad(OKU_WORD module, const OKU_FUNCTION_TABLE* table) {
    return atBoundary([&]() -> OKU_WORD {
        load(module, table);
        return 0;
    });
}

OKU_WORD OKU_CALL pluginUnload() {
    return atBoundary([]() -> OKU_WORD {
        unload();
        return 0;
    });
}
