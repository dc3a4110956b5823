// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
/* The host's table of functions, and the three functions that the plugin exports.
 *
 * The table is valid from pluginLoad to the end of pluginUnload. The host must never run two calls into the plugin at
 * the same time: the plugin takes no lock. */
#ifndef OKU_TABLE_H
#define OKU_TABLE_H

#include "base.h"

typedef struct OKU_FUNCTION_TABLE {
    /* Registers the service `name`. Returns the registration's handle; 0 means that it was not registered. */
    OKU_WORD(OKU_CALL* fnCreate)(const char16_t* name, OKU_HANDLER handler, OKU_WORD context);
    /* Takes a registration of fnCreate back. The result is ignored. */
    OKU_WORD(OKU_CALL* fnDestroy)(OKU_WORD handle);
    /* Calls a named service. Returns what the service returns, 0 when there is no such service. */
    OKU_WORD(OKU_CALL* fnCall)(const char16_t* name, OKU_WORD param, OKU_WORD extra);
    OKU_WORD reserved3; /* never called by this plugin */
    OKU_WORD reserved4; /* never called by this plugin */
    /* Makes an event that others can hook. Returns its handle. */
    OKU_WORD(OKU_CALL* evCreate)(const char16_t* name);
    OKU_WORD(OKU_CALL* evDestroy)(OKU_WORD event);
    /* Tells an event's listeners. A non-zero result makes the caller stop its own handling. */
    OKU_WORD(OKU_CALL* evNotify)(OKU_WORD event, OKU_WORD param, OKU_WORD extra);
    /* Attaches a handler to a host event. Returns the attachment's handle. */
    OKU_WORD(OKU_CALL* hookAdd)(const char16_t* name, OKU_HANDLER handler, OKU_WORD context);
    OKU_WORD(OKU_CALL* hookRemove)(OKU_WORD handle);
} OKU_FUNCTION_TABLE;

OKU_ASSERT_SIZE(OKU_FUNCTION_TABLE, 80);
OKU_ASSERT_OFFSET(OKU_FUNCTION_TABLE, fnCreate, 0);
OKU_ASSERT_OFFSET(OKU_FUNCTION_TABLE, fnDestroy, 8);
OKU_ASSERT_OFFSET(OKU_FUNCTION_TABLE, fnCall, 16);
OKU_ASSERT_OFFSET(OKU_FUNCTION_TABLE, evCreate, 40);
OKU_ASSERT_OFFSET(OKU_FUNCTION_TABLE, evDestroy, 48);
OKU_ASSERT_OFFSET(OKU_FUNCTION_TABLE, evNotify, 56);
OKU_ASSERT_OFFSET(OKU_FUNCTION_TABLE, hookAdd, 64);
OKU_ASSERT_OFFSET(OKU_FUNCTION_TABLE, hookRemove, 72);

/* The static description of a plugin, as queryPlugInfo returns it. The host only reads it. */
typedef struct OKU_PLUGIN_INFO {
    uint32_t size; /* 120 */
    const char16_t* name;
    const char16_t* description;
    const char16_t* legal;
    const char16_t* author;
    const char16_t* email;
    const char16_t* site;
    const char16_t* updateUrl; /* of an XML update description */
    uint32_t numbers[5];       /* the plugin loader's own; handed over unchanged */
    uint32_t reserved[9];
} OKU_PLUGIN_INFO;

OKU_ASSERT_SIZE(OKU_PLUGIN_INFO, 120);
OKU_ASSERT_OFFSET(OKU_PLUGIN_INFO, name, 8);
OKU_ASSERT_OFFSET(OKU_PLUGIN_INFO, description, 16);
OKU_ASSERT_OFFSET(OKU_PLUGIN_INFO, legal, 24);
OKU_ASSERT_OFFSET(OKU_PLUGIN_INFO, author, 32);
OKU_ASSERT_OFFSET(OKU_PLUGIN_INFO, email, 40);
OKU_ASSERT_OFFSET(OKU_PLUGIN_INFO, site, 48);
OKU_ASSERT_OFFSET(OKU_PLUGIN_INFO, updateUrl, 56);
OKU_ASSERT_OFFSET(OKU_PLUGIN_INFO, numbers, 64);

/* The exports. queryPlugInfo has no side effect and may be called before pluginLoad. The other two return 0, always.
 * `module` is an opaque word that comes back in records which name the module. */
typedef const OKU_PLUGIN_INFO*(OKU_CALL* OKU_QUERY_PLUG_INFO)(void);
typedef OKU_WORD(OKU_CALL* OKU_PLUGIN_LOAD)(OKU_WORD module, const OKU_FUNCTION_TABLE* table);
typedef OKU_WORD(OKU_CALL* OKU_PLUGIN_UNLOAD)(void);

#endif
