// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "host/oku/dialogs.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/dialogs/dialogs_on_host.h"
#include "tests/messenger/core/stage.h"

namespace oku::test {

/// Controls that lie one behind the other, with the texts that they point to.
class Controls {
public:
    OKU_CONTROL& add(std::uint32_t kind, std::uint32_t id, std::u16string text = {}) {
        auto record = makeRecord<OKU_CONTROL>();
        record.kind = kind;
        record.id = id;
        record.selection = -1;
        record.text = keep(std::move(text));
        records_.push_back(record);
        return records_.back();
    }
    const char16_t* keep(std::u16string text) { return texts_.emplace_back(std::move(text)).c_str(); }
    void fill(OKU_WINDOW& window) const {
        window.controls = records_.data();
        window.controlCount = static_cast<std::uint32_t>(records_.size());
    }

private:
    std::vector<OKU_CONTROL> records_;
    std::deque<std::u16string> texts_;
};

/// A plugin that opens windows, and notes what its callback hears.
class DialogStage : public Stage {
protected:
    DialogStage() {
        writeAccount({}, QStringLiteral("alice@example.org"));
        start();
        face = dialogsOnHost({core->accounts, core->dialogs, core->dialogInput, core->pages});
        note(&DialogsFace::opened, "opened");
        note(&DialogsFace::closed, "closed");
        note(&DialogsFace::changed, "changed");
        QObject::connect(face.get(), &DialogsFace::refused, [this](int, const QString& reason) { refusals += reason; });
    }
    void TearDown() override {
        face.reset();
        Stage::TearDown();
    }

    OKU_WINDOW record(OKU_WORD parent = 0, std::uint32_t flags = 0) {
        auto window = makeRecord<OKU_WINDOW>();
        window.templateId = 6003;
        window.title = u"Okno";
        window.parent = parent;
        window.flags = flags;
        window.module = plugin().module;
        window.context = wordOf(this);
        window.callback = [](OKU_WORD param, OKU_WORD, OKU_WORD context) {
            return reinterpret_cast<DialogStage*>(context)->hear(*reinterpret_cast<const OKU_WINDOW_EVENT*>(param));
        };
        return window;
    }
    OKU_WORD open(const Controls& controls, OKU_WORD parent = 0, std::uint32_t flags = 0) {
        OKU_WINDOW window = record(parent, flags);
        controls.fill(window);
        return call(u"UI/WindowOpen", wordOf(&window));
    }
    int openSeen(const Controls& controls, OKU_WORD parent = 0, std::uint32_t flags = 0) {
        const OKU_WORD handle = open(controls, parent, flags);
        call(u"UI/WindowShow", handle, 1);
        return static_cast<int>(handle);
    }
    OKU_WORD set(OKU_WORD window, std::uint32_t control, std::uint32_t what, std::int64_t number,
                 const char16_t* text = u"") {
        auto value = makeRecord<OKU_CONTROL_VALUE>();
        value.window = window;
        value.control = control;
        value.what = what;
        value.number = number;
        value.text = text;
        return call(u"UI/ControlSet", wordOf(&value));
    }
    std::u16string text(OKU_WORD window, std::uint32_t control) {
        const auto value = get(window, control, OKU_VALUE_TEXT);
        return value.text ? value.text : u"(none)";
    }
    std::int64_t number(OKU_WORD window, std::uint32_t control, std::uint32_t what) {
        return get(window, control, what).number;
    }
    OKU_WORD row(OKU_WORD window, std::uint32_t list, OKU_WORD number, const std::u16string& label) {
        auto record = makeRecord<OKU_ROW>();
        record.window = window;
        record.control = list;
        record.row = number;
        record.text = label.c_str();
        return call(u"UI/RowSet", wordOf(&record));
    }
    /// Lets what was asked for be carried out, and gives what the callbacks heard since the last time.
    std::string heard() {
        bool done = false;
        QMetaObject::invokeMethod(
            core.get(), [&done] { done = true; }, Qt::QueuedConnection);
        EXPECT_TRUE(waitFor([&] { return done; }));
        std::string all;
        for (const auto& event : std::exchange(events, {})) all += (all.empty() ? "" : " ") + event;
        return all;
    }
    std::string told() { return std::exchange(tellings, {}).join(u' ').toStdString(); }

    std::unique_ptr<DialogsFace> face;
    std::vector<std::string> events;
    QStringList tellings;
    QStringList refusals;
    OKU_WORD answer = 0;  ///< of the callback
    std::function<void(const OKU_WINDOW_EVENT&)> onEvent;

private:
    OKU_CONTROL_VALUE get(OKU_WORD window, std::uint32_t control, std::uint32_t what) {
        auto value = makeRecord<OKU_CONTROL_VALUE>();
        value.window = window;
        value.control = control;
        value.what = what;
        value.number = -99;
        EXPECT_LE(call(u"UI/ControlGet", wordOf(&value)), 1U);
        return value;
    }
    OKU_WORD hear(const OKU_WINDOW_EVENT& event) {
        EXPECT_TRUE(core->queue.busy());
        events.push_back(std::to_string(event.kind) + ":" + std::to_string(event.window) + "/" +
                         std::to_string(event.control) + "/" + std::to_string(event.number));
        if (onEvent) onEvent(event);
        return answer;
    }
    void note(void (DialogsFace::*signal)(int), const char* name) {
        QObject::connect(face.get(), signal, [this, name](int window) {
            tellings.append(QString::fromLatin1(name) + QString::number(window));
        });
    }
};

}  // namespace oku::test
