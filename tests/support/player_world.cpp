// The lines that prepare the world, and those that only speak to the player.
#include <sstream>
#include <utility>

#include "tests/support/fake_platform.h"
#include "tests/support/player.h"
#include "tests/support/text.h"

namespace harness {

void Player::setting(const Line& line, const std::string&) {
    if (line.texts.size() != 1) fail("a setting wants one value");
    Setting value{line.texts[0].quoted, 0, {}};
    if (value.isText) {
        value.text = textOf(line);
    } else {
        value.number = std::stoll(textOf(line));
    }
    const auto file = path(field(line, "file", "protoLink.config"));
    stage_.host.change(file, line.lastWord(), value);
}

void Player::noSetting(const Line& line, const std::string&) {
    stage_.host.change(path(field(line, "file", "protoLink.config")), line.lastWord(), std::nullopt);
}

void Player::file(const Line& line, const std::string&) {
    const auto name = path(line.lastWord());
    if (startsWith(line.head, "no ")) {
        world().files.erase(name);
    } else {
        world().files[name] = textOf(line);
    }
}

void Player::fileFails(const Line& line, const std::string&) {
    const auto name = path(line.lastWord());
    world().unopenable.erase(name);
    world().unwritable.erase(name);
    if (startsWith(line.head, "cannot open")) world().unopenable.insert(name);
    if (startsWith(line.head, "cannot write")) world().unwritable.insert(name);
}

void Player::holds(const Line& line, const std::string&) {
    const auto found = world().files.find(path(line.lastWord()));
    if (found == world().files.end()) fail("there is no such file");
    if (!line.texts.empty() && !Pattern::parse(line.texts[0].text).match(found->second, variables_)) {
        fail("it holds " + found->second);
    }
}

void Player::modulePath(const Line& line, const std::string&) { world().modulePath = textOf(line); }

void Player::directories(const Line& line, const std::string&) {
    auto& host = stage_.host;
    variables_["profile"] = host.profileDirectory = field(line, "profile", host.profileDirectory);
    variables_["cache"] = host.cacheDirectory = field(line, "cache", host.cacheDirectory);
}

void Player::random(const Line&, const std::string& rest) {
    std::istringstream in(rest);
    for (std::string word; in >> word;) {
        world().randoms.push_back(static_cast<std::uint32_t>(std::stoul(word, nullptr, 0)));
    }
}

void Player::hostLacks(const Line&, const std::string& rest) { stage_.host.absent.insert(rest); }
void Player::hostHas(const Line&, const std::string& rest) {
    stage_.host.absent.erase(rest);
    stage_.host.answersAlways.erase(rest);
}
void Player::hostAnswers(const Line& line, const std::string&) {
    stage_.host.answersOnce[line.lastWord()].push_back(std::stoll(textOf(line)));
}
void Player::hostAlwaysAnswers(const Line& line, const std::string&) {
    stage_.host.answersAlways[line.lastWord()] = std::stoll(textOf(line));
}

void Player::hostProxy(const Line& line, const std::string&) {
    const auto value = [&](const char* name) { return static_cast<std::uint32_t>(number(line, name)); };
    stage_.host.proxy = {field(line, "host"), field(line, "user"), field(line, "password"),
                         value("port"),       value("enabled"),    value("type"),
                         value("auth")};
}

void Player::hostIcon(const Line&, const std::string& rest) { stage_.host.pageIcon = std::stoll(rest); }

void Player::veto(const Line&, const std::string& rest) { stage_.host.vetoes.insert(hookKind(rest)); }
void Player::blanks(const Line& line, const std::string&) { stage_.host.blanks.push_back(textOf(line)); }

void Player::show(const Line& line, const std::string& rest) {
    const bool on = startsWith(line.head, "showing");
    if (rest == "settings") {
        showSettings_ = on;
    } else if (rest == "stream hooks") {
        showStreamHooks_ = on;
    } else {
        fail("there is nothing of that name to show");
    }
}

void Player::let(const Line& line, const std::string&) { variables_[line.lastWord()] = textOf(line); }

void Player::forget(const Line&, const std::string& rest) {
    std::istringstream in(rest);
    for (std::string name; in >> name;) variables_.erase(name);
}

/// when "call NetLib/Close" then closed
void Player::when(const Line&, const std::string& rest) {
    const auto end = rest.find("\" then ");
    if (rest.empty() || rest.front() != '"' || end == std::string::npos) fail("when \"EVENT\" then STIMULUS");
    const Step inner{rest.substr(end + 7), "when"};
    stage_.host.triggers.push_back({fill(rest.substr(1, end - 1)), [this, inner] {
                                        const auto waiting = std::exchange(events_, {});
                                        perform(inner);
                                        events_.insert(events_.begin(), waiting.begin(), waiting.end());
                                    }});
}

void Player::onAccount(const Line&, const std::string& rest) {
    stage_.account = static_cast<std::uint32_t>(std::stoul(rest));
}

void Player::nothing(const Line&, const std::string&) { checkQuiet("something happened"); }

void Player::flags(const Line&, const std::string& rest) {
    static constexpr std::pair<std::uint32_t, const char*> kWords[] = {
        {1, "connected"}, {2, "encrypted"}, {4, "connecting"}, {8, "authorized"}, {16, "compressed"}};
    std::string actual;
    for (const auto& [bit, word] : kWords) {
        if (stage_.flags() & bit) actual += (actual.empty() ? "" : " ") + std::string(word);
    }
    if (actual.empty()) actual = "none";
    if (actual != rest && !mode_.onlyDrive) fail("the flags are: " + actual);
}

}  // namespace harness
