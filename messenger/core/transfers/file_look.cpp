// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/transfers/file_look.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <array>
#include <QByteArrayView>
#include <QCoreApplication>
#include <QFile>
#include <string_view>

namespace oku {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t kHead = 4096;  // bytes that are looked at

// Ends of names that some system runs, installs, or hands to an interpreter.
constexpr std::array kEndings = {
    u"action",     u"apk",         u"app",    u"appimage", u"appref-ms", u"bash",    u"bat",  u"bin", u"cgi", u"class",
    u"cmd",        u"com",         u"cpl",    u"csh",      u"deb",       u"desktop", u"dll",  u"elf", u"exe", u"fish",
    u"flatpakref", u"flatpakrepo", u"gadget", u"hta",      u"inf",       u"jar",     u"jnlp", u"js",  u"jse", u"ksh",
    u"lnk",        u"lua",         u"msc",    u"mjs",      u"msi",       u"msp",     u"out",  u"php", u"pif", u"pl",
    u"ps1",        u"psm1",        u"py",     u"pyc",      u"pyw",       u"pyz",     u"rb",   u"reg", u"rpm", u"run",
    u"scr",        u"service",     u"sh",     u"snap",     u"so",        u"sys",     u"tcl",  u"url", u"vb",  u"vbe",
    u"vbs",        u"wsf",         u"wsh",    u"x86_64",   u"xpi",       u"zsh"};

// First bytes of scripts, of programs of the usual systems, and of compiled Java classes.
constexpr std::array kBeginnings = {"#!"sv,
                                    "\x7f"
                                    "ELF"sv,
                                    "MZ"sv,
                                    "\xfe\xed\xfa\xce"sv,
                                    "\xfe\xed\xfa\xcf"sv,
                                    "\xce\xfa\xed\xfe"sv,
                                    "\xcf\xfa\xed\xfe"sv,
                                    "\xca\xfe\xba\xbe"sv};
constexpr auto kStarter = "[Desktop Entry]"sv;  // may stand behind comments

bool runsByName(const QString& path) {
    QString name = path;
    // Some systems leave these away.
    while (name.endsWith(u'.') || name.endsWith(u' ')) name.chop(1);
    const QString ending = name.section(u'/', -1).section(u'.', -1).toLower();
    return std::any_of(kEndings.begin(), kEndings.end(),
                       [&](const char16_t* one) { return ending == QStringView(one); });
}

bool runsByContent(std::string_view head) {
    return head.find(kStarter) != std::string_view::npos ||
           std::any_of(kBeginnings.begin(), kBeginnings.end(), [&](auto one) { return head.starts_with(one); });
}

QString said(const char* reason, const QString& path) {
    return QCoreApplication::translate("Transfers", reason).arg(path);
}

QString faultOf(int result, const struct stat& status, const QString& path) {
    if (result != 0) return said(QT_TRANSLATE_NOOP("Transfers", "Nie ma już pliku %1."), path);
    if (S_ISLNK(status.st_mode))
        return said(QT_TRANSLATE_NOOP("Transfers", "W miejscu pliku %1 stoi dowiązanie, więc go nie otwarto."), path);
    if (!S_ISREG(status.st_mode))
        return said(QT_TRANSLATE_NOOP("Transfers", "%1 nie jest już zwykłym plikiem, więc go nie otwarto."), path);
    return {};
}

}  // namespace

FileLook lookAtFile(const QString& path) {
    const QByteArray name = QFile::encodeName(path);
    struct stat status = {};
    FileLook look{faultOf(::lstat(name.constData(), &status), status, path)};
    if (!look.reason.isEmpty()) return look;
    // What was put there meanwhile neither leads elsewhere nor holds this up.
    const int file = ::open(name.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    std::array<char, kHead> head = {};
    const ssize_t read = file < 0 ? -1 : ::read(file, head.data(), head.size());
    if (file >= 0) ::close(file);
    if (read < 0) {
        look.reason = said(QT_TRANSLATE_NOOP("Transfers", "Pliku %1 nie można odczytać."), path);
        return look;
    }
    const bool byMode = (status.st_mode & (S_IXUSR | S_IXGRP | S_IXOTH)) != 0;
    look.program = byMode || runsByName(path) || runsByContent({head.data(), static_cast<std::size_t>(read)});
    return look;
}

}  // namespace oku
