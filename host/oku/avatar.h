// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
/* Pictures of contacts and of the user. */
#ifndef OKU_AVATAR_H
#define OKU_AVATAR_H

#include "base.h"
#include "contact.h"

/* Param of "OKU/CTL/SetAvatar", extra 0: a contact's picture lies in this file from now on. */
typedef struct OKU_CONTACT_AVATAR {
    uint32_t size; /* 56 */
    uint32_t reserved4;
    const char16_t* path;
    uint32_t kind; /* 1 */
    uint32_t reserved20[3];
    const OKU_CONTACT_RECORD* contact;
    uint32_t reserved40[2];
    uint32_t count; /* 1 */
    uint32_t reserved52;
} OKU_CONTACT_AVATAR;

OKU_ASSERT_SIZE(OKU_CONTACT_AVATAR, 56);
OKU_ASSERT_OFFSET(OKU_CONTACT_AVATAR, path, 8);
OKU_ASSERT_OFFSET(OKU_CONTACT_AVATAR, kind, 16);
OKU_ASSERT_OFFSET(OKU_CONTACT_AVATAR, contact, 32);
OKU_ASSERT_OFFSET(OKU_CONTACT_AVATAR, count, 48);

enum { OKU_AVATAR_SET = 2 };

/* What the listeners of "OKU/OnAvatarChanged" get as param: the user's own picture is another one, or gone. */
typedef struct OKU_AVATAR_CHANGED {
    uint32_t size; /* 40 */
    uint32_t reserved4[3];
    const char16_t* hash; /* SHA-1 of the new picture's file, 40 hexadecimal digits */
    uint32_t reserved24[2];
    uint32_t action; /* 2: a picture is set. Any other: there is none */
    uint32_t reserved36;
} OKU_AVATAR_CHANGED;

OKU_ASSERT_SIZE(OKU_AVATAR_CHANGED, 40);
OKU_ASSERT_OFFSET(OKU_AVATAR_CHANGED, hash, 16);
OKU_ASSERT_OFFSET(OKU_AVATAR_CHANGED, action, 32);

#endif
