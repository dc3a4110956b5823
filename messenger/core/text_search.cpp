#include "messenger/core/text_search.h"

#include <algorithm>
#include <vector>

namespace oku {
namespace {

bool isDiacritic(QChar unit) { return unit >= QChar(0x0300) && unit <= QChar(0x036f); }

/// The letter below the diacritics; any other character is its own.
QChar baseOf(QChar unit) {
    QChar base = unit;
    while (base.decompositionTag() == QChar::Canonical) {
        const QString parts = base.decomposition();
        if (!std::all_of(parts.begin() + 1, parts.end(), isDiacritic)) return unit;
        base = parts[0];
    }
    return base;
}

/// For each unit of UTF-16 what it counts as; 0 for what does not count. Made once: a long history has many letters.
const std::vector<char16_t>& foldedUnits() {
    static const std::vector<char16_t> table = [] {
        std::vector<char16_t> units(0x10000);
        for (std::size_t unit = 0; unit < units.size(); ++unit) {
            const QChar letter(static_cast<char16_t>(unit));
            units[unit] = isDiacritic(letter) ? u'\0' : baseOf(letter).toCaseFolded().unicode();
        }
        return units;
    }();
    return table;
}

QString folded(const QString& text) {
    const auto& units = foldedUnits();
    QString result(text.size(), Qt::Uninitialized);
    QChar* end = result.data();
    for (const QChar letter : text) {
        const char16_t unit = units[letter.unicode()];
        if (unit != 0 || letter.isNull()) *end++ = unit;
    }
    result.truncate(end - result.constData());
    return result;
}

}  // namespace

TextSearch::TextSearch(const QString& words) : words_(folded(words.simplified()).split(u' ', Qt::SkipEmptyParts)) {}

bool TextSearch::fits(const QString& one, const QString& other) const {
    if (empty()) return true;
    const QString first = folded(one);
    const QString second = folded(other);
    return std::all_of(words_.begin(), words_.end(),
                       [&](const QString& word) { return first.contains(word) || second.contains(word); });
}

}  // namespace oku
