// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
/* "OKU/Log": one line for the host's log, or for the user. */
#ifndef OKU_LOG_H
#define OKU_LOG_H

#include "base.h"

enum {
    OKU_LOG_USER = -2,        /* a notice that the user must see; the tag is null */
    OKU_LOG_NEGOTIATION = -1, /* failures of negotiation */
    OKU_LOG_ERROR = 0,        /* errors and resets */
    OKU_LOG_WARNING = 1,      /* warnings and milestones */
    OKU_LOG_RECONNECT = 2,    /* the notes about reconnection */
    OKU_LOG_DEBUG = 5,        /* trace, by far the most common */
    OKU_LOG_PING = 6          /* the keepalive line */
};

/* Param of "OKU/Log", extra 0. Result ignored. */
typedef struct OKU_LOG_RECORD {
    uint32_t size; /* 40 */
    int32_t level;
    const char16_t* tag;  /* may be null */
    const char16_t* text; /* lines of one message are parted by CR, LF and two tabs */
    uint32_t reserved[4];
} OKU_LOG_RECORD;

OKU_ASSERT_SIZE(OKU_LOG_RECORD, 40);
OKU_ASSERT_OFFSET(OKU_LOG_RECORD, level, 4);
OKU_ASSERT_OFFSET(OKU_LOG_RECORD, tag, 8);
OKU_ASSERT_OFFSET(OKU_LOG_RECORD, text, 16);

#endif
