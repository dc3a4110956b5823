// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A folder of its own for each test, gone at the end with all that it holds.
#pragma once

#include <stdlib.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "host/util/utf.h"

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "protolink-test-XXXXXX").string();
        path_ = mkdtemp(name.data());
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(path_, ignored);
    }

    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
    std::u16string wide(const std::string& name) const { return utow((path_ / name).string()); }
    /// As hosts give folders: with the separator at the end.
    std::u16string directory() const { return utow(path_.string() + "/"); }

    void write(const std::string& name, const std::string& content) const {
        std::ofstream(path_ / name, std::ios::binary) << content;
    }
    std::string read(const std::string& name) const {
        std::ifstream file(path_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    mode_t mode(const std::string& name) const {
        struct stat state {};
        return stat((path_ / name).c_str(), &state) == 0 ? state.st_mode & 07777 : 0;
    }
    std::size_t count() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path_), {}));
    }

private:
    std::filesystem::path path_;
};
