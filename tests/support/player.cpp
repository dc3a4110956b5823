#include "tests/support/player.h"

#include <algorithm>
#include <ctime>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "tests/support/fake_platform.h"
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

struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

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

Player::Player(const PluginExports& exports, const PlayMode& mode) : mode_(mode), stage_(exports) {
    auto& host = stage_.host;
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
    variables_["profile"] = host.profileDirectory;
    variables_["cache"] = host.cacheDirectory;
}

/// The stage unloads a plugin that is still loaded: from here on nobody listens to its files and icons.
Player::~Player() {
    world().onFile = nullptr;
    world().onIconDestroyed = nullptr;
}

void Player::fail(const std::string& why) const { throw Failure(why); }

bool Player::isShown(const Event& event) const {
    if (event.category == Event::Category::SettingsRead) return showSettings_;
    if (event.category == Event::Category::StreamHook) return showStreamHooks_;
    return mode_.pieces == PlayMode::Pieces::AsGiven || event.line.head != kWaitingHead ||
           !startsWith(event.line.texts.front().text, kWaitingText);
}

void Player::onEvent(Event event) {
    if (!isShown(event)) return;
    journal_.push_back({false, render(event)});
    events_.push_back(std::move(event));
}

Outcome Player::run(const Transcript& transcript) {
    Outcome outcome;
    const Step* at = nullptr;
    try {
        for (const auto& next : transcript.steps) step(*(at = &next));
        checkQuiet("the transcript ends, but more happened");
        if (stage_.loaded()) {
            at = nullptr;
            note("unload");
            stage_.unload();
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
    outcome.calls = stage_.host.calls;
    outcome.cuts = cuts_;
    outcome.journal = std::move(journal_);
    return outcome;
}

void Player::step(const Step& next) {
    try {
        perform(next);
    } catch (const NotThere&) {
        // Where calls of the host fail, what they should have registered is not there to be used.
        if (!mode_.onlyDrive) throw;
    }
    checkComplaints();
}

void Player::perform(const Step& next) {
    const auto& text = next.text;
    const std::string received = stage_.account == 1 ? "S:" : "S@" + std::to_string(stage_.account) + ":";
    if (startsWith(text, "S@")) {
        const auto colon = text.find(':');
        if (colon == std::string::npos) fail("S@ wants its colon");
        const auto before = stage_.account;
        stage_.account = static_cast<std::uint32_t>(std::stoul(text.substr(2, colon - 2)));
        receive(text.substr(colon + 1));
        stage_.account = before;
    } else if (startsWith(text, received)) {
        receive(text.substr(received.size()));
    } else if (const auto* row = find(text)) {
        const auto line = startsWith(text, "when ") ? Line() : parseLine(text);
        const auto rest = std::string(trim(std::string_view(text).substr(std::string_view(row->phrase).size())));
        if (row->role == Role::Drive) checkQuiet("this is not expected before it");
        if (row->role != Role::Player || row->action == &Player::onAccount) note(text);
        (this->*row->action)(line, rest);
    } else if (mode_.onlyDrive) {
        expectLoosely(text);
    } else {
        expect(text);
    }
}

/// A line of the journal, in which captured values stand filled in.
void Player::note(const std::string& text) {
    auto filled = text;
    for (const auto& [name, value] : variables_) filled = replaceAll(filled, "{" + name + "}", escape(value));
    journal_.push_back({true, filled});
}

void Player::receive(const std::string& raw) {
    checkQuiet("this is not expected before it");
    const auto piece = fill(std::string(trim(raw)));
    journal_.push_back(
        {true, (stage_.account == 1 ? "S: " : "S@" + std::to_string(stage_.account) + ": ") + escape(piece)});
    const bool clear = (stage_.flags() & 16) == 0;
    const auto sent = stage_.compressed(piece);
    const auto positions = clear ? cutPositions(sent) : cutAnywhere(sent);
    cuts_ = std::max(cuts_, positions.size());
    std::vector<std::string> parts = {sent};
    if (mode_.pieces == PlayMode::Pieces::Bytes) {
        parts.clear();
        for (const char c : sent) parts.emplace_back(1, c);
    } else if (mode_.pieces == PlayMode::Pieces::Cut && !positions.empty()) {
        const auto cut = positions[mode_.cut % positions.size()];
        parts = {sent.substr(0, cut), sent.substr(cut)};
    }
    for (const auto& part : parts) {
        if (stage_.receive(part) != 0) fail("a received piece gives another result than 0");
    }
}

void Player::checkQuiet(const std::string& why) {
    if (events_.empty() || mode_.onlyDrive) return;
    fail(why + ": " + render(events_.front()));
}

void Player::checkComplaints() {
    if (!stage_.host.complaints.empty()) fail("The host complains: " + stage_.host.complaints.front());
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
    if (asXml) return sameXml(unescape(expected), event.data, variables_, why);
    return Pattern::parse(expected).match(event.data, variables_);
}

void Player::expect(const std::string& text) {
    const auto waiting = std::string(kWaitingHead) + " \"" + std::string(kWaitingText);
    if (mode_.pieces != PlayMode::Pieces::AsGiven && startsWith(text, waiting)) return;
    if (!mode_.realDirectory.empty() && (startsWith(text, "makes ") || startsWith(text, "writes "))) {
        return expectRealFile(parseLine(text));
    }
    if (events_.empty()) fail("nothing more happened");
    const auto& event = events_.front();
    std::string why;
    if (isSendExpectation(text)) {
        if (!sentMatches(event, text, why))
            fail("another thing happened: " + journal_[journal_.size() - events_.size()].text +
                 (why.empty() ? "" : "\n" + why));
    } else {
        const auto line = parseLine(text);
        const bool isTime = !mode_.realDirectory.empty() && line.find("time");
        auto actual = event.line;
        if (isTime) {
            for (auto& field : actual.fields) {
                const bool near = field.name == "time" && field.value.text != "now" &&
                                  std::abs(std::stoll(field.value.text) - std::time(nullptr)) <= kRealClockTolerance;
                if (near) field.value.text = "now";
            }
        }
        if (event.category == Event::Category::Sent || !matches(line, actual, variables_)) {
            fail("another thing happened: " + journal_[journal_.size() - events_.size()].text);
        }
    }
    events_.pop_front();
}

/// On the real platform nobody tells of files: what stands on the disk is what counts.
void Player::expectRealFile(const Line& line) {
    std::ifstream in(textOf(line), std::ios::binary);
    if (!in) fail("there is no such file");
    std::ostringstream content;
    content << in.rdbuf();
    const auto expected = line.texts.size() > 1 ? line.texts[1].text : std::string();
    if (!Pattern::parse(expected).match(content.str(), variables_)) fail("it holds " + content.str());
}

void Player::expectLoosely(const std::string& text) {
    std::string why;
    const auto found = std::find_if(events_.begin(), events_.end(), [&](const Event& event) {
        return isSendExpectation(text) ? sentMatches(event, text, why) : false;
    });
    if (found != events_.end()) events_.erase(found);
}

Outcome play(const PluginExports& exports, const Transcript& transcript, const PlayMode& mode) {
    return Player(exports, mode).run(transcript);
}

}  // namespace harness
