// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/talk/plain_display.h"

#include <utility>

namespace oku::terminal {
namespace {

constexpr int kEndless = 1 << 20;
constexpr qsizetype kLongestLine = 1 << 20;
constexpr QByteArrayView kPasteBegins = "\x1B[200~";
constexpr QByteArrayView kPasteEnds = "\x1B[201~";

}  // namespace

PlainDisplay::PlainDisplay(MessengerFace& messenger, SessionOptions options, Colours colours, int columns, int input,
                           Writer write, std::function<void()> onEnded)
    : colours_(colours),
      columns_(columns),
      inputDescriptor_(input),
      write_(std::move(write)),
      onEnded_(std::move(onEnded)),
      session_(messenger, *this, std::move(options)) {}

void PlainDisplay::feed(const QByteArray& bytes) {
    input_ += bytes;
    const bool isCut = input_.size() > taken_ && !input_.endsWith('\n');
    const bool isTooLong = input_.size() - taken_ > kLongestLine && input_.indexOf('\n', taken_) < 0;
    if (isCut && (bytes.isEmpty() || isTooLong)) input_ += '\n';
    while (auto line = nextLine()) takeLine(std::move(*line));
    if (bytes.isEmpty()) session_.quit();
}

// Each line is taken away before it is run: what is fed while it holds this call goes on behind it. What was run stays
// in front until the last line was taken: moved up for each of them, a large piece would be copied over and over.
std::optional<QByteArray> PlainDisplay::nextLine() {
    const qsizetype end = input_.indexOf('\n', taken_);
    if (end < 0) {
        input_.remove(0, std::exchange(taken_, 0));
        return std::nullopt;
    }
    const qsizetype start = std::exchange(taken_, end + 1);
    QByteArray line = input_.mid(start, end - start);
    if (line.endsWith('\r')) line.chop(1);
    return line;
}

QByteArray PlainDisplay::markPastes() { return "\x1B[?2004h"; }
QByteArray PlainDisplay::leavePastes() { return "\x1B[?2004l"; }

// A pasted text of several lines is one message, and no command whatever it begins with.
void PlainDisplay::takeLine(QByteArray line) {
    if (pieces_.isEmpty()) beginsPasted_ = pasting_ || line.startsWith(kPasteBegins);
    for (qsizetype at = 0; at >= 0;) {
        at = line.indexOf(pasting_ ? kPasteEnds : kPasteBegins, at);
        if (at < 0) break;
        line.remove(at, kPasteBegins.size());
        pasting_ = !pasting_;
    }
    pieces_ += line;
    if (pasting_ && pieces_.size() < kLongestLine) {
        pieces_ += '\n';
        return;
    }
    // A paste that is too long for one message becomes several; what follows is pasted as well.
    QString text = QString::fromUtf8(std::exchange(pieces_, {}));
    const bool severalLines = text.contains(u'\n');
    if (severalLines && beginsPasted_ && text.startsWith(u'/') && !session_.secret().wanted()) text.prepend(u'/');
    session_.submit(text);
}

int PlainDisplay::columns() const { return columns_ == 0 ? 80 : columns_; }

void PlainDisplay::appended(const LogEntry& entry) {
    LogLayout layout = session_.view().layout();
    layout.columns = columns_ == 0 ? kEndless : columns_;
    QByteArray bytes;
    for (const Line& line : layOut(entry, layout)) bytes += paint(line, colours_) + '\n';
    write_(bytes);
}

void PlainDisplay::changed() {
    if (session_.secret().wanted() == static_cast<bool>(noEcho_)) return;
    if (session_.secret().wanted()) {
        noEcho_ = std::make_unique<NoEcho>(inputDescriptor_);
        write_(session_.view().prompt().toUtf8() + '\n');
    } else {
        noEcho_.reset();
    }
}

}  // namespace oku::terminal
