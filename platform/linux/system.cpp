// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <dlfcn.h>
#include <iconv.h>
#include <langinfo.h>
#include <locale.h>
#include <stdlib.h>
#include <sys/utsname.h>

#include <algorithm>
#include <cerrno>
#include <memory>

#include "host/util/utf.h"
#include "platform/platform.h"

namespace {

/// Something in this library, by whose address the loader finds its file.
const char kOwnAddress = 0;

/// The numbers at the front of a version, such as 6.1 of "6.1.0-18-amd64": major and minor.
std::string_view majorAndMinor(std::string_view version) {
    std::size_t end = version.find_first_not_of("0123456789");
    if (end != std::string_view::npos && version[end] == '.') end = version.find_first_not_of("0123456789", end + 1);
    return version.substr(0, end);
}

/// The name of the narrow encoding that the environment asks for.
std::string systemEncoding() {
    const locale_t locale = newlocale(LC_CTYPE_MASK, "", locale_t{});
    if (!locale) return "ASCII";
    std::string name = nl_langinfo_l(CODESET, locale);
    freelocale(locale);
    return name;
}

/// A conversion of the C library, closed at the end.
class Converter {
public:
    Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter() {
        if (isOpen()) iconv_close(handle_);
    }

    bool isOpen() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

    /// Converts UTF-8 text or to UTF-8; a character that has no counterpart becomes a question mark. `unitLength` tells
    /// how many bytes of the source such a character takes.
    template <typename UnitLength>
    std::string convert(std::string text, UnitLength unitLength) {
        std::string result;
        char* from = text.data();
        std::size_t left = text.size();
        while (left) {
            char buffer[512];
            char* to = buffer;
            std::size_t room = sizeof buffer;
            const bool failed = iconv(handle_, &from, &left, &to, &room) == static_cast<std::size_t>(-1);
            result.append(buffer, to);
            if (!failed || errno == E2BIG) continue;
            const std::size_t skipped = std::min(left, unitLength(*from));
            from += skipped;
            left -= skipped;
            result += '?';
        }
        return result;
    }

private:
    iconv_t handle_;
};

std::size_t utf8Length(char lead) {
    const auto byte = static_cast<unsigned char>(lead);
    return byte < 0xC0 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

}  // namespace

namespace platform {

std::u16string modulePath() {
    Dl_info info{};
    if (!dladdr(&kOwnAddress, &info) || !info.dli_fname) return {};
    const std::string_view path = info.dli_fname;
    // The folder is told as it is, the file by the name it was loaded under, also when that is a link.
    const std::size_t slash = path.rfind('/');
    const std::string folder(slash == std::string_view::npos ? std::string_view(".") : path.substr(0, slash + 1));
    const std::string_view name = path.substr(slash == std::string_view::npos ? 0 : slash + 1);
    const std::unique_ptr<char, decltype(&free)> whole(realpath(folder.c_str(), nullptr), &free);
    // The loader keeps a relative path as it was given, and the current directory may be another one by now.
    if (!whole) return utow(name);
    std::string result = whole.get();
    if (!result.ends_with('/')) result += '/';
    return utow(result.append(name));
}

std::u16string operatingSystem() {
    utsname names{};
    if (uname(&names) != 0) return u"Linux";
    std::string text = names.sysname;
    text += ' ';
    text += names.machine;
    text += ' ';
    text += majorAndMinor(names.release);
    return utow(text);
}

// Icons are the host's own objects here; no handle of the system stands behind the word.
void destroyIcon(std::uint64_t) {}

std::string wtom(std::u16string_view text) {
    Converter converter(systemEncoding().c_str(), "UTF-8");
    return converter.isOpen() ? converter.convert(wtou(text), utf8Length) : wtou(text);
}

std::u16string mtow(std::string_view text) {
    Converter converter("UTF-8", systemEncoding().c_str());
    if (!converter.isOpen()) return utow(text);
    return utow(converter.convert(std::string(text), [](char) { return std::size_t{1}; }));
}

}  // namespace platform
