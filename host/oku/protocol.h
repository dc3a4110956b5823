// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
/* Accounts: "OKU/ProtocolAdd", "OKU/PFSetInfo", the hooks of "OKU/CallProtolHooks" (the name is spelled so), and the
 * records that the host hands to an account's own services. */
#ifndef OKU_PROTOCOL_H
#define OKU_PROTOCOL_H

#include "base.h"
#include "contact.h"

enum {
    OKU_STATUS_ONLINE = 1,
    OKU_STATUS_CHAT = 2,
    OKU_STATUS_DND = 3,
    OKU_STATUS_AWAY = 4,
    OKU_STATUS_XA = 5,
    OKU_STATUS_INVISIBLE = 6,
    OKU_STATUS_OFFLINE = 7,
    OKU_STATUS_ERROR = 8
};

/* The bits of the account's flags word, whose address OKU_PROTOCOL_RECORD carries. The host only reads it. */
enum {
    OKU_FLAG_CONNECTED = 1,
    OKU_FLAG_ENCRYPTION_ACTIVATED = 2,
    OKU_FLAG_CONNECTING = 4,
    OKU_FLAG_AUTHORIZED = 8,
    OKU_FLAG_COMPRESSED = 16
};

/* Param of "OKU/ProtocolAdd", extra 0. "OKU/ProtocolDel" takes the class as param and the netId as extra. */
typedef struct OKU_PROTOCOL_RECORD {
    uint32_t size; /* 104 */
    uint32_t reserved4;
    const char16_t* pfClass;
    const char16_t* shortName;
    const char16_t* caption;
    uint32_t netId; /* out: the host's number for this account */
    uint32_t reserved36;
    const char16_t* uuid;
    int32_t wantedNumber; /* -1: any */
    uint32_t reserved52[5];
    OKU_HANDLER authorizationHandler; /* (OKU_CONTACT_RECORD, OKU_AUTH_ bits, context) */
    OKU_HANDLER deleteHandler;        /* (OKU_CONTACT_RECORD, unused, context) */
    OKU_WORD context;
    const uint32_t* flags; /* valid until "OKU/ProtocolDel" */
} OKU_PROTOCOL_RECORD;

OKU_ASSERT_SIZE(OKU_PROTOCOL_RECORD, 104);
OKU_ASSERT_OFFSET(OKU_PROTOCOL_RECORD, pfClass, 8);
OKU_ASSERT_OFFSET(OKU_PROTOCOL_RECORD, shortName, 16);
OKU_ASSERT_OFFSET(OKU_PROTOCOL_RECORD, caption, 24);
OKU_ASSERT_OFFSET(OKU_PROTOCOL_RECORD, netId, 32);
OKU_ASSERT_OFFSET(OKU_PROTOCOL_RECORD, uuid, 40);
OKU_ASSERT_OFFSET(OKU_PROTOCOL_RECORD, wantedNumber, 48);
OKU_ASSERT_OFFSET(OKU_PROTOCOL_RECORD, authorizationHandler, 72);
OKU_ASSERT_OFFSET(OKU_PROTOCOL_RECORD, deleteHandler, 80);
OKU_ASSERT_OFFSET(OKU_PROTOCOL_RECORD, context, 88);
OKU_ASSERT_OFFSET(OKU_PROTOCOL_RECORD, flags, 96);

/* Param of "OKU/PFSetInfo", extra 0. */
typedef struct OKU_PF_INFO {
    uint32_t size; /* 40 */
    uint32_t reserved4;
    const char16_t* bareJid;
    const char16_t* userName; /* the JID's node part */
    const char16_t* pfClass;
    uint32_t netId;
    uint32_t reserved36;
} OKU_PF_INFO;

OKU_ASSERT_SIZE(OKU_PF_INFO, 40);
OKU_ASSERT_OFFSET(OKU_PF_INFO, bareJid, 8);
OKU_ASSERT_OFFSET(OKU_PF_INFO, userName, 16);
OKU_ASSERT_OFFSET(OKU_PF_INFO, pfClass, 24);
OKU_ASSERT_OFFSET(OKU_PF_INFO, netId, 32);

enum {
    OKU_HOOK_STREAM_IN = 1,
    OKU_HOOK_STREAM_OUT = 2,
    OKU_HOOK_CONTACT_STATE = 3,
    OKU_HOOK_OWN_STATUS = 4,
    OKU_HOOK_MESSAGE_IN = 5,
    OKU_HOOK_MESSAGE_OUT = 6,
    OKU_HOOK_SESSION_BOUND = 8,
    OKU_HOOK_CONNECTION_ENDED = 9,
    OKU_HOOK_ROSTER_COMPLETE = 11,
    OKU_HOOK_TYPING_IN = 14,
    OKU_HOOK_NEW_MAIL = 19
};

enum { OKU_PHASE_NOTICE = 0, OKU_PHASE_BEFORE = 1, OKU_PHASE_AFTER = 2 };

/* Param of "OKU/CallProtolHooks"; extra depends on the kind, or is null. A non-zero result in phase 1 is a veto. */
typedef struct OKU_PROTOCOL_HOOK {
    uint32_t size; /* 40 */
    uint32_t reserved4;
    const char16_t* pfClass;
    int32_t netId;
    uint32_t kind;
    uint32_t phase;
    uint32_t reserved28;
    const void* subject; /* the contact's identity, for the kinds that have one */
} OKU_PROTOCOL_HOOK;

OKU_ASSERT_SIZE(OKU_PROTOCOL_HOOK, 40);
OKU_ASSERT_OFFSET(OKU_PROTOCOL_HOOK, pfClass, 8);
OKU_ASSERT_OFFSET(OKU_PROTOCOL_HOOK, netId, 16);
OKU_ASSERT_OFFSET(OKU_PROTOCOL_HOOK, kind, 20);
OKU_ASSERT_OFFSET(OKU_PROTOCOL_HOOK, phase, 24);
OKU_ASSERT_OFFSET(OKU_PROTOCOL_HOOK, subject, 32);

enum { OKU_HOOK_DATA_PLAIN = 1, OKU_HOOK_DATA_RAW = 33 };

/* Extra of the stream hooks. In phase 1 of incoming data the bytes offered are the ones that are parsed next, so a
 * listener may blank a part of them in place, with spaces of the same length. */
typedef struct OKU_HOOK_DATA {
    uint32_t size; /* 24 */
    uint32_t reserved4;
    char* data;      /* UTF-8; whoever listens to outgoing data only reads it */
    uint32_t length; /* bytes before the first NUL */
    uint32_t flags;
} OKU_HOOK_DATA;

OKU_ASSERT_SIZE(OKU_HOOK_DATA, 24);
OKU_ASSERT_OFFSET(OKU_HOOK_DATA, data, 8);
OKU_ASSERT_OFFSET(OKU_HOOK_DATA, length, 16);
OKU_ASSERT_OFFSET(OKU_HOOK_DATA, flags, 20);

/* Extra of the hook of the own status. */
typedef struct OKU_STATUS_DATA {
    uint32_t size; /* 64 */
    uint32_t reserved4[3];
    uint32_t status;
    uint32_t reserved20;
    const char16_t* description;
    int64_t time; /* seconds since the epoch */
    uint32_t reserved40[6];
} OKU_STATUS_DATA;

OKU_ASSERT_SIZE(OKU_STATUS_DATA, 64);
OKU_ASSERT_OFFSET(OKU_STATUS_DATA, status, 16);
OKU_ASSERT_OFFSET(OKU_STATUS_DATA, description, 24);
OKU_ASSERT_OFFSET(OKU_STATUS_DATA, time, 32);

/* Param of an account's "PFStatusSet". */
typedef struct OKU_STATUS_SET {
    uint32_t size; /* 64 */
    uint32_t reserved4[3];
    uint32_t status;
    uint32_t reserved20;
    const char16_t* description;
    uint32_t reserved32[6];
    OKU_WORD flagsWord;
} OKU_STATUS_SET;

OKU_ASSERT_SIZE(OKU_STATUS_SET, 64);
OKU_ASSERT_OFFSET(OKU_STATUS_SET, status, 16);
OKU_ASSERT_OFFSET(OKU_STATUS_SET, description, 24);
OKU_ASSERT_OFFSET(OKU_STATUS_SET, flagsWord, 56);

/* Param of an account's "PFRawSend". */
typedef struct OKU_RAW_SEND {
    uint32_t size; /* 24 */
    uint32_t reserved4;
    const char* data;
    uint32_t length;
    uint32_t reserved20;
} OKU_RAW_SEND;

OKU_ASSERT_SIZE(OKU_RAW_SEND, 24);
OKU_ASSERT_OFFSET(OKU_RAW_SEND, data, 8);
OKU_ASSERT_OFFSET(OKU_RAW_SEND, length, 16);

#endif
