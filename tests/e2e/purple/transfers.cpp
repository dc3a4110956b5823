// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "transfers.h"

#include <algorithm>

#include "events.h"

namespace {

template <typename Function>
void listen(const char* signal, Function* function, void* data) {
    // Libpurple needs one address for each who listens; what it points to does not matter.
    static int handle = 0;
    purple_signal_connect(purple_xfers_get_handle(), signal, &handle, reinterpret_cast<PurpleCallback>(function), data);
}

struct End {
    int number;
    const char* how;
    PurpleXfer* transfer;  ///< held by Transfers as long as the program lives
};

/// Libpurple tells an end before it has closed the file; here it has.
gboolean tellEnd(gpointer data) {
    const std::unique_ptr<End> end(static_cast<End*>(data));
    Event("ended")
        .number("number", static_cast<std::uint64_t>(end->number))
        .text("how", end->how)
        .number("bytes", purple_xfer_get_bytes_sent(end->transfer));
    return G_SOURCE_REMOVE;
}

}  // namespace

Transfers::Transfers() {
    operations_.update_progress = onMoved;
    operations_.cancel_local = onCancelled;
    operations_.cancel_remote = onStopped;
    purple_xfers_set_ui_ops(&operations_);
    listen("file-recv-request", onOffered, this);
    for (const char* signal : {"file-recv-start", "file-send-start"}) listen(signal, onStarted, this);
    for (const char* signal : {"file-recv-complete", "file-send-complete"}) listen(signal, onComplete, this);
}

bool Transfers::accept(int number, const std::string& path) {
    PurpleXfer* transfer = find(number);
    if (transfer) purple_xfer_request_accepted(transfer, path.c_str());
    return transfer;
}

bool Transfers::refuse(int number) {
    PurpleXfer* transfer = find(number);
    if (transfer) purple_xfer_request_denied(transfer);
    return transfer;
}

bool Transfers::cancel(int number) {
    PurpleXfer* transfer = find(number);
    if (transfer) purple_xfer_cancel_local(transfer);
    return transfer;
}

void Transfers::send(PurpleConnection* connection, const std::string& to, const std::string& path) {
    const auto* protocol = PURPLE_PLUGIN_PROTOCOL_INFO(purple_connection_get_prpl(connection));
    PurpleXfer* transfer = protocol->new_xfer(connection, to.c_str());
    const int number = hold(transfer);
    Event("sending").number("number", static_cast<std::uint64_t>(number)).text("to", to).text("path", path);
    purple_xfer_request_accepted(transfer, path.c_str());
}

int Transfers::hold(PurpleXfer* transfer) {
    const int number = static_cast<int>(held_.size()) + 1;
    purple_xfer_ref(transfer);
    transfer->ui_data = this;
    held_.emplace(number, transfer);
    return number;
}

PurpleXfer* Transfers::find(int number) const {
    const auto found = held_.find(number);
    return found == held_.end() ? nullptr : found->second.get();
}

int Transfers::numberOf(const PurpleXfer* transfer) const {
    const auto found = std::ranges::find(held_, transfer, [](const auto& entry) { return entry.second.get(); });
    return found == held_.end() ? 0 : found->first;
}

Transfers& Transfers::of(const PurpleXfer* transfer) { return *static_cast<Transfers*>(transfer->ui_data); }

void Transfers::onOffered(PurpleXfer* transfer, Transfers* self) {
    const int number = self->hold(transfer);
    Event("offered")
        .number("number", static_cast<std::uint64_t>(number))
        .text("from", purple_xfer_get_remote_user(transfer))
        .text("name", purple_xfer_get_filename(transfer))
        .number("size", purple_xfer_get_size(transfer));
}

void Transfers::onStarted(PurpleXfer* transfer, Transfers* self) {
    Event("started").number("number", static_cast<std::uint64_t>(self->numberOf(transfer)));
}

void Transfers::onMoved(PurpleXfer* transfer, double) {
    Event("moved")
        .number("number", static_cast<std::uint64_t>(of(transfer).numberOf(transfer)))
        .number("bytes", purple_xfer_get_bytes_sent(transfer));
}

void Transfers::onComplete(PurpleXfer* transfer, Transfers* self) { self->tellEndLater(transfer, "complete"); }
void Transfers::onCancelled(PurpleXfer* transfer) { of(transfer).tellEndLater(transfer, "cancelled"); }
void Transfers::onStopped(PurpleXfer* transfer) { of(transfer).tellEndLater(transfer, "stopped"); }

void Transfers::tellEndLater(PurpleXfer* transfer, const char* how) const {
    g_idle_add(tellEnd, std::make_unique<End>(End{numberOf(transfer), how, transfer}).release());
}
