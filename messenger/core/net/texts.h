// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace oku::net {

/// The sentences of the socket layer, each a row of one table.
enum class Text {
    ClosedByPlugin,
    Conflict,
    CertificateRefused,
    NameNotFound,
    ServiceRefused,
    Unreachable,
    ProxyFailed,
    TlsFailed,
    ClosedByServer,
    Reset,
    LineDead,
    Stalled,
    BacklogFull,
    NetworkGone,
    Resumed,
    ProtocolBroken,
    ServerSaid,
    Paced,
    CertificateOverridden,
    Dialling,
    DiallingThroughProxy,
    LookingUp,
    LineRefused,
    LineTimeout,
    LineNoRoute,
    LineNoAddress,
    LineOther,
    CertificateUnknown,
    CertificateSelfSigned,
    CertificateExpired,
    CertificateTooEarly,
    CertificateRevoked,
    CertificateForOther,
    CertificateOther,
    ProxyNameNotFound,
    ProxyUnreachable,
    ProxySilent,
    ProxyClosed,
    ProxyNoSense,
    ProxyWantsLogin,
    ProxyLoginWrong,
    ProxyLoginUnusable,
    ProxyHostUnusable,
    ProxyRuleset,
    ProxyTargetUnreachable,
    ProxyTargetRefused,
    ProxyRefused,
    ProxyIdentd,
    ProxyNeedsIpv4,
    ProxyKindUnknown,
    PortUnusable,
    Count
};

/// The sentence in the user's language, with %1 and %2 filled in.
QString text(Text id, const QString& first = {}, const QString& second = {});

}  // namespace oku::net
