// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The wall between the host's table and the plugin: no exception crosses it, no dead object is reached through it, and
// nothing is freed that a call further out on the stack still uses.
#pragma once

#include <exception>
#include <memory>
#include <unordered_map>

#include "host/oku/base.h"

namespace protolink {

/// One call of the host into the plugin. Calls may nest; what was handed to `releaseAfterCall` goes when the outermost
/// one returns.
class PluginCall {
public:
    PluginCall() noexcept;
    ~PluginCall();
    PluginCall(const PluginCall&) = delete;
    PluginCall& operator=(const PluginCall&) = delete;
};

/// Keeps `object` alive until the outermost call into the plugin has returned. Outside of any call it goes at once.
void releaseAfterCall(std::shared_ptr<void> object);

/// Writes what stopped a call into the host's log. Never throws.
void reportException(const char* what) noexcept;

/// Runs one step after which others have to follow whatever happens. An exception ends the step with a log line.
template <typename Step>
void tolerate(Step&& step) noexcept {
    try {
        step();
    } catch (const std::exception& error) {
        reportException(error.what());
    } catch (...) {
        reportException("unknown exception");
    }
}

/// Runs one entry into the plugin. An exception ends it with the plain result 0 and a log line.
template <typename Entry>
OKU_WORD atBoundary(Entry&& entry) noexcept {
    const PluginCall call;
    OKU_WORD result = 0;
    tolerate([&] { result = entry(); });
    return result;
}

/// The objects that the host may name by a context word. A word is never used twice, so a late callback of an object
/// that has gone finds nothing.
template <typename Object>
class LiveObjects {
public:
    OKU_WORD add(Object& object) {
        objects_.emplace(++last_, &object);
        return last_;
    }
    void remove(OKU_WORD word) { objects_.erase(word); }
    Object* find(OKU_WORD word) const {
        const auto found = objects_.find(word);
        return found == objects_.end() ? nullptr : found->second;
    }

private:
    std::unordered_map<OKU_WORD, Object*> objects_;
    OKU_WORD last_ = 0;
};

}  // namespace protolink
