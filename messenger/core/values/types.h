#pragma once

#include <cstdint>
#include <memory>
#include <QDateTime>
#include <QHash>
#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVariant>

/// The values that the messenger's core hands to its user interfaces. All are plain and copied freely; JIDs are bare
/// and lower case unless a field says otherwise.
namespace oku {

/// A status as the host and the plugin number it.
enum class Status : std::uint32_t { online = 1, chat, dnd, away, xa, invisible, offline, error };

/// `online` `chat` `dnd` `away` `xa` `invisible` `offline` `error`.
QString statusWord(Status status);
/// The inverse; `ok` (may be null) tells whether the word is one of them. An unknown word gives `online`.
Status statusFromWord(const QString& word, bool* ok = nullptr);

/// How far an account's connection has come. `online` means that the roster is complete.
enum class ConnectionState { offline, connecting, connected, encrypted, authorized, online };

/// The same word as the enumerator's.
QString connectionStateWord(ConnectionState state);

/// One account. `jid` is empty for the default account while nobody has set it up.
struct Account {
    QString jid;
    QString settingsPath;
    ConnectionState connection = ConnectionState::offline;
    Status status = Status::offline;
    QString description;
    bool encrypted = false;  ///< the connection is, by TLS
};

/// One online resource of a contact.
struct Resource {
    QString name;
    Status status = Status::offline;
    int priority = 0;
    QString description;
    QDateTime changed;
    quint64 order = 0;  ///< grows from one presence to the next, where two have the same time
};

/// One entry of an account's contact list. `status` and `description` are those of the resource with the highest
/// priority (the newest among equals), and offline without a resource. Of more than 64 resources the newest are kept.
struct Contact {
    QString jid;
    QString name;
    QString group;
    QString subscription;  ///< `none` `from` `to` `both`, or empty while the server has not told it
    bool waiting = false;  ///< we asked for its presence and wait for the answer
    Status status = Status::offline;
    QString description;
    QList<Resource> resources;
    int unread = 0;
};

enum class MessageKind { chat, normal };
enum class Direction { in, out };

/// Where an outgoing message is. `unconfirmed`: it was handed to a connection that then died.
/// `cancelled` is one that was taken back while it waited; it is in no history any more.
enum class DeliveryState { received, queued, sent, unconfirmed, failed, cancelled };

/// The same word as the enumerator's.
QString deliveryStateWord(DeliveryState state);

/// One message, as it stands in the history.
struct Message {
    qint64 number = 0;  ///< its key in the history, unique for the profile
    QString account;    ///< bare JID
    QString contact;    ///< bare JID of the other side
    QString resource;   ///< of the sender, when it is known
    Direction direction = Direction::in;
    QString subject;
    QString body;
    MessageKind kind = MessageKind::chat;
    QDateTime time;     ///< when it came here, or was written here
    QDateTime delayed;  ///< when it was written, for a message that came late; else invalid
    DeliveryState state = DeliveryState::received;
    bool failed = false;  ///< an incoming notice that a message of ours was not delivered
};

enum class BoxStyle { error, warning, information, question };
enum class BoxButton { ok = 1, yes = 6, no = 7 };

/// The same word as the enumerator's.
QString boxStyleWord(BoxStyle style);

/// A message box of the plugin that waits for Messenger::answerBox.
struct MessageBox {
    int number = 0;
    QString text;
    QString title;
    BoxStyle style = BoxStyle::information;
};

/// One item of a menu of the plugin.
struct MenuItem {
    QString id;
    QString parent;
    QString caption;
    QString icon;
    int order = 0;
    bool separator = false;
};

/// One line of the log. Secrets are masked already.
struct LogLine {
    int level = 0;  ///< as OKU_LOG_ in host/oku/log.h: 0 errors, 1 warnings, 2 reconnection, 5 trace, 6 ping
    QString tag;
    QString text;
};

/// What became of a bad certificate (Messenger::certificateRefused).
struct CertificateProblem {
    QString host;
    QString reason;
    QString fingerprint;  ///< SHA-256, hexadecimal, colons between bytes
};

/// What is known of one resource of a contact (Messenger::requestInfo).
struct ContactInfo {
    QString jid;
    Resource resource;
    QString client;
    QString version;
    QString os;
    QStringList features;
};

/// What the account's server tells of itself (Messenger::requestServerInfo).
struct ServerInfo {
    QString domain;
    QStringList identities;  ///< `category/type name`
    QStringList features;
};

/// A status window that the plugin asked for: the person picks status, description and protection, and the answer
/// goes to Messenger::confirmStatusWindow.
struct StatusWindow {
    QString title;
    QList<Status> choices;
    Status status = Status::online;
    QString description;
    bool protect = false;  ///< keep the description when the host sets a status
};

}  // namespace oku

Q_DECLARE_METATYPE(oku::Contact)
Q_DECLARE_METATYPE(oku::Message)
Q_DECLARE_METATYPE(oku::MessageBox)
Q_DECLARE_METATYPE(oku::LogLine)
