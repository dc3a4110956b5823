// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
/* Contacts: the identity that services and hooks name a contact by, its state, and the contact list's services
 * ("OKU/CTL/..."). */
#ifndef OKU_CONTACT_H
#define OKU_CONTACT_H

#include "base.h"

/* One resource of a contact, as an extra of its identity. */
typedef struct OKU_RESOURCE_INFO {
    uint32_t size; /* 40 */
    uint32_t reserved4;
    const char16_t* resource;
    uint32_t reserved16[3];
    int32_t priority;
    uint32_t reserved32[2];
} OKU_RESOURCE_INFO;

OKU_ASSERT_SIZE(OKU_RESOURCE_INFO, 40);
OKU_ASSERT_OFFSET(OKU_RESOURCE_INFO, resource, 8);
OKU_ASSERT_OFFSET(OKU_RESOURCE_INFO, priority, 28);

/* The identification of one contact. */
typedef struct OKU_CONTACT_RECORD {
    uint32_t size; /* 56 */
    uint32_t reserved4[3];
    const char16_t* id;      /* the bare JID */
    const char16_t* pfClass; /* "XMPP" */
    uint32_t netId;
    uint32_t reserved36[3];
    const OKU_RESOURCE_INFO* resource; /* null unless a service says otherwise */
} OKU_CONTACT_RECORD;

OKU_ASSERT_SIZE(OKU_CONTACT_RECORD, 56);
OKU_ASSERT_OFFSET(OKU_CONTACT_RECORD, id, 16);
OKU_ASSERT_OFFSET(OKU_CONTACT_RECORD, pfClass, 24);
OKU_ASSERT_OFFSET(OKU_CONTACT_RECORD, netId, 32);
OKU_ASSERT_OFFSET(OKU_CONTACT_RECORD, resource, 48);

/* Param of "OKU/CTL/SetContactState" and extra of the hook of a contact's presence. */
typedef struct OKU_CONTACT_STATE {
    uint32_t size; /* 64 */
    uint32_t reserved4;
    const OKU_CONTACT_RECORD* contact;
    uint32_t status;
    uint32_t reserved20;
    const char16_t* description;
    int64_t time; /* seconds since the epoch */
    uint32_t reserved40[2];
    const OKU_RESOURCE_INFO* resource;
    uint32_t reserved56[2];
} OKU_CONTACT_STATE;

OKU_ASSERT_SIZE(OKU_CONTACT_STATE, 64);
OKU_ASSERT_OFFSET(OKU_CONTACT_STATE, contact, 8);
OKU_ASSERT_OFFSET(OKU_CONTACT_STATE, status, 16);
OKU_ASSERT_OFFSET(OKU_CONTACT_STATE, description, 24);
OKU_ASSERT_OFFSET(OKU_CONTACT_STATE, time, 32);
OKU_ASSERT_OFFSET(OKU_CONTACT_STATE, resource, 48);

/* What "OKU/CTL/FndContact" takes as param: the identity inside an OKU_CONTACT_ADD, from its offset 8 on, or an
 * OKU_CONTACT_RECORD, which lies in the same way. Returns the contact's handle or 0. "OKU/CTL/DelContact" takes that
 * handle as param. */
typedef struct OKU_CONTACT_IDENTITY {
    uint32_t reserved0[4];
    const char16_t* id; /* the bare JID */
    const char16_t* pfClass;
    uint32_t netId;
    uint32_t reserved36[5];
} OKU_CONTACT_IDENTITY;

OKU_ASSERT_SIZE(OKU_CONTACT_IDENTITY, 56);
OKU_ASSERT_OFFSET(OKU_CONTACT_IDENTITY, id, 16);
OKU_ASSERT_OFFSET(OKU_CONTACT_IDENTITY, pfClass, 24);
OKU_ASSERT_OFFSET(OKU_CONTACT_IDENTITY, netId, 32);

enum {
    OKU_CONTACT_AUTH_NONE = 1536,  /* neither side sees the other, and nobody asked */
    OKU_CONTACT_AUTH_ASKED = 1280, /* the user asked and waits for the answer */
    OKU_CONTACT_FIELDS_PLAIN = 1,  /* in `fields`: the plain fields are valid */
    OKU_CONTACT_FIELDS_AUTH = 4    /* in `fields`: the authorization bits are valid too */
};

/* Param of "OKU/CTL/AddContact", extra 0. Adding a known contact updates it. */
typedef struct OKU_CONTACT_ADD {
    uint32_t size; /* 104 */
    uint32_t reserved4;
    OKU_CONTACT_IDENTITY identity;
    const char16_t* name;
    const char16_t* group;
    uint32_t kind; /* 3 */
    uint32_t authorization;
    OKU_WORD handle; /* out: the contact's handle */
    uint32_t fields;
    uint32_t reserved100;
} OKU_CONTACT_ADD;

OKU_ASSERT_SIZE(OKU_CONTACT_ADD, 104);
OKU_ASSERT_OFFSET(OKU_CONTACT_ADD, identity, 8);
OKU_ASSERT_OFFSET(OKU_CONTACT_ADD, identity.id, 24);
OKU_ASSERT_OFFSET(OKU_CONTACT_ADD, identity.pfClass, 32);
OKU_ASSERT_OFFSET(OKU_CONTACT_ADD, identity.netId, 40);
OKU_ASSERT_OFFSET(OKU_CONTACT_ADD, name, 64);
OKU_ASSERT_OFFSET(OKU_CONTACT_ADD, group, 72);
OKU_ASSERT_OFFSET(OKU_CONTACT_ADD, kind, 80);
OKU_ASSERT_OFFSET(OKU_CONTACT_ADD, authorization, 84);
OKU_ASSERT_OFFSET(OKU_CONTACT_ADD, handle, 88);
OKU_ASSERT_OFFSET(OKU_CONTACT_ADD, fields, 96);

/* Extra of "OKU/CTL/AddContactIcon" and "OKU/CTL/DelContactIcon"; param is the contact's handle. */
typedef struct OKU_CONTACT_ICON {
    uint32_t size; /* 80 */
    uint32_t reserved4;
    const char16_t* icon;
    uint32_t reserved16[9];
    uint32_t value52; /* 1; 0 for the icons of tune and mood */
    uint32_t value56; /* 1 */
    uint32_t reserved60[3];
    const char16_t* tooltip; /* may be null */
} OKU_CONTACT_ICON;

OKU_ASSERT_SIZE(OKU_CONTACT_ICON, 80);
OKU_ASSERT_OFFSET(OKU_CONTACT_ICON, icon, 8);
OKU_ASSERT_OFFSET(OKU_CONTACT_ICON, value52, 52);
OKU_ASSERT_OFFSET(OKU_CONTACT_ICON, value56, 56);
OKU_ASSERT_OFFSET(OKU_CONTACT_ICON, tooltip, 72);

/* The host's answer to "OKU/PFAskForAuth": extra of the account's authorization handler. */
enum { OKU_AUTH_ASK_IN_RETURN = 1, OKU_AUTH_ACCEPT = 2, OKU_AUTH_REFUSE = 4 };

#endif
