// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
/* Icons: "OKU/Graph/ICCreate", "OKU/Graph/AddIC" (icon's name as param, a fallback image's name as extra),
 * "OKU/Graph/LoadIS" and "OKU/Graph/Load". */
#ifndef OKU_GRAPHICS_H
#define OKU_GRAPHICS_H

#include "base.h"

/* Param of "OKU/Graph/ICCreate": a class of contact icons. */
typedef struct OKU_ICON_CLASS {
    uint32_t size; /* 80 */
    uint32_t reserved4;
    const char16_t* name;
    uint32_t reserved16[9];
    uint32_t value52; /* 3 */
    uint32_t reserved56[6];
} OKU_ICON_CLASS;

OKU_ASSERT_SIZE(OKU_ICON_CLASS, 80);
OKU_ASSERT_OFFSET(OKU_ICON_CLASS, name, 8);
OKU_ASSERT_OFFSET(OKU_ICON_CLASS, value52, 52);

/* Param of "OKU/Graph/Load": one icon out of the library's resources. */
typedef struct OKU_ICON_LOAD {
    uint32_t size; /* 72 */
    uint32_t reserved4;
    const char16_t* name;
    uint32_t reserved16[8];
    OKU_WORD resource;
    OKU_WORD module;
    uint32_t reserved64[2];
} OKU_ICON_LOAD;

OKU_ASSERT_SIZE(OKU_ICON_LOAD, 72);
OKU_ASSERT_OFFSET(OKU_ICON_LOAD, name, 8);
OKU_ASSERT_OFFSET(OKU_ICON_LOAD, resource, 48);
OKU_ASSERT_OFFSET(OKU_ICON_LOAD, module, 56);

/* Param of "OKU/Graph/LoadIS": the set of status icons of one protocol class. */
typedef struct OKU_ICON_SET {
    uint32_t size; /* 72 */
    uint32_t reserved4[3];
    uint32_t value16; /* 2 */
    uint32_t reserved20;
    const uint32_t* statuses;
    uint32_t statusCount;
    uint32_t reserved36;
    const uint32_t* second;
    uint32_t secondCount;
    uint32_t value52; /* 1 */
    const char16_t* baseName;
    const char16_t* pfClass;
} OKU_ICON_SET;

OKU_ASSERT_SIZE(OKU_ICON_SET, 72);
OKU_ASSERT_OFFSET(OKU_ICON_SET, value16, 16);
OKU_ASSERT_OFFSET(OKU_ICON_SET, statuses, 24);
OKU_ASSERT_OFFSET(OKU_ICON_SET, statusCount, 32);
OKU_ASSERT_OFFSET(OKU_ICON_SET, second, 40);
OKU_ASSERT_OFFSET(OKU_ICON_SET, secondCount, 48);
OKU_ASSERT_OFFSET(OKU_ICON_SET, value52, 52);
OKU_ASSERT_OFFSET(OKU_ICON_SET, baseName, 56);
OKU_ASSERT_OFFSET(OKU_ICON_SET, pfClass, 64);

#endif
