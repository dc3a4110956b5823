// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "transfer/stream_initiation.h"

#include "host/util/format.h"
#include "host/util/xml_compose.h"
#include "router/namespaces.h"

namespace protolink {

namespace si {

namespace {

std::u16string option(std::u16string_view method) { return lutCPW(u"option", lutCPW(u"value", method)); }

/// The `feature` of an offer: a list to choose one from.
std::u16string methodList(bool outOfBand) {
    const std::u16string options = (outOfBand ? option(ns::kOob) : std::u16string()) + option(ns::kIbb);
    const std::u16string field = lutCPW(u"field", options, {{u"var", u"stream-method"}, {u"type", u"list-single"}});
    return lutCPW(u"feature", lutCPW(u"x", field, {{u"xmlns", ns::kDataForms}}), {{u"xmlns", ns::kFeatureNegotiation}});
}

std::u16string composeError(const Stanza& offer, const std::u16string& conditions) {
    return lutCPW(u"iq", lutCPW(u"error", conditions, {{u"code", u"400"}, {u"type", u"cancel"}}),
                  {{u"id", offer.id}, {u"type", u"error"}, {u"to", offer.from}});
}

const xmlElement* formOf(const xmlElement* si) {
    const xmlElement* feature = si ? si->GetChildPtr(u"feature", ns::kFeatureNegotiation) : nullptr;
    return feature ? feature->GetChildPtr(u"x", ns::kDataForms) : nullptr;
}

}  // namespace

std::u16string composeOffer(const Offer& offer) {
    const std::u16string feature = methodList(offer.outOfBand);
    // It stands twice: receivers look for it in either place.
    const std::u16string file =
        lutCPW(u"file", feature,
               {{u"name", offer.name}, {u"size", formatText(u"%llu", offer.size)}, {u"xmlns", ns::kFileTransfer}});
    const std::u16string initiation = lutCPW(u"si", feature + file,
                                             {{u"id", offer.sid},
                                              {u"mime-type", u"application/octet-stream"},
                                              {u"profile", ns::kFileTransfer},
                                              {u"xmlns", ns::kStreamInitiation}});
    return lutCPW(u"iq", initiation, {{u"type", u"set"}, {u"id", offer.id}, {u"to", offer.to}});
}

std::u16string composeAcceptance(const Stanza& offer, std::u16string_view method) {
    const std::u16string field = lutCPW(u"field", lutCPW(u"value", method), {{u"var", u"stream-method"}});
    const std::u16string form = lutCPW(u"x", field, {{u"xmlns", ns::kDataForms}, {u"type", u"submit"}});
    const std::u16string feature = lutCPW(u"feature", form, {{u"xmlns", ns::kFeatureNegotiation}});
    return lutCPW(u"iq", lutCPW(u"si", feature, {{u"xmlns", ns::kStreamInitiation}}),
                  {{u"id", offer.id}, {u"type", u"result"}, {u"to", offer.from}});
}

std::u16string composeRefusal(const Stanza& offer) {
    return composeError(offer, lutCPW(u"forbidden", {}, {{u"xmlns", ns::kStanzas}}));
}

std::u16string composeNoValidStreams(const Stanza& offer) {
    return composeError(offer, lutCPW(u"bad-request", {}, {{u"xmlns", ns::kStanzas}}) +
                                   lutCPW(u"no-valid-streams", {}, {{u"xmlns", ns::kStreamInitiation}}));
}

std::u16string_view chosenMethod(const xmlElement& answer) {
    const xmlElement* form = formOf(answer.GetChildPtr(u"si", ns::kStreamInitiation));
    const xmlElement* field = form ? form->GetChildPtr(u"field", u"var", u"stream-method") : nullptr;
    const xmlElement* value = field ? field->GetChildPtr(u"value") : nullptr;
    return value ? std::u16string_view(value->text) : std::u16string_view();
}

std::u16string_view Methods::best() const {
    if (outOfBand) return ns::kOob;
    return inBand ? ns::kIbb : std::u16string_view();
}

Methods offeredMethods(const xmlElement& si) {
    Methods methods;
    const xmlElement* form = formOf(&si);
    const xmlElement* field = form ? form->GetChildPtr(u"field") : nullptr;
    if (!field) return methods;
    for (const xmlElement& offered : field->children) {
        const xmlElement* value = offered.GetChildPtr(u"value");
        if (!value) continue;
        methods.outOfBand = methods.outOfBand || value->text == ns::kOob;
        methods.inBand = methods.inBand || value->text == ns::kIbb;
        // Bytes through a third party's SOCKS5 proxy are known of, and not taken.
    }
    return methods;
}

}  // namespace si

}  // namespace protolink
