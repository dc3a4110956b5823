// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/support/fake_platform.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/download.h"
#include "platform/file.h"
#include "platform/platform.h"
#include "tests/support/text.h"

namespace harness {

FakeWorld& world() {
    static FakeWorld instance;
    return instance;
}

void FakeWorld::advance(std::int64_t milliseconds) {
    fraction_ += milliseconds;
    now += fraction_ / 1000;
    fraction_ %= 1000;
    ticks += static_cast<std::uint32_t>(milliseconds);
}

namespace {

void tell(const char* verb, const std::string& path, const std::string& content) {
    if (world().onFile) world().onFile(verb, path, content);
}

/// A file of the world that is open. The world may be another one when it is closed.
class FakeFile final : public platform::File {
public:
    FakeFile(std::string path, bool writes) : path_(std::move(path)), writes_(writes) {}

    std::optional<std::string> read(std::size_t most) override {
        const auto found = world().files.find(path_);
        if (found == world().files.end() || world().unreadable.count(path_)) return std::nullopt;
        const auto bytes = found->second.substr(std::min<std::size_t>(position_, found->second.size()), most);
        position_ += bytes.size();
        return bytes;
    }
    bool write(std::string_view bytes) override {
        if (!writes_ || world().unwritable.count(path_)) return false;
        world().files[path_].append(bytes);
        position_ += bytes.size();
        return true;
    }
    std::optional<std::uint64_t> length() const override {
        const auto found = world().files.find(path_);
        return found == world().files.end() ? std::nullopt : std::optional<std::uint64_t>(found->second.size());
    }
    std::uint64_t position() const override { return position_; }
    bool close() override { return !writes_ || world().unwritable.count(path_) == 0; }

private:
    std::string path_;
    bool writes_;
    std::uint64_t position_ = 0;
};

class FakeThread final : public platform::Download {
public:
    explicit FakeThread(std::shared_ptr<FakeDownload> download) : download_(std::move(download)) {}
    ~FakeThread() override {
        download_->stop();
        download_->end();
    }
    void stop() noexcept override { download_->stop(); }

private:
    std::shared_ptr<FakeDownload> download_;
};

}  // namespace

void FakeDownload::act(const std::function<bool()>& step) {
    if (ended_ || stopped_) return;
    try {
        if (step()) return;
    } catch (...) {
        // What is thrown ends a download like all else.
        stopped_ = true;
    }
    end();
}
void FakeDownload::begin() {
    if (begun_) return;
    begun_ = true;
    act([this] { return listener_->onBegin(), true; });
}
void FakeDownload::answer(int status) {
    begin();
    answered_ = true;
    act([&] { return listener_->onAnswer(status); });
}
void FakeDownload::block(const std::string& bytes) {
    if (!answered_) return;  // no web gives bytes before its answer
    act([&] { return listener_->onBytes(bytes); });
}
void FakeDownload::end() {
    if (ended_) return;
    ended_ = true;
    listener_->onEnd();
}
void FakeDownload::stop() {
    if (!stopped_ && !ended_) tell("gives up", url_, "");
    stopped_ = true;
}

}  // namespace harness

namespace platform {

using harness::world;

std::int64_t now() { return world().now; }
std::uint32_t tickCount() { return world().ticks; }

std::uint32_t nextRandom() {
    auto& queue = world().randoms;
    if (queue.empty()) return world().sequence = world().sequence * 1664525u + 1013904223u;
    const auto value = queue.front();
    queue.pop_front();
    return value;
}

void seedRandom(std::uint32_t seed) {
    auto& seeds = world().seeds;
    if (seeds.size() == harness::kKeptSeeds) seeds.erase(seeds.begin());
    seeds.push_back(seed);
}

std::u16string modulePath() { return harness::toUtf16(world().modulePath); }

std::vector<std::u16string> filesMatching(std::u16string_view directory, std::u16string_view prefix,
                                          std::u16string_view suffix) {
    const auto folder = harness::toUtf8(directory);
    std::vector<std::u16string> names;
    for (const auto& [path, content] : world().files) {
        if (!harness::startsWith(path, folder)) continue;
        const auto name = harness::toUtf16(path.substr(folder.size()));
        const bool plain = name.find(kPathSeparator) == std::u16string::npos;
        if (plain && name.size() >= prefix.size() + suffix.size() && name.starts_with(prefix) &&
            name.ends_with(suffix)) {
            names.push_back(name);
        }
    }
    return names;
}

bool fileExists(const std::u16string& path) { return world().files.count(harness::toUtf8(path)) != 0; }

std::optional<std::string> readFile(const std::u16string& path) {
    const auto name = harness::toUtf8(path);
    const auto found = world().files.find(name);
    if (found == world().files.end() || world().unopenable.count(name)) return std::nullopt;
    return found->second;
}

std::unique_ptr<File> openForReading(const std::u16string& path) {
    const auto name = harness::toUtf8(path);
    if (!world().files.count(name) || world().unopenable.count(name)) return nullptr;
    return std::make_unique<harness::FakeFile>(name, false);
}

std::unique_ptr<File> openForWriting(const std::u16string& path) {
    const auto name = harness::toUtf8(path);
    if (world().unopenable.count(name)) return nullptr;
    world().files[name].clear();
    harness::tell("makes", name, "");
    return std::make_unique<harness::FakeFile>(name, true);
}

std::uint64_t fileSize(const std::u16string& path) {
    const auto name = harness::toUtf8(path);
    const auto told = world().sizes.find(name);
    if (told != world().sizes.end()) return told->second;
    const auto found = world().files.find(name);
    return found == world().files.end() ? 0 : found->second.size();
}

std::unique_ptr<Download> startDownload(const std::u16string& url, const std::u16string&,
                                        std::shared_ptr<DownloadListener> listener) {
    if (!world().threads) return nullptr;
    const auto name = harness::toUtf8(url);
    const auto download = std::make_shared<harness::FakeDownload>(name, std::move(listener));
    world().downloads.push_back(download);
    harness::tell("downloads", name, "");
    return std::make_unique<harness::FakeThread>(download);
}

bool createFileIfMissing(const std::u16string& path) {
    const auto name = harness::toUtf8(path);
    if (world().unopenable.count(name)) return false;
    if (world().files.emplace(name, "").second) harness::tell("makes", name, "");
    return true;
}

bool replaceFile(const std::u16string& path, std::string_view content) {
    const auto name = harness::toUtf8(path);
    if (world().unopenable.count(name) || world().unwritable.count(name)) return false;
    world().files[name] = std::string(content);
    harness::tell("writes", name, std::string(content));
    return true;
}

void createFolder(const std::u16string& path) {
    const auto name = harness::toUtf8(path);
    if (world().folders.insert(name).second) harness::tell("makes folder", name, "");
}

bool emptyFolder(const std::u16string& path) {
    const auto folder = harness::toUtf8(path);
    harness::tell("empties", folder, "");
    bool empty = true;
    for (auto file = world().files.lower_bound(folder); file != world().files.end();) {
        if (!harness::startsWith(file->first, folder)) break;
        const bool stays = world().unwritable.count(file->first) != 0;
        if (stays) empty = false;
        file = stays ? std::next(file) : world().files.erase(file);
    }
    return empty;
}

std::int32_t timeZoneBias() { return world().timeZoneBias; }
std::u16string operatingSystem() { return harness::toUtf16(world().operatingSystem); }

void destroyIcon(std::uint64_t icon) {
    if (world().onIconDestroyed) world().onIconDestroyed(icon);
}

std::string wtom(std::u16string_view text) { return harness::toUtf8(text); }
std::u16string mtow(std::string_view text) { return harness::toUtf16(text); }

}  // namespace platform
