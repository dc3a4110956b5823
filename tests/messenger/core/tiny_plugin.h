// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <list>
#include <string>
#include <vector>

#include "host/oku/protocol.h"
#include "host/oku/table.h"

/// A plugin that tells a test what it was asked, and does what the test wants.
namespace tiny {

struct Account {
    std::u16string path;
    OKU_WORD store = 0;
    std::uint32_t flags = 0;
    std::uint32_t netId = 0;
    std::u16string socket;
    std::vector<OKU_WORD> services;
    OKU_WORD avatarHook = 0;
};

struct State {
    const OKU_FUNCTION_TABLE* table = nullptr;
    OKU_WORD module = 0;
    int loads = 0;
    std::string currentDirectory;  ///< when it was loaded
    std::u16string profileDir;
    std::u16string cacheDir;
    std::list<Account> accounts;
    std::vector<std::string> log;  ///< what was asked of it, in order
    bool sendFails = false;        ///< PFMessageSend gives 1
    int inside = 0;                ///< calls on the stack
    int deepest = 0;               ///< most of them at once
    /// Runs in PFStatusSet of any account, if set.
    std::function<void(Account&, std::uint32_t)> onStatus;
    /// Runs in each socket event, if set: kind, and whether its data word is not null.
    std::function<void(Account&, std::uint32_t, OKU_WORD)> onSocket;
    /// Runs in each of its services about cards and pictures, if set: which one, and the token of the request.
    std::function<void(Account&, const std::string&, OKU_WORD)> onCard;
    std::function<void()> onUnload;
};

/// The export through which a test reaches the state of the loaded module.
using StateExport = State* (*)();

}  // namespace tiny
