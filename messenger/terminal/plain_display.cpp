#include "messenger/terminal/plain_display.h"

#include <utility>

namespace oku::terminal {
namespace {

constexpr int kEndless = 1 << 20;
constexpr qsizetype kLongestLine = 1 << 20;

}  // namespace

PlainDisplay::PlainDisplay(Client& client, SessionOptions options, Colours colours, int columns, int input,
                           Writer write, std::function<void()> onEnded)
    : colours_(colours),
      columns_(columns),
      inputDescriptor_(input),
      write_(std::move(write)),
      onEnded_(std::move(onEnded)),
      session_(client, *this, std::move(options)) {}

void PlainDisplay::feed(const QByteArray& bytes) {
    input_ += bytes;
    if (bytes.isEmpty() && !input_.isEmpty()) input_ += '\n';
    if (input_.size() > kLongestLine && input_.indexOf('\n') < 0) input_ += '\n';
    for (qsizetype end = input_.indexOf('\n'); end >= 0; end = input_.indexOf('\n')) {
        QByteArray line = input_.left(end);
        input_.remove(0, end + 1);
        if (line.endsWith('\r')) line.chop(1);
        session_.submit(QString::fromUtf8(line));
    }
    if (bytes.isEmpty()) session_.quit();
}

int PlainDisplay::columns() const { return columns_ == 0 ? 80 : columns_; }

void PlainDisplay::appended(const LogEntry& entry) {
    LogLayout layout = session_.layout();
    layout.columns = columns_ == 0 ? kEndless : columns_;
    QByteArray bytes;
    for (const Line& line : layOut(entry, layout)) bytes += paint(line, colours_) + '\n';
    write_(bytes);
}

void PlainDisplay::changed() {
    if (session_.wantsSecret() == static_cast<bool>(noEcho_)) return;
    if (session_.wantsSecret()) {
        noEcho_ = std::make_unique<NoEcho>(inputDescriptor_);
        write_(session_.prompt().toUtf8() + '\n');
    } else {
        noEcho_.reset();
    }
}

}  // namespace oku::terminal
