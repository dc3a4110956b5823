// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// From a connected socket to a bound session: which step of the login comes next.
//
// The path of a login with everything in it, and the class of each step:
//   features -> starttls        proceed -> TLS, header                                              Encryption
//   features -> auth            challenge -> response (twice)      success -> header                Authentication
//   features -> compress        compressed -> header                                                StreamCompression
//   features -> bind            bind's result -> session           session's result -> disco, roster Binding
// A connection that registers a new account does so before it authenticates.                        Registration
#pragma once

#include "router/authentication.h"
#include "router/binding.h"
#include "router/encryption.h"
#include "router/login_progress.h"
#include "router/registration.h"
#include "router/stream_compression.h"

namespace protolink {

/// The steps that the offers of a server lead to.
struct LoginSteps {
    Encryption& encryption;
    Registration& registration;
    Authentication& authentication;
    StreamCompression& compression;
    Binding& binding;
};

class Negotiation {
public:
    Negotiation(const Connection& connection, LoginProgress& progress, LoginSteps steps)
        : connection_(connection), progress_(progress), steps_(steps) {}

    Routing onFeatures(const Stanza& features);

private:
    const Connection& connection_;
    LoginProgress& progress_;
    LoginSteps steps_;
};

}  // namespace protolink
