// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/cards/contact_pictures.h"

#include <QFileInfo>
#include <utility>

#include "host/oku/avatar.h"
#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/roster/contact_service.h"
#include "messenger/core/values/jid_text.h"

namespace oku {

ContactPictures::ContactPictures(ServiceRegistry& services, Accounts& accounts, ContactService& contacts,
                                 CheckedPictures& checked, QObject* parent)
    : QObject(parent), accounts_(accounts), contacts_(contacts), checked_(checked) {
    services.provide(u"OKU/CTL/SetAvatar", [this](OKU_WORD param, OKU_WORD) { return set(param); });
    connect(&contacts, &ContactService::removed, this, [this](const QString& account, const QString& jid) {
        const auto* entry = accounts_.byJid(account);
        const auto gone = entry ? known_.extract({entry->key, jid}) : decltype(known_)::node_type();
        if (gone) release(gone.mapped().picture);
    });
}

ContactPicture ContactPictures::picture(const QString& key, const QString& jid) const {
    const auto found = known_.find({key, jid});
    if (found == known_.end()) return {jid, {}, {}};
    return {jid, found->second.picture.path, found->second.picture.hash};
}

OKU_WORD ContactPictures::set(OKU_WORD param) {
    const auto* record = recordAt<OKU_CONTACT_AVATAR>(param);
    const auto* contact = record && record->contact ? recordAt<OKU_CONTACT_RECORD>(wordOf(record->contact)) : nullptr;
    const auto* account = contact ? accounts_.byNetId(contact->netId) : nullptr;
    if (!account) return 0;
    const auto listed = contacts_.list(*account).contact(bareJid(wideText(contact->id)));
    if (!listed) return 0;
    const QFileInfo file(wideText(record->path));
    const Source source{file.filePath(), file.size(), file.lastModified()};
    const Owner owner{account->key, listed->jid};
    Known& known = known_[owner];
    if (known.source == source) return 1;
    known.source = source;
    check(owner, known);
    return 1;
}

void ContactPictures::check(const Owner& owner, Known& known) {
    if (std::exchange(known.checking, true)) return;
    checked_.check(known.source.path, [this, owner, source = known.source](const CheckedPicture& picture) {
        take(owner, source, picture);
    });
}

void ContactPictures::take(const Owner& owner, const Source& source, const CheckedPicture& picture) {
    const auto found = known_.find(owner);
    if (found == known_.end()) return forgetUnused(picture);
    found->second.checking = false;
    // Meanwhile the contact may have got another one.
    if (found->second.source != source) {
        forgetUnused(picture);
        check(owner, found->second);
        return;
    }
    // A file that is no picture takes nobody's away.
    if (picture.path.isEmpty() || found->second.picture.hash == picture.hash) {
        forgetUnused(picture);
        return;
    }
    ++uses_[picture.hash];
    release(std::exchange(found->second.picture, picture));
    const auto* account = accounts_.byKey(owner.first);
    if (account) emit changed(account->jid(), {owner.second, picture.path, picture.hash});
}

void ContactPictures::release(const CheckedPicture& picture) {
    const auto found = uses_.find(picture.hash);
    if (found == uses_.end()) return;
    if (--found->second == 0) uses_.erase(found);
    forgetUnused(picture);
}

void ContactPictures::forgetUnused(const CheckedPicture& picture) {
    if (!uses_.contains(picture.hash)) checked_.forget(picture);
}

}  // namespace oku
