// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
/* vCards (XEP-0054): the host's window of a contact's card ("VCard/..."), its form of the user's own card and picture
 * ("MyVCard/..."), and the requests that the host makes of an account. */
#ifndef OKU_CARDS_H
#define OKU_CARDS_H

#include "base.h"

/* Param of "PFGetMyVCard", "PFSetMyVCard", "PFGetMyAvatar" and "PFSetMyAvatar". The token is the host's own word for
 * its request; it comes back in what the plugin tells of it. */
typedef struct OKU_OWN_CARD_REQUEST {
    uint32_t size; /* 16 */
    uint32_t reserved4;
    OKU_WORD token;
} OKU_OWN_CARD_REQUEST;

OKU_ASSERT_SIZE(OKU_OWN_CARD_REQUEST, 16);
OKU_ASSERT_OFFSET(OKU_OWN_CARD_REQUEST, token, 8);

/* Param of "PFGetContactVCard". */
typedef struct OKU_CONTACT_CARD_REQUEST {
    uint32_t size; /* 40 */
    uint32_t reserved4;
    OKU_WORD token;
    uint32_t reserved16[4];
    const char16_t* jid;
} OKU_CONTACT_CARD_REQUEST;

OKU_ASSERT_SIZE(OKU_CONTACT_CARD_REQUEST, 40);
OKU_ASSERT_OFFSET(OKU_CONTACT_CARD_REQUEST, token, 8);
OKU_ASSERT_OFFSET(OKU_CONTACT_CARD_REQUEST, jid, 32);

enum { OKU_CARD_FIELD = 0, OKU_CARD_SECTION = 1, OKU_CARD_IMAGE = 2 };

/* Param of "VCard/AddElement", extra 0: the next row of a contact's card. */
typedef struct OKU_CARD_ELEMENT {
    uint32_t size; /* 40 */
    uint32_t reserved4;
    const char16_t* label; /* empty for a section */
    const char16_t* value; /* the text; a section's title; an image's file */
    uint32_t kind;
    uint32_t reserved28;
    OKU_WORD token;
} OKU_CARD_ELEMENT;

OKU_ASSERT_SIZE(OKU_CARD_ELEMENT, 40);
OKU_ASSERT_OFFSET(OKU_CARD_ELEMENT, label, 8);
OKU_ASSERT_OFFSET(OKU_CARD_ELEMENT, value, 16);
OKU_ASSERT_OFFSET(OKU_CARD_ELEMENT, kind, 24);
OKU_ASSERT_OFFSET(OKU_CARD_ELEMENT, token, 32);

/* Param of "VCard/SetStatus", extra 0. */
typedef struct OKU_CARD_STATUS {
    uint32_t size; /* 32 */
    uint32_t reserved4;
    const char16_t* text; /* null when the card has come */
    uint32_t state;       /* 1: the rows follow */
    uint32_t reserved20;
    OKU_WORD token;
} OKU_CARD_STATUS;

OKU_ASSERT_SIZE(OKU_CARD_STATUS, 32);
OKU_ASSERT_OFFSET(OKU_CARD_STATUS, text, 8);
OKU_ASSERT_OFFSET(OKU_CARD_STATUS, state, 16);
OKU_ASSERT_OFFSET(OKU_CARD_STATUS, token, 24);

/* Param of "MyVCard/SetFieldValue", extra 0. Keys: "nick", "name", "surname", "email", "www", "title", "role", "birth";
 * and "avatar", whose value is a file. */
typedef struct OKU_OWN_CARD_FIELD {
    uint32_t size; /* 40 */
    uint32_t reserved4;
    const char16_t* key;
    const char16_t* value;
    uint32_t reserved24[2];
    OKU_WORD token;
} OKU_OWN_CARD_FIELD;

OKU_ASSERT_SIZE(OKU_OWN_CARD_FIELD, 40);
OKU_ASSERT_OFFSET(OKU_OWN_CARD_FIELD, key, 8);
OKU_ASSERT_OFFSET(OKU_OWN_CARD_FIELD, value, 16);
OKU_ASSERT_OFFSET(OKU_OWN_CARD_FIELD, token, 32);

/* Param of "MyVCard/GetFieldValue", extra 0. The host writes the field's text into the buffer, with a NUL. */
typedef struct OKU_OWN_CARD_FIELD_GET {
    uint32_t size; /* 40 */
    uint32_t reserved4;
    const char16_t* key;
    char16_t* buffer;
    uint32_t capacity; /* 1024 characters, the NUL included */
    uint32_t reserved28;
    OKU_WORD token;
} OKU_OWN_CARD_FIELD_GET;

OKU_ASSERT_SIZE(OKU_OWN_CARD_FIELD_GET, 40);
OKU_ASSERT_OFFSET(OKU_OWN_CARD_FIELD_GET, key, 8);
OKU_ASSERT_OFFSET(OKU_OWN_CARD_FIELD_GET, buffer, 16);
OKU_ASSERT_OFFSET(OKU_OWN_CARD_FIELD_GET, capacity, 24);
OKU_ASSERT_OFFSET(OKU_OWN_CARD_FIELD_GET, token, 32);

enum { OKU_OWN_CARD_CAPACITY = 1024 }; /* characters of a field's buffer */

/* Param of "MyVCard/SetStatus", extra 0. */
typedef struct OKU_OWN_CARD_STATUS {
    uint32_t size; /* 40 */
    uint32_t reserved4;
    const char16_t* text;
    OKU_WORD token;
    const char16_t* pfClass; /* "XMPP" */
    uint32_t netId;
    uint32_t reserved36;
} OKU_OWN_CARD_STATUS;

OKU_ASSERT_SIZE(OKU_OWN_CARD_STATUS, 40);
OKU_ASSERT_OFFSET(OKU_OWN_CARD_STATUS, text, 8);
OKU_ASSERT_OFFSET(OKU_OWN_CARD_STATUS, token, 16);
OKU_ASSERT_OFFSET(OKU_OWN_CARD_STATUS, pfClass, 24);
OKU_ASSERT_OFFSET(OKU_OWN_CARD_STATUS, netId, 32);

#endif
