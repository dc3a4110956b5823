// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the console shows of a stream, against a parser that knows namespaces: nothing of a secret, and all else as it
// is; and the same whatever the pieces.
#include <algorithm>
#include <array>

#include "fuzz/expat_events.h"
#include "fuzz/input.h"
#include "messenger/core/xml/secrets.h"

namespace {

constexpr char kSeparator = '\n';
constexpr std::string_view kStart =
    "<stream:stream xmlns='jabber:client' xmlns:stream='http://etherx.jabber.org/streams'>";
constexpr std::string_view kEnd = "</stream:stream>";

bool isSecret(std::string_view name) {
    constexpr std::array<std::string_view, 8> kNames{"urn:ietf:params:xml:ns:xmpp-sasl\nauth",
                                                     "urn:ietf:params:xml:ns:xmpp-sasl\nresponse",
                                                     "urn:ietf:params:xml:ns:xmpp-sasl\nsuccess",
                                                     "urn:ietf:params:xml:ns:xmpp-sasl\nchallenge",
                                                     "urn:xmpp:sasl:2\ninitial-response",
                                                     "urn:xmpp:sasl:2\nresponse",
                                                     "urn:xmpp:sasl:2\nchallenge",
                                                     "urn:xmpp:sasl:2\nadditional-data"};
    const std::string_view local = name.substr(name.rfind(kSeparator) + 1);
    return local == "password" || local == "digest" || name.starts_with("jabber:iq:register\n") ||
           name.starts_with("jabber:iq:auth\n") || std::find(kNames.begin(), kNames.end(), name) != kNames.end();
}

/// A form that somebody has filled in, or a field of one for a password.
bool isSecretOfForm(std::string_view name, const char** attributes) {
    std::string_view type;
    for (; *attributes; attributes += 2)
        if (attributes[0] == std::string_view("type")) type = attributes[1];
    return (name == "jabber:x:data\nx" && type == "submit") ||
           (name == "jabber:x:data\nfield" && type == "text-private");
}

/// The stream as its elements, attributes and text; `hiding` puts the mask in the place of secrets.
bool told(const std::string& stream, bool hiding, std::string& events) {
    int depth = 0;
    int hidden = 0;
    bool blotted = false;
    const auto tell = [&](const std::string& event) {
        if (hidden == 0)
            events += event;
        else if (!std::exchange(blotted, true))
            events += "***";
    };
    fuzz::ExpatEvents handlers;
    handlers.start = [&](const char* name, const char** attributes) {
        ++depth;
        const bool secret = isSecret(name) || isSecretOfForm(name, attributes);
        std::string tag = std::string("<") + name;
        for (; *attributes; attributes += 2) {
            const std::string_view attribute = attributes[0];
            const bool mask = hiding && attribute.substr(attribute.rfind(kSeparator) + 1) == "password";
            tag += " " + std::string(attribute) + "='" + (mask ? "***" : attributes[1]) + "'";
        }
        tell(tag + ">");
        if (!hiding || hidden > 0 || !secret) return;
        hidden = depth;
        blotted = false;
    };
    handlers.end = [&](const char*, std::size_t) {
        if (depth-- == hidden) hidden = 0;
        tell("</>");
    };
    handlers.text = [&](std::string_view text) { tell(std::string(text)); };
    return fuzz::parseWithExpat(stream, handlers, kSeparator);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::string lengths(input.text());
    const std::string inside(input.rest());
    const std::string stream = std::string(kStart) + inside + std::string(kEnd);
    const QByteArray bytes(stream.data(), static_cast<qsizetype>(stream.size()));
    const QByteArray shown = oku::maskedXml(bytes);
    oku::SecretMask mask;
    QByteArray pieces;
    qsizetype at = 0;
    for (const char length : lengths) {
        pieces += mask.masked(bytes.mid(at, static_cast<unsigned char>(length)));
        at += static_cast<unsigned char>(length);
    }
    pieces += mask.masked(bytes.mid(at));
    fuzz::require(pieces + mask.finish() == shown, "the pieces change what is shown");
    // A header forgets what was declared before.
    if (inside.find("stream:stream") != std::string::npos) return 0;
    // The prefix xml needs no declaration; without one the console hides by the name alone.
    if (inside.find("<xml:") != std::string::npos) return 0;
    std::string wanted, found;
    // What stands in a secret that has nothing that counts is masked too, and a comment is such.
    if (stream.find("<!") != std::string::npos || stream.find("<?") != std::string::npos) return 0;
    if (!told(stream, true, wanted)) return 0;
    fuzz::require(told(shown.toStdString(), false, found), "what is shown is not well formed");
    fuzz::require(found == wanted, "something else is shown");
    return 0;
}
