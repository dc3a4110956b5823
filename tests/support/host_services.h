// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The services of the recording host. Each family tells its rows, with what the host does when one is called; one file
// joins them.
#pragma once

#include <span>
#include <string>

#include "tests/support/recording_host.h"

namespace harness {

/// How an argument of a service is shown.
struct ServiceArgument {
    enum class Kind { Zero, Number, Text, Module, Class, Net, Record, Contact, TimerName } kind = Kind::Zero;
    const char* name = "";
    const RecordLayout* layout = nullptr;
};

struct ServiceRow {
    using Act = OKU_WORD (*)(RecordingHost&, OKU_WORD param, OKU_WORD extra);

    const char* name;
    ServiceArgument param = {};
    ServiceArgument extra = {};
    Act act = nullptr;         // what the host does once the call is told
    Act tellAndAct = nullptr;  // instead of all that, for a service whose line has a form of its own
};

std::span<const ServiceRow> accountServices();
std::span<const ServiceRow> cardServices();
std::span<const ServiceRow> contactServices();
std::span<const ServiceRow> dialogServices();
std::span<const ServiceRow> hookServices();
std::span<const ServiceRow> settingsServices();
std::span<const ServiceRow> socketServices();
std::span<const ServiceRow> timerServices();
std::span<const ServiceRow> transferServices();
std::span<const ServiceRow> windowServices();

/// Calls a service: decodes, records, then answers what the test scripted, or what the host does.
OKU_WORD callService(RecordingHost& host, const std::string& service, OKU_WORD param, OKU_WORD extra);

/// The fields of "XMPP/OnPEPEvent" and of what goes with it.
std::vector<Field> personalEvent(RecordingHost& host, OKU_WORD param, OKU_WORD extra);

/// What a host does that answers 0.
inline OKU_WORD nothing(RecordingHost&, OKU_WORD, OKU_WORD) { return 0; }

// Reading the records of a call.
inline const void* recordAt(OKU_WORD word) { return reinterpret_cast<const void*>(word); }
inline std::string textAt(OKU_WORD word, std::size_t offset) {
    return copyText(peek<const void*>(recordAt(word), offset));
}
inline Callback callbackAt(OKU_WORD word, std::size_t handler, std::size_t context) {
    return {peek<OKU_HANDLER>(recordAt(word), handler), peek<OKU_WORD>(recordAt(word), context)};
}
/// Copies a text with its NUL, cut to the capacity.
void copyWide(void* to, const std::string& text, std::size_t capacity);

/// A timer's name from the two shapes in which "OKU/Timer/Destroy" takes it.
std::string timerName(OKU_WORD param, bool& byReference);

}  // namespace harness
