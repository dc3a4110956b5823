// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/support/recording_host.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "tests/support/host_services.h"
#include "tests/support/text.h"

namespace harness {
namespace {
RecordingHost* current = nullptr;

constexpr std::array<std::pair<std::uint32_t, const char*>, 11> kHookWords = {{{1, "stream-in"},
                                                                               {2, "stream-out"},
                                                                               {3, "contact-state"},
                                                                               {4, "own-status"},
                                                                               {5, "message-in"},
                                                                               {6, "message-out"},
                                                                               {8, "session-bound"},
                                                                               {9, "connection-ended"},
                                                                               {11, "roster-complete"},
                                                                               {14, "typing-in"},
                                                                               {19, "new-mail"}}};
}  // namespace

std::string render(const Event& event) {
    if (event.category != Event::Category::Sent) return render(event.line);
    return event.line.head + " " + escape(event.data);
}

std::string hookWord(std::uint32_t kind) {
    for (const auto& [number, word] : kHookWords) {
        if (number == kind) return word;
    }
    return std::to_string(kind);
}

std::uint32_t hookKind(const std::string& word) {
    for (const auto& [number, name] : kHookWords) {
        if (word == name) return number;
    }
    throw std::invalid_argument("no kind of hook: " + word);
}

/// The functions behind the table; each goes to the current host.
struct HostTable {
    static OKU_WORD OKU_CALL create(const char16_t* name, OKU_HANDLER handler, OKU_WORD context) {
        return current->create(name, handler, context);
    }
    static OKU_WORD OKU_CALL destroy(OKU_WORD handle) { return current->destroy(handle); }
    static OKU_WORD OKU_CALL call(const char16_t* name, OKU_WORD param, OKU_WORD extra) {
        return current->call(name, param, extra);
    }
    static OKU_WORD OKU_CALL createEvent(const char16_t* name) { return current->createEvent(name); }
    static OKU_WORD OKU_CALL destroyEvent(OKU_WORD event) { return current->destroyEvent(event); }
    static OKU_WORD OKU_CALL notify(OKU_WORD event, OKU_WORD param, OKU_WORD extra) {
        return current->notify(event, param, extra);
    }
    static OKU_WORD OKU_CALL addHook(const char16_t* name, OKU_HANDLER handler, OKU_WORD context) {
        return current->addHook(name, handler, context);
    }
    static OKU_WORD OKU_CALL removeHook(OKU_WORD handle) { return current->removeHook(handle); }

    static constexpr OKU_FUNCTION_TABLE kTable = {create,      destroy,      call,   0,       0,
                                                  createEvent, destroyEvent, notify, addHook, removeHook};
};

RecordingHost::RecordingHost() { current = this; }
RecordingHost::~RecordingHost() { current = nullptr; }
const OKU_FUNCTION_TABLE* RecordingHost::table() const { return &HostTable::kTable; }

ReadContext RecordingHost::context() {
    return {module, now ? now() : 0, [this](const std::string& what) { complain(what); },
            [this](OKU_WORD handle) {
                const auto found = dialogs.all.find(handle);
                return found != dialogs.all.end() && found->second.open ? found->second.templateId : 0;
            }};
}

void RecordingHost::record(Event event) {
    const auto trigger = std::find_if(triggers.begin(), triggers.end(),
                                      [&](const auto& entry) { return startsWith(render(event), entry.first); });
    if (onEvent) onEvent(std::move(event));
    if (trigger == triggers.end()) return;
    const auto action = trigger->second;
    triggers.erase(trigger);
    action();
}

OKU_WORD RecordingHost::create(const char16_t* name, OKU_HANDLER handler, OKU_WORD context) {
    if (fails()) return 0;
    const auto text = copyText(name);
    if (!handler) complain("service " + text + " has no handler");
    if (services.count(text)) complain("service " + text + " is registered twice");
    plain(Line{"registers " + text, {}, {}, {}});
    services[text] = {handler, context};
    serviceHandles_[++nextHandle] = text;
    return nextHandle;
}

OKU_WORD RecordingHost::destroy(OKU_WORD handle) {
    if (fails()) return 0;
    const auto found = serviceHandles_.find(handle);
    if (found == serviceHandles_.end()) return complainDead("fnDestroy of a dead handle"), 0;
    plain(Line{"unregisters " + found->second, {}, {}, {}});
    services.erase(found->second);
    serviceHandles_.erase(found);
    return 0;
}

OKU_WORD RecordingHost::addHook(const char16_t* name, OKU_HANDLER handler, OKU_WORD context) {
    if (fails()) return 0;
    const auto text = copyText(name);
    if (!handler) complain("hook on " + text + " has no handler");
    plain(Line{"attaches " + text, {}, {}, {}});
    hooks.push_back({text, {handler, context}});
    hookHandles_[++nextHandle] = text;
    return nextHandle;
}

OKU_WORD RecordingHost::removeHook(OKU_WORD handle) {
    if (fails()) return 0;
    const auto found = hookHandles_.find(handle);
    if (found == hookHandles_.end()) return complainDead("hookRemove of a dead handle"), 0;
    plain(Line{"detaches " + found->second, {}, {}, {}});
    const auto hook = std::find_if(hooks.begin(), hooks.end(), [&](const auto& h) { return h.first == found->second; });
    if (hook != hooks.end()) hooks.erase(hook);
    hookHandles_.erase(found);
    return 0;
}

OKU_WORD RecordingHost::createEvent(const char16_t* name) {
    if (fails()) return 0;
    plain(Line{"creates event " + copyText(name), {}, {}, {}});
    events_[++nextHandle] = copyText(name);
    return nextHandle;
}

OKU_WORD RecordingHost::destroyEvent(OKU_WORD event) {
    if (fails()) return 0;
    const auto found = events_.find(event);
    if (found == events_.end()) return complainDead("evDestroy of a dead handle"), 0;
    plain(Line{"destroys event " + found->second, {}, {}, {}});
    events_.erase(found);
    return 0;
}

OKU_WORD RecordingHost::notify(OKU_WORD event, OKU_WORD param, OKU_WORD extra) {
    if (fails()) return 0;
    const auto found = events_.find(event);
    if (found == events_.end()) return complainDead("evNotify of a dead handle"), 0;
    // What is scripted is taken before the event is told: a trigger may end the plugin.
    const auto answer = scripted(found->second).value_or(0);
    plain(Line{"notifies " + found->second, personalEvent(*this, param, extra), {}, {}});
    return answer;
}

OKU_WORD RecordingHost::call(const char16_t* name, OKU_WORD param, OKU_WORD extra) {
    if (fails()) return 0;
    return callService(*this, copyText(name), param, extra);
}

std::optional<OKU_WORD> RecordingHost::scripted(const std::string& service) {
    if (absent.count(service)) return 0;
    if (auto& once = answersOnce[service]; !once.empty()) {
        const auto answer = once.front();
        once.pop_front();
        return answer;
    }
    const auto always = answersAlways.find(service);
    return always == answersAlways.end() ? std::nullopt : std::optional(always->second);
}

void RecordingHost::change(const std::string& path, const std::string& key, const std::optional<Setting>& value) {
    const auto apply = [&](SettingsFile& file) {
        if (value) {
            file[key] = *value;
        } else {
            file.erase(key);
        }
    };
    apply(settingsFiles[path]);
    for (auto& [handle, store] : stores) {
        if (store.path == path) apply(store.values);
    }
}

void RecordingHost::checkUnloaded() {
    for (const auto& [handle, name] : serviceHandles_) complain("still registered after unloading: service " + name);
    for (const auto& [handle, name] : hookHandles_) complain("still attached after unloading: " + name);
    for (const auto& [handle, name] : events_) complain("still there after unloading: event " + name);
    for (const auto& [handle, store] : stores) complain("still open after unloading: settings " + store.path);
    for (const auto& [name, timer] : timers) complain("still running after unloading: timer " + name);
    for (const auto& [name, socket] : sockets) complain("still there after unloading: socket " + name);
    for (const auto& [handle, window] : dialogs.all) {
        if (window.open) complain("still open after unloading: window " + std::to_string(window.templateId));
    }
    for (const auto& [net, protocol] : protocols)
        complain("still there after unloading: account " + std::to_string(net));
}

void RecordingHost::forgetPlugin() {
    menuItems.clear();
    statusWindows.clear();
    pageParents.clear();
    nextNet = 1;
    nextStore = 1;
}

}  // namespace harness
