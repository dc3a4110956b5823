// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <unistd.h>
#include <csignal>
#include <cstdio>
#include <QCoreApplication>
#include <QFileInfo>

#include "messenger/core/messenger.h"
#include "messenger/core/process/process_protection.h"
#include "messenger/core/texts.h"
#include "messenger/terminal/options.h"
#include "messenger/terminal/posix_io.h"
#include "messenger/terminal/run_interactive.h"
#include "messenger/terminal/run_json.h"
#include "messenger/terminal/texts.h"

namespace {

using namespace oku::terminal;

// The messenger changes the current directory, so a path that the user gave is made absolute before.
QString absolute(const QString& path) { return path.isEmpty() ? path : QFileInfo(path).absoluteFilePath(); }

oku::MessengerOptions messengerOptions(const Options& options) {
    oku::MessengerOptions result = oku::installedOptions();
    result.profileDir = absolute(options.profileDir);
    if (!options.modulePath.isEmpty()) result.modulePath = absolute(options.modulePath);
    result.verbose = options.verbose;
    result.caFile = absolute(options.caFile);
    return result;
}

ExitCode run(const QStringList& arguments, const QString& password) {
    const ReadOptions read = readOptions(arguments);
    if (const auto* print = std::get_if<PrintAndEnd>(&read)) {
        const bool written = writeAll(STDOUT_FILENO, print->text.toUtf8());
        return written ? ExitCode::Success : ExitCode::Failure;
    }
    if (const auto* error = std::get_if<OptionError>(&read)) {
        writeAll(STDERR_FILENO,
                 QStringLiteral("oku-terminal: %1\n%2\n").arg(error->reason, say(Text::TryHelp)).toUtf8());
        return ExitCode::BadUsage;
    }
    Options options = std::get<Options>(read);
    options.password = password;
    oku::Messenger messenger(messengerOptions(options));
    return options.json ? runJson(messenger, options) : runInteractive(messenger, options);
}

}  // namespace

int main(int argc, char** argv) {
    if (!fillStandardDescriptors()) return static_cast<int>(ExitCode::Failure);
    oku::protectProcess();
    const QString password = takePassword();  // before anything else could go wrong, or read it
    std::signal(SIGPIPE, SIG_IGN);            // a reader that has gone is seen by the write
    QCoreApplication application(argc, argv);
    oku::setLanguage(oku::languageOfEnvironment());
    return static_cast<int>(run(QCoreApplication::arguments().mid(1), password));
}
