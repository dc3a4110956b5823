// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
/* Reads the description of a plugin, as a host does before it loads one. */
#include <dlfcn.h>
#include <stdio.h>

#include <oku/table.h>

int main(int argc, char** argv) {
    void* module = argc == 2 ? dlopen(argv[1], RTLD_NOW | RTLD_LOCAL) : NULL;
    if (module == NULL) {
        fprintf(stderr, "usage: describe MODULE (%s)\n", argc == 2 ? dlerror() : "no module");
        return 1;
    }
    OKU_QUERY_PLUG_INFO query;
    *(void**)&query = dlsym(module, "queryPlugInfo");
    const OKU_PLUGIN_INFO* info = query != NULL ? query() : NULL;
    if (info == NULL || info->size != sizeof *info || info->name == NULL) {
        fprintf(stderr, "no description of %zu bytes\n", sizeof *info);
        return 1;
    }
    const unsigned number = info->numbers[0];
    printf("record of %u bytes, first number %u\n", info->size, number);
    dlclose(module); /* takes the description with it */
    return number == 1200 ? 0 : 1;
}
