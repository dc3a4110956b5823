// The phrases of transcripts and the stimuli.
#include <sstream>
#include <stdexcept>

#include "tests/support/player.h"
#include "tests/support/text.h"

namespace harness {

/// A longer phrase stands before its own beginning.
const Player::Row Player::kRows[] = {
    {"setting ", &Player::setting, Role::World},
    {"no setting ", &Player::noSetting, Role::World},
    {"file ", &Player::file, Role::World},
    {"no file ", &Player::file, Role::World},
    {"cannot open ", &Player::fileFails, Role::World},
    {"cannot write ", &Player::fileFails, Role::World},
    {"can open and write ", &Player::fileFails, Role::World},
    {"holds ", &Player::holds, Role::Player},
    {"module path ", &Player::modulePath, Role::World},
    {"directories ", &Player::directories, Role::World},
    {"random ", &Player::random, Role::World},
    {"host lacks ", &Player::hostLacks, Role::World},
    {"host has ", &Player::hostHas, Role::World},
    {"host answers ", &Player::hostAnswers, Role::World},
    {"host always answers ", &Player::hostAlwaysAnswers, Role::World},
    {"host proxy ", &Player::hostProxy, Role::World},
    {"host leaves icon ", &Player::hostIcon, Role::World},
    {"veto ", &Player::veto, Role::World},
    {"listener blanks ", &Player::blanks, Role::World},
    {"showing ", &Player::show, Role::Player},
    {"hiding ", &Player::show, Role::Player},
    {"let ", &Player::let, Role::Player},
    {"forget ", &Player::forget, Role::Player},
    {"when ", &Player::when, Role::World},
    {"on account ", &Player::onAccount, Role::Player},
    {"nothing", &Player::nothing, Role::Player},
    {"flags ", &Player::flags, Role::Player},
    {"load", &Player::load},
    {"unload", &Player::unload},
    {"status window ", &Player::statusWindow},
    {"status ", &Player::status},
    {"menu ", &Player::menu},
    {"socket ", &Player::socketEvent},
    {"connected", &Player::connected},
    {"closed", &Player::closed},
    {"dropped", &Player::dropped},
    {"tls ", &Player::tls},
    {"certificate", &Player::certificate},
    {"send ", &Player::sendMessage},
    {"typing ", &Player::typing},
    {"raw ", &Player::raw},
    {"delete contact ", &Player::deleteContact},
    {"authorize ", &Player::authorize},
    {"after ", &Player::after},
    {"tick ", &Player::tick},
    {"service ", &Player::service},
    {"raise ", &Player::raise},
};

const Player::Row* Player::find(const std::string& text) {
    for (const auto& row : kRows) {
        const std::string_view phrase = row.phrase;
        if (!startsWith(text, phrase)) continue;
        if (phrase.back() == ' ' || text.size() == phrase.size() || text[phrase.size()] == ' ') return &row;
    }
    return nullptr;
}

std::string Player::fill(const std::string& raw) const {
    if (!mode_.onlyDrive) return Pattern::parse(raw).fill(variables_);
    try {
        return Pattern::parse(raw).fill(variables_);
    } catch (const std::runtime_error&) {
        return raw;
    }
}

std::string Player::textOf(const Line& line, std::size_t index) const {
    return index < line.texts.size() ? fill(line.texts[index].text) : std::string();
}

std::string Player::field(const Line& line, const char* name, const std::string& otherwise) const {
    const auto* value = line.find(name);
    return value ? fill(value->text) : otherwise;
}

long long Player::number(const Line& line, const char* name, long long otherwise) const {
    const auto* value = line.find(name);
    return value ? std::stoll(fill(value->text)) : otherwise;
}

std::string Player::path(const std::string& name) const {
    const auto filled = fill(name);
    if (startsWith(filled, "cwd:")) return filled.substr(4);
    return filled.find('/') == std::string::npos ? stage_.host.profileDirectory + filled : filled;
}

void Player::result(const Line& line, OKU_WORD actual) {
    if (!line.result || mode_.onlyDrive) return;
    if (std::to_string(actual) != *line.result) fail("the result is " + std::to_string(actual));
}

void Player::load(const Line& line, const std::string&) { result(line, stage_.load()); }
void Player::unload(const Line& line, const std::string&) { result(line, stage_.unload()); }

void Player::status(const Line& line, const std::string&) {
    const auto description = line.texts.empty() ? std::nullopt : std::optional(textOf(line));
    result(line, stage_.setStatus(statusCode(line.lastWord()), description, number(line, "word")));
}

void Player::statusWindow(const Line& line, const std::string& rest) {
    if (rest == "null" || startsWith(rest, "null ")) return result(line, stage_.statusWindowNull());
    const auto what = line.lastWord();
    const auto event = what == "confirms" ? 1 : what == "asks" ? 4 : number(line, "event");
    result(line, stage_.statusWindow(static_cast<std::uint32_t>(event), statusCode(field(line, "status", "0")),
                                     field(line, "description"), static_cast<std::uint32_t>(number(line, "protect")),
                                     number(line, "window")));
}

void Player::menu(const Line& line, const std::string&) {
    result(line, stage_.clickMenu(line.lastWord(), textOf(line)));
}

void Player::socketEvent(const Line& line, const std::string& rest) {
    if (startsWith(rest, "null")) return result(line, stage_.socketNullEvent());
    result(line, stage_.socketEvent(static_cast<std::uint32_t>(std::stoul(line.lastWord())), number(line, "data")));
}

void Player::connected(const Line& line, const std::string&) { result(line, stage_.socketEvent(2, 0)); }
void Player::closed(const Line& line, const std::string&) { result(line, stage_.socketEvent(3, 0)); }
void Player::dropped(const Line& line, const std::string&) { result(line, stage_.socketEvent(3, 1)); }
void Player::certificate(const Line& line, const std::string&) { result(line, stage_.socketEvent(10, 0)); }

void Player::tls(const Line& line, const std::string&) {
    const auto word = line.lastWord();
    result(line, stage_.tlsState(word == "up" ? 1 : static_cast<std::uint32_t>(std::stoul(word))));
}

/// send chat to JID "text"; send message to JID "text" subject="s"; send to JID "text" flags=4; send null
void Player::sendMessage(const Line& line, const std::string& rest) {
    if (startsWith(rest, "null")) return result(line, stage_.service("PFMessageSend", 0, number(line, "flags")));
    const auto flags = startsWith(rest, "chat ") ? 6 : startsWith(rest, "message ") ? 2 : number(line, "flags");
    result(line, stage_.sendMessage(fill(line.lastWord()), textOf(line), field(line, "subject"),
                                    static_cast<std::uint32_t>(flags)));
}

void Player::typing(const Line& line, const std::string& rest) {
    if (startsWith(rest, "null")) return result(line, stage_.service("PFTNSend", 0, 1));
    result(line, stage_.sendTyping(fill(line.lastWord()), std::stoll(textOf(line))));
}

void Player::raw(const Line& line, const std::string& rest) {
    if (startsWith(rest, "null")) return result(line, stage_.service("PFRawSend", 0, 0));
    result(line, stage_.sendRaw(textOf(line)));
}

void Player::deleteContact(const Line& line, const std::string&) {
    result(line, stage_.deleteContact(fill(line.lastWord())));
}

void Player::authorize(const Line& line, const std::string&) {
    result(line, stage_.authorize(fill(line.lastWord()), std::stoll(textOf(line))));
}

void Player::after(const Line&, const std::string& rest) {
    std::istringstream in(rest);
    double amount = 0;
    std::string unit;
    in >> amount >> unit;
    const double factor = unit == "ms" ? 1 : unit == "s" ? 1000 : unit == "min" ? 60000 : 0;
    if (factor == 0) fail("after wants a number and ms, s or min");
    stage_.pass(static_cast<std::int64_t>(amount * factor));
}

void Player::tick(const Line& line, const std::string&) {
    result(line, stage_.tick(line.lastWord(), static_cast<std::uint32_t>(number(line, "kind", 3))));
}

void Player::service(const Line& line, const std::string&) {
    result(line, stage_.service(line.lastWord(), number(line, "param"), number(line, "extra")));
}

void Player::raise(const Line& line, const std::string&) {
    result(line, stage_.raise(line.lastWord(), number(line, "param"), number(line, "extra")));
}

}  // namespace harness
