// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/file.h"
#include "platform/linux/descriptor.h"

namespace {

class OpenFile final : public platform::File {
public:
    explicit OpenFile(Descriptor file) : file_(std::move(file)) {}

    std::optional<std::string> read(std::size_t most) override {
        std::string bytes(most, '\0');
        std::size_t filled = 0;
        while (filled < most) {
            const ssize_t length = ::read(file_.number(), bytes.data() + filled, most - filled);
            if (length < 0 && errno == EINTR) continue;
            if (length < 0) return std::nullopt;
            if (length == 0) break;
            filled += static_cast<std::size_t>(length);
        }
        position_ += filled;
        bytes.resize(filled);
        return bytes;
    }

    bool write(std::string_view bytes) override {
        if (!writeAll(file_.number(), bytes)) return false;
        position_ += bytes.size();
        return true;
    }

    std::optional<std::uint64_t> length() const override {
        struct stat state {};
        if (fstat(file_.number(), &state) != 0) return std::nullopt;
        return static_cast<std::uint64_t>(state.st_size);
    }

    std::uint64_t position() const override { return position_; }
    bool close() override { return !file_.isOpen() || file_.close(); }

private:
    Descriptor file_;
    std::uint64_t position_ = 0;
};

std::unique_ptr<platform::File> openWith(const std::u16string& path, int flags) {
    const std::optional<std::string> name = systemPath(path);
    struct stat state {};
    Descriptor file = name ? openPlain(*name, flags, state) : Descriptor(-1);
    if (!file.isOpen()) return nullptr;
    return std::make_unique<OpenFile>(std::move(file));
}

}  // namespace

namespace platform {

std::unique_ptr<File> openForReading(const std::u16string& path) { return openWith(path, O_RDONLY); }

std::unique_ptr<File> openForWriting(const std::u16string& path) {
    return openWith(path, O_WRONLY | O_CREAT | O_TRUNC);
}

std::uint64_t fileSize(const std::u16string& path) {
    const std::optional<std::string> name = systemPath(path);
    struct stat state {};
    return name && stat(name->c_str(), &state) == 0 && S_ISREG(state.st_mode)
               ? static_cast<std::uint64_t>(state.st_size)
               : 0;
}

}  // namespace platform
