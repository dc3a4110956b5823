// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/core/roster/contact_file.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QJsonDocument>
#include <utility>

#include "messenger/core/storage/private_file.h"

namespace oku {
namespace {

constexpr int kSaveDelay = 500;    // milliseconds from the first change that is not written
constexpr int kRetryDelay = 2000;  // milliseconds after a write that failed

}  // namespace

ContactFile::ContactFile(QString path, std::function<QByteArray()> content, QObject* parent)
    : QObject(parent), path_(std::move(path)), content_(std::move(content)) {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, [this] {
        if (!held_) save();
    });
}

QJsonArray ContactFile::load() {
    QFile file(path_);
    if (path_.isEmpty() || !file.exists()) return {};
    QJsonDocument document;
    if (file.open(QIODevice::ReadOnly)) document = QJsonDocument::fromJson(file.readAll());
    known_ = document.isArray() && file.error() == QFile::NoError;
    if (known_) return document.array();
    setAside();
    return {};
}

// What is written next takes its place.
void ContactFile::setAside() {
    const QString stamp = QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"));
    const QString aside = path_ + QStringLiteral(".damaged-") + stamp;
    emit noticed(
        QFile::rename(path_, aside)
            ? QCoreApplication::translate("ContactList",
                                          "Listy kontaktów %1 nie można odczytać; plik został zachowany jako %2.")
                  .arg(path_, aside)
            : QCoreApplication::translate("ContactList", "Listy kontaktów %1 nie można odczytać ani odłożyć na bok.")
                  .arg(path_));
}

void ContactFile::change() {
    dirty_ = true;
    schedule();
}

void ContactFile::schedule() {
    if (!path_.isEmpty() && !timer_.isActive()) timer_.start(kSaveDelay);
}

void ContactFile::setHeld(bool held) {
    held_ = held;
    // What was due meanwhile was not written.
    if (!held && dirty_) schedule();
}

void ContactFile::save() {
    timer_.stop();
    if (!dirty_ || path_.isEmpty()) return;
    const QString reason = replaceFile(path_, content_());
    known_ = true;
    dirty_ = !reason.isEmpty();
    if (dirty_) timer_.start(kRetryDelay);
    if (dirty_ && !failureTold_) {
        emit noticed(QCoreApplication::translate("ContactList",
                                                 "Nie można zapisać listy kontaktów w pliku %1: %2. Dawny plik "
                                                 "zostaje, zapis będzie ponawiany.")
                         .arg(path_, reason));
    }
    failureTold_ = dirty_;
}

}  // namespace oku
