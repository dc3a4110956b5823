// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>
#include <array>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTemporaryFile>

#include "tests/messenger/core/stage.h"

#include "messenger/core/transfers/file_server.h"

namespace oku::test {
namespace {

constexpr int kNever = 600'000;  // milliseconds

/// One that keeps its connection open whatever the server does: Qt's sockets close when the other side has.
class StubbornClient {
public:
    explicit StubbornClient(quint16 port) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        EXPECT_EQ(::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    }
    ~StubbornClient() { ::close(socket_); }
    StubbornClient(const StubbornClient&) = delete;
    StubbornClient& operator=(const StubbornClient&) = delete;

    void write(const QByteArray& bytes) const {
        EXPECT_EQ(::send(socket_, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL),
                  bytes.size());
    }
    /// What comes up to an empty line.
    [[nodiscard]] QByteArray header() const {
        QByteArray all;
        EXPECT_TRUE(waitFor([&] {
            std::array<char, 4096> piece;
            const ssize_t count = ::recv(socket_, piece.data(), piece.size(), MSG_DONTWAIT);
            if (count > 0) all.append(piece.data(), count);
            return all.contains("\r\n\r\n");
        }));
        return all;
    }

private:
    int socket_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

class FileServerTest : public testing::Test {
protected:
    void serve(ServerLimits limits = {.headerTime = kNever, .idleTime = kNever}) {
        server = std::make_unique<FileServer>(limits);
        ASSERT_EQ(server->listen(QHostAddress::LocalHost, 0), QString());
    }
    QString publish(const QByteArray& content) {
        file.open();
        file.write(content);
        file.flush();
        return publishPath(file.fileName());
    }
    QString publishPath(const QString& path) {
        Publication publication;
        publication.path = path;
        publication.begun = [this] { trace.append(QStringLiteral("begun")); };
        publication.moved = [this](qint64 at, qint64 total) {
            position = at;
            EXPECT_LE(at, total);
        };
        publication.ended = [this](bool whole) {
            trace.append(whole ? QStringLiteral("whole") : QStringLiteral("broken"));
        };
        return server->publish(std::move(publication));
    }
    std::unique_ptr<QTcpSocket> dial() const {
        auto socket = std::make_unique<QTcpSocket>();
        bool connected = false;  // and closed again perhaps
        QObject::connect(socket.get(), &QTcpSocket::connected, socket.get(), [&] { connected = true; });
        socket->connectToHost(QHostAddress::LocalHost, server->port());
        EXPECT_TRUE(waitFor([&] { return connected; }));
        socket->disconnect();
        return socket;
    }
    /// What comes until the server closes.
    static QByteArray allOf(QTcpSocket& socket) {
        QByteArray all;
        EXPECT_TRUE(waitFor([&] {
            all += socket.readAll();
            return socket.state() == QTcpSocket::UnconnectedState;
        }));
        return all + socket.readAll();
    }
    QByteArray answerTo(const QByteArray& request) const {
        const auto socket = dial();
        socket->write(request);
        return allOf(*socket);
    }
    QByteArray get(const QString& name) const {
        return answerTo("GET /" + name.toLatin1() + " HTTP/1.1\r\nHost: x\r\n\r\n");
    }
    static QByteArray firstLine(const QByteArray& answer) { return answer.left(answer.indexOf("\r\n")); }
    static QByteArray bodyOf(const QByteArray& answer) { return answer.mid(answer.indexOf("\r\n\r\n") + 4); }
    bool ended() const { return !trace.isEmpty() && trace.last() != QLatin1String("begun"); }

    QTemporaryFile file;
    QStringList trace;
    qint64 position = -1;
    std::unique_ptr<FileServer> server;
};

TEST_F(FileServerTest, GivesAFileOnce) {
    serve();
    const QByteArray content = QByteArray("zawartość\0\r\n\r\n", 15).repeated(50'000);
    const QString name = publish(content);
    EXPECT_EQ(name.size(), 32);
    const QByteArray answer = get(name);
    EXPECT_EQ(firstLine(answer), "HTTP/1.1 200 OK");
    EXPECT_TRUE(answer.contains("\r\nContent-Length: " + QByteArray::number(content.size()) + "\r\n"));
    EXPECT_TRUE(bodyOf(answer) == content);
    EXPECT_EQ(trace, (QStringList{QStringLiteral("begun"), QStringLiteral("whole")}));
    EXPECT_EQ(position, content.size());
    EXPECT_EQ(firstLine(get(name)), "HTTP/1.1 409 Conflict");
}

TEST_F(FileServerTest, GivesAFileWithoutBytes) {
    serve();
    const QByteArray answer = get(publish({}));
    EXPECT_TRUE(answer.contains("\r\nContent-Length: 0\r\n"));
    EXPECT_EQ(bodyOf(answer), "");
    EXPECT_EQ(trace, (QStringList{QStringLiteral("begun"), QStringLiteral("whole")}));
    EXPECT_EQ(position, 0);
}

TEST_F(FileServerTest, TellsTheSizeWithoutGivingTheFile) {
    serve();
    const QString name = publish("abc");
    const QByteArray answer = answerTo("HEAD /" + name.toLatin1() + " HTTP/1.0\r\n\r\n");
    EXPECT_EQ(firstLine(answer), "HTTP/1.1 200 OK");
    EXPECT_TRUE(answer.contains("\r\nContent-Length: 3\r\n"));
    EXPECT_EQ(bodyOf(answer), "");
    EXPECT_TRUE(trace.isEmpty());
    EXPECT_EQ(bodyOf(get(name)), "abc") << "it is still there";
}

TEST_F(FileServerTest, AnswersNothingElse) {
    serve();
    const QByteArray name = publish("abc").toLatin1();
    const auto status = [&](const QByteArray& request) { return firstLine(answerTo(request)).mid(9, 3); };
    EXPECT_EQ(status("POST /" + name + " HTTP/1.1\r\n\r\n"), "405");
    EXPECT_EQ(status("DELETE /" + name + " HTTP/1.1\r\n\r\n"), "405");
    EXPECT_EQ(status("GET / HTTP/1.1\r\n\r\n"), "404");
    EXPECT_EQ(status("GET /" + name + "?x HTTP/1.1\r\n\r\n"), "404");
    EXPECT_EQ(status("GET /" + name.toUpper() + " HTTP/1.1\r\n\r\n"), "404");
    EXPECT_EQ(status("GET " + name + " HTTP/1.1\r\n\r\n"), "404");
    EXPECT_EQ(status("GET /../../etc/passwd HTTP/1.1\r\n\r\n"), "404");
    EXPECT_EQ(status("GET /" + name + "\r\n\r\n"), "400");
    EXPECT_EQ(status("GET  /" + name + " HTTP/1.1\r\n\r\n"), "400");
    EXPECT_EQ(status("GET /" + name + " HTTP/2\r\n\r\n"), "400");
    EXPECT_EQ(status(QByteArray("\x16\x03\x01\0\0\r\n\r\n", 9)), "400");
    EXPECT_EQ(status("\r\n\r\n"), "400");
    EXPECT_TRUE(trace.isEmpty());
}

TEST_F(FileServerTest, TakesARequestInPieces) {
    serve();
    const QByteArray request = "GET /" + publish("abc").toLatin1() + " HTTP/1.1\r\n\r\n";
    const auto socket = dial();
    for (const char one : request) {
        socket->write(&one, 1);
        socket->flush();
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(bodyOf(allOf(*socket)), "abc");
}

TEST_F(FileServerTest, NamesCannotBeGuessed) {
    serve();
    QSet<QString> names;
    std::array<QSet<QChar>, 32> digits;  // by their place in the name
    for (int number = 0; number < 100; ++number) {
        const QString name = publishPath(QStringLiteral("/tmp/x"));
        ASSERT_EQ(name.size(), 32);
        names.insert(name);
        for (std::size_t place = 0; place < digits.size(); ++place)
            digits[place].insert(name[static_cast<qsizetype>(place)]);
    }
    EXPECT_EQ(names.size(), 100);
    // Of what is random, a place has fewer in one of 10^30 runs.
    for (const QSet<QChar>& ofPlace : digits) EXPECT_GE(ofPlace.size(), 8);
}

TEST_F(FileServerTest, TakesNoEndlessRequest) {
    serve();
    const auto socket = dial();
    socket->write(QByteArray("GET / HTTP/1.1\r\n") + QByteArray("X: y\r\n").repeated(2000));
    EXPECT_EQ(firstLine(allOf(*socket)).mid(9, 3), "431");
}

TEST_F(FileServerTest, WaitsForNoRequestForEver) {
    serve({.headerTime = 50});
    const auto silent = dial();
    EXPECT_EQ(allOf(*silent), "");
}

TEST_F(FileServerTest, WaitsForNoReaderForEver) {
    serve({.headerTime = kNever, .idleTime = 50});
    const QString name = publish({});
    ASSERT_TRUE(file.resize(64 << 20));
    const auto socket = dial();
    socket->setReadBufferSize(1);
    socket->write("GET /" + name.toLatin1() + " HTTP/1.1\r\n\r\n");
    ASSERT_TRUE(waitFor([&] { return ended(); }));
    EXPECT_EQ(trace.last(), QStringLiteral("broken"));
    EXPECT_LT(position, 32 << 20) << "it reads no further than the connection takes";
}

TEST_F(FileServerTest, FollowsASlowReader) {
    serve();
    const QString name = publish({});
    constexpr qint64 size = 24 << 20;
    ASSERT_TRUE(file.resize(size));
    const auto socket = dial();
    socket->setReadBufferSize(4096);
    socket->write("GET /" + name.toLatin1() + " HTTP/1.1\r\n\r\n");
    ASSERT_TRUE(waitFor([&] { return position > 0 && socket->bytesAvailable() > 0; }));
    EXPECT_FALSE(ended());
    socket->setReadBufferSize(0);
    EXPECT_EQ(bodyOf(allOf(*socket)).size(), size);
    EXPECT_EQ(trace.last(), QStringLiteral("whole"));
}

TEST_F(FileServerTest, TellsWhenTheReaderGoes) {
    serve();
    const QString name = publish({});
    ASSERT_TRUE(file.resize(64 << 20));
    auto socket = dial();
    socket->setReadBufferSize(1);
    socket->write("GET /" + name.toLatin1() + " HTTP/1.1\r\n\r\n");
    ASSERT_TRUE(waitFor([&] { return position > 0; }));
    socket->abort();
    ASSERT_TRUE(waitFor([&] { return ended(); }));
    EXPECT_EQ(trace, (QStringList{QStringLiteral("begun"), QStringLiteral("broken")}));
}

TEST_F(FileServerTest, TellsOfAFileThatBecomesShorter) {
    serve();
    const QString name = publish({});
    ASSERT_TRUE(file.resize(64 << 20));
    const auto socket = dial();
    socket->setReadBufferSize(1);
    socket->write("GET /" + name.toLatin1() + " HTTP/1.1\r\n\r\n");
    ASSERT_TRUE(waitFor([&] { return position > 0; }));
    ASSERT_TRUE(file.resize(1));
    socket->setReadBufferSize(0);
    allOf(*socket);
    ASSERT_TRUE(waitFor([&] { return ended(); }));
    EXPECT_EQ(trace.last(), QStringLiteral("broken"));
}

TEST_F(FileServerTest, TellsOfAFileThatIsGone) {
    serve();
    EXPECT_EQ(firstLine(get(publishPath(QStringLiteral("/nothing/here")))).mid(9, 3), "404");
    EXPECT_EQ(trace, QStringList{QStringLiteral("broken")});
}

TEST_F(FileServerTest, WaitsForNoPipe) {
    serve();
    const QTemporaryDir folder;
    const QString pipe = folder.filePath(QStringLiteral("pipe"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), S_IRUSR | S_IWUSR), 0);
    EXPECT_EQ(firstLine(get(publishPath(pipe))).mid(9, 3), "404");
    EXPECT_EQ(firstLine(get(publishPath(folder.path()))).mid(9, 3), "404");
    EXPECT_EQ(trace, (QStringList{QStringLiteral("broken"), QStringLiteral("broken")}));
}

TEST_F(FileServerTest, TakesALimitedNumberOfConnections) {
    serve({.connections = 2, .headerTime = kNever, .idleTime = kNever});
    const QString name = publish("abc");
    QTemporaryFile large;
    ASSERT_TRUE(large.open() && large.resize(64 << 20));
    std::vector<std::unique_ptr<QTcpSocket>> readers;
    for (int reader = 0; reader < 2; ++reader) {
        readers.push_back(dial());
        readers.back()->setReadBufferSize(1);
        readers.back()->write("GET /" + publishPath(large.fileName()).toLatin1() + " HTTP/1.1\r\n\r\n");
        // Each has to be heard: one that was not would give way to the third.
        ASSERT_TRUE(waitFor([&] { return trace.count(QStringLiteral("begun")) == reader + 1; }));
    }
    EXPECT_EQ(get(name), "") << "the third is closed unheard";
    for (const auto& reader : readers) EXPECT_EQ(reader->state(), QTcpSocket::ConnectedState);
    readers.clear();
    ASSERT_TRUE(waitFor([&] { return bodyOf(get(name)) == "abc"; })) << "there is room again";
}

TEST_F(FileServerTest, WhoAsksForNothingGivesWay) {
    serve({.connections = 2, .headerTime = kNever});
    const QString name = publish("abc");
    const auto first = dial();
    const auto second = dial();
    second->write("GET /");
    const auto third = dial();
    EXPECT_EQ(allOf(*first), "") << "the one that has been silent for longest";
    third->write("GET /" + name.toLatin1() + " HTTP/1.1\r\n\r\n");
    EXPECT_EQ(bodyOf(allOf(*third)), "abc");
    second->write("nothing HTTP/1.1\r\n\r\n");
    EXPECT_EQ(firstLine(allOf(*second)).mid(9, 3), "404") << "the other is still heard";
}

TEST_F(FileServerTest, WhoWasRefusedGivesWay) {
    serve({.connections = 2, .headerTime = kNever, .idleTime = kNever});
    const QString name = publish("abc");
    const StubbornClient first(server->port());
    const StubbornClient second(server->port());
    for (const StubbornClient* one : {&first, &second}) {
        one->write("GET / HTTP/1.0\r\n\r\n");
        EXPECT_EQ(firstLine(one->header()).mid(9, 3), "404");
    }
    EXPECT_EQ(bodyOf(get(name)), "abc");
}

TEST_F(FileServerTest, ManySilentOnesHoldNobodyUp) {
    serve({.headerTime = kNever});
    const QString name = publish("abc");
    std::vector<std::unique_ptr<QTcpSocket>> silent;
    for (int number = 0; number < 200; ++number) silent.push_back(dial());
    EXPECT_EQ(bodyOf(get(name)), "abc");
}

TEST_F(FileServerTest, CutsOffWhatIsWithdrawn) {
    serve();
    const QString name = publish({});
    ASSERT_TRUE(file.resize(64 << 20));
    const auto socket = dial();
    socket->setReadBufferSize(1);
    socket->write("GET /" + name.toLatin1() + " HTTP/1.1\r\n\r\n");
    ASSERT_TRUE(waitFor([&] { return position > 0; }));
    server->withdraw(name);
    socket->setReadBufferSize(0);
    EXPECT_LT(allOf(*socket).size(), 64 << 20);
    EXPECT_EQ(trace, QStringList{QStringLiteral("begun")}) << "nobody hears of it any more";
}

TEST_F(FileServerTest, ListensWhileItHasAFile) {
    serve();
    const QString name = publish("abc");
    const QString other = publish("abc");
    server->withdraw(name);
    EXPECT_TRUE(server->listening());
    EXPECT_EQ(firstLine(get(name)).mid(9, 3), "404");
    server->withdraw(other);
    EXPECT_FALSE(server->listening());
    EXPECT_EQ(server->listen(QHostAddress::LocalHost, 0), QString());
    EXPECT_EQ(firstLine(get(publish("abc"))).mid(9, 3), "200");
}

TEST_F(FileServerTest, WhoHearsOfTheEndMayWithdraw) {
    serve();
    QString name;
    Publication publication;
    file.open();
    file.write("abc");
    file.flush();
    publication.path = file.fileName();
    publication.begun = [] {};
    publication.moved = [](qint64, qint64) {};
    publication.ended = [&](bool) { server->withdraw(name); };
    name = server->publish(std::move(publication));
    EXPECT_EQ(bodyOf(get(name)), "abc");
    EXPECT_FALSE(server->listening());
}

TEST_F(FileServerTest, MayGoWhileSomebodyReads) {
    serve();
    const QString name = publish({});
    ASSERT_TRUE(file.resize(64 << 20));
    const auto socket = dial();
    socket->write("GET /" + name.toLatin1() + " HTTP/1.1\r\n\r\n");
    ASSERT_TRUE(waitFor([&] { return position > 0; }));
    server.reset();
    allOf(*socket);
    EXPECT_EQ(trace, QStringList{QStringLiteral("begun")});
}

}  // namespace
}  // namespace oku::test
