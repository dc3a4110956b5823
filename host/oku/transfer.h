// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/* File transfers: the host's window of a transfer ("OKU/FT..."), the question about an offered file, the publishing of
 * a file under an address ("OK7/..."), and the chooser of files ("UI/FileChooser"). */
#ifndef OKU_TRANSFER_H
#define OKU_TRANSFER_H

#include "base.h"
#include "contact.h"

/* Param of "OKU/FTInitWindow", extra 0. The result is the window's handle, 0 for none. The host fills in `updateFn` and
 * `updateData`, which stay valid until "OKU/FTDropWindow", whose param is the handle. */
typedef struct OKU_FT_INIT_RECORD {
    uint32_t size; /* 112 */
    uint32_t reserved4;
    OKU_HANDLER callback; /* (OKU_FT_EVENT, unused, callbackData) */
    OKU_WORD callbackData;
    const char16_t* status; /* the first status text */
    uint32_t reserved32[2];
    const char16_t* title;
    const char16_t* contactId; /* the other side's bare JID */
    const char16_t* contactIdAgain;
    OKU_HANDLER updateFn; /* out: (OKU_FT_UPDATE_RECORD, 0, updateData) */
    OKU_WORD updateData;  /* out */
    const OKU_CONTACT_RECORD* contact;
    uint32_t reserved88[4];
    OKU_WORD module;
} OKU_FT_INIT_RECORD;

OKU_ASSERT_SIZE(OKU_FT_INIT_RECORD, 112);
OKU_ASSERT_OFFSET(OKU_FT_INIT_RECORD, callback, 8);
OKU_ASSERT_OFFSET(OKU_FT_INIT_RECORD, callbackData, 16);
OKU_ASSERT_OFFSET(OKU_FT_INIT_RECORD, status, 24);
OKU_ASSERT_OFFSET(OKU_FT_INIT_RECORD, title, 40);
OKU_ASSERT_OFFSET(OKU_FT_INIT_RECORD, contactId, 48);
OKU_ASSERT_OFFSET(OKU_FT_INIT_RECORD, contactIdAgain, 56);
OKU_ASSERT_OFFSET(OKU_FT_INIT_RECORD, updateFn, 64);
OKU_ASSERT_OFFSET(OKU_FT_INIT_RECORD, updateData, 72);
OKU_ASSERT_OFFSET(OKU_FT_INIT_RECORD, contact, 80);
OKU_ASSERT_OFFSET(OKU_FT_INIT_RECORD, module, 104);

/* Which fields of an update count. */
enum {
    OKU_FT_STATE = 0x1,
    OKU_FT_TOTAL = 0x30,
    OKU_FT_CANCEL = 0x200,
    OKU_FT_VALUE_96 = 0x400,
    OKU_FT_STATUS_TEXT = 0x800,
    OKU_FT_LINK = 0x3000,
    OKU_FT_POSITION = 0x3000048
};

enum { OKU_FT_RUNNING = 1, OKU_FT_FAILED = 2 };

/* Param of a window's `updateFn`. */
typedef struct OKU_FT_UPDATE_RECORD {
    uint32_t size; /* 112 */
    uint32_t mask;
    const char16_t* status;
    uint32_t reserved16[4];
    const char16_t* linkText;   /* both empty: no link */
    const char16_t* linkTarget; /* a file's path */
    uint64_t position;          /* bytes */
    uint64_t total;             /* bytes */
    uint64_t positionAgain;
    uint64_t totalAgain;
    uint32_t state;
    uint32_t reserved84[2];
    uint32_t cancel;  /* 1: the user may cancel */
    uint32_t value96; /* written with 0 by whoever publishes a file */
    uint32_t reserved100;
    OKU_WORD window;
} OKU_FT_UPDATE_RECORD;

OKU_ASSERT_SIZE(OKU_FT_UPDATE_RECORD, 112);
OKU_ASSERT_OFFSET(OKU_FT_UPDATE_RECORD, mask, 4);
OKU_ASSERT_OFFSET(OKU_FT_UPDATE_RECORD, status, 8);
OKU_ASSERT_OFFSET(OKU_FT_UPDATE_RECORD, linkText, 32);
OKU_ASSERT_OFFSET(OKU_FT_UPDATE_RECORD, linkTarget, 40);
OKU_ASSERT_OFFSET(OKU_FT_UPDATE_RECORD, position, 48);
OKU_ASSERT_OFFSET(OKU_FT_UPDATE_RECORD, total, 56);
OKU_ASSERT_OFFSET(OKU_FT_UPDATE_RECORD, positionAgain, 64);
OKU_ASSERT_OFFSET(OKU_FT_UPDATE_RECORD, totalAgain, 72);
OKU_ASSERT_OFFSET(OKU_FT_UPDATE_RECORD, state, 80);
OKU_ASSERT_OFFSET(OKU_FT_UPDATE_RECORD, cancel, 92);
OKU_ASSERT_OFFSET(OKU_FT_UPDATE_RECORD, value96, 96);
OKU_ASSERT_OFFSET(OKU_FT_UPDATE_RECORD, window, 104);

enum { OKU_FT_EVENT_CANCELLED = 2 };

/* What a window's callback receives. */
typedef struct OKU_FT_EVENT {
    uint32_t size; /* 8 */
    uint32_t event;
} OKU_FT_EVENT;

OKU_ASSERT_SIZE(OKU_FT_EVENT, 8);
OKU_ASSERT_OFFSET(OKU_FT_EVENT, event, 4);

enum { OKU_FT_PATH_CAPACITY = 256 };
enum { OKU_FT_ANSWER_IGNORE = 2, OKU_FT_ANSWER_REFUSE = 7 };

/* Param of "OKU/FTAskForConfirmation", extra 0. The call returns when the user has answered: OKU_FT_ANSWER_IGNORE,
 * OKU_FT_ANSWER_REFUSE, or anything else to accept. The host replaces the path by the folder to save in, which ends in
 * the separator. */
typedef struct OKU_FT_ASK_RECORD {
    uint32_t size; /* 40 */
    uint32_t reserved4;
    const char16_t* question;
    char16_t* path;    /* in and out; OKU_FT_PATH_CAPACITY characters */
    uint32_t capacity; /* 255: characters beside the NUL */
    uint32_t reserved28;
    const char16_t* sender; /* bare JID */
} OKU_FT_ASK_RECORD;

OKU_ASSERT_SIZE(OKU_FT_ASK_RECORD, 40);
OKU_ASSERT_OFFSET(OKU_FT_ASK_RECORD, question, 8);
OKU_ASSERT_OFFSET(OKU_FT_ASK_RECORD, path, 16);
OKU_ASSERT_OFFSET(OKU_FT_ASK_RECORD, capacity, 24);
OKU_ASSERT_OFFSET(OKU_FT_ASK_RECORD, sender, 32);

enum { OKU_OK7_URL_CAPACITY = 512 };

/* A file to publish, and the address that it was published under. */
typedef struct OK7_PREPARE_RESULT {
    uint32_t size; /* 2064 */
    uint32_t reserved4;
    const char16_t* path;
    uint32_t reserved16[256];
    char16_t url[OKU_OK7_URL_CAPACITY]; /* out: ends in a NUL */
} OK7_PREPARE_RESULT;

OKU_ASSERT_SIZE(OK7_PREPARE_RESULT, 2064);
OKU_ASSERT_OFFSET(OK7_PREPARE_RESULT, path, 8);
OKU_ASSERT_OFFSET(OK7_PREPARE_RESULT, url, 1040);

enum { OK7_STATE_FAILED = 0, OK7_STATE_SENT = 1, OK7_STATE_RUNNING = 2 };

/* Param of "OK7/PrepareFile", extra 0. Both callbacks come any time later, and not from inside the call. */
typedef struct OK7_PREPARE_RECORD {
    uint32_t size; /* 72 */
    uint32_t reserved4[3];
    OK7_PREPARE_RESULT* result;
    uint32_t reserved24[2];
    OKU_HANDLER stateCallback; /* (OK7_STATE_, unused, stateData) */
    OKU_WORD stateData;
    uint32_t reserved48[2];
    OKU_HANDLER progressCallback; /* (position, total, progressData), both in bytes */
    OKU_WORD progressData;
} OK7_PREPARE_RECORD;

OKU_ASSERT_SIZE(OK7_PREPARE_RECORD, 72);
OKU_ASSERT_OFFSET(OK7_PREPARE_RECORD, result, 16);
OKU_ASSERT_OFFSET(OK7_PREPARE_RECORD, stateCallback, 32);
OKU_ASSERT_OFFSET(OK7_PREPARE_RECORD, stateData, 40);
OKU_ASSERT_OFFSET(OK7_PREPARE_RECORD, progressCallback, 56);
OKU_ASSERT_OFFSET(OK7_PREPARE_RECORD, progressData, 64);

/* Param of "UI/FileChooser", extra 0. Non-zero when a chooser opens; its callback is then called exactly once, and not
 * from inside the call. */
typedef struct OKU_FILE_CHOOSER {
    uint32_t size; /* 64 */
    uint32_t reserved4;
    const char16_t* filter; /* pairs of a name and its patterns, parted and ended by "|" */
    uint32_t flags;
    uint32_t reserved20;
    const char16_t* title; /* may be null */
    OKU_WORD owner;
    OKU_HANDLER callback; /* (OKU_FILE_CHOICE, 0, context) */
    OKU_WORD context;
    OKU_WORD module;
} OKU_FILE_CHOOSER;

OKU_ASSERT_SIZE(OKU_FILE_CHOOSER, 64);
OKU_ASSERT_OFFSET(OKU_FILE_CHOOSER, filter, 8);
OKU_ASSERT_OFFSET(OKU_FILE_CHOOSER, flags, 16);
OKU_ASSERT_OFFSET(OKU_FILE_CHOOSER, title, 24);
OKU_ASSERT_OFFSET(OKU_FILE_CHOOSER, owner, 32);
OKU_ASSERT_OFFSET(OKU_FILE_CHOOSER, callback, 40);
OKU_ASSERT_OFFSET(OKU_FILE_CHOOSER, context, 48);
OKU_ASSERT_OFFSET(OKU_FILE_CHOOSER, module, 56);

enum { OKU_FILE_CHOSEN = 1, OKU_FILE_CHOICE_CANCELLED = 2 };

/* What a chooser's callback receives. */
typedef struct OKU_FILE_CHOICE {
    uint32_t size; /* 24 */
    uint32_t kind;
    const char16_t* path; /* the whole path; null when cancelled */
    uint32_t reserved16[2];
} OKU_FILE_CHOICE;

OKU_ASSERT_SIZE(OKU_FILE_CHOICE, 24);
OKU_ASSERT_OFFSET(OKU_FILE_CHOICE, kind, 4);
OKU_ASSERT_OFFSET(OKU_FILE_CHOICE, path, 8);

#endif
