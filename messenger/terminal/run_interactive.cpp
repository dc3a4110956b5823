// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/run_interactive.h"

#include <unistd.h>
#include <csignal>
#include <QDir>
#include <QEventLoop>

#include "messenger/terminal/ending.h"
#include "messenger/terminal/posix_io.h"
#include "messenger/terminal/screen/raw_terminal.h"
#include "messenger/terminal/talk/plain_display.h"
#include "messenger/terminal/talk/screen_display.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

// Where Qt's own warnings go while the screen is drawn: they would tear it.
Session* warned = nullptr;

void onQtMessage(QtMsgType, const QMessageLogContext&, const QString& text) {
    if (warned != nullptr) warned->warn({1, QStringLiteral("Qt"), text});
}

SessionOptions sessionOptions(const Options& options, bool oneWindow) {
    SessionOptions result;
    result.account = options.account;
    result.password = options.password;
    result.status = options.status;
    result.verbose = options.verbose;
    result.oneWindow = oneWindow;
    result.startDirectory = QDir::currentPath();
    return result;
}

// Starts the session; a failure is told in one line.
bool started(Session& session) {
    const QString reason = session.start();
    if (!reason.isEmpty()) tellWhyItEnds(say(Text::CannotStart, reason));
    return reason.isEmpty();
}

ExitCode runPlain(MessengerFace& messenger, const Options& options) {
    QEventLoop loop;
    const bool terminal = ::isatty(STDOUT_FILENO) != 0;
    Output output(STDOUT_FILENO);
    const auto write = [&output](const QByteArray& bytes) { output.write(bytes); };
    PlainDisplay display(messenger, sessionOptions(options, true), terminal ? coloursOfEnvironment() : Colours::None,
                         terminal ? terminalSize(STDOUT_FILENO).columns : 0, STDIN_FILENO, write,
                         [&loop] { loop.quit(); });
    output.whenLost([&display] { display.session().quit(); });
    if (!started(display.session())) return ExitCode::Failure;
    // Who types at a terminal pastes there, wherever the output goes.
    const bool pastes = ::isatty(STDIN_FILENO) != 0 && coloursOfEnvironment() != Colours::None;
    const auto tellTypist = [&](const QByteArray& bytes) {
        if (terminal)
            write(bytes);
        else
            writeAll(STDIN_FILENO, bytes);
    };
    if (pastes) tellTypist(PlainDisplay::markPastes());
    InputReader input(STDIN_FILENO, [&](const QByteArray& bytes) { display.feed(bytes); });
    SignalWatcher watcher({SIGINT, SIGTERM, SIGHUP}, [&](int) { display.session().quit(); });
    loop.exec();
    if (pastes) tellTypist(PlainDisplay::leavePastes());
    return endOf(output);
}

ExitCode runScreen(MessengerFace& messenger, const Options& options) {
    QEventLoop loop;
    Output output(STDOUT_FILENO);
    const auto write = [&output](const QByteArray& bytes) { output.write(bytes); };
    ScreenDisplay display(messenger, sessionOptions(options, false), coloursOfEnvironment(),
                          terminalSize(STDOUT_FILENO), write, [&loop] { loop.quit(); });
    output.whenLost([&display] { display.session().quit(); });
    warned = &display.session();
    const QtMessageHandler before = qInstallMessageHandler(onQtMessage);
    ExitCode code = ExitCode::Failure;
    if (started(display.session())) {
        RawTerminal raw(STDIN_FILENO);
        write(enterScreen());
        display.show();
        InputReader input(STDIN_FILENO, [&](const QByteArray& bytes) { display.feed(bytes); });
        SignalWatcher watcher({SIGINT, SIGTERM, SIGHUP, SIGWINCH}, [&](int signal) {
            if (signal == SIGWINCH)
                display.resize(terminalSize(STDOUT_FILENO));
            else
                display.session().quit();
        });
        loop.exec();
        write(leaveScreen());
        code = endOf(output);
    }
    qInstallMessageHandler(before);
    warned = nullptr;
    return code;
}

}  // namespace

ExitCode runInteractive(MessengerFace& messenger, const Options& options) {
    const bool terminal = ::isatty(STDIN_FILENO) != 0 && ::isatty(STDOUT_FILENO) != 0;
    const bool plain = options.plain || !terminal || coloursOfEnvironment() == Colours::None;
    return plain ? runPlain(messenger, options) : runScreen(messenger, options);
}

}  // namespace oku::terminal
