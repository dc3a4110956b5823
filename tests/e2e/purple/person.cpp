// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "person.h"

#include <memory>
#include <stdexcept>

#include "events.h"

namespace {

using Text = std::unique_ptr<char, decltype(&g_free)>;

template <typename Function>
void listen(void* instance, const char* signal, Function* function) {
    static int handle = 0;
    purple_signal_connect(instance, signal, &handle, reinterpret_cast<PurpleCallback>(function), nullptr);
}

void onOnline(PurpleConnection*) { Event("online"); }
void onOffline(PurpleConnection*) { Event("offline"); }

void onError(PurpleConnection*, PurpleConnectionError, const char* description) {
    Event("connection-error").text("reason", description);
}

void onMessage(PurpleAccount*, const char* sender, const char* message) {
    const Text plain(purple_unescape_html(message), g_free);
    Event("message").text("from", sender).text("text", plain.get());
}

void onPresence(PurpleBuddy* contact) {
    const PurpleStatus* status = purple_presence_get_active_status(purple_buddy_get_presence(contact));
    Event("presence")
        .text("jid", purple_buddy_get_name(contact))
        .flag("online", purple_status_is_online(status))
        .text("status", purple_status_get_id(status))
        .text("text", purple_status_get_attr_string(status, "message"));
}

void onStatus(PurpleBuddy* contact, PurpleStatus*, PurpleStatus*) { onPresence(contact); }

/// Without this each certificate of a private authority is asked about, and nobody is there to answer.
void trust(const std::string& authority) {
    PurpleCertificateScheme* scheme = purple_ssl_is_supported() ? purple_certificate_find_scheme("x509") : nullptr;
    PurpleCertificate* certificate = scheme ? purple_certificate_import(scheme, authority.c_str()) : nullptr;
    PurpleCertificatePool* pool = purple_certificate_find_pool("x509", "ca");
    if (!certificate || !pool || !purple_certificate_pool_store(pool, "ca", certificate))
        throw std::runtime_error("the authority's certificate cannot be used");
}

}  // namespace

Person::Person() {
    listen(purple_connections_get_handle(), "signed-on", onOnline);
    listen(purple_connections_get_handle(), "signed-off", onOffline);
    listen(purple_connections_get_handle(), "connection-error", onError);
    listen(purple_conversations_get_handle(), "received-im-msg", onMessage);
    listen(purple_blist_get_handle(), "buddy-signed-on", onPresence);
    listen(purple_blist_get_handle(), "buddy-signed-off", onPresence);
    listen(purple_blist_get_handle(), "buddy-status-changed", onStatus);
}

void Person::logIn(const std::string& jid, const std::string& password, const std::string& port,
                   const std::string& authority) {
    trust(authority);
    account_ = purple_account_new(jid.c_str(), "prpl-jabber");
    purple_accounts_add(account_);
    purple_account_set_password(account_, password.c_str());
    purple_account_set_string(account_, "connection_security", "require_tls");
    // The name that it dials is the one that it expects in the certificate.
    purple_account_set_string(account_, "connect_server", "localhost");
    purple_account_set_int(account_, "port", std::stoi(port));
    purple_account_set_enabled(account_, purple_core_get_ui(), TRUE);
    setStatus("available", {});
}

void Person::logOut() const { purple_account_set_enabled(account_, purple_core_get_ui(), FALSE); }

void Person::setStatus(const std::string& id, const std::string& text) const {
    purple_account_set_status(account_, id.c_str(), TRUE, "message", text.c_str(), nullptr);
}

void Person::sendMessage(const std::string& to, const std::string& text) const {
    const Text escaped(g_markup_escape_text(text.c_str(), -1), g_free);
    serv_send_im(connection(), to.c_str(), escaped.get(), PURPLE_MESSAGE_SEND);
}

PurpleConnection* Person::connection() const { return account_ ? purple_account_get_connection(account_) : nullptr; }
