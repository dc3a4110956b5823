// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
/* Messages. Incoming ones are told by the hook of kind 5, whose phase 2 is the delivery; outgoing ones are handed to
 * an account's "PFMessageSend". */
#ifndef OKU_MESSAGE_H
#define OKU_MESSAGE_H

#include "base.h"
#include "contact.h"

enum {
    OKU_MESSAGE_NORMAL = 1,
    OKU_MESSAGE_CHAT = 5,
    OKU_MESSAGE_DELIVERY_FAILURE = 516,
    OKU_MESSAGE_SEND_FLAG = 2,
    OKU_MESSAGE_CHAT_FLAG = 4
};

/* Extra of the hook of an incoming message. */
typedef struct OKU_MESSAGE_DATA {
    uint32_t size; /* 128 */
    uint32_t reserved4[5];
    const char16_t* id; /* the sender's bare JID */
    const char16_t* pfClass;
    uint32_t netId;
    uint32_t reserved44[3];
    const OKU_RESOURCE_INFO* resource;
    const char16_t* subject;
    const char16_t* body;
    uint32_t flags;
    uint32_t reserved84;
    int64_t time; /* seconds since the epoch; 0 when the stamp could not be read */
    uint32_t reserved96[4];
    const OKU_RESOURCE_INFO* senderResource; /* the same as `resource` */
    uint32_t reserved120[2];
} OKU_MESSAGE_DATA;

OKU_ASSERT_SIZE(OKU_MESSAGE_DATA, 128);
OKU_ASSERT_OFFSET(OKU_MESSAGE_DATA, id, 24);
OKU_ASSERT_OFFSET(OKU_MESSAGE_DATA, pfClass, 32);
OKU_ASSERT_OFFSET(OKU_MESSAGE_DATA, netId, 40);
OKU_ASSERT_OFFSET(OKU_MESSAGE_DATA, resource, 56);
OKU_ASSERT_OFFSET(OKU_MESSAGE_DATA, subject, 64);
OKU_ASSERT_OFFSET(OKU_MESSAGE_DATA, body, 72);
OKU_ASSERT_OFFSET(OKU_MESSAGE_DATA, flags, 80);
OKU_ASSERT_OFFSET(OKU_MESSAGE_DATA, time, 88);
OKU_ASSERT_OFFSET(OKU_MESSAGE_DATA, senderResource, 112);

/* Param of an account's "PFMessageSend"; extra repeats the flags. Returns 0 when sent, 1 when not. */
typedef struct OKU_MESSAGE_SEND {
    uint32_t size; /* 88 */
    uint32_t reserved4;
    OKU_CONTACT_RECORD contact;
    const char16_t* subject;
    const char16_t* body;
    uint32_t flags;
    uint32_t reserved84;
} OKU_MESSAGE_SEND;

OKU_ASSERT_SIZE(OKU_MESSAGE_SEND, 88);
OKU_ASSERT_OFFSET(OKU_MESSAGE_SEND, contact, 8);
OKU_ASSERT_OFFSET(OKU_MESSAGE_SEND, contact.id, 24);
OKU_ASSERT_OFFSET(OKU_MESSAGE_SEND, subject, 64);
OKU_ASSERT_OFFSET(OKU_MESSAGE_SEND, body, 72);
OKU_ASSERT_OFFSET(OKU_MESSAGE_SEND, flags, 80);

#endif
