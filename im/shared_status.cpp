// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "im/shared_status.h"

#include "router/namespaces.h"

namespace protolink {

namespace {

/// The child of that name; one is made at the end, or at the front, when it is missing.
xmlElement& findOrAdd(xmlElement& parent, std::u16string_view name, bool atFront) {
    if (xmlElement* child = parent.GetChildPtr(name)) return *child;
    return *parent.SetChild(xmlElement(std::u16string(name)), atFront);
}

}  // namespace

std::u16string SharedStatus::rewrite(const std::u16string& bareJid, Status status, const std::u16string& description) {
    const std::u16string id(sharedStatusElement_.GetAttribute(u"id"));
    sharedStatusElement_.attributes.clear();
    sharedStatusElement_.SetAttribute(u"to", bareJid);
    sharedStatusElement_.SetAttribute(u"id", id);
    sharedStatusElement_.SetAttribute(u"type", u"set");
    sharedStatusElement_.name = u"iq";
    if (xmlElement* query = sharedStatusElement_.GetChildPtr(u"query", ns::kSharedStatus)) {
        query->attributes.clear();
        query->SetAttribute(u"xmlns", ns::kSharedStatus);
        query->SetAttribute(u"version", u"2");
        findOrAdd(*query, u"status", false).text = description;
        findOrAdd(*query, u"show", false).text = statusToName(status);
        findOrAdd(*query, u"invisible", true).SetAttribute(u"value", status == Status::Invisible ? u"true" : u"false");
    }
    return sharedStatusElement_.GetXML(1);
}

SharedStatus::Push SharedStatus::read(const xmlElement& query, Status current,
                                      const std::u16string& currentDescription) {
    const xmlElement* show = query.GetChildPtr(u"show");
    const xmlElement* status = query.GetChildPtr(u"status");
    const xmlElement invisible = query.GetChild(u"invisible");
    return {show ? statusFromName(show->text) : current, status ? status->text : currentDescription,
            invisible.GetAttribute(u"value") == u"true"};
}

}  // namespace protolink
