// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/net/stream_reader.h"

#include <utility>

namespace oku::net {

namespace {

/// Whether the element is called "proceed", under whatever prefix and in whatever namespace: the plugin looks at
/// neither before it asks for TLS.
bool isProceed(QByteArrayView element) {
    qsizetype end = 1;
    while (end < element.size() && !QByteArrayView(" \t\r\n/>").contains(element[end])) ++end;
    const QByteArrayView name = element.sliced(1, end - 1);
    return name == "proceed" || name.endsWith(":proceed");
}

}  // namespace

/// The state of one add(): pieces so far, and where in the kept bytes the next one begins.
struct StreamReader::Cut {
    QList<Piece> pieces;
    qsizetype start = 0;
    qsizetype elementStart = 0;
    std::optional<StreamFault> fault;

    void pieceUpTo(const QByteArray& bytes, qsizetype end, bool ends = false) {
        if (end > start) pieces.append({bytes.mid(start, end - start), std::exchange(fault, std::nullopt), ends});
        start = qMax(start, end);
    }
};

QList<Piece> StreamReader::add(const QByteArray& bytes) {
    if (bytes.isEmpty()) return {};
    if (closedInClear_) return {};
    if (ended_) return {{bytes, std::nullopt, false}};
    qsizetype position = kept_.size();
    kept_ += bytes;
    if (proceedSeen_) return {};

    Cut cut;
    bool marked = false;
    for (bool more = true; more;) {
        const ElementScanner::Mark mark = scanner_.next(kept_, position);
        marked = marked || mark != ElementScanner::Mark::None;
        switch (mark) {
            case ElementScanner::Mark::None:
                more = false;
                break;
            case ElementScanner::Mark::Open:
                cut.elementStart = position - 1;
                break;
            case ElementScanner::Mark::Header:
                break;
            case ElementScanner::Mark::Element:
                more = onElement(cut, position);
                break;
            case ElementScanner::Mark::End:
                onEnd(cut, position);
                more = false;
                break;
        }
    }
    if (marked) passing_ = false;
    if (!proceedSeen_) {
        const bool all = ended_ || passing_ || scanner_.atRest();
        cut.pieceUpTo(kept_, all ? kept_.size() : cut.elementStart);
    }
    kept_.remove(0, cut.start);
    if (kept_.size() > limit_ && !proceedSeen_) cut.pieces.append({release(), std::nullopt, false});
    return cut.pieces;
}

bool StreamReader::onElement(Cut& cut, qsizetype end) {
    const QByteArray& name = scanner_.name();
    const QByteArrayView element = QByteArrayView(kept_).sliced(cut.elementStart, end - cut.elementStart);
    if (name == "stream:error" || name == "failure") {
        if (auto fault = readFault(element)) cut.fault = std::move(fault);
    } else if (inClear_ && isProceed(element)) {
        cut.pieceUpTo(kept_, end);
        proceedSeen_ = true;
        return false;
    }
    return true;
}

void StreamReader::onEnd(Cut& cut, qsizetype end) {
    cut.pieceUpTo(kept_, cut.elementStart);
    const QByteArrayView tag = QByteArrayView(kept_).sliced(cut.elementStart, end - cut.elementStart);
    closedInClear_ = inClear_ && tag.startsWith("</stream:stream");
    if (closedInClear_) kept_.truncate(end);
    cut.pieceUpTo(kept_, kept_.size(), true);
    ended_ = true;
}

QByteArray StreamReader::release() {
    passing_ = !scanner_.atRest();
    return std::exchange(kept_, QByteArray());
}

}  // namespace oku::net
