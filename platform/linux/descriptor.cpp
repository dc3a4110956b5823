// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "platform/linux/descriptor.h"

#include <unistd.h>

#include <cerrno>

#include "host/util/utf.h"

Descriptor::~Descriptor() {
    if (isOpen()) ::close(number_);
}

bool Descriptor::close() { return ::close(std::exchange(number_, -1)) == 0; }

std::optional<std::string> systemPath(std::u16string_view path) {
    if (path.empty() || path.find(u'\0') != std::u16string_view::npos) return std::nullopt;
    return wtou(path);
}

Descriptor openPlain(const std::string& path, int flags, struct stat& state) {
    Descriptor file(open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, kNewFileMode));
    if (file.isOpen() && (fstat(file.number(), &state) != 0 || !S_ISREG(state.st_mode))) return Descriptor(-1);
    return file;
}

bool writeAll(int file, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = write(file, content.data(), content.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}
