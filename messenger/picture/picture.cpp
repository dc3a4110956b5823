// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/picture/picture.h"

#include <algorithm>
#include <QBuffer>
#include <QColorSpace>
#include <QImage>
#include <QImageReader>
#include <string_view>

namespace oku::picture {
namespace {

constexpr int kMostMemory = 128;  // MiB of one decoded picture: kMostPoints squared, with 8 bytes for each

/// How a file of each format begins. It decides: no other reader of Qt's is asked.
struct Format {
    const char* name;
    std::string_view begin;
    std::string_view behindSize = {};  ///< from the ninth byte on
};
constexpr Format kFormats[] = {
    {"png", {"\x89PNG\r\n\x1a\n", 8}},
    {"jpeg", {"\xff\xd8\xff", 3}},
    {"gif", {"GIF87a", 6}},
    {"gif", {"GIF89a", 6}},
    {"webp", {"RIFF", 4}, {"WEBP", 4}},
    {"bmp", {"BM", 2}},
};

const char* formatOf(const QByteArray& content) {
    const std::string_view bytes(content.constData(), static_cast<std::size_t>(content.size()));
    for (const Format& format : kFormats) {
        constexpr std::size_t kPlace = 8;
        if (!bytes.starts_with(format.begin)) continue;
        if (format.behindSize.empty() || bytes.substr(std::min(kPlace, bytes.size())).starts_with(format.behindSize))
            return format.name;
    }
    return nullptr;
}

/// Only the points, in one of two forms: no texts, no profile, no hint of where it came from.
QImage pointsOf(QImage image) {
    if (image.colorSpace().isValid()) image.convertToColorSpace(QColorSpace::SRgb);
    image = image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    if (image.isNull()) return image;
    return QImage(image.constBits(), image.width(), image.height(), image.bytesPerLine(), image.format()).copy();
}

}  // namespace

void loadFormats() {
    QImageReader::setAllocationLimit(kMostMemory);
    for (const Format& format : kFormats) {
        QBuffer nothing;
        nothing.open(QIODevice::ReadOnly);
        QImageReader reader(&nothing, format.name);
        reader.setAutoDetectImageFormat(false);
        static_cast<void>(reader.canRead());
    }
}

QByteArray smallPng(const QByteArray& content, int side) {
    const char* format = content.size() <= kMostBytes ? formatOf(content) : nullptr;
    if (format == nullptr) return {};
    QBuffer file;
    file.setData(content);
    file.open(QIODevice::ReadOnly);
    QImageReader reader(&file, format);
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > kMostPoints || size.height() > kMostPoints) return {};
    if (size.width() > side || size.height() > side)
        reader.setScaledSize(size.scaled(side, side, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    const QImage image = pointsOf(reader.read());
    if (image.isNull() || image.width() > side || image.height() > side) return {};
    QBuffer result;
    result.open(QIODevice::WriteOnly);
    return image.save(&result, "PNG") ? result.data() : QByteArray();
}

}  // namespace oku::picture
