// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/cards/picture_process.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTimer>
#include <utility>

#include "messenger/core/cards/picture_file.h"

namespace oku {
namespace {

constexpr qsizetype kMostOutput = 1 << 20;  // more than any PNG of that size has

/// What the process gets to know of the environment: where libraries are.
QProcessEnvironment environment() {
    const QProcessEnvironment whole = QProcessEnvironment::systemEnvironment();
    QProcessEnvironment some;
    for (const char* name : {"LD_LIBRARY_PATH", "LD_PRELOAD", "QT_PLUGIN_PATH", "ASAN_OPTIONS", "UBSAN_OPTIONS"}) {
        const QString variable = QString::fromLatin1(name);
        if (whole.contains(variable)) some.insert(variable, whole.value(variable));
    }
    // An empty one stands for the environment of this process.
    some.insert(QStringLiteral("LANG"), QStringLiteral("C.UTF-8"));
    return some;
}

}  // namespace

/// One process and what it has said so far.
class PictureProcess::Reading : public QObject {
public:
    Reading(PictureProcess& owner, Done done) : QObject(&owner), done_(std::move(done)) {
        process_.setProcessEnvironment(environment());
        process_.setStandardErrorFile(QProcess::nullDevice());
        connect(&process_, &QProcess::readyReadStandardOutput, this, [this] { take(); });
        connect(&process_, &QProcess::finished, this, [this](int code, QProcess::ExitStatus status) {
            take();
            finish(status == QProcess::NormalExit && code == 0);
        });
        connect(&process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart) finish(false);
        });
        patience_.setSingleShot(true);
        connect(&patience_, &QTimer::timeout, &process_, &QProcess::kill);
    }
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;
    // The process's own end waits for it, so nothing is left that it could wait for.
    ~Reading() override {
        process_.disconnect(this);
        process_.kill();
    }

    void start(const QString& program, const QByteArray& content, int patience) {
        patience_.start(patience);
        process_.start(program, {QString::number(kPictureSide)});
        process_.write(content);
        process_.closeWriteChannel();
    }

private:
    void take() {
        output_ += process_.readAllStandardOutput();
        if (output_.size() > kMostOutput) process_.kill();
    }

    void finish(bool good) {
        const Done done = std::exchange(done_, nullptr);
        if (!done) return;
        patience_.stop();
        deleteLater();
        // The process may have been in the hands of whoever made the picture.
        done(good && output_.size() <= kMostOutput && isSmallPng(output_) ? output_ : QByteArray());
    }

    Done done_;
    QProcess process_;
    QTimer patience_;
    QByteArray output_;
};

PictureProcess::PictureProcess(QString program, int patience, QObject* parent)
    : QObject(parent), program_(std::move(program)), patience_(patience) {}

PictureProcess::~PictureProcess() = default;

void PictureProcess::read(const QByteArray& content, Done done) {
    if (program_.isEmpty() || content.isEmpty() || content.size() > kLargestPictureFile) {
        QMetaObject::invokeMethod(
            this, [done = std::move(done)] { done({}); }, Qt::QueuedConnection);
        return;
    }
    // Its parent deletes it, or its end does. From the event loop, as a failure to start is told at once.
    auto* reading = new Reading(*this, std::move(done));  // NOLINT(cppcoreguidelines-owning-memory)
    QMetaObject::invokeMethod(
        reading, [this, reading, content] { reading->start(program_, content, patience_); }, Qt::QueuedConnection);
}

QString findPictureProgram(const QString& programDir) {
    for (const QString& folder : {programDir, programDir + u'/' + QStringLiteral(OKU_LIBEXEC_DIR_FROM_PROGRAM),
                                  QStringLiteral(OKU_LIBEXEC_DIR)}) {
        const QString path = QDir::cleanPath(folder + QStringLiteral("/oku-picture"));
        if (QFileInfo(path).isExecutable()) return path;
    }
    return {};
}

}  // namespace oku
