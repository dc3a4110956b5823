// Plays a transcript: drives the plugin by its stimuli and compares what happens with its expectations.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/stage.h"
#include "tests/support/transcript.h"

namespace harness {

struct PlayMode {
    /// How a received piece reaches the plugin: as it stands, one byte at a time, or in two parts.
    enum class Pieces { AsGiven, Bytes, Cut } pieces = Pieces::AsGiven;
    std::size_t cut = 0;  // which of a piece's cut positions, counted round

    /// Compare nothing: only drive the plugin, and look for complaints. For hosts and files that fail.
    bool onlyDrive = false;
    std::optional<std::size_t> failingCall = std::nullopt;

    /// The plugin runs on the real platform: time and files are the system's, below this directory.
    std::string realDirectory = {};
};

/// One entry of what happened, in order.
struct JournalEntry {
    bool isStimulus = false;
    std::string text;
};

struct Outcome {
    bool passed = true;
    std::string report;  // the exchange so far and the line, when it did not pass
    std::size_t calls = 0;
    std::size_t cuts = 0;  // the greatest number of cut positions of a piece
    std::vector<JournalEntry> journal;
};

Outcome play(const PluginExports& exports, const Transcript& transcript, const PlayMode& mode = {});

/// The positions inside a tag or inside a character of several bytes, where a piece is cut in two.
std::vector<std::size_t> cutPositions(const std::string& piece);

class Player {
public:
    Player(const PluginExports& exports, const PlayMode& mode);
    ~Player();
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;
    Outcome run(const Transcript& transcript);

private:
    using Action = void (Player::*)(const Line& line, const std::string& rest);
    /// What a line does: prepares the world, only speaks to the player, or runs the plugin.
    enum class Role { World, Player, Drive };
    struct Row {
        const char* phrase;
        Action action;
        Role role = Role::Drive;
    };
    static const Row kRows[];
    static const Row* find(const std::string& text);

    void step(const Step& step);
    void perform(const Step& step);
    void receive(const std::string& raw);
    void note(const std::string& text);
    void checkQuiet(const std::string& why);
    void checkComplaints();
    void onEvent(Event event);
    bool isShown(const Event& event) const;

    // Comparing.
    void expect(const std::string& text);
    bool sentMatches(const Event& event, const std::string& text, std::string& why);
    static bool isSendExpectation(const std::string& text);
    void expectRealFile(const Line& line);
    void expectLoosely(const std::string& text);

    // Preparing the world.
    void setting(const Line& line, const std::string& rest);
    void noSetting(const Line& line, const std::string& rest);
    void file(const Line& line, const std::string& rest);
    void fileFails(const Line& line, const std::string& rest);
    void holds(const Line& line, const std::string& rest);
    void modulePath(const Line& line, const std::string& rest);
    void random(const Line& line, const std::string& rest);
    void hostLacks(const Line& line, const std::string& rest);
    void hostHas(const Line& line, const std::string& rest);
    void hostAnswers(const Line& line, const std::string& rest);
    void hostAlwaysAnswers(const Line& line, const std::string& rest);
    void hostProxy(const Line& line, const std::string& rest);
    void hostIcon(const Line& line, const std::string& rest);
    void directories(const Line& line, const std::string& rest);
    void veto(const Line& line, const std::string& rest);
    void blanks(const Line& line, const std::string& rest);
    void show(const Line& line, const std::string& rest);
    void let(const Line& line, const std::string& rest);
    void forget(const Line& line, const std::string& rest);
    void when(const Line& line, const std::string& rest);
    void onAccount(const Line& line, const std::string& rest);
    void nothing(const Line& line, const std::string& rest);
    void flags(const Line& line, const std::string& rest);

    // Driving.
    void load(const Line& line, const std::string& rest);
    void unload(const Line& line, const std::string& rest);
    void status(const Line& line, const std::string& rest);
    void statusWindow(const Line& line, const std::string& rest);
    void menu(const Line& line, const std::string& rest);
    void socketEvent(const Line& line, const std::string& rest);
    void connected(const Line& line, const std::string& rest);
    void closed(const Line& line, const std::string& rest);
    void dropped(const Line& line, const std::string& rest);
    void tls(const Line& line, const std::string& rest);
    void certificate(const Line& line, const std::string& rest);
    void sendMessage(const Line& line, const std::string& rest);
    void typing(const Line& line, const std::string& rest);
    void raw(const Line& line, const std::string& rest);
    void deleteContact(const Line& line, const std::string& rest);
    void authorize(const Line& line, const std::string& rest);
    void after(const Line& line, const std::string& rest);
    void tick(const Line& line, const std::string& rest);
    void service(const Line& line, const std::string& rest);
    void raise(const Line& line, const std::string& rest);

    // Reading a line's values, with captured ones filled in.
    std::string fill(const std::string& raw) const;
    std::string textOf(const Line& line, std::size_t index = 0) const;
    std::string field(const Line& line, const char* name, const std::string& otherwise = "") const;
    long long number(const Line& line, const char* name, long long otherwise = 0) const;
    std::string path(const std::string& name) const;
    /// Compares the result of a stimulus with the one that its line tells.
    void result(const Line& line, OKU_WORD actual);
    [[noreturn]] void fail(const std::string& why) const;

    PlayMode mode_;
    Stage stage_;
    Variables variables_;
    std::deque<Event> events_;
    std::vector<JournalEntry> journal_;
    bool showSettings_ = false;
    bool showStreamHooks_ = false;
    std::size_t cuts_ = 0;
};

}  // namespace harness
