#include "messenger/terminal/run_json.h"

#include <unistd.h>
#include <csignal>
#include <QEventLoop>

#include "messenger/terminal/json_mode.h"
#include "messenger/terminal/posix_io.h"
#include "messenger/terminal/texts.h"
#include "messenger/terminal/wording.h"

namespace oku::terminal {

ExitCode runJson(Client& client, const Options& options) {
    QEventLoop loop;
    bool readable = true;
    const auto write = [&](const QByteArray& line) { readable = readable && writeAll(STDOUT_FILENO, line); };
    JsonMode mode(client, write, options.verbose, bareJid(options.account), [&loop] { loop.quit(); });
    if (const QString reason = mode.start(); !reason.isEmpty()) {
        writeAll(STDERR_FILENO, QStringLiteral("oku-terminal: %1\n").arg(say(Text::CannotStart, reason)).toUtf8());
        return ExitCode::Failure;
    }
    if (!options.account.isEmpty() && !options.password.isEmpty())
        if (const QString reason = client.addAccount(options.account, options.password, {}); !reason.isEmpty())
            mode.noticed(bareJid(options.account), say(Text::AccountRefused, options.account, reason));
    if (!options.status.isEmpty()) mode.setStatusAtStart(statusFromWord(options.status));
    InputReader input(STDIN_FILENO, [&](const QByteArray& bytes) {
        if (bytes.isEmpty() || !readable)
            mode.end();
        else
            mode.feed(bytes);
    });
    SignalWatcher watcher({SIGINT, SIGTERM, SIGHUP}, [&](int) { mode.end(); });
    loop.exec();
    return readable ? ExitCode::Success : ExitCode::Failure;
}

}  // namespace oku::terminal
