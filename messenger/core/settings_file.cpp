#include "messenger/core/settings_file.h"

#include <optional>
#include <QDateTime>
#include <QFile>
#include <QSaveFile>
#include <QStringDecoder>

namespace oku {
namespace {

constexpr int kSaveDelay = 300;  // milliseconds from the first change that is not written

QString quoted(const QString& text) {
    QString result = QStringLiteral("\"");
    for (const QChar letter : text) {
        switch (letter.unicode()) {
            case u'"':
                result += QStringLiteral("\\\"");
                break;
            case u'\\':
                result += QStringLiteral("\\\\");
                break;
            case u'\n':
                result += QStringLiteral("\\n");
                break;
            case u'\r':
                result += QStringLiteral("\\r");
                break;
            case u'\t':
                result += QStringLiteral("\\t");
                break;
            case u'\0':
                result += QStringLiteral("\\0");
                break;
            default:
                result += letter;
        }
    }
    return result + u'"';
}

/// The text between the quotes; nothing when an escape is unknown or a quote stands bare.
std::optional<QString> unquoted(QStringView text) {
    QString result;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text[at] == u'"') return std::nullopt;
        if (text[at] != u'\\') {
            result += text[at];
            continue;
        }
        if (++at == text.size()) return std::nullopt;
        switch (text[at].unicode()) {
            case u'"':
                result += u'"';
                break;
            case u'\\':
                result += u'\\';
                break;
            case u'n':
                result += u'\n';
                break;
            case u'r':
                result += u'\r';
                break;
            case u't':
                result += u'\t';
                break;
            case u'0':
                result += QChar(u'\0');
                break;
            default:
                return std::nullopt;
        }
    }
    return result;
}

/// A bare word is taken as text, so that a file written by hand need not be exact.
std::optional<QVariant> parseValue(QStringView text) {
    if (text.startsWith(u'"')) {
        if (text.size() < 2 || !text.endsWith(u'"')) return std::nullopt;
        const auto inner = unquoted(text.mid(1, text.size() - 2));
        return inner ? std::optional<QVariant>(*inner) : std::nullopt;
    }
    bool isNumber = false;
    const qlonglong number = text.toLongLong(&isNumber);
    return isNumber ? QVariant(number) : QVariant(text.toString());
}

QString lineOf(const QString& key, const QVariant& value) {
    const bool isText = value.typeId() == QMetaType::QString;
    return key + QStringLiteral(" = ") + (isText ? quoted(value.toString()) : value.toString()) + u'\n';
}

/// Adds what a line says to `values`; false when it says nothing that can be read.
bool readLine(const QByteArray& bytes, QMap<QString, QVariant>& values) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString line = decoder(bytes);
    if (decoder.hasError() || line.contains(QChar(u'\0'))) return false;
    const QStringView trimmed = QStringView(line).trimmed();
    if (trimmed.isEmpty() || trimmed.startsWith(u'#')) return true;
    const qsizetype equals = trimmed.indexOf(u'=');
    const QStringView key = equals < 0 ? QStringView() : trimmed.left(equals).trimmed();
    const auto value = key.isEmpty() ? std::nullopt : parseValue(trimmed.mid(equals + 1).trimmed());
    if (value) values.insert(key.toString(), *value);
    return value.has_value();
}

}  // namespace

QByteArray settingsToBytes(const QMap<QString, QVariant>& values) {
    QString text;
    for (auto at = values.begin(); at != values.end(); ++at) text += lineOf(at.key(), *at);
    return text.toUtf8();
}

QMap<QString, QVariant> settingsFromBytes(const QByteArray& bytes, bool& ok) {
    ok = true;
    QMap<QString, QVariant> values;
    for (const QByteArray& line : bytes.split('\n')) ok = readLine(line, values) && ok;
    return values;
}

bool canBeSettingKey(const QString& key) {
    if (key.contains(u'\r')) return false;
    bool ok = false;
    const auto values = settingsFromBytes(lineOf(key, 0).toUtf8(), ok);
    return ok && values.size() == 1 && values.firstKey() == key;
}

QString unusableSettingKey(const QString& key) {
    return QCoreApplication::translate(
               "Settings",
               "\"%1\" nie może być nazwą ustawienia: nie może być pusta, zaczynać się od #, mieć "
               "odstępów na brzegach, znaku = ani końca wiersza.")
        .arg(key);
}

bool replaceFile(const QString& path, const QByteArray& content) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    // Before anything stands in it, and again after the rights of the old file were taken over.
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    return file.write(content) == content.size() && file.commit();
}

SettingsFile::SettingsFile(QString path, QObject* parent) : QObject(parent), path_(std::move(path)) {
    saveTimer_.setSingleShot(true);
    saveTimer_.setInterval(kSaveDelay);
    connect(&saveTimer_, &QTimer::timeout, this, &SettingsFile::write);
}

SettingsFile::~SettingsFile() { write(); }

void SettingsFile::read() {
    write();
    const auto remembered = valuesOffDisk();
    values_ = remembered;
    unreadable_ = false;
    QFile file(path_);
    if (!file.exists()) return;
    if (!file.open(QIODevice::ReadOnly)) {
        unreadable_ = true;
        emit noticed(QCoreApplication::translate("Settings", "Nie można odczytać ustawień z pliku %1: %2")
                         .arg(path_, file.errorString()));
        return;
    }
    bool ok = false;
    values_ = settingsFromBytes(file.readAll(), ok);
    values_.insert(remembered);
    file.close();
    if (!ok) setAside();
    if (ok || unreadable_ || valuesOnDisk().isEmpty()) return;
    // At once: until then no file stands in the place of the one that was put aside.
    dirty_ = true;
    write();
}

void SettingsFile::setAside() {
    const QString stamp = QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"));
    const QString aside = path_ + QStringLiteral(".damaged-") + stamp;
    unreadable_ = !QFile::rename(path_, aside);
    emit noticed(
        unreadable_
            ? QCoreApplication::translate("Settings", "Plik ustawień %1 jest uszkodzony i nie można go odłożyć na bok.")
                  .arg(path_)
            : QCoreApplication::translate("Settings", "Plik ustawień %1 jest uszkodzony; został zachowany jako %2.")
                  .arg(path_, aside));
}

bool SettingsFile::write() {
    saveTimer_.stop();
    if (!dirty_) return true;
    if (unreadable_ || !replaceFile(path_, settingsToBytes(valuesOnDisk()))) {
        if (!failureTold_) {
            emit noticed(QCoreApplication::translate("Settings", "Nie można zapisać ustawień w pliku %1.").arg(path_));
        }
        failureTold_ = true;
        return false;
    }
    failureTold_ = false;
    dirty_ = false;
    return true;
}

qlonglong SettingsFile::number(const QString& key, qlonglong fallback) const {
    bool ok = false;
    const qlonglong number = values_.value(key).toLongLong(&ok);
    return ok ? number : fallback;
}

bool SettingsFile::set(const QString& key, const QVariant& value) {
    if (!canBeSettingKey(key)) return false;
    QVariant kept;
    if (value.isValid()) {
        const int type = value.typeId();
        const bool isText = type == QMetaType::QString || !value.canConvert<qlonglong>();
        kept = isText ? QVariant(value.toString()) : QVariant(value.toLongLong());
    }
    if (values_.value(key) == kept && values_.contains(key) == kept.isValid()) return true;
    if (kept.isValid()) {
        values_.insert(key, kept);
    } else {
        values_.remove(key);
    }
    changedNow();
    emit changed(key);
    return true;
}

void SettingsFile::changedNow() {
    dirty_ = true;
    if (!saveTimer_.isActive()) saveTimer_.start();
}

void SettingsFile::keepOffDisk(const QString& key, bool off) {
    if (offDisk_.contains(key) == off) return;
    if (off) {
        offDisk_.insert(key);
    } else {
        offDisk_.remove(key);
    }
    if (values_.contains(key)) changedNow();
}

QMap<QString, QVariant> SettingsFile::valuesOnDisk() const {
    auto values = values_;
    for (const QString& key : offDisk_) values.remove(key);
    return values;
}

QMap<QString, QVariant> SettingsFile::valuesOffDisk() const {
    QMap<QString, QVariant> values;
    for (const QString& key : offDisk_) {
        if (values_.contains(key)) values.insert(key, values_.value(key));
    }
    return values;
}

}  // namespace oku
