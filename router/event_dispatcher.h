// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The response registry: who waits for the answer to which stanza id.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "host/util/xml_element.h"

namespace protolink {

/// An object that waits for answers. One that is registered takes itself out with `removeByTarget` before it goes.
class CXMLTarget {
public:
    virtual ~CXMLTarget() = default;
    virtual void onXMLResult(xmlElement& element, void* user) = 0;
};

/// Entries fire once, in the order of their age, and have no timeout: what is not answered goes with the connection.
class CProtoEventDispatcher {
public:
    using Callback = std::function<void(xmlElement& element, void* user)>;

    virtual ~CProtoEventDispatcher() = default;

    /// Awaits the stanza with this id. `user` comes back on delivery, and names the entry for `removeByUser`.
    void addHandler(Callback callback, const std::u16string& id, void* user);
    void addTarget(CXMLTarget& target, const std::u16string& id, void* user);

    /// Delivers the element to the oldest entry under its id. True when there was one. Ids are compared exactly; one
    /// shorter than two characters never matches. Neither name, type nor sender of the element play a part.
    bool dispatch(xmlElement& element);

    void removeByUser(const void* user);
    void removeByTarget(const CXMLTarget& target);
    /// Forgets all entries without delivering them.
    void clear() { entries_.clear(); }

private:
    struct Entry {
        CXMLTarget* target;  // not owned; null for an entry with a callback
        Callback callback;
        void* user;
    };

    // By id; entries of one id stand in the order of their age.
    std::multimap<std::u16string, Entry, std::less<>> entries_;
};

}  // namespace protolink
