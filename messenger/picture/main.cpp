// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// oku-picture SIDE < a picture of anybody's > a PNG of at most SIDE by SIDE points
//
// The messenger has pictures from outside read by this program, so that one that breaks the reader breaks nothing else:
// then there is no picture. It gives up all that it does not need before it reads the first byte (confinement.h says
// what holds); what it was given comes by standard input, so it opens nothing. Exit status 0 with the picture, 1
// without one, 2 for a wrong call.

#include <unistd.h>
#include <cerrno>
#include <QByteArray>
#include <QThreadPool>

#include "messenger/picture/confinement.h"
#include "messenger/picture/picture.h"

namespace {

using namespace oku::picture;

constexpr int kNoPicture = 1;
constexpr int kWrongCall = 2;
constexpr int kThreads = 2;  // each has a stack, and memory is limited

/// All of the input, or one byte more than a picture may have.
QByteArray readInput() {
    QByteArray content;
    QByteArray piece(64 << 10, Qt::Uninitialized);
    while (content.size() <= kMostBytes) {
        const ssize_t length = ::read(STDIN_FILENO, piece.data(), static_cast<std::size_t>(piece.size()));
        if (length < 0 && errno == EINTR) continue;
        if (length <= 0) return length == 0 ? content : QByteArray();
        content.append(piece.constData(), length);
    }
    return content;
}

bool writeOutput(QByteArrayView content) {
    while (!content.isEmpty()) {
        const ssize_t length = ::write(STDOUT_FILENO, content.data(), static_cast<std::size_t>(content.size()));
        if (length < 0 && errno == EINTR) continue;
        if (length <= 0) return false;
        content = content.sliced(length);
    }
    return true;
}

int run(int count, char** arguments) {
    const int side = count == 2 ? QByteArray(arguments[1]).toInt() : 0;
    if (side < 1 || side > kLargestSide) return kWrongCall;
    QThreadPool::globalInstance()->setMaxThreadCount(kThreads);
    loadFormats();
    if (!confine()) return kNoPicture;
    const QByteArray png = smallPng(readInput(), side);
    return !png.isEmpty() && writeOutput(png) ? 0 : kNoPicture;
}

}  // namespace

// Nothing is tidied up at the end: it takes time, and calls that are given up.
int main(int count, char** arguments) { _exit(run(count, arguments)); }
