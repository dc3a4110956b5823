// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
/* "OKU/Menu/Add" and "OKU/Menu/Modify", and what may stand in the menu of a contact. */
#ifndef OKU_MENU_H
#define OKU_MENU_H

#include "base.h"
#include "contact.h"

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

/* Param of the host's event "OKU/OnMenuRebuild", extra 0: a contact's menu is about to be shown. It begins empty, and
 * those who listen permit items of the host's by the names of their services, such as "OKU/Contact/Chat". */
typedef struct OKU_CONTACT_MENU {
    uint32_t size;                     /* 56 */
    uint32_t contactCount;             /* how many contacts are selected; `contact` is one of them */
    const char16_t* menu;              /* names the menu; that of a chat's window is "OKU/Loc/ChatWND" */
    const OKU_CONTACT_RECORD* contact; /* null: the menu is not one of contacts */
    OKU_HANDLER add;                   /* (the item's name, 0, addContext) */
    OKU_WORD addContext;
    uint32_t reserved40[4];
} OKU_CONTACT_MENU;

OKU_ASSERT_SIZE(OKU_CONTACT_MENU, 56);
OKU_ASSERT_OFFSET(OKU_CONTACT_MENU, contactCount, 4);
OKU_ASSERT_OFFSET(OKU_CONTACT_MENU, menu, 8);
OKU_ASSERT_OFFSET(OKU_CONTACT_MENU, contact, 16);
OKU_ASSERT_OFFSET(OKU_CONTACT_MENU, add, 24);
OKU_ASSERT_OFFSET(OKU_CONTACT_MENU, addContext, 32);

#endif
