// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/json/json_pages.h"

#include <array>
#include <utility>

#include "messenger/terminal/json/json_line.h"

namespace oku::terminal {
namespace {

DialogsFace& dialogsOf(const JsonDesk& desk) { return desk.messenger.dialogs(); }

void putItems(JsonLine& line, const QList<MenuItem>& items) {
    line.beginList("items");
    for (const MenuItem& item : items) {
        line.beginObject();
        line.put("item", item.id);
        line.put("caption", item.caption);
        line.put("separator", item.separator);
        line.endObject();
    }
    line.endList();
}

void putPages(JsonLine& line, const char* key, const QList<DialogPage>& pages) {
    line.beginList(key);
    for (const DialogPage& page : pages) {
        line.beginObject();
        line.put("page", page.id);
        line.put("caption", page.caption);
        line.endObject();
    }
    line.endList();
}

JsonOutcome apply(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return {dialogsOf(desk).apply(command.whole("window", 0))};
}

JsonOutcome confirm(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return {dialogsOf(desk).confirm(command.whole("window", 0))};
}

// Of one contact the plugin is asked, and the event comes later.
JsonOutcome pages(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    const QString jid = command.text("jid");
    if (!jid.isEmpty()) return {dialogsOf(desk).askPropertyPages(account, jid)};
    desk.write(pagesLine(dialogsOf(desk), account, {}, dialogsOf(desk).propertyPages(account)));
    return {};
}

JsonOutcome contactMenu(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    return {desk.messenger.windows().askContactMenu(account, command.text("jid"), command.flag("chat", false))};
}

JsonOutcome options(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return {dialogsOf(desk).openOptions(command.text("page"))};
}

JsonOutcome properties(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    return {dialogsOf(desk).openProperties(account, command.text("jid"), command.text("page"))};
}

JsonOutcome menu(JsonDesk& desk, const QString&, const JsonCommand& command) {
    const QString given = command.text("parent");
    const QString parent = given.isEmpty() ? programMenu() : given;
    JsonLine line(u"menu");
    line.put("parent", parent);
    putItems(line, desk.messenger.windows().menu(parent));
    desk.write(std::move(line).take());
    return {};
}

JsonOutcome menuItem(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return {desk.messenger.windows().activateMenu(command.text("item"))};
}

constexpr std::array kPages = {JsonField{"jid", JsonType::Text, false}};
constexpr std::array kContactMenu = {JsonField{"jid", JsonType::Text, true}, JsonField{"chat", JsonType::Flag, false}};
constexpr std::array kPage = {JsonField{"page", JsonType::Text, false}};
constexpr std::array kContactPage = {JsonField{"jid", JsonType::Text, false}, JsonField{"page", JsonType::Text, false}};

constexpr std::array kMenu = {JsonField{"parent", JsonType::Text, false}};
constexpr std::array kMenuItem = {JsonField{"item", JsonType::Text, true}};
constexpr std::array kOfPage = {JsonField{"window", JsonType::Whole, true}};

constexpr std::array kCommands = std::to_array<JsonCommandRow>({
    {{"menu", kMenu}, false, &menu},
    {{"menu-item", kMenuItem}, false, &menuItem},
    {{"pages", kPages}, true, &pages},
    {{"contact-menu", kContactMenu}, true, &contactMenu},
    {{"options", kPage}, false, &options},
    {{"properties", kContactPage}, true, &properties},
    {{"page-apply", kOfPage}, false, &apply},
    {{"page-ok", kOfPage}, false, &confirm},
});

}  // namespace

std::span<const JsonCommandRow> jsonPageCommands() { return kCommands; }

QByteArray pagesLine(const DialogsFace& dialogs, const QString& account, const QString& jid,
                     const QList<DialogPage>& properties) {
    JsonLine line(u"pages", account);
    line.put("jid", jid);
    putPages(line, "options", dialogs.optionPages());
    putPages(line, "properties", properties);
    return std::move(line).take();
}

QByteArray contactMenuLine(const QString& account, const QString& jid, const QList<MenuItem>& items) {
    JsonLine line(u"contact-menu", account);
    line.put("jid", jid);
    putItems(line, items);
    return std::move(line).take();
}

}  // namespace oku::terminal
