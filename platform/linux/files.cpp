// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <dirent.h>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <utility>

#include "host/util/utf.h"
#include "platform/linux/descriptor.h"
#include "platform/platform.h"

namespace {

constexpr mode_t kNewFolderMode = 0700;

/// A new file beside the one that it is to replace. It is deleted at the end unless it took that place.
class Replacement {
public:
    explicit Replacement(const std::string& folder)
        : path_(folder + ".protolink-XXXXXX"), file_(mkostemp(path_.data(), O_CLOEXEC)) {}
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    ~Replacement() {
        if (pending_) unlink(path_.c_str());
    }

    bool write(std::string_view content, mode_t mode) {
        pending_ = file_.isOpen();
        return pending_ && fchmod(file_.number(), mode) == 0 && writeAll(file_.number(), content) &&
               fsync(file_.number()) == 0 && file_.close();
    }

    bool takePlaceOf(const std::string& target) {
        if (rename(path_.c_str(), target.c_str()) != 0) return false;
        pending_ = false;
        return true;
    }

private:
    std::string path_;
    Descriptor file_;
    bool pending_ = false;
};

/// What a new file takes the place of.
struct Target {
    std::string path;
    mode_t mode;
};

/// The file behind a path, when it can be opened. One that is not there yet is not made: a write that fails later, or a
/// loss of power, must leave no empty file behind, which would pass for a whole one.
std::optional<Target> findTarget(const std::string& name) {
    struct stat state {};
    if (lstat(name.c_str(), &state) != 0) return Target{name, kNewFileMode};
    if (!openPlain(name, O_RDWR | O_CREAT, state).isOpen()) return std::nullopt;
    // The file behind a link is replaced, and the link stays.
    const std::unique_ptr<char, decltype(&free)> whole(realpath(name.c_str(), nullptr), &free);
    if (!whole) return std::nullopt;
    return Target{whole.get(), state.st_mode & 07777};
}

/// Makes a rename outlast a loss of power. Some file systems cannot sync a folder; the rename has happened all the
/// same.
void syncFolder(const std::string& folder) {
    const char* const name = folder.empty() ? "." : folder.c_str();
    const Descriptor descriptor(open(name, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.isOpen()) fsync(descriptor.number());
}

bool isPlainFile(int folder, const dirent& entry) {
    if (entry.d_type == DT_REG) return true;
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return false;
    struct stat state {};
    return fstatat(folder, entry.d_name, &state, 0) == 0 && S_ISREG(state.st_mode);
}

}  // namespace

namespace platform {

std::vector<std::u16string> filesMatching(std::u16string_view directory, std::u16string_view prefix,
                                          std::u16string_view suffix) {
    std::vector<std::u16string> names;
    const std::optional<std::string> path = directory.empty() ? "." : systemPath(directory);
    if (!path) return names;
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(path->c_str()), &closedir);
    if (!folder) return names;
    while (const dirent* entry = readdir(folder.get())) {
        const std::string_view raw = entry->d_name;
        std::u16string name = utow(raw);
        if (name.size() < prefix.size() + suffix.size() || !name.starts_with(prefix) || !name.ends_with(suffix))
            continue;
        // A name that is no UTF-8 would not be found again under the text that it was told as.
        if (wtou(name) == raw && isPlainFile(dirfd(folder.get()), *entry)) names.push_back(std::move(name));
    }
    return names;
}

bool fileExists(const std::u16string& path) {
    const std::optional<std::string> name = systemPath(path);
    struct stat state {};
    return name && stat(name->c_str(), &state) == 0;
}

std::optional<std::string> readFile(const std::u16string& path) {
    const std::optional<std::string> name = systemPath(path);
    struct stat state {};
    const Descriptor file = name ? openPlain(*name, O_RDONLY, state) : Descriptor(-1);
    if (!file.isOpen()) return std::nullopt;
    std::string content;
    content.reserve(static_cast<std::size_t>(state.st_size));
    for (;;) {
        // The size was only a hint: the file may grow meanwhile, and some files tell none.
        char block[65536];
        const ssize_t length = read(file.number(), block, sizeof block);
        if (length == 0) return content;
        if (length < 0 && errno == EINTR) continue;
        if (length < 0) return std::nullopt;
        content.append(block, static_cast<std::size_t>(length));
    }
}

bool createFileIfMissing(const std::u16string& path) {
    const std::optional<std::string> name = systemPath(path);
    struct stat state {};
    return name && openPlain(*name, O_RDONLY | O_CREAT, state).isOpen();
}

bool replaceFile(const std::u16string& path, std::string_view content) {
    const std::optional<std::string> name = systemPath(path);
    const std::optional<Target> target = name ? findTarget(*name) : std::nullopt;
    if (!target) return false;
    const std::string folder = target->path.substr(0, target->path.rfind('/') + 1);
    Replacement replacement(folder);
    if (!replacement.write(content, target->mode) || !replacement.takePlaceOf(target->path)) return false;
    syncFolder(folder);
    return true;
}

void createFolder(const std::u16string& path) {
    if (const std::optional<std::string> name = systemPath(path)) mkdir(name->c_str(), kNewFolderMode);
}

bool emptyFolder(const std::u16string& path) {
    const std::optional<std::string> name = systemPath(path);
    if (!name) return false;
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(name->c_str()), &closedir);
    if (!folder) return errno == ENOENT;
    bool empty = true;
    errno = 0;
    while (const dirent* entry = readdir(folder.get())) {
        // A link to a folder is a file here: the link goes, and what it leads to stays.
        if (unlinkat(dirfd(folder.get()), entry->d_name, 0) != 0 && errno != EISDIR && errno != ENOENT) empty = false;
        errno = 0;
    }
    return empty && errno == 0;
}

}  // namespace platform
