// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The messenger's side of the plugin's windows: a plugin that hands it any records in any order, also while it is told
// of something, and a user who does anything in what is there by then.
#include <array>
#include <cstring>
#include <deque>
#include <limits>
#include <QCoreApplication>
#include <set>
#include <string>
#include <vector>

#include "fuzz/input.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/dialogs/dialog_input.h"
#include "messenger/core/dialogs/dialog_services.h"
#include "messenger/core/dialogs/dialog_windows.h"

namespace {

using namespace oku;

constexpr OKU_WORD kModule = 42;
constexpr int kMostNested = 4;
constexpr std::array<std::uint32_t, 7> kControls{0, 1, 2, 25, 6025, 6026, 0xFFFFFFFF};

/// Texts that stay where they are for one call.
class Texts {
public:
    const char16_t* take(fuzz::Input& input) {
        const std::uint8_t shape = input.byte();
        if (shape == 0) return nullptr;
        if (shape % 2) return kept_.emplace_back(input.wide()).c_str();
        const std::string_view bytes = input.text();
        return kept_.emplace_back(bytes.begin(), bytes.end()).c_str();
    }

private:
    std::deque<std::u16string> kept_;
};

/// Records that lie one behind the other, each as long as it says.
template <typename Record>
class Packed {
public:
    void add(Record record, fuzz::Input& input) {
        static constexpr std::array<std::uint32_t, 6> kLonger{0, 0, 0, 8, 64, 3};
        const std::uint8_t shape = input.byte();
        record.size = shape == 255 ? input.byte() % 9 : sizeof(Record) + kLonger[shape % kLonger.size()];
        words_.resize((end_ + sizeof(Record) + kLonger[4]) / sizeof(std::uint64_t) + 1);
        std::memcpy(reinterpret_cast<char*>(words_.data()) + end_, &record, sizeof record);
        end_ += record.size;
        ++count_;
    }
    const Record* first() const { return count_ ? reinterpret_cast<const Record*>(words_.data()) : nullptr; }
    std::uint32_t count() const { return count_; }

private:
    std::vector<std::uint64_t> words_;
    std::size_t end_ = 0;
    std::uint32_t count_ = 0;
};

/// Host, plugin and user in one.
class Desk {
public:
    explicit Desk(fuzz::Input& input) : input_(input) {
        services_.setModule(kModule);
        const auto seen = [this](int window) { seen_.insert(window); };
        QObject::connect(&windows_, &DialogWindows::opened, seen);
        QObject::connect(&windows_, &DialogWindows::closed,
                         [this](int window) { fuzz::require(seen_.erase(window) == 1, "an unseen window closes"); });
        QObject::connect(&windows_, &DialogWindows::destroyed, [this](int window) { alive_.erase(window); });
        QObject::connect(&queue_, &PluginQueue::failed, [](const QString&) { fuzz::require(false, "a call threw"); });
    }
    ~Desk() {
        QCoreApplication::sendPostedEvents();
        windows_.dropAll();
        fuzz::require(windows_.count() == 0 && seen_.empty() && alive_.empty(), "a window stays");
        QCoreApplication::sendPostedEvents();
    }

    void doOne() {
        switch (input_.byte() % 5) {
            case 0:
            case 1:
                queue_.post({}, [this] { actAsPlugin(); });
                break;
            case 2:
                actAsUser();
                break;
            case 3:
                QCoreApplication::sendPostedEvents();
                break;
            default:
                openPage();
        }
        checkSeen();
    }

private:
    OKU_WORD call(const char16_t* name, OKU_WORD param, OKU_WORD extra = 0) {
        inCall_ = true;
        const OKU_WORD result = registry_.call(name, param, extra);
        inCall_ = false;
        return result;
    }

    std::uint32_t control() { return kControls[input_.byte() % kControls.size()]; }
    /// Of a window that is there, was there, or may yet come.
    OKU_WORD window() {
        const std::uint8_t number = input_.byte();
        return number == 255 ? ~OKU_WORD{0} : number % (last_ + 3);
    }
    std::int64_t number() {
        const std::uint8_t shape = input_.byte();
        if (shape == 255) return std::numeric_limits<std::int64_t>::min();
        return shape == 254 ? std::numeric_limits<std::int64_t>::max() : shape - 3;
    }

    /// One of the messenger's own windows, which those of the plugin may lie in.
    void openPage() {
        OpenDialog page;
        page.window.page = true;
        const int number = windows_.open(std::move(page));
        last_ = static_cast<OKU_WORD>(number);
        alive_.insert(number);
        windows_.show(number, true);
    }

    void actAsPlugin() {
        switch (input_.byte() % 8) {
            case 0:
                return open();
            case 1:
                return onWindow();
            case 2:
                return setText();
            case 3:
                return value(u"UI/ControlSet");
            case 4:
                return value(u"UI/ControlGet");
            case 5:
                return setRow();
            case 6:
                return openMenu();
            default:
                return place();
        }
    }

    OKU_CONTROL controlRecord(Texts& texts, std::vector<const char16_t*>& items) {
        auto record = makeRecord<OKU_CONTROL>();
        record.kind = input_.byte() % 13;
        record.id = control();
        record.flags = input_.byte();
        record.text = texts.take(input_);
        record.name = texts.take(input_);
        record.emptyText = texts.take(input_);
        for (std::uint8_t item = input_.byte() % 4; item > 0; --item) items.push_back(texts.take(input_));
        record.items = items.empty() ? nullptr : items.data();
        record.itemCount = items.empty() ? input_.byte() : static_cast<std::uint32_t>(items.size());
        record.selection = static_cast<std::int32_t>(number());
        return record;
    }

    void open() {
        Texts texts;
        std::deque<std::vector<const char16_t*>> items;
        Packed<OKU_CONTROL> controls;
        for (std::uint8_t left = input_.byte() % 9; left > 0; --left)
            controls.add(controlRecord(texts, items.emplace_back()), input_);
        auto record = makeRecord<OKU_WINDOW>();
        record.title = texts.take(input_);
        record.heading = texts.take(input_);
        record.description = texts.take(input_);
        record.controls = controls.first();
        record.controlCount = controls.count();
        record.flags = input_.byte() % 4;
        record.parent = window();
        const std::uint8_t odd = input_.byte();
        record.module = odd == 255 ? 0 : kModule;
        record.callback = odd == 254 ? nullptr : onEvent;
        record.context = wordOf(this);
        const OKU_WORD handle = call(u"UI/WindowOpen", wordOf(&record));
        if (!handle) return;
        fuzz::require(handle > last_, "a number is used twice");
        last_ = handle;
        alive_.insert(static_cast<int>(handle));
        if (odd % 4) call(u"UI/WindowShow", handle, 1);
    }

    void onWindow() {
        static constexpr std::array<const char16_t*, 7> kServices{
            u"UI/WindowShow", u"UI/WindowShow", u"UI/WindowDestroy", u"UI/WindowEnd",
            u"UI/WindowPost", u"UI/RowsClear",  u"UI/ParentCommand"};
        const char16_t* const name = kServices[input_.byte() % kServices.size()];
        const OKU_WORD handle = window();
        call(name, handle, name == kServices[5] ? control() : static_cast<OKU_WORD>(number()));
    }

    void setText() {
        Texts texts;
        auto record = makeRecord<OKU_WINDOW_TEXT>();
        record.which = input_.byte() % 5;
        record.window = window();
        record.text = texts.take(input_);
        call(u"UI/WindowText", wordOf(&record));
    }

    void value(const char16_t* service) {
        Texts texts;
        auto record = makeRecord<OKU_CONTROL_VALUE>();
        record.what = input_.byte() % 11;
        record.window = window();
        record.control = control();
        record.number = number();
        record.text = texts.take(input_);
        const bool gets = service == std::u16string_view(u"UI/ControlGet");
        if (gets) record.text = nullptr;
        const bool done = call(service, wordOf(&record)) != 0;
        if (gets && done && record.what == OKU_VALUE_TEXT) fuzz::require(record.text, "a text that is none");
    }

    void setRow() {
        Texts texts;
        Packed<OKU_ROW_FIELD> fields;
        for (std::uint8_t left = input_.byte() % 4; left > 0; --left) {
            auto field = makeRecord<OKU_ROW_FIELD>();
            field.label = texts.take(input_);
            field.value = texts.take(input_);
            fields.add(field, input_);
        }
        auto record = makeRecord<OKU_ROW>();
        record.control = control();
        record.window = window();
        record.row = static_cast<OKU_WORD>(number());
        record.text = texts.take(input_);
        record.fields = fields.first();
        record.fieldCount = fields.count();
        call(u"UI/RowSet", wordOf(&record));
    }

    void openMenu() {
        Texts texts;
        Packed<OKU_POPUP_ITEM> items;
        for (std::uint8_t left = input_.byte() % 4; left > 0; --left) {
            auto item = makeRecord<OKU_POPUP_ITEM>();
            item.command = input_.byte() % 4;
            item.text = texts.take(input_);
            item.flags = input_.byte() % 8;
            items.add(item, input_);
        }
        auto record = makeRecord<OKU_POPUP_MENU>();
        record.itemCount = items.count();
        record.window = window();
        record.items = items.first();
        record.control = control();
        call(u"UI/MenuOpen", wordOf(&record));
    }

    void place() {
        auto record = makeRecord<OKU_CONTROL_PLACE>();
        record.control = control();
        record.window = window();
        call(u"UI/ControlPlace", wordOf(&record));
    }

    static OKU_WORD OKU_CALL onEvent(OKU_WORD param, OKU_WORD, OKU_WORD context) {
        const auto& event = *reinterpret_cast<const OKU_WINDOW_EVENT*>(param);
        return reinterpret_cast<Desk*>(context)->hear(event);
    }
    OKU_WORD hear(const OKU_WINDOW_EVENT& event) {
        fuzz::require(alive_.contains(static_cast<int>(event.window)), "an event of a window that has gone");
        fuzz::require(queue_.busy() && !inCall_, "an event from inside a call");
        if (nested_ >= kMostNested) return 0;
        ++nested_;
        for (std::uint8_t left = input_.byte() % 3; left > 0; --left) actAsPlugin();
        --nested_;
        return input_.byte() % 2;
    }

    void actAsUser() {
        const int number = static_cast<int>(window());
        const std::uint32_t id = control();
        switch (input_.byte() % 9) {
            case 0:
                user_.fill(number, id, QString::fromStdU16String(input_.wide()));
                break;
            case 1:
                user_.choose(number, id, this->number());
                break;
            case 2:
                user_.setChecked(number, id, input_.byte() % 2);
                break;
            case 3:
                user_.press(number, id);
                break;
            case 4:
                user_.pressReturn(number, id);
                break;
            case 5:
                user_.onRow(number, id, this->number(), OKU_WINDOW_ROW_ACTIVATED);
                break;
            case 6:
                user_.onRow(number, id, this->number(), OKU_WINDOW_ROW_MENU);
                break;
            case 7:
                user_.takeFromMenu(number, input_.byte() % 4);
                break;
            default:
                user_.close(number);
        }
    }

    /// What is seen is what was told, and whatever lies in another one came after it.
    void checkSeen() {
        const QList<int> numbers = windows_.numbersSeen();
        fuzz::require(std::set<int>(numbers.begin(), numbers.end()) == seen_, "what is seen was not told");
        for (const int number : numbers) {
            const auto window = windows_.value(number);
            fuzz::require(window && window->parent < number, "a window came before its parent");
            for (const int child : window->children) fuzz::require(child > number, "a child came before its parent");
        }
    }

    fuzz::Input& input_;
    ServiceRegistry registry_;
    PluginQueue queue_;
    DialogWindows windows_;
    DialogInput user_{windows_, queue_};
    DialogServices services_{registry_, windows_, user_};
    std::set<int> alive_;  // opened, and not gone
    std::set<int> seen_;   // as far as was told
    OKU_WORD last_ = 0;
    int nested_ = 0;
    bool inCall_ = false;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static int count = 0;
    static QCoreApplication application(count, nullptr);
    fuzz::Input input(data, size);
    Desk desk(input);
    while (!input.empty()) desk.doOne();
    return 0;
}
