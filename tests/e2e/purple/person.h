// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <purple.h>

#include <string>

/// The account that the program logs in with, its contacts and its talks. Events:
///
/// - `online`, `offline`; `connection-error` (reason): the login failed, or the connection broke
/// - `message` (from, text), `presence` (jid, online, status, text): of a contact
class Person {
public:
    /// Libpurple is running. There is one object of this class, which lives as long as that.
    Person();

    /// Logs in by TLS; the server's certificate is for the account's domain and signed by `authority`, a file.
    void logIn(const std::string& jid, const std::string& password, const std::string& port,
               const std::string& authority);
    void logOut() const;
    /// `id` is a status of libpurple: "available", "away", "dnd", "extended_away", "freeforchat".
    void setStatus(const std::string& id, const std::string& text) const;
    void sendMessage(const std::string& to, const std::string& text) const;
    /// Null while nobody is logged in.
    [[nodiscard]] PurpleConnection* connection() const;

private:
    PurpleAccount* account_ = nullptr;  ///< libpurple's own
};
