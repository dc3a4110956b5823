// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/windows/links.h"

#include <QCoreApplication>
#include <QProcess>
#include <QScopeGuard>
#include <QUrl>
#include <utility>

#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"

namespace oku {
namespace {

constexpr qsizetype kLongestAddress = 4096;

/// The address as a program can be given it; empty for one that is none or that could start anything else.
QString safeAddress(const QString& address) {
    if (address.size() > kLongestAddress) return {};
    const QUrl url(address.trimmed(), QUrl::StrictMode);
    const QString scheme = url.scheme();
    const bool web = scheme == QLatin1String("http") || scheme == QLatin1String("https");
    const bool other = scheme == QLatin1String("mailto") || scheme == QLatin1String("xmpp");
    const bool complete = web ? !url.host().isEmpty() : other && !url.path().isEmpty();
    return url.isValid() && complete ? QString::fromLatin1(url.toEncoded()) : QString();
}

/// The system's program gets no part of this one's terminal.
bool openBySystem(const QString& address) {
    QProcess program;
    program.setProgram(QStringLiteral("xdg-open"));
    program.setArguments({address});
    program.setStandardInputFile(QProcess::nullDevice());
    program.setStandardOutputFile(QProcess::nullDevice());
    program.setStandardErrorFile(QProcess::nullDevice());
    return program.startDetached();
}

}  // namespace

LinkService::LinkService(ServiceRegistry& services, LinkOpener opener, QObject* parent)
    : QObject(parent), opener_(opener ? std::move(opener) : LinkOpener(openBySystem)) {
    services.provide(u"UI/OpenLink", [this](OKU_WORD address, OKU_WORD) -> OKU_WORD {
        open(wideText(address));
        return 1;
    });
}

void LinkService::allowDuring(const std::function<void()>& request) {
    ++allowed_;
    const auto done = qScopeGuard([this] { --allowed_; });
    request();
}

// As an address, so that no name can be taken for an option of the program.
bool LinkService::openFile(const QString& path) {
    return opener_(QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded()));
}

void LinkService::open(const QString& address) {
    const QString safe = safeAddress(address);
    if (allowed_ > 0 && !safe.isEmpty() && opener_(safe)) return;
    const QString text = allowed_ == 0 || safe.isEmpty()
                             ? QCoreApplication::translate("Links", "Tego adresu nie otwarto: %1")
                             : QCoreApplication::translate("Links", "Nie ma programu, który otworzy adres: %1");
    emit noticed(text.arg(address.left(kLongestAddress)));
}

}  // namespace oku
