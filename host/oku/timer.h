// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
/* "OKU/Timer/Create" and "OKU/Timer/Destroy". Destroy's param is the timer's name, or the address of a word that
 * points to the name: a host takes both shapes. */
#ifndef OKU_TIMER_H
#define OKU_TIMER_H

#include "base.h"

/* Param of "OKU/Timer/Create", extra 0. Creating a name that exists starts it anew. */
typedef struct OKU_TIMER_RECORD {
    uint32_t size; /* 48 */
    uint32_t reserved4;
    const char16_t* id;
    uint32_t interval; /* milliseconds */
    uint32_t reserved20;
    OKU_HANDLER handler; /* called with (OKU_TIMER_EVENT, extra, context) */
    OKU_WORD context;
    uint32_t oneShot; /* 1: fires once. 0: repeats */
    uint32_t reserved44;
} OKU_TIMER_RECORD;

OKU_ASSERT_SIZE(OKU_TIMER_RECORD, 48);
OKU_ASSERT_OFFSET(OKU_TIMER_RECORD, id, 8);
OKU_ASSERT_OFFSET(OKU_TIMER_RECORD, interval, 16);
OKU_ASSERT_OFFSET(OKU_TIMER_RECORD, handler, 24);
OKU_ASSERT_OFFSET(OKU_TIMER_RECORD, context, 32);
OKU_ASSERT_OFFSET(OKU_TIMER_RECORD, oneShot, 40);

enum { OKU_TIMER_TICK = 3 };

/* What a timer's handler receives. Kinds other than the tick are ignored. */
typedef struct OKU_TIMER_EVENT {
    uint32_t size; /* 24 */
    uint32_t reserved4;
    uint32_t reserved8;
    uint32_t reserved12;
    uint32_t kind;
    uint32_t reserved20;
} OKU_TIMER_EVENT;

OKU_ASSERT_SIZE(OKU_TIMER_EVENT, 24);
OKU_ASSERT_OFFSET(OKU_TIMER_EVENT, kind, 16);

#endif
