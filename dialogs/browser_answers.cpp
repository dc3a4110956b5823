// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the service browser asks for, and what becomes of the answers.
#include "dialogs/browser.h"
#include "dialogs/browser_layout.h"
#include "dialogs/browser_rows.h"
#include "dialogs/server_error.h"
#include "host/util/xml_compose.h"
#include "plugin/identifiers.h"
#include "router/namespaces.h"

namespace protolink {

namespace {

constexpr std::size_t kShortestJid = 3;

/// A query, with the node where there is one.
std::u16string queryText(std::u16string_view xmlns, std::u16string_view node) {
    return node.empty() ? lutCPW(u"query", {}, {{u"xmlns", xmlns}})
                        : lutCPW(u"query", {}, {{u"xmlns", xmlns}, {u"node", node}});
}

}  // namespace

void CWndBrowser::await(DialogAccount& account, const std::u16string& id, Handler handler) {
    const auto answer = [weak = weak_from_this(), &account, handler](xmlElement& stanza, void*) {
        const std::shared_ptr<CWndBrowser> browser = weak.lock();
        if (browser && browser->live_) (browser.get()->*handler)(account, stanza);
    };
    account.dispatcher.addHandler(answer, id, this);
}

void CWndBrowser::query(DialogAccount& account, const std::u16string& id, std::u16string_view xmlns,
                        std::u16string_view jid, std::u16string_view node, Handler handler) {
    await(account, id, handler);
    account.output.sendText(lutCPW(u"iq", queryText(xmlns, node), {{u"to", jid}, {u"id", id}, {u"type", u"get"}}));
}

void CWndBrowser::Browse(const std::u16string& jid, const std::u16string& node) {
    items_.DeleteAll(view());
    DialogAccount* const account = selectedAccount();
    if (!account) return;
    SetHeaderDesc(u"Pobieranie listy usług...");
    pendingInfo_ = 0;
    if (!(account->client.flags & FLAG_AUTHORIZED)) return warn(u"Brak połączenia z siecią!", u"Błąd");
    const std::u16string id = generateId();
    if (jid.size() < kShortestJid) {
        return warn(
            u"Ta funkcja ma jedną zasadniczą wadę, musisz podać adres serwera (lub usługi) którą chcesz "
            u"'przepytać'. I niestety nie da się tego obejśc.",
            u"Błąd");
    }
    query(*account, id, ns::kDiscoItems, jid, node, &CWndBrowser::OnItemsResult);
    view().setText(browser::kJid, jid);
    view().setText(browser::kNode, node);
    SetWindowText(u"Przeglądarka: " + jid);
    remember(browser::kJid, jids_, jid);
    remember(browser::kNode, nodes_, node);
}

void CWndBrowser::remember(std::uint32_t control, BrowserHistory& history, const std::u16string& text) {
    if (history.add(text)) view().addItem(control, text);
}

/// All is known once no answer is missing any more.
void CWndBrowser::describeProgress(const char16_t* unfinished) {
    if (pendingInfo_ < 1) {
        SetHeaderDesc(u"Gotowe");
    } else if (unfinished) {
        SetHeaderDesc(unfinished);
    }
}

void CWndBrowser::OnItemsResult(DialogAccount& account, xmlElement& stanza) {
    if (stanza.GetAttribute(u"type") != u"result")
        warn(unexpectedAnswer(stanza), std::u16string(stanza.GetAttribute(u"from")));
    items_.DeleteAll(view());
    if (const xmlElement* const found = stanza.GetChildPtr(u"query", ns::kDiscoItems)) {
        for (const xmlElement& item : found->children) {
            // Sending may have seen the window go.
            if (live_ && item.name == u"item") listItem(account, item);
        }
    }
    describeProgress(u"Pobrano listę usług, pobieranie informacji...");
}

void CWndBrowser::listItem(DialogAccount& account, const xmlElement& item) {
    const std::u16string_view jid = item.GetAttribute(u"jid");
    const std::u16string_view node = item.GetAttribute(u"node");
    if (jid.size() < kShortestJid) return;
    items_.InsertItem(view(), browser::rowKey(jid, node), browser::rowOf(item));
    query(account, generateId(), ns::kDiscoInfo, jid, node, &CWndBrowser::OnInfoResult);
    ++pendingInfo_;
}

/// An answer that is no result leaves the count as it is: the progress shows that something is missing.
void CWndBrowser::OnInfoResult(DialogAccount& account, xmlElement& stanza) {
    if (stanza.GetAttribute(u"type") != u"result") return;
    const std::u16string_view jid = stanza.GetAttribute(u"from");
    const xmlElement* const info = stanza.GetChildPtr(u"query", ns::kDiscoInfo);
    if (info && jid.size() >= kShortestJid) {
        --pendingInfo_;
        const std::u16string_view node = info->GetAttribute(u"node");
        if (CUITreeNode* const row = items_.FindItem(browser::rowKey(jid, node))) {
            const bool hasVersion = browser::addInfo(*row, jid, *info);
            items_.RedrawItem(view(), *row);
            if (hasVersion) query(account, generateId(), ns::kVersion, jid, node, &CWndBrowser::OnVersionResult);
        }
    }
    describeProgress(nullptr);
}

void CWndBrowser::OnVersionResult(DialogAccount&, xmlElement& stanza) {
    const xmlElement* const version = stanza.GetChildPtr(u"query", ns::kVersion);
    if (!version || stanza.GetAttribute(u"type") != u"result") return;
    const auto key = browser::rowKey(stanza.GetAttribute(u"from"), version->GetAttribute(u"node"));
    if (CUITreeNode* const row = items_.FindItem(key)) {
        browser::addVersion(*row, *version);
        items_.RedrawItem(view(), *row);
    }
}

void CWndBrowser::registerWith(DialogAccount& account, const CUITreeNode& row) {
    openForm(std::make_shared<CWndForm>(windows_, account, std::u16string(row.getDataValue(u"jid"))));
}

void CWndBrowser::unregister(DialogAccount& account, const CUITreeNode& row) {
    const std::u16string id = generateId();
    await(account, id, &CWndBrowser::OnUnregisterResult);
    const auto content = lutCPW(u"query", lutCPW(u"remove", {}), {{u"xmlns", ns::kRegister}});
    account.output.sendText(
        lutCPW(u"iq", content, {{u"type", u"set"}, {u"id", id}, {u"to", row.getDataValue(u"jid")}}));
    SetHeaderDesc(u"Wyrejestrowywanie...");
}

void CWndBrowser::OnUnregisterResult(DialogAccount&, xmlElement& stanza) {
    if (stanza.GetAttribute(u"type") == u"result") return;
    warn(unexpectedAnswer(stanza), std::u16string(stanza.GetAttribute(u"from")));
}

void CWndBrowser::execute(DialogAccount& account, const CUITreeNode& row) {
    const std::u16string id = generateId();
    await(account, id, &CWndBrowser::OnCommandResult);
    const auto content = lutCPW(u"command", {}, {{u"xmlns", ns::kCommands}, {u"node", row.getDataValue(u"node")}});
    account.output.sendText(
        lutCPW(u"iq", content, {{u"type", u"set"}, {u"id", id}, {u"to", row.getDataValue(u"jid")}}));
    SetHeaderDesc(u"Wykonywanie polecenia...");
}

/// Looked at by the window itself, as a form may follow.
void CWndBrowser::OnCommandResult(DialogAccount&, xmlElement& stanza) {
    commandResults_.push_back(stanza);
    view().post(browser::kCommandAnswered);
}

void CWndBrowser::takeCommandResults() {
    while (live_ && !form_ && !commandResults_.empty()) {
        const xmlElement stanza = std::move(commandResults_.front());
        commandResults_.pop_front();
        onCommandResult(stanza);
    }
}

void CWndBrowser::onCommandResult(const xmlElement& stanza) {
    const std::u16string_view from = stanza.GetAttribute(u"from");
    if (stanza.GetAttribute(u"type") != u"result") notice(u"Błąd wykonania polecenia", from, BoxStyle::Error);
    // The window may have gone in that box.
    if (!live_) return;
    const xmlElement* const command = stanza.GetChildPtr(u"command");
    if (!command) return;
    const xmlElement* const x = command->GetChildPtr(u"x", ns::kDataForms);
    const bool completed = command->GetAttribute(u"status") == u"completed";
    DialogAccount* const account = selectedAccount();
    if (x && account) {
        openForm(std::make_shared<CWndForm>(windows_, *account, std::u16string(from),
                                            completed ? CWndForm::Mode::Result : CWndForm::Mode::Command, *x,
                                            command->GetAttribute(u"node"), command->GetAttribute(u"sessionid")));
    } else if (completed && !x) {
        notice(u"Polecenie zostało wykonane.", from, BoxStyle::Information);
    }
}

}  // namespace protolink
