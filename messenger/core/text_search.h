#pragma once

#include <QString>
#include <QStringList>

namespace oku {

/// A search for all of some words, or parts of words, in a text. Case and the diacritics of letters don't count; any
/// other character does, so that signs and emoji can be looked for.
class TextSearch {
public:
    explicit TextSearch(const QString& words);

    /// Nothing is looked for: every text fits.
    [[nodiscard]] bool empty() const { return words_.isEmpty(); }
    /// Whether each word stands in one of the two texts.
    [[nodiscard]] bool fits(const QString& one, const QString& other) const;

private:
    QStringList words_;  ///< folded
};

}  // namespace oku
