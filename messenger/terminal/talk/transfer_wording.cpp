// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/talk/transfer_wording.h"

#include <algorithm>
#include <array>
#include <QLocale>

#include "messenger/core/texts.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

constexpr int kBarCells = 20;
constexpr qint64 kWhole = 100;

// What came may be more than was announced.
qint64 percentOf(const Transfer& transfer) {
    if (transfer.size == 0) return kWhole;
    const double part = static_cast<double>(transfer.position) / static_cast<double>(transfer.size);
    return std::clamp(static_cast<qint64>(part * kWhole), qint64{0}, kWhole);
}

QChar arrowOf(const Transfer& transfer) { return transfer.direction == Direction::out ? u'↑' : u'↓'; }

Text textOf(TransferState state) {
    static constexpr std::array texts = {Text::FileNegotiating, Text::FileRunning, Text::FileDone,
                                         Text::FileIncomplete,  Text::FileFailed,  Text::FileCancelled};
    return texts.at(static_cast<std::size_t>(state));
}

}  // namespace

QString bytesText(qint64 bytes) {
    static constexpr std::array units = {"KiB", "MiB", "GiB", "TiB"};
    constexpr double step = 1024.0;
    if (bytes < 0) return say(Text::FileSizeUnknown);
    if (bytes < static_cast<qint64>(step)) return QStringLiteral("%1 B").arg(bytes);
    double amount = static_cast<double>(bytes) / step;
    std::size_t unit = 0;
    for (; amount >= step && unit + 1 < units.size(); ++unit) amount /= step;
    const QLocale locale(language() == Language::Polish ? QLocale::Polish : QLocale::C);
    return QStringLiteral("%1 %2").arg(locale.toString(amount, 'f', 1), QLatin1String(units[unit]));
}

QString durationText(qint64 seconds) {
    const auto two = [](qint64 number) { return QStringLiteral("%1").arg(number, 2, 10, QChar(u'0')); };
    constexpr qint64 minute = 60;
    constexpr qint64 hour = 60 * minute;
    if (seconds < hour) return QStringLiteral("%1:%2").arg(seconds / minute).arg(two(seconds % minute));
    return QStringLiteral("%1:%2:%3").arg(seconds / hour).arg(two(seconds % hour / minute), two(seconds % minute));
}

QString progressBar(const Transfer& transfer, int cells) {
    if (transfer.size < 0) return {};
    const qint64 percent = percentOf(transfer);
    const auto full = static_cast<qsizetype>(percent * cells / kWhole);
    return QStringLiteral("[%1%2] %3%").arg(QString(full, u'#'), QString(cells - full, u'·')).arg(percent);
}

QString progressText(const Transfer& transfer, int cells) {
    QStringList parts{progressBar(transfer, cells)};
    if (transfer.size < 0) parts = QStringList{bytesText(transfer.position)};
    if (transfer.speed > 0) parts << say(Text::FileSpeed, bytesText(transfer.speed));
    if (transfer.secondsLeft >= 0) parts << say(Text::FileTimeLeft, durationText(transfer.secondsLeft));
    return parts.join(u' ');
}

QString transferStateText(const Transfer& transfer) {
    if (transfer.state == TransferState::incomplete)
        return say(Text::FileIncomplete, bytesText(transfer.position), bytesText(transfer.size));
    const QString state = say(textOf(transfer.state));
    if (transfer.state == TransferState::done) return QStringLiteral("%1, %2").arg(state, bytesText(transfer.position));
    if (transfer.state == TransferState::running) return progressText(transfer, kBarCells);
    return transfer.text.isEmpty() ? state : QStringLiteral("%1: %2").arg(state, oneLine(transfer.text));
}

QString transferRow(const Transfer& transfer, const QString& name) {
    const QString file = transfer.name.isEmpty() ? say(Text::FileNameUnknown) : oneLine(transfer.name);
    return QStringLiteral("%1 %2 %3 (%4): %5")
        .arg(arrowOf(transfer))
        .arg(QString::number(transfer.number), file, name, transferStateText(transfer));
}

}  // namespace oku::terminal
