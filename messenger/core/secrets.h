#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace oku {

/// A piece of a stream with everything blotted out that must not be shown: the content of SASL elements, and of
/// passwords and registration forms. What is not well formed is shown up to the point where it breaks.
QByteArray maskedXml(const QByteArray& xml);

/// A log line without the given passwords, and with maskedXml() applied to XML in it.
QString maskedText(const QString& text, const QStringList& passwords);

}  // namespace oku
