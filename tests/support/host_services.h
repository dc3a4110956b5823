// The services of the recording host: one table that tells each service's arguments and what the host does.
#pragma once

#include <string>

#include "tests/support/recording_host.h"

namespace harness {

struct HostServices {
    using Act = OKU_WORD (*)(RecordingHost&, OKU_WORD param, OKU_WORD extra);

    /// How an argument is shown.
    struct Argument {
        enum class Kind { Zero, Number, Text, Module, Class, Net, Record, Contact, TimerName } kind = Kind::Zero;
        const char* name = "";
        const RecordLayout* layout = nullptr;
    };
    struct Row {
        const char* name;
        Argument param;
        Argument extra;
        Act act;
    };

    /// Calls a service: decodes, records, then answers what the test scripted, or what the host does.
    static OKU_WORD call(RecordingHost& host, const std::string& service, OKU_WORD param, OKU_WORD extra);

private:
    static void show(RecordingHost& host, Line& line, const Argument& argument, OKU_WORD word);

    // Services whose line has a form of its own.
    static OKU_WORD log(RecordingHost& host, OKU_WORD param);
    static OKU_WORD getSetting(RecordingHost& host, OKU_WORD param);
    static OKU_WORD setSetting(RecordingHost& host, OKU_WORD param);
    static OKU_WORD hook(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD send(RecordingHost& host, OKU_WORD param);
    static void showHookExtra(RecordingHost& host, Line& line, std::uint32_t kind, OKU_WORD extra);
    static void tellStreamHook(RecordingHost& host, Line line, std::uint32_t kind, std::uint32_t phase, OKU_WORD extra);

    // What the host does.
    static OKU_WORD nothing(RecordingHost&, OKU_WORD, OKU_WORD) { return 0; }
    static OKU_WORD settingsInit(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD settingsRead(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD settingsWrite(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD settingsDestroy(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD timerCreate(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD timerDestroy(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD protocolAdd(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD protocolDel(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD menuAdd(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD statusWindow(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD optionsPage(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD messageBox(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD cacheDirectory(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD profileDirectory(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD giveDirectory(RecordingHost& host, OKU_WORD param, const std::string& directory);
    static OKU_WORD socketCreate(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD socketConnect(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD socketUse(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD socketDestroy(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD proxyDefaults(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD contactAdd(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD contactIcon(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD contactFind(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD contactDelete(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static OKU_WORD contactsClear(RecordingHost& host, OKU_WORD param, OKU_WORD extra);
    static RecordingHost::Store* store(RecordingHost& host, OKU_WORD handle, const char* service);

    static const Row kRows[];
    static const Row* find(const std::string& service);
};

/// A timer's name from the two shapes in which "OKU/Timer/Destroy" takes it.
std::string timerName(OKU_WORD param, bool& byReference);

}  // namespace harness
