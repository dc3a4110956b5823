// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/support/player.h"

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "tests/support/fake_platform.h"
#include "tests/support/phrases.h"
#include "tests/support/same_xml.h"
#include "tests/support/text.h"

namespace harness {
namespace {

constexpr std::string_view kWaitingHead = "log 5 XMSC";
constexpr std::string_view kWaitingText = "WARNING: XML not valid, waiting for next part";
constexpr std::size_t kShownEntries = 60;
constexpr std::int64_t kRealClockTolerance = 600;

/// Compressed bytes have no tags: every position is one to cut at.
std::vector<std::size_t> cutAnywhere(const std::string& piece) {
    std::vector<std::size_t> positions;
    for (std::size_t i = 1; i < piece.size(); ++i) positions.push_back(i);
    return positions;
}

}  // namespace

std::vector<std::size_t> cutPositions(const std::string& piece) {
    std::vector<std::size_t> positions;
    bool inTag = false;
    for (std::size_t i = 0; i < piece.size(); ++i) {
        const bool inCharacter = (static_cast<unsigned char>(piece[i]) & 0xC0) == 0x80;
        if (i > 0 && (inTag || inCharacter)) positions.push_back(i);
        if (piece[i] == '<') inTag = true;
        if (piece[i] == '>') inTag = false;
    }
    return positions;
}

Player::Player(const PluginExports& exports, const PlayMode& mode) : scene_{mode, Stage(exports)} {
    scene_.perform = [this](const Step& next) { perform(next); };
    auto& host = scene_.stage.host;
    host.failingCall = mode.failingCall;
    host.onEvent = [this](Event event) { onEvent(std::move(event)); };
    world() = FakeWorld();
    world().onFile = [this](const std::string& verb, const std::string& path, const std::string& content) {
        Line line{verb, {}, {}, {}};
        line.text(path);
        if (verb == "writes") line.text(content);
        onEvent({Event::Category::Plain, std::move(line), {}});
    };
    world().onIconDestroyed = [this](std::uint64_t icon) {
        onEvent({Event::Category::Plain, Line{"destroys icon " + std::to_string(icon), {}, {}, {}}, {}});
    };
    if (mode.realDirectory.empty()) {
        host.now = [] { return world().now; };
    } else {
        host.profileDirectory = mode.realDirectory + "/profile/";
        host.cacheDirectory = mode.realDirectory + "/cache/";
        host.now = [] { return static_cast<std::int64_t>(std::time(nullptr)); };
    }
    scene_.variables["profile"] = host.profileDirectory;
    scene_.variables["cache"] = host.cacheDirectory;
}

/// The stage unloads a plugin that is still loaded: from here on nobody listens to its files and icons.
Player::~Player() {
    world().onFile = nullptr;
    world().onIconDestroyed = nullptr;
}

bool Player::isShown(const Event& event) const {
    if (event.category == Event::Category::SettingsRead) return scene_.showSettings;
    if (event.category == Event::Category::StreamHook) return scene_.showStreamHooks;
    return scene_.mode.pieces == PlayMode::Pieces::AsGiven || event.line.head != kWaitingHead ||
           !startsWith(event.line.texts.front().text, kWaitingText);
}

void Player::onEvent(Event event) {
    if (!isShown(event)) return;
    journal_.push_back({false, render(event)});
    scene_.events.push_back(std::move(event));
}

Outcome Player::run(const Transcript& transcript) {
    Outcome outcome;
    const Step* at = nullptr;
    try {
        for (const auto& next : transcript.steps) step(*(at = &next));
        scene_.checkQuiet("the transcript ends, but more happened");
        if (scene_.stage.loaded()) {
            at = nullptr;
            note("unload");
            scene_.stage.unload();
            checkComplaints();
        }
    } catch (const std::exception& error) {
        outcome.passed = false;
        const auto first = journal_.size() > kShownEntries ? journal_.size() - kShownEntries : 0;
        outcome.report = "The exchange so far:\n";
        for (auto i = first; i < journal_.size(); ++i) {
            outcome.report += (journal_[i].isStimulus ? "> " : "  ") + journal_[i].text + "\n";
        }
        if (at) outcome.report += at->where + ": " + at->text + "\n";
        outcome.report += error.what();
    }
    outcome.calls = scene_.stage.host.calls;
    outcome.cuts = cuts_;
    outcome.journal = std::move(journal_);
    return outcome;
}

void Player::step(const Step& next) {
    try {
        perform(next);
    } catch (const NotThere&) {
        // Where calls of the host fail, what they should have registered is not there to be used.
        if (!scene_.mode.onlyDrive) throw;
    }
    checkComplaints();
}

void Player::perform(const Step& next) {
    const auto& text = next.text;
    const std::string received = scene_.stage.account == 1 ? "S:" : "S@" + std::to_string(scene_.stage.account) + ":";
    if (startsWith(text, "S@")) {
        const auto colon = text.find(':');
        if (colon == std::string::npos) scene_.fail("S@ wants its colon");
        const auto before = scene_.stage.account;
        scene_.stage.account = static_cast<std::uint32_t>(std::stoul(text.substr(2, colon - 2)));
        receive(text.substr(colon + 1));
        scene_.stage.account = before;
    } else if (startsWith(text, received)) {
        receive(text.substr(received.size()));
    } else if (const auto* phrase = findPhrase(text)) {
        const auto line = startsWith(text, "when ") ? Line() : parseLine(text);
        const auto rest = std::string(trim(std::string_view(text).substr(std::string_view(phrase->text).size())));
        if (phrase->role == Role::Drive) scene_.checkQuiet("this is not expected before it");
        if (phrase->role != Role::Player || startsWith(text, "on account ")) note(text);
        phrase->act(scene_, line, rest);
    } else if (scene_.mode.onlyDrive) {
        expectLoosely(text);
    } else {
        expect(text);
    }
}

/// A line of the journal, in which captured values stand filled in.
void Player::note(const std::string& text) {
    auto filled = text;
    for (const auto& [name, value] : scene_.variables) filled = replaceAll(filled, "{" + name + "}", escape(value));
    journal_.push_back({true, filled});
}

void Player::receive(const std::string& raw) {
    scene_.checkQuiet("this is not expected before it");
    const auto piece = scene_.fill(std::string(trim(raw)));
    journal_.push_back({true, (scene_.stage.account == 1 ? "S: " : "S@" + std::to_string(scene_.stage.account) + ": ") +
                                  escape(piece)});
    const bool clear = (scene_.stage.flags() & 16) == 0;
    const auto sent = scene_.stage.compressed(piece);
    const auto positions = clear ? cutPositions(sent) : cutAnywhere(sent);
    cuts_ = std::max(cuts_, positions.size());
    std::vector<std::string> parts = {sent};
    if (scene_.mode.pieces == PlayMode::Pieces::Bytes) {
        parts.clear();
        for (const char c : sent) parts.emplace_back(1, c);
    } else if (scene_.mode.pieces == PlayMode::Pieces::Cut && !positions.empty()) {
        const auto cut = positions[scene_.mode.cut % positions.size()];
        parts = {sent.substr(0, cut), sent.substr(cut)};
    }
    for (const auto& part : parts) {
        if (scene_.stage.receive(part) != 0) scene_.fail("a received piece gives another result than 0");
    }
}

void Player::checkComplaints() {
    if (!scene_.stage.host.complaints.empty())
        scene_.fail("The host complains: " + scene_.stage.host.complaints.front());
}

bool Player::isSendExpectation(const std::string& text) {
    return startsWith(text, "C:") || startsWith(text, "C xml:") || startsWith(text, "C@");
}

bool Player::sentMatches(const Event& event, const std::string& text, std::string& why) {
    const bool asXml = startsWith(text, "C xml:");
    const auto colon = text.find(':');
    const auto head = asXml ? "C:" : text.substr(0, colon + 1);
    const auto expected = trim(std::string_view(text).substr(colon + 1));
    if (event.category != Event::Category::Sent || event.line.head != head) return false;
    if (asXml) return sameXml(unescape(expected), event.data, scene_.variables, why);
    return Pattern::parse(expected).match(event.data, scene_.variables);
}

void Player::expect(const std::string& text) {
    const auto waiting = std::string(kWaitingHead) + " \"" + std::string(kWaitingText);
    if (scene_.mode.pieces != PlayMode::Pieces::AsGiven && startsWith(text, waiting)) return;
    if (!scene_.mode.realDirectory.empty() && (startsWith(text, "makes ") || startsWith(text, "writes "))) {
        return expectRealFile(parseLine(text));
    }
    if (scene_.events.empty()) scene_.fail("nothing more happened");
    const auto& event = scene_.events.front();
    std::string why;
    if (isSendExpectation(text)) {
        if (!sentMatches(event, text, why))
            scene_.fail("another thing happened: " + journal_[journal_.size() - scene_.events.size()].text +
                        (why.empty() ? "" : "\n" + why));
    } else {
        const auto line = parseLine(text);
        const bool isTime = !scene_.mode.realDirectory.empty() && line.find("time");
        auto actual = event.line;
        if (isTime) {
            for (auto& field : actual.fields) {
                const bool near = field.name == "time" && field.value.text != "now" &&
                                  std::abs(std::stoll(field.value.text) - std::time(nullptr)) <= kRealClockTolerance;
                if (near) field.value.text = "now";
            }
        }
        if (event.category == Event::Category::Sent || !matches(line, actual, scene_.variables)) {
            scene_.fail("another thing happened: " + journal_[journal_.size() - scene_.events.size()].text);
        }
    }
    scene_.events.pop_front();
}

/// On the real platform nobody tells of files: what stands on the disk is what counts.
void Player::expectRealFile(const Line& line) {
    if (line.head == "makes folder") {
        if (!std::filesystem::is_directory(scene_.textOf(line))) scene_.fail("there is no such folder");
        return;
    }
    std::ifstream in(scene_.textOf(line), std::ios::binary);
    if (!in) scene_.fail("there is no such file");
    std::ostringstream content;
    content << in.rdbuf();
    const auto expected = line.texts.size() > 1 ? line.texts[1].text : std::string();
    if (!Pattern::parse(expected).match(content.str(), scene_.variables)) scene_.fail("it holds " + content.str());
}

void Player::expectLoosely(const std::string& text) {
    std::string why;
    const auto found = std::find_if(scene_.events.begin(), scene_.events.end(), [&](const Event& event) {
        return isSendExpectation(text) ? sentMatches(event, text, why) : false;
    });
    if (found != scene_.events.end()) scene_.events.erase(found);
}

Outcome play(const PluginExports& exports, const Transcript& transcript, const PlayMode& mode) {
    return Player(exports, mode).run(transcript);
}

}  // namespace harness
