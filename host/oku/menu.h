// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
/* "OKU/Menu/Add" and "OKU/Menu/Modify". */
#ifndef OKU_MENU_H
#define OKU_MENU_H

#include "base.h"

enum { OKU_MENU_SEPARATOR = 16, OKU_MENU_CHANGE_ICON = 16777216 };

/* Param of both services, extra 0. */
typedef struct OKU_MENU_RECORD {
    uint32_t size; /* 96 */
    uint32_t reserved4;
    const char16_t* id;
    const char16_t* parent;
    const char16_t* caption;
    uint32_t reserved32[2];
    uint32_t flags;
    int32_t order; /* items with a higher value stand above those with a lower one */
    const char16_t* icon;
    OKU_HANDLER callback; /* (OKU_MENU_EVENT, unused, context) */
    OKU_WORD context;
    uint32_t reserved72[2];
    OKU_WORD module;
    uint32_t reserved88[2];
} OKU_MENU_RECORD;

OKU_ASSERT_SIZE(OKU_MENU_RECORD, 96);
OKU_ASSERT_OFFSET(OKU_MENU_RECORD, id, 8);
OKU_ASSERT_OFFSET(OKU_MENU_RECORD, parent, 16);
OKU_ASSERT_OFFSET(OKU_MENU_RECORD, caption, 24);
OKU_ASSERT_OFFSET(OKU_MENU_RECORD, flags, 40);
OKU_ASSERT_OFFSET(OKU_MENU_RECORD, order, 44);
OKU_ASSERT_OFFSET(OKU_MENU_RECORD, icon, 48);
OKU_ASSERT_OFFSET(OKU_MENU_RECORD, callback, 56);
OKU_ASSERT_OFFSET(OKU_MENU_RECORD, context, 64);
OKU_ASSERT_OFFSET(OKU_MENU_RECORD, module, 80);

/* What a menu item's callback receives. */
typedef struct OKU_MENU_EVENT {
    uint32_t size; /* 16 */
    uint32_t reserved4;
    const char16_t* id; /* the item that was chosen */
} OKU_MENU_EVENT;

OKU_ASSERT_SIZE(OKU_MENU_EVENT, 16);
OKU_ASSERT_OFFSET(OKU_MENU_EVENT, id, 8);

#endif
