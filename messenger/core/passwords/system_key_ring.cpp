// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/passwords/key_ring.h"

#ifdef OKU_HAS_KEYCHAIN
#include <qt6keychain/keychain.h>
#include <QObject>
#endif

namespace oku {

#ifdef OKU_HAS_KEYCHAIN

namespace {

const QString kService = QStringLiteral("OKU");

class SystemKeyRing : public KeyRing {
public:
    void read(const QString& account, std::function<void(const QString&, const QString&)> done) override {
        auto* job = new QKeychain::ReadPasswordJob(kService, &jobs_);  // deletes itself
        job->setKey(account);
        QObject::connect(job, &QKeychain::Job::finished, &jobs_, [job, done = std::move(done)] {
            const bool ok = job->error() == QKeychain::NoError;
            done(ok ? job->textData() : QString(), ok ? QString() : job->errorString());
        });
        job->start();
    }

    void write(const QString& account, const QString& password, std::function<void(const QString&)> done) override {
        auto* job = new QKeychain::WritePasswordJob(kService, &jobs_);
        job->setKey(account);
        job->setTextData(password);
        QObject::connect(job, &QKeychain::Job::finished, &jobs_, [job, done = std::move(done)] {
            done(job->error() == QKeychain::NoError ? QString() : job->errorString());
        });
        job->start();
    }

    void remove(const QString& account, std::function<void(const QString&)> done) override {
        auto* job = new QKeychain::DeletePasswordJob(kService, &jobs_);
        job->setKey(account);
        QObject::connect(job, &QKeychain::Job::finished, &jobs_, [job, done = std::move(done)] {
            const bool gone = job->error() == QKeychain::NoError || job->error() == QKeychain::EntryNotFound;
            done(gone ? QString() : job->errorString());
        });
        job->start();
    }

private:
    QObject jobs_;  ///< owns what is under way
};

}  // namespace

std::shared_ptr<KeyRing> systemKeyRing() { return std::make_shared<SystemKeyRing>(); }

#else

std::shared_ptr<KeyRing> systemKeyRing() { return nullptr; }

#endif

}  // namespace oku
