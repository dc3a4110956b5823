// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
/* Windows that the host shows for the plugin: the status window, pages of the options and of a contact's properties,
 * message boxes; and the directories that the host gives. */
#ifndef OKU_WINDOWS_H
#define OKU_WINDOWS_H

#include "base.h"
#include "contact.h"

/* Param of "OKU/Info/GetCacheDir" and "OKU/Info/GetProfileDir", extra 0. The host writes the directory, which ends in
 * the separator, into the buffer. */
typedef struct OKU_DIRECTORY {
    uint32_t size; /* 32 */
    uint32_t reserved4;
    char16_t* buffer;
    uint32_t capacity; /* characters, the NUL included */
    uint32_t reserved20;
    const char16_t* subdirectory;
} OKU_DIRECTORY;

OKU_ASSERT_SIZE(OKU_DIRECTORY, 32);
OKU_ASSERT_OFFSET(OKU_DIRECTORY, buffer, 8);
OKU_ASSERT_OFFSET(OKU_DIRECTORY, capacity, 16);
OKU_ASSERT_OFFSET(OKU_DIRECTORY, subdirectory, 24);

/* Extra of "OKU/AddOptionsPage"; param is the module. */
typedef struct OKU_OPTIONS_PAGE {
    uint32_t size; /* 80 */
    uint32_t reserved4;
    const char16_t* id;
    const char16_t* parent;
    const char16_t* caption;
    uint32_t reserved32[2];
    OKU_WORD icon; /* out: an icon's handle, or 0; on Windows the plugin destroys it after the call */
    const char16_t* iconName;
    OKU_HANDLER callback;
    OKU_WORD context;
    uint32_t reserved72[2];
} OKU_OPTIONS_PAGE;

OKU_ASSERT_SIZE(OKU_OPTIONS_PAGE, 80);
OKU_ASSERT_OFFSET(OKU_OPTIONS_PAGE, id, 8);
OKU_ASSERT_OFFSET(OKU_OPTIONS_PAGE, parent, 16);
OKU_ASSERT_OFFSET(OKU_OPTIONS_PAGE, caption, 24);
OKU_ASSERT_OFFSET(OKU_OPTIONS_PAGE, icon, 40);
OKU_ASSERT_OFFSET(OKU_OPTIONS_PAGE, iconName, 48);
OKU_ASSERT_OFFSET(OKU_OPTIONS_PAGE, callback, 56);
OKU_ASSERT_OFFSET(OKU_OPTIONS_PAGE, context, 64);

/* Param of "OKU/PropertiesStaticPageAdd", extra 0: a page of all contacts of an account. Also of
 * "OKU/PropertiesPageAdd", whose extra is the one that "OKU/PropertiesAddPages" came with: a page of that one contact,
 * without a class and an account. */
typedef struct OKU_PROPERTIES_PAGE {
    uint32_t size; /* 96 */
    uint32_t reserved4;
    const char16_t* id;
    uint32_t reserved16[2];
    const char16_t* caption;
    uint32_t value32; /* 7; 5 of a page of one contact */
    int32_t value36;  /* -1000; 1 of a page of one contact */
    uint32_t reserved40[4];
    OKU_HANDLER callback;
    OKU_WORD context;
    uint32_t reserved72[2];
    const char16_t* pfClass; /* null of a page of one contact */
    uint32_t netId;
    uint32_t reserved92;
} OKU_PROPERTIES_PAGE;

OKU_ASSERT_SIZE(OKU_PROPERTIES_PAGE, 96);
OKU_ASSERT_OFFSET(OKU_PROPERTIES_PAGE, id, 8);
OKU_ASSERT_OFFSET(OKU_PROPERTIES_PAGE, caption, 24);
OKU_ASSERT_OFFSET(OKU_PROPERTIES_PAGE, value32, 32);
OKU_ASSERT_OFFSET(OKU_PROPERTIES_PAGE, value36, 36);
OKU_ASSERT_OFFSET(OKU_PROPERTIES_PAGE, callback, 56);
OKU_ASSERT_OFFSET(OKU_PROPERTIES_PAGE, context, 64);
OKU_ASSERT_OFFSET(OKU_PROPERTIES_PAGE, pfClass, 80);
OKU_ASSERT_OFFSET(OKU_PROPERTIES_PAGE, netId, 88);

enum { OKU_PROPERTIES_OPEN = 1 };

/* Param of the host's event "OKU/PropertiesAddPages": the properties of a contact are about to be shown. Extra is a
 * word of the host's that names them. */
typedef struct OKU_PROPERTIES_EVENT {
    uint32_t size; /* 32 */
    uint32_t event;
    const OKU_CONTACT_RECORD* contact; /* null for a new contact */
    uint32_t reserved16[4];
} OKU_PROPERTIES_EVENT;

OKU_ASSERT_SIZE(OKU_PROPERTIES_EVENT, 32);
OKU_ASSERT_OFFSET(OKU_PROPERTIES_EVENT, event, 4);
OKU_ASSERT_OFFSET(OKU_PROPERTIES_EVENT, contact, 8);

/* Param of "OKU/StatusWND/Prepare", extra 0. */
typedef struct OKU_STATUS_WINDOW_PREPARE {
    uint32_t size; /* 64 */
    uint32_t reserved4;
    const char16_t* title;
    const uint32_t* statuses;
    uint32_t statusCount;
    uint32_t value28; /* 1024 */
    const char16_t* pfClass;
    uint32_t netId;
    uint32_t reserved44;
    OKU_HANDLER callback; /* (OKU_STATUS_WINDOW_EVENT, unused, context) */
    OKU_WORD context;
} OKU_STATUS_WINDOW_PREPARE;

OKU_ASSERT_SIZE(OKU_STATUS_WINDOW_PREPARE, 64);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_PREPARE, title, 8);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_PREPARE, statuses, 16);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_PREPARE, statusCount, 24);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_PREPARE, value28, 28);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_PREPARE, pfClass, 32);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_PREPARE, netId, 40);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_PREPARE, callback, 48);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_PREPARE, context, 56);

/* Param of "OKU/StatusWND/Show", extra 0. */
typedef struct OKU_STATUS_WINDOW_SHOW {
    uint32_t size; /* 48 */
    uint32_t reserved4;
    const char16_t* description;
    uint32_t status;
    uint32_t reserved20;
    const char16_t* pfClass;
    uint32_t netId;
    uint32_t value36; /* 1 */
    uint32_t protect;
    uint32_t reserved44;
} OKU_STATUS_WINDOW_SHOW;

OKU_ASSERT_SIZE(OKU_STATUS_WINDOW_SHOW, 48);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_SHOW, description, 8);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_SHOW, status, 16);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_SHOW, pfClass, 24);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_SHOW, netId, 32);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_SHOW, value36, 36);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_SHOW, protect, 40);

enum { OKU_STATUS_WINDOW_CONFIRMED = 1, OKU_STATUS_WINDOW_WANTS_TEXTS = 4 };

/* What the status window's callback receives. */
typedef struct OKU_STATUS_WINDOW_EVENT {
    uint32_t size; /* 88 */
    uint32_t event;
    uint32_t reserved8[4];
    uint32_t status;
    uint32_t reserved28;
    const char16_t* description;
    uint32_t reserved40[8];
    uint32_t protect; /* the description is kept when the host sets a status */
    uint32_t reserved76;
    OKU_WORD window; /* comes back in OKU_STATUS_WINDOW_TEXTS */
} OKU_STATUS_WINDOW_EVENT;

OKU_ASSERT_SIZE(OKU_STATUS_WINDOW_EVENT, 88);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_EVENT, event, 4);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_EVENT, status, 24);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_EVENT, description, 32);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_EVENT, protect, 72);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_EVENT, window, 80);

/* Param of "OKU/StatusWND/SetTexts", extra 0. */
typedef struct OKU_STATUS_WINDOW_TEXTS {
    uint32_t size; /* 40 */
    uint32_t reserved4;
    const char16_t* title;
    const char16_t* header;
    const char16_t* account;
    OKU_WORD window;
} OKU_STATUS_WINDOW_TEXTS;

OKU_ASSERT_SIZE(OKU_STATUS_WINDOW_TEXTS, 40);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_TEXTS, title, 8);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_TEXTS, header, 16);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_TEXTS, account, 24);
OKU_ASSERT_OFFSET(OKU_STATUS_WINDOW_TEXTS, window, 32);

enum { OKU_BOX_ERROR = 0x10, OKU_BOX_WARNING = 0x30, OKU_BOX_INFORMATION = 0x40, OKU_BOX_QUESTION = 36 };
enum { OKU_BUTTON_OK = 1, OKU_BUTTON_YES = 6, OKU_BUTTON_NO = 7 };

/* Param of "UI/MessageBox", extra 0: a modal box. The result is the button; 0, from a host without the service,
 * counts as OK in a notice and as no in a question. */
typedef struct OKU_MESSAGE_BOX {
    uint32_t size; /* 48 */
    uint32_t reserved4;
    const char16_t* text;
    const char16_t* title;
    uint32_t style;
    uint32_t reserved28;
    OKU_WORD owner;
    uint32_t reserved40[2];
} OKU_MESSAGE_BOX;

OKU_ASSERT_SIZE(OKU_MESSAGE_BOX, 48);
OKU_ASSERT_OFFSET(OKU_MESSAGE_BOX, text, 8);
OKU_ASSERT_OFFSET(OKU_MESSAGE_BOX, title, 16);
OKU_ASSERT_OFFSET(OKU_MESSAGE_BOX, style, 24);
OKU_ASSERT_OFFSET(OKU_MESSAGE_BOX, owner, 32);

#endif
