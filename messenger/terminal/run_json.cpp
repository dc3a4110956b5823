// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/run_json.h"

#include <unistd.h>
#include <csignal>
#include <QEventLoop>

#include "messenger/terminal/ending.h"
#include "messenger/terminal/json/json_mode.h"
#include "messenger/terminal/posix_io.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {

ExitCode runJson(MessengerFace& messenger, const Options& options) {
    QEventLoop loop;
    Output output(STDOUT_FILENO);
    const auto write = [&output](const QByteArray& line) { output.writeSoon(line); };
    JsonMode mode(messenger, write, options.verbose, bareJid(options.account), [&loop] { loop.quit(); });
    output.whenLost([&mode] { mode.end(); });
    if (const QString reason = mode.start(); !reason.isEmpty()) {
        output.flush();
        tellWhyItEnds(say(Text::CannotStart, reason));
        return ExitCode::Failure;
    }
    if (!options.account.isEmpty() && !options.password.isEmpty())
        mode.addAccountAtStart(options.account, options.password);
    if (!options.status.isEmpty()) mode.setStatusAtStart(statusFromWord(options.status));
    InputReader input(STDIN_FILENO, [&](const QByteArray& bytes) {
        if (bytes.isEmpty() || output.lost())
            mode.end();
        else
            mode.feed(bytes);
    });
    SignalWatcher watcher({SIGINT, SIGTERM, SIGHUP}, [&](int) { mode.end(); });
    loop.exec();
    return endOf(output);
}

}  // namespace oku::terminal
