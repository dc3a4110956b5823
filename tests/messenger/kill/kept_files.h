// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <QString>
#include <string>
#include <vector>

namespace oku::test {

/// Something that is kept on disk, as a test sees it.
class Kept {
public:
    Kept() = default;
    virtual ~Kept() = default;
    Kept(const Kept&) = delete;
    Kept& operator=(const Kept&) = delete;

    /// Saves the content that belongs to this number, in a folder (ending in the separator), by the real code. False
    /// when that could not be done.
    virtual bool save(std::uint32_t number, const QString& folder) = 0;
    /// What is wrong with what lies in the folder when the last complete save was `done` and `begun` was under way;
    /// empty when it is the content of one of the two as a whole.
    virtual std::string fault(std::uint32_t done, std::uint32_t begun, const QString& folder) = 0;
    /// The number of the newest content in the folder.
    virtual std::uint32_t newest(const QString& folder) = 0;
};

/// Files that are replaced whole: what is on disk is compared, byte by byte, with what a save that nobody disturbed
/// leaves in another folder.
class ReplacedFiles : public Kept {
public:
    explicit ReplacedFiles(std::vector<std::string> names) : names_(std::move(names)) {}
    std::string fault(std::uint32_t done, std::uint32_t begun, const QString& folder) override;
    std::uint32_t newest(const QString& folder) override;

private:
    std::vector<std::string> names_;
};

std::unique_ptr<Kept> keptSettings();
std::unique_ptr<Kept> keptContactList();
std::unique_ptr<Kept> keptHistory();
/// The plugin's contact list and its cache of what clients can do; each load, login and unload saves both.
std::unique_ptr<Kept> keptByThePlugin();

}  // namespace oku::test
