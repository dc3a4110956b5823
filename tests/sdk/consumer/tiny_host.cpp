// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The smallest host there can be: it has no service at all. The plugin must load, and leave nothing registered.
#include <dlfcn.h>

#include <cstdio>
#include <set>

#include <oku/table.h>

namespace {

std::set<OKU_WORD> registrations;
OKU_WORD lastHandle = 0;

OKU_WORD add() {
    registrations.insert(++lastHandle);
    return lastHandle;
}

OKU_WORD remove(OKU_WORD handle) {
    return registrations.erase(handle) == 1;
}

}  // namespace

int main() {
    OKU_FUNCTION_TABLE table{};
    table.fnCreate = [](const char16_t*, OKU_HANDLER, OKU_WORD) { return add(); };
    table.fnDestroy = [](OKU_WORD handle) { return remove(handle); };
    table.fnCall = [](const char16_t*, OKU_WORD, OKU_WORD) -> OKU_WORD { return 0; };
    table.evCreate = [](const char16_t*) { return add(); };
    table.evDestroy = [](OKU_WORD handle) { return remove(handle); };
    table.evNotify = [](OKU_WORD, OKU_WORD, OKU_WORD) -> OKU_WORD { return 0; };
    table.hookAdd = [](const char16_t*, OKU_HANDLER, OKU_WORD) { return add(); };
    table.hookRemove = [](OKU_WORD handle) { return remove(handle); };

    void* module = dlopen(MODULE_FILE, RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    const auto load = reinterpret_cast<OKU_PLUGIN_LOAD>(dlsym(module, "pluginLoad"));
    const auto unload = reinterpret_cast<OKU_PLUGIN_UNLOAD>(dlsym(module, "pluginUnload"));
    if (load == nullptr || unload == nullptr) {
        std::fprintf(stderr, "an export is missing\n");
        return 1;
    }
    load(reinterpret_cast<OKU_WORD>(module), &table);
    const std::size_t registered = registrations.size();
    unload();
    dlclose(module);
    std::printf("%zu registrations while loaded, %zu afterwards\n", registered, registrations.size());
    return registered > 0 && registrations.empty() ? 0 : 1;
}
