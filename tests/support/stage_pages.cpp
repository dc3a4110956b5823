// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Pages in the host's windows, and a contact's menu.
#include <algorithm>
#include <optional>
#include <vector>

#include "host/oku/dialogs.h"
#include "host/oku/menu.h"
#include "host/oku/windows.h"
#include "tests/support/stage_records.h"

namespace harness {

namespace {

/// The record of a contact that lives as long as this, or none.
class NamedContact {
public:
    NamedContact(const std::optional<std::string>& jid, const std::string& pfClass, std::uint32_t net)
        : given_(jid.has_value()), id_(jid.value_or("")), class_(pfClass), record_(sized<OKU_CONTACT_RECORD>()) {
        record_.id = id_;
        record_.pfClass = class_;
        record_.netId = net;
    }
    const OKU_CONTACT_RECORD* record() const { return given_ ? &record_ : nullptr; }

private:
    bool given_;
    WideText id_, class_;
    OKU_CONTACT_RECORD record_;
};

}  // namespace

const Callback& Stage::pageCallback(PageKind kind) {
    const auto number = std::to_string(account);
    if (kind == PageKind::Options) return required(host.optionPages, "XMPP/Options/" + number, "options page");
    if (kind == PageKind::Information) return required(host.contactPages, "XMPP/Prop/Info", "page of information");
    return required(host.propertyPages, "XMPP/" + number + "/Properties", "properties page");
}

OKU_WORD Stage::page(const PageInput& input) {
    constexpr OKU_WORD kParent = 0x9A6E;
    const auto callback = pageCallback(input.kind);
    const NamedContact contact(input.contact, "XMPP", account);
    std::vector<char16_t> title(OKU_PAGE_TEXT_CAPACITY), description(OKU_PAGE_TEXT_CAPACITY);
    auto record = sized<OKU_PAGE_EVENT>();
    record.event = input.event;
    record.page = input.hasWord ? &pageWords_[{input.kind, input.page}] : nullptr;
    record.contact = contact.record();
    record.parent = kParent;
    record.title = input.hasTexts ? title.data() : nullptr;
    record.description = input.hasTexts ? description.data() : nullptr;
    record.x = input.place.at(0);
    record.y = input.place.at(1);
    record.width = input.place.at(2);
    record.height = input.place.at(3);
    host.pageParents.insert(kParent);
    const auto result = callback(word(&record), 0);
    if (std::count(title.begin(), title.end(), u'\0') == 0) host.complain("a page's title has no end");
    pageTitle = copyText(title.data());
    pageDescription = copyText(description.data());
    return result;
}

OKU_WORD Stage::pageNull(PageKind kind) { return pageCallback(kind)(0, 0); }

OKU_WORD Stage::showProperties(const ContactEvent& input) {
    const NamedContact contact(input.contact, input.pfClass, input.net.value_or(account));
    auto record = sized<OKU_PROPERTIES_EVENT>();
    record.event = input.event;
    record.contact = contact.record();
    return raise("OKU/PropertiesAddPages", word(&record), input.extra);
}

OKU_WORD Stage::buildMenu(const ContactEvent& input, const std::string& menu, std::uint32_t count) {
    const NamedContact contact(input.contact, input.pfClass, input.net.value_or(account));
    const WideText name(menu);
    auto record = sized<OKU_CONTACT_MENU>();
    record.contactCount = count;
    record.menu = menu.empty() ? nullptr : static_cast<const char16_t*>(name);
    record.contact = contact.record();
    record.addContext = word(&host);
    record.add = [](OKU_WORD item, OKU_WORD extra, OKU_WORD context) -> OKU_WORD {
        auto& told = *reinterpret_cast<RecordingHost*>(context);
        if (extra != 0) told.complain("an item of a menu has an extra");
        told.plain(Line{"permits " + copyText(reinterpret_cast<const void*>(item)), {}, {}, {}});
        return 1;
    };
    return raise("OKU/OnMenuRebuild", word(&record), 0);
}

}  // namespace harness
