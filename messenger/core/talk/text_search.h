// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <QString>
#include <vector>

namespace oku {

/// A search for all of some words, or parts of words, in a text, as the Unicode collation algorithm compares at primary
/// strength: case and the signs on letters don't count (`zolty` finds `żółty`); any other character does, so that
/// punctuation and emoji can be looked for.
class TextSearch {
public:
    explicit TextSearch(const QString& words);
    ~TextSearch();
    TextSearch(const TextSearch&) = delete;
    TextSearch& operator=(const TextSearch&) = delete;

    /// Nothing is looked for: every text fits.
    [[nodiscard]] bool empty() const { return words_.empty(); }
    /// Whether each word stands in one of the two texts.
    [[nodiscard]] bool fits(const QString& one, const QString& other) const;

private:
    class Word;

    std::vector<std::unique_ptr<Word>> words_;
};

}  // namespace oku
