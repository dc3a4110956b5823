// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/windows_on_host.h"

#include "messenger/core/host_core.h"
#include "messenger/core/values/jid_text.h"

namespace oku {
namespace {

class WindowsOnHost final : public WindowsFace {
public:
    explicit WindowsOnHost(HostCore& core) : core_(core) {
        connect(&core_.boxes, &MessageBoxes::opened, this, &WindowsFace::boxOpened);
        connect(&core_.boxes, &MessageBoxes::closed, this, &WindowsFace::boxClosed);
        connect(&core_.menus, &MenuModel::changed, this, &WindowsFace::menuChanged);
        connect(&core_.contactMenus, &ContactMenus::told, this, &WindowsFace::contactMenuTold);
        connect(&core_.statusWindows, &StatusWindows::requested, this, &WindowsFace::statusWindowRequested);
        connect(&core_, &HostCore::noticed, this, &WindowsFace::noticed);
    }

    QString answerBox(int number, BoxButton button) override {
        if (core_.boxes.answer(number, button)) return {};
        return QCoreApplication::translate("Messenger", "Nie ma takiego pytania, albo nie ma w nim takiej odpowiedzi.");
    }

    QList<MessageBox> openBoxes() const override { return core_.boxes.open(); }

    QList<MenuItem> menu(const QString& parent) const override { return core_.menus.items(parent); }

    QString askContactMenu(const QString& account, const QString& jid, bool inChat) override {
        return core_.accounts.with(account, [&](AccountEntry& entry) {
            core_.contactMenus.ask(entry, bareJid(jid), inChat);
            return QString();
        });
    }

    QString statusMenu(const QString& account) const override {
        const auto* entry = core_.accounts.inPlugin(account);
        return entry ? QString::fromStdU16String(entry->service(u"Menu")) : QString();
    }

    QString activateMenu(const QString& id) override {
        for (const auto& entry : core_.accounts.all()) {
            AccountEntry& account = *entry;
            const auto status = core_.menus.chosenStatus(QString::fromStdU16String(account.service(u"Menu")), id);
            if (!account.registered || !status) continue;
            core_.choices.choose(account, {*status, account.description, [&core = core_, id] { core.menus.call(id); }});
            return {};
        }
        return core_.menus.activate(id) ? QString()
                                        : QCoreApplication::translate("Messenger", "Nie ma takiej pozycji menu.");
    }

    QString confirmStatusWindow(const QString& account, Status status, const QString& description,
                                bool protect) override {
        return core_.accounts.with(account, [&](AccountEntry& entry) {
            if (!core_.statusWindows.has(entry))
                return QCoreApplication::translate("Messenger", "To konto nie ma okna statusu.");
            core_.choices.choose(entry, {status, description, [&core = core_, &entry, status, description, protect] {
                                             core.statusWindows.confirm(entry, status, description, protect);
                                         }});
            return QString();
        });
    }

private:
    HostCore& core_;
};

}  // namespace

std::unique_ptr<WindowsFace> windowsOnHost(HostCore& core) { return std::make_unique<WindowsOnHost>(core); }

}  // namespace oku
