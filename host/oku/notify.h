// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
/* Pop-ups: "OKU/ShowStandardNotify". */
#ifndef OKU_NOTIFY_H
#define OKU_NOTIFY_H

#include "base.h"

enum { OKU_NOTIFY_TUNE = 16, OKU_NOTIFY_MOOD = 17, OKU_NOTIFY_MAIL = 18 };
enum { OKU_NOTIFY_MODE_MAIL = 8, OKU_NOTIFY_MODE_MAIL_KEPT = 10, OKU_NOTIFY_MODE_PERSONAL = 24 };

/* Param of "OKU/ShowStandardNotify", extra 0. */
typedef struct OKU_NOTIFY {
    uint32_t size; /* 72 */
    uint32_t reserved4;
    const char16_t* text;
    const char16_t* title;
    const char16_t* key;  /* names the pop-up; may be null */
    const char16_t* icon; /* the name of an image */
    uint32_t value40;     /* 3 */
    uint32_t value44;     /* 0 */
    uint32_t kind;
    uint32_t mode;
    OKU_HANDLER callback; /* may be null. Called with (OKU_NOTIFY_EVENT, 0, 0); the result is 0 */
    OKU_WORD user;        /* comes back in OKU_NOTIFY_EVENT */
} OKU_NOTIFY;

OKU_ASSERT_SIZE(OKU_NOTIFY, 72);
OKU_ASSERT_OFFSET(OKU_NOTIFY, text, 8);
OKU_ASSERT_OFFSET(OKU_NOTIFY, title, 16);
OKU_ASSERT_OFFSET(OKU_NOTIFY, key, 24);
OKU_ASSERT_OFFSET(OKU_NOTIFY, icon, 32);
OKU_ASSERT_OFFSET(OKU_NOTIFY, value40, 40);
OKU_ASSERT_OFFSET(OKU_NOTIFY, value44, 44);
OKU_ASSERT_OFFSET(OKU_NOTIFY, kind, 48);
OKU_ASSERT_OFFSET(OKU_NOTIFY, mode, 52);
OKU_ASSERT_OFFSET(OKU_NOTIFY, callback, 56);
OKU_ASSERT_OFFSET(OKU_NOTIFY, user, 64);

enum { OKU_NOTIFY_CLICKED = 1, OKU_NOTIFY_GONE = 4 };

/* What the callback of a pop-up receives. */
typedef struct OKU_NOTIFY_EVENT {
    uint32_t size; /* 16 */
    uint32_t action;
    OKU_WORD user;
} OKU_NOTIFY_EVENT;

OKU_ASSERT_SIZE(OKU_NOTIFY_EVENT, 16);
OKU_ASSERT_OFFSET(OKU_NOTIFY_EVENT, action, 4);
OKU_ASSERT_OFFSET(OKU_NOTIFY_EVENT, user, 8);

#endif
