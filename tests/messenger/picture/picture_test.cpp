// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/picture/picture.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <unistd.h>
#include <cerrno>
#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QProcess>
#include <QTemporaryDir>
#include <QtEndian>
#include <QThread>

namespace oku::picture {
namespace {

struct Result {
    int code = -1;
    QByteArray output;
    QImage image() const { return QImage::fromData(output, "PNG"); }
};

Result read(const QByteArray& content, const QString& side = QStringLiteral("192")) {
    QProcess program;
    program.start(QStringLiteral(PICTURE_PROGRAM), {side});
    program.write(content);
    program.closeWriteChannel();
    if (!program.waitForFinished(-1) || program.exitStatus() != QProcess::NormalExit) return {};
    return {program.exitCode(), program.readAllStandardOutput()};
}

bool isNone(const QByteArray& content) {
    const Result result = read(content);
    return result.code == 1 && result.output.isEmpty();
}

QImage points(int width, int height, QImage::Format format = QImage::Format_RGB32) {
    QImage image(width, height, format);
    image.fill(QColor(200, 100, 50));
    for (int x = 0; x < std::min(width, height); ++x) image.setPixelColor(x, x, QColor(x % 256, 255, 0));
    return image;
}

QByteArray encoded(const QImage& image, const char* format = "PNG") {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(QImageWriter(&buffer, format).write(image));
    return buffer.data();
}

/// A PNG that says it has these sides; nobody looks at sums before they are believed.
QByteArray saying(QByteArray png, quint32 width, quint32 height) {
    qToBigEndian(width, png.data() + 16);
    qToBigEndian(height, png.data() + 20);
    return png;
}

const QByteArray kGif = QByteArray::fromBase64("R0lGODlhAgABAPAAAP8AAAAA/yH5BAAAAAAALAAAAAACAAEAAAICRAoAOw==");

TEST(Picture, EachFormatBecomesASmallPng) {
    for (const char* format : {"PNG", "JPEG", "BMP"}) {
        const Result result = read(encoded(points(400, 300), format));
        EXPECT_EQ(result.code, 0) << format;
        EXPECT_EQ(result.image().size(), QSize(192, 144)) << format;
    }
    const Result gif = read(kGif);
    EXPECT_EQ(gif.image().size(), QSize(2, 1));
    EXPECT_EQ(gif.image().pixelColor(0, 0), QColor(255, 0, 0));
    if (!QImageWriter::supportedImageFormats().contains("webp")) return;
    EXPECT_EQ(read(encoded(points(400, 300), "webp")).image().size(), QSize(192, 144));
}

TEST(Picture, SidesStayInProportion) {
    EXPECT_EQ(read(encoded(points(300, 400))).image().size(), QSize(144, 192));
    EXPECT_EQ(read(encoded(points(4096, 1))).image().size(), QSize(192, 1));
    EXPECT_EQ(read(encoded(points(64, 48))).image().size(), QSize(64, 48)) << "it is not made larger";
    EXPECT_EQ(read(encoded(points(64, 48)), QStringLiteral("16")).image().size(), QSize(16, 12));
}

TEST(Picture, WhatIsTransparentStaysSo) {
    QImage image(10, 10, QImage::Format_ARGB32);
    image.fill(QColor(0, 0, 0, 0));
    EXPECT_EQ(read(encoded(image)).image().pixelColor(5, 5).alpha(), 0);
}

TEST(Picture, OneMadeHereComesOutAsItWentIn) {
    for (const auto format : {QImage::Format_RGB32, QImage::Format_ARGB32, QImage::Format_Indexed8}) {
        const QByteArray once = read(encoded(points(400, 300).convertToFormat(format))).output;
        EXPECT_FALSE(once.isEmpty());
        EXPECT_EQ(read(once).output, once);
    }
}

TEST(Picture, OnlyPointsGetThrough) {
    QImage image = points(30, 20);
    image.setText(QStringLiteral("Author"), QStringLiteral("somebody at home"));
    const QByteArray content = encoded(image);
    ASSERT_TRUE(content.contains("somebody"));
    EXPECT_FALSE(read(content).output.contains("somebody"));
    EXPECT_FALSE(read(content + "somebody behind it").output.contains("somebody"));
}

TEST(Picture, TheLargestIsReadAndNoLarger) {
    EXPECT_EQ(read(encoded(points(4096, 4096))).image().size(), QSize(192, 192));
    EXPECT_TRUE(isNone(encoded(points(4097, 1))));
    EXPECT_TRUE(isNone(encoded(points(1, 4097))));
    EXPECT_TRUE(isNone(saying(encoded(points(10, 10)), 30000, 30000)));
    EXPECT_TRUE(isNone(saying(encoded(points(10, 10)), 0, 10)));
    QByteArray padded = encoded(points(10, 10));
    padded.resize(4 << 20, 'x');
    EXPECT_FALSE(isNone(padded));
    EXPECT_TRUE(isNone(padded + 'x'));
}

TEST(Picture, WhatIsCutIsNone) {
    const QByteArray whole = encoded(points(100, 100));
    for (const qsizetype length : {0, 1, 7, 8, 20, 33, 60}) EXPECT_TRUE(isNone(whole.left(length))) << length;
    EXPECT_TRUE(isNone(whole.left(whole.size() / 2)));
    EXPECT_TRUE(isNone(saying(encoded(points(10, 10)), 4096, 4096)));
}

TEST(Picture, WhatIsNoPictureIsNone) {
    for (const char* text :
         {"text", "BM", "GIF89a", "RIFF", "RIFF....WEBP", "\xff\xd8\xff", "<svg xmlns='http://www.w3.org/2000/svg'/>",
          "P6 1 1 255 abc", "#define a_width 1\n#define a_height 1\nstatic char a_bits[] = {0};"})
        EXPECT_TRUE(isNone(text)) << text;
    QByteArray random(1 << 20, 'x');
    for (qsizetype at = 0; at < random.size(); ++at) random[at] = static_cast<char>(at * 7919 >> 3);
    for (const char* begin : {"\x89PNG\r\n\x1a\n", "\xff\xd8\xff\xe0", "GIF89a", "BM", "RIFFxxxxWEBP"}) {
        const Result result = read(begin + random);
        EXPECT_TRUE(result.code == 0 || (result.code == 1 && result.output.isEmpty())) << begin;
    }
    for (const char* format : {"ppm", "xpm", "ico"}) EXPECT_TRUE(isNone(encoded(points(10, 10), format))) << format;
}

TEST(Picture, AnEndlessOneIsNone) {
    QProcess program;
    program.setStandardInputFile(QStringLiteral("/dev/zero"));
    program.start(QStringLiteral(PICTURE_PROGRAM), {QStringLiteral("192")});
    ASSERT_TRUE(program.waitForFinished(-1));
    EXPECT_EQ(program.exitCode(), 1);
}

TEST(Picture, TheCallHasToBeRight) {
    for (const char* side : {"0", "-1", "513", "x", ""})
        EXPECT_EQ(read("x", QString::fromLatin1(side)).code, 2) << side;
    QProcess program;
    program.start(QStringLiteral(PICTURE_PROGRAM), QStringList());
    ASSERT_TRUE(program.waitForFinished(-1));
    EXPECT_EQ(program.exitCode(), 2);
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// It has given everything up while it still waits for its first byte.
TEST(Picture, NothingIsReadBeforeAllIsGivenUp) {
    QProcess program;
    program.start(QStringLiteral(PICTURE_PROGRAM), {QStringLiteral("192")});
    ASSERT_TRUE(program.waitForStarted(-1));
    const QString folder = QStringLiteral("/proc/%1/").arg(program.processId());
    const auto limit = [&folder](const char* name) {
        for (const QByteArray& line : contentOf(folder + QStringLiteral("limits")).split('\n'))
            if (line.startsWith(name)) return line.mid(26).simplified().split(' ').value(0);
        return QByteArray();
    };
    while (limit("Max open files") != "0" && program.state() == QProcess::Running) QThread::usleep(1000);
    EXPECT_EQ(limit("Max core file size"), "0");
    EXPECT_EQ(limit("Max cpu time"), "10");
    program.write(encoded(points(10, 10)));
    program.closeWriteChannel();
    ASSERT_TRUE(program.waitForFinished(-1));
    EXPECT_EQ(program.exitCode(), 0);
}

/// Whether calls can be filtered here: a system that can looks for the filter first, and finds none.
bool callsAreFiltered() {
#if defined(__x86_64__) || defined(__aarch64__)
    return prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, nullptr) != 0 && errno == EFAULT;
#else
    return false;
#endif
}

TEST(Confinement, NothingCanBeOpened) {
    const QTemporaryDir folder;
    QProcess probe;
    probe.setWorkingDirectory(folder.path());
    probe.start(QStringLiteral(CONFINED_PROBE), QStringList());
    ASSERT_TRUE(probe.waitForFinished(-1));
    const QByteArray told = '\n' + probe.readAllStandardOutput();
    for (const char* what : {"descriptor from before", "file", "new file", "socket", "local socket", "duplicate"})
        EXPECT_TRUE(told.contains('\n' + QByteArray(what) + " no\n")) << what << '\n' << told.constData();
    EXPECT_TRUE(told.contains("\nthread yes\n")) << "Qt scales by several";
#if !defined(__SANITIZE_ADDRESS__)
    EXPECT_TRUE(told.contains("\nmemory no\n"));
#endif
    EXPECT_FALSE(QFile::exists(folder.filePath(QStringLiteral("probe-was-here"))));
    // What the filter adds. Where calls are not filtered the probe can do all of that, so nothing else forbids it.
    const bool filtered = callsAreFiltered();
    for (const char* what : {"fork", "signal", "look", "remove"})
        EXPECT_TRUE(told.contains('\n' + QByteArray(what) + (filtered ? " no\n" : " yes\n")))
            << what << told.constData();
    EXPECT_EQ(told.contains("\nprogram no\n"), filtered) << told.constData();
    EXPECT_EQ(QFile::exists(folder.filePath(QStringLiteral("probe-stays"))), filtered);
}

}  // namespace
}  // namespace oku::picture
