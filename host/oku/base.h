// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
/* The ground that every record of the host's boundary stands on. Compiles alone as C11 and as C++20.
 *
 * Every record begins with its own size in bytes, is zeroed before its fields are set, and lies in memory exactly as
 * the offsets asserted beside it tell. Text is NUL-terminated UTF-16 on every target. Strings in a record belong to
 * whoever filled it, and are needed only during the call. */
#ifndef OKU_BASE_H
#define OKU_BASE_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
#define OKU_ASSERT(condition, text) static_assert(condition, text)
#else
#include <assert.h>
#include <uchar.h>
#define OKU_ASSERT(condition, text) _Static_assert(condition, text)
#endif

/* The platform's plain C calling convention; 64-bit targets have one only. */
#if defined(_WIN32)
#define OKU_CALL __cdecl
#else
#define OKU_CALL
#endif

#define OKU_ASSERT_SIZE(record, bytes) OKU_ASSERT(sizeof(record) == (bytes), "size of " #record)
#define OKU_ASSERT_OFFSET(record, field, bytes) \
    OKU_ASSERT(offsetof(record, field) == (bytes), "offset of " #record "." #field)

/* One machine word: every argument and result of the host's table. */
typedef intptr_t OKU_WORD;
OKU_ASSERT_SIZE(OKU_WORD, 8);
OKU_ASSERT_SIZE(void*, 8);
OKU_ASSERT_SIZE(char16_t, 2);

/* A service, hook, menu item, timer or socket callback. `context` is the word given at registration. */
typedef OKU_WORD(OKU_CALL* OKU_HANDLER)(OKU_WORD param, OKU_WORD extra, OKU_WORD context);

#endif
