// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/net/system_resolver.h"

#include <algorithm>
#include <QDnsLookup>
#include <QHostInfo>
#include <QMetaObject>
#include <QUrl>

namespace oku::net {

namespace {

constexpr qsizetype kLongestName = 255;

SrvAnswer readAnswer(const QDnsLookup& lookup) {
    SrvAnswer answer;
    for (const QDnsServiceRecord& record : lookup.serviceRecords()) {
        const QString target = record.target();
        if (target.isEmpty() || target == QLatin1String(".")) {
            answer.refused = true;
        } else if (record.port() != 0) {
            answer.targets.append({target, record.port(), record.priority(), record.weight()});
        }
    }
    answer.refused = answer.refused && answer.targets.isEmpty();
    return answer;
}

}  // namespace

QString asciiName(const QString& name) {
    QString bare = name;
    if (bare.startsWith(u'[') && bare.endsWith(u']')) bare = bare.mid(1, bare.size() - 2);
    if (bare.endsWith(u'.')) bare.chop(1);
    if (!QHostAddress(bare).isNull()) return bare;
    QStringList service;
    while (bare.startsWith(u'_') && bare.contains(u'.')) {
        service.append(bare.section(u'.', 0, 0));
        bare = bare.section(u'.', 1);
    }
    const QString ascii = QString::fromLatin1(QUrl::toAce(bare));
    service.append(ascii);
    const QString whole = service.join(u'.');
    const bool sound = !ascii.isEmpty() && whole.size() <= kLongestName &&
                       std::all_of(whole.begin(), whole.end(), [](QChar c) { return c > u' ' && c < u'\x7f'; });
    return sound ? whole : QString();
}

void SystemResolver::srv(const QString& name, QObject* context, std::function<void(SrvAnswer)> done) {
    auto* lookup = new QDnsLookup(QDnsLookup::SRV, asciiName(name), context);
    QObject::connect(
        lookup, &QDnsLookup::finished, context,
        [lookup, done = std::move(done)] {
            lookup->deleteLater();
            done(readAnswer(*lookup));
        },
        Qt::QueuedConnection);
    lookup->lookup();
}

void SystemResolver::addresses(const QString& host, QObject* context, std::function<void(QList<QHostAddress>)> done) {
    QHostInfo::lookupHost(asciiName(host), context,
                          [done = std::move(done)](const QHostInfo& info) { done(info.addresses()); });
}

}  // namespace oku::net
