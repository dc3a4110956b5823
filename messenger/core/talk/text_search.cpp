// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/talk/text_search.h"

#include <unicode/ucol.h>
#include <unicode/ucoleitr.h>
#include <unicode/usearch.h>
#include <unicode/uset.h>
#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <QStringList>
#include <string>

namespace oku {
namespace {

const UChar* unitsOf(const QString& text) { return reinterpret_cast<const UChar*>(text.constData()); }
int32_t lengthOf(const QString& text) { return static_cast<int32_t>(text.size()); }

template <typename Object, auto close>
struct Closer {
    void operator()(Object* object) const { close(object); }
};
using Collator = std::unique_ptr<UCollator, Closer<UCollator, ucol_close>>;
using Elements = std::unique_ptr<UCollationElements, Closer<UCollationElements, ucol_closeElements>>;
using Search = std::unique_ptr<UStringSearch, Closer<UStringSearch, usearch_close>>;
using Characters = std::unique_ptr<USet, Closer<USet, uset_close>>;

// The root collation at primary strength; null only where ICU's data are missing.
const UCollator* rootCollator() {
    static const Collator collator = [] {
        UErrorCode error = U_ZERO_ERROR;
        Collator root(ucol_open("root", &error));
        if (U_SUCCESS(error)) ucol_setStrength(root.get(), UCOL_PRIMARY);
        return root;
    }();
    return collator.get();
}

/// ICU's search takes microseconds a text, and a history has a million of them. Most of their characters have one
/// primary weight each, whatever stands beside them: those are folded to the first character of this weight, and
/// comparing the folded units is comparing at primary strength. Only texts with other characters (of several weights,
/// outside the first plane, or changing their neighbours) need the search itself.
class PrimaryFolding {
public:
    PrimaryFolding() {
        for (std::size_t unit = 0; unit < units_.size(); ++unit) units_[unit] = foldedUnit(static_cast<UChar>(unit));
        excludeContractions();
    }

    /// Nothing for a text that has to be searched by ICU.
    [[nodiscard]] std::optional<QString> folded(const QString& text) const {
        QString result(text.size(), Qt::Uninitialized);
        QChar* end = result.data();
        for (const QChar letter : text) {
            const int32_t unit = units_[letter.unicode()];
            if (unit == kOther) return std::nullopt;
            if (unit != kIgnored) *end++ = QChar(static_cast<char16_t>(unit));
        }
        result.truncate(end - result.constData());
        return result;
    }

private:
    static constexpr int32_t kIgnored = -1;
    static constexpr int32_t kOther = -2;
    static constexpr int32_t kContinuation = 0xC0;  // in an element that only carries on the weight before it

    int32_t foldedUnit(UChar unit) {
        if (QChar::isSurrogate(unit)) return kOther;
        const int weights = primaryWeights(unit);
        if (weights != 1) return weights == 0 ? kIgnored : kOther;
        std::array<uint8_t, 64> key;
        const int32_t length = ucol_getSortKey(rootCollator(), &unit, 1, key.data(), static_cast<int32_t>(key.size()));
        if (length > static_cast<int32_t>(key.size())) return kOther;
        return first_.emplace(std::string(key.begin(), key.begin() + length), unit).first->second;
    }

    int primaryWeights(UChar unit) {
        UErrorCode error = U_ZERO_ERROR;
        ucol_setText(elements_.get(), &unit, 1, &error);
        int weights = 0;
        for (int32_t one = ucol_next(elements_.get(), &error); one != UCOL_NULLORDER && U_SUCCESS(error);
             one = ucol_next(elements_.get(), &error)) {
            if (ucol_primaryOrder(one) != 0 && (one & kContinuation) != kContinuation) ++weights;
        }
        return U_SUCCESS(error) ? weights : 2;
    }

    // What follows another character in a contraction can change its weight.
    void excludeContractions() {
        UErrorCode error = U_ZERO_ERROR;
        const Characters contractions(uset_openEmpty());
        ucol_getContractionsAndExpansions(rootCollator(), contractions.get(), nullptr, true, &error);
        for (int32_t at = 0; at < uset_getItemCount(contractions.get()); ++at) {
            std::array<UChar, 32> text;
            UChar32 start = 0;
            UChar32 end = 0;
            error = U_ZERO_ERROR;
            const int32_t length = uset_getItem(contractions.get(), at, &start, &end, text.data(),
                                                static_cast<int32_t>(text.size()), &error);
            for (int32_t place = 1; place < std::min(length, static_cast<int32_t>(text.size())); ++place)
                units_[text[static_cast<std::size_t>(place)]] = kOther;
        }
    }

    static Elements openElements() {
        UErrorCode error = U_ZERO_ERROR;
        return Elements(ucol_openElements(rootCollator(), u"", 0, &error));
    }

    std::vector<int32_t> units_ = std::vector<int32_t>(0x10000);
    std::map<std::string, UChar> first_;  // by weight: the first character that has it
    Elements elements_ = openElements();
};

const PrimaryFolding& folding() {
    static const PrimaryFolding table;
    return table;
}

}  // namespace

class TextSearch::Word {
public:
    explicit Word(QString text) : text_(std::move(text)), folded_(folding().folded(text_)) {}

    /// No character of it counts.
    [[nodiscard]] bool empty() const {
        if (folded_) return folded_->isEmpty();
        uint8_t key = 0;
        // The key of what weighs nothing is its end alone.
        return ucol_getSortKey(rootCollator(), unitsOf(text_), lengthOf(text_), &key, 1) <= 1;
    }

    [[nodiscard]] bool standsIn(const QString& text, const std::optional<QString>& folded) {
        if (folded_ && folded) return folded->contains(*folded_);
        return !text.isEmpty() && search(text);
    }

private:
    bool search(const QString& text) {
        UErrorCode error = U_ZERO_ERROR;
        if (!search_) {
            search_.reset(usearch_openFromCollator(unitsOf(text_), lengthOf(text_), unitsOf(text), lengthOf(text),
                                                   rootCollator(), nullptr, &error));
        } else {
            usearch_setText(search_.get(), unitsOf(text), lengthOf(text), &error);
        }
        const int32_t place = U_SUCCESS(error) ? usearch_first(search_.get(), &error) : USEARCH_DONE;
        return U_SUCCESS(error) && place != USEARCH_DONE;
    }

    QString text_;
    std::optional<QString> folded_;
    Search search_;  // made at the first text that needs it
};

TextSearch::TextSearch(const QString& words) {
    if (rootCollator() == nullptr) qFatal("ICU's collation data are missing");
    for (const QString& text : words.simplified().split(u' ', Qt::SkipEmptyParts)) {
        auto word = std::make_unique<Word>(text);
        if (!word->empty()) words_.push_back(std::move(word));
    }
}

TextSearch::~TextSearch() = default;

bool TextSearch::fits(const QString& one, const QString& other) const {
    if (empty()) return true;
    const auto first = folding().folded(one);
    const auto second = folding().folded(other);
    return std::all_of(words_.begin(), words_.end(),
                       [&](const auto& word) { return word->standsIn(one, first) || word->standsIn(other, second); });
}

}  // namespace oku
