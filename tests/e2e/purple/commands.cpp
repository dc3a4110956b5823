// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "commands.h"

#include <array>
#include <functional>
#include <stdexcept>

#include "events.h"

namespace {

using Words = std::vector<std::string>;

Words split(const std::string& line) {
    int count = 0;
    char** words = nullptr;
    if (!g_shell_parse_argv(line.c_str(), &count, &words, nullptr)) throw std::invalid_argument("no command");
    Words result(words, words + count);
    g_strfreev(words);
    return result;
}

void must(bool done) {
    if (!done) throw std::invalid_argument("there is no such transfer");
}

PurpleConnection* connected(const Person& person) {
    PurpleConnection* connection = person.connection();
    if (!connection || !PURPLE_CONNECTION_IS_CONNECTED(connection)) throw std::runtime_error("not logged in");
    return connection;
}

struct Command {
    const char* name;
    std::size_t arguments;
    std::function<void(const Words& words, Person& person, Transfers& transfers)> run;
};

const auto& commands() {
    static const std::array<Command, 8> all{{
        {"login", 4, [](const Words& w, Person& p, Transfers&) { p.logIn(w[1], w[2], w[3], w[4]); }},
        {"logout", 0,
         [](const Words&, Person& p, Transfers&) {
             connected(p);
             p.logOut();
         }},
        {"status", 2,
         [](const Words& w, Person& p, Transfers&) {
             connected(p);
             p.setStatus(w[1], w[2]);
         }},
        {"message", 2,
         [](const Words& w, Person& p, Transfers&) {
             connected(p);
             p.sendMessage(w[1], w[2]);
         }},
        {"send", 2, [](const Words& w, Person& p, Transfers& t) { t.send(connected(p), w[1], w[2]); }},
        {"accept", 2, [](const Words& w, Person&, Transfers& t) { must(t.accept(std::stoi(w[1]), w[2])); }},
        {"refuse", 1, [](const Words& w, Person&, Transfers& t) { must(t.refuse(std::stoi(w[1]))); }},
        {"cancel", 1, [](const Words& w, Person&, Transfers& t) { must(t.cancel(std::stoi(w[1]))); }},
    }};
    return all;
}

}  // namespace

void Commands::run(const std::string& line) {
    ++given_;
    try {
        execute(split(line));
        Event("ok").number("given", given_);
    } catch (const std::exception& error) {
        Event("refused").number("given", given_).text("reason", error.what());
    }
}

void Commands::execute(const Words& words) {
    for (const Command& command : commands()) {
        if (command.name != words.front()) continue;
        if (command.arguments != words.size() - 1) throw std::invalid_argument("too few or too many arguments");
        command.run(words, person_, transfers_);
        return;
    }
    throw std::invalid_argument("unknown command");
}
