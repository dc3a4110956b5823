// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
/* The settings of one account: "OKU/Settings/Init", "Read", "Get", "Set", "Write", "Destroy", in this order.
 * Init: param is the file's path, extra the module; returns the store's handle. Read and Write: param is the handle.
 * Destroy: param is the handle, extra the module. */
#ifndef OKU_SETTINGS_H
#define OKU_SETTINGS_H

#include "base.h"

enum { OKU_SETTING_INTEGER = 1, OKU_SETTING_STRING = 3 };
enum { OKU_SETTING_CAPACITY = 4096 }; /* characters of a string's buffer on Get */

/* Param of "OKU/Settings/Get" and "OKU/Settings/Set", extra 0. Get returns non-zero when it filled the record; on 0
 * the caller applies its default. The result of Set is ignored. */
typedef struct OKU_SETTINGS_RECORD {
    uint32_t size; /* 48 */
    uint32_t reserved4;
    const char16_t* key;
    uint32_t type;
    uint32_t reserved20;
    OKU_WORD value;  /* the integer, or the address of the string or of its buffer */
    uint32_t length; /* Get of a string: the buffer's capacity in characters. Set of a string: its length. Else 0 */
    uint32_t reserved36;
    OKU_WORD store;
} OKU_SETTINGS_RECORD;

OKU_ASSERT_SIZE(OKU_SETTINGS_RECORD, 48);
OKU_ASSERT_OFFSET(OKU_SETTINGS_RECORD, key, 8);
OKU_ASSERT_OFFSET(OKU_SETTINGS_RECORD, type, 16);
OKU_ASSERT_OFFSET(OKU_SETTINGS_RECORD, value, 24);
OKU_ASSERT_OFFSET(OKU_SETTINGS_RECORD, length, 32);
OKU_ASSERT_OFFSET(OKU_SETTINGS_RECORD, store, 40);

#endif
