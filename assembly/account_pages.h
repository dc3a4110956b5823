// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The pages of an account in the windows of the host.
#pragma once

#include "dialogs/properties_xmpp.h"
#include "host/oku/base.h"
#include "profile/avatar_cache.h"
#include "stream/connection.h"
#include "ui/host_pages.h"
#include "ui/window_view.h"

namespace protolink {

class AccountPages {
public:
    /// `informationPage` is the host's callback for that page.
    AccountPages(const ContactParts& parts, Connection& connection, WindowFactory& windows, const AvatarCache& avatars,
                 OKU_HANDLER informationPage)
        : parts_(parts),
          account_(parts.account),
          connection_(connection),
          windows_(windows),
          avatars_(avatars),
          informationPage_(informationPage) {}

    /// The host's callback for the options page, with an OKU_PAGE_EVENT. 1 when the event could not be done.
    OKU_WORD onOptionsPage(OKU_WORD pageEvent);
    /// The same for a contact's page of settings.
    OKU_WORD onPropertiesPage(OKU_WORD pageEvent);
    /// The same for the page that tells of a contact's resources.
    OKU_WORD onInformationPage(OKU_WORD pageEvent);
    /// The host's event before it shows a contact's properties, with an OKU_PROPERTIES_EVENT and the host's word for
    /// them: the page of information is for the account's own contacts. Always 0.
    OKU_WORD onAddPages(OKU_WORD propertiesEvent, OKU_WORD properties) const;
    /// Closes all that is open.
    void close() { pages_.close(); }

private:
    ContactParts parts_;
    DialogAccount& account_;
    Connection& connection_;
    WindowFactory& windows_;
    const AvatarCache& avatars_;
    OKU_HANDLER informationPage_;
    HostPages pages_;
};

}  // namespace protolink
