// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/* Windows of the plugin that the host draws: "UI/Window...", "UI/Control...", "UI/Row..." and "UI/Menu...". The plugin
 * says what is in a window, the host says how it looks. Nothing here waits: what the user does comes by the window's
 * callback. */
#ifndef OKU_DIALOGS_H
#define OKU_DIALOGS_H

#include "base.h"
#include "contact.h"

enum {
    OKU_CONTROL_LABEL = 1,          /* names the control behind it */
    OKU_CONTROL_EDIT = 2,           /* one line */
    OKU_CONTROL_PASSWORD = 3,       /* one line that is not shown */
    OKU_CONTROL_TEXT = 4,           /* several lines, parted by CR and LF, or by LF alone where others wrote them */
    OKU_CONTROL_CHECK = 5,          /* its text stands beside it */
    OKU_CONTROL_DROP_DOWN = 6,      /* one of its items */
    OKU_CONTROL_EDIT_DROP_DOWN = 7, /* one line, or one of its items, which are a history */
    OKU_CONTROL_LIST = 8,           /* rows with labelled fields */
    OKU_CONTROL_BUTTON = 9,         /* in its text "&" stands before a letter of access; "&&" is one "&" */
    OKU_CONTROL_SEPARATOR = 10,     /* a heading over what follows */
    OKU_CONTROL_GROUP = 11          /* a heading over what lies in its rectangle */
};

enum {
    OKU_CONTROL_DISABLED = 1,
    OKU_CONTROL_READ_ONLY = 2,
    OKU_CONTROL_CHECKED = 4,
    OKU_CONTROL_DEFAULT = 8, /* the button that the Return key presses */
    OKU_CONTROL_KEYS = 16    /* the Return key in it is told, and does nothing else when the plugin takes it */
};

/* One control. Those of a window lie one behind the other, each as long as its `size` tells, in reading order. */
typedef struct OKU_CONTROL {
    uint32_t size; /* 96 */
    uint32_t kind;
    uint32_t id; /* names it within its window, except 0xFFFFFFFF, which any number of labels may have */
    uint32_t flags;
    const char16_t* text;
    const char16_t* name;         /* what it is called where no label with a text stands before it; may be null */
    const char16_t* const* items; /* of the two kinds of drop-down; may be null */
    uint32_t itemCount;
    int32_t selection; /* the item that is chosen; -1: none */
    int32_t x;         /* the rectangle is a hint, in points of 1/96 inch; all zero: none */
    int32_t y;
    int32_t width;
    int32_t height;
    const char16_t* emptyText; /* shown in a list without rows; may be null */
    const char16_t* fontName;  /* a hint; may be null */
    uint32_t fontSize;
    uint32_t reserved84[3];
} OKU_CONTROL;

OKU_ASSERT_SIZE(OKU_CONTROL, 96);
OKU_ASSERT_OFFSET(OKU_CONTROL, kind, 4);
OKU_ASSERT_OFFSET(OKU_CONTROL, id, 8);
OKU_ASSERT_OFFSET(OKU_CONTROL, flags, 12);
OKU_ASSERT_OFFSET(OKU_CONTROL, text, 16);
OKU_ASSERT_OFFSET(OKU_CONTROL, name, 24);
OKU_ASSERT_OFFSET(OKU_CONTROL, items, 32);
OKU_ASSERT_OFFSET(OKU_CONTROL, itemCount, 40);
OKU_ASSERT_OFFSET(OKU_CONTROL, selection, 44);
OKU_ASSERT_OFFSET(OKU_CONTROL, x, 48);
OKU_ASSERT_OFFSET(OKU_CONTROL, y, 52);
OKU_ASSERT_OFFSET(OKU_CONTROL, width, 56);
OKU_ASSERT_OFFSET(OKU_CONTROL, height, 60);
OKU_ASSERT_OFFSET(OKU_CONTROL, emptyText, 64);
OKU_ASSERT_OFFSET(OKU_CONTROL, fontName, 72);
OKU_ASSERT_OFFSET(OKU_CONTROL, fontSize, 80);

enum {
    OKU_WINDOW_MODAL = 1, /* `parent` takes no input until it has ended */
    OKU_WINDOW_CHILD = 2  /* it has no frame of its own and lies inside `parent` */
};

/* Param of "UI/WindowOpen", extra 0. The result is the window's handle, 0 for none. */
typedef struct OKU_WINDOW {
    uint32_t size; /* 96 */
    uint32_t templateId;
    const char16_t* title;
    const char16_t* heading;     /* a line on top of it; may be empty */
    const char16_t* description; /* a line below that; may be empty */
    const OKU_CONTROL* controls;
    uint32_t controlCount;
    uint32_t flags;
    OKU_WORD parent; /* a window's handle; of a child also the `parent` that a page's callback was given; 0: none */
    OKU_HANDLER callback; /* (OKU_WINDOW_EVENT, 0, context) */
    OKU_WORD context;
    OKU_WORD module;
    int32_t width; /* hints, as those of the controls */
    int32_t height;
    int32_t minWidth;
    int32_t minHeight;
} OKU_WINDOW;

OKU_ASSERT_SIZE(OKU_WINDOW, 96);
OKU_ASSERT_OFFSET(OKU_WINDOW, templateId, 4);
OKU_ASSERT_OFFSET(OKU_WINDOW, title, 8);
OKU_ASSERT_OFFSET(OKU_WINDOW, heading, 16);
OKU_ASSERT_OFFSET(OKU_WINDOW, description, 24);
OKU_ASSERT_OFFSET(OKU_WINDOW, controls, 32);
OKU_ASSERT_OFFSET(OKU_WINDOW, controlCount, 40);
OKU_ASSERT_OFFSET(OKU_WINDOW, flags, 44);
OKU_ASSERT_OFFSET(OKU_WINDOW, parent, 48);
OKU_ASSERT_OFFSET(OKU_WINDOW, callback, 56);
OKU_ASSERT_OFFSET(OKU_WINDOW, context, 64);
OKU_ASSERT_OFFSET(OKU_WINDOW, module, 72);
OKU_ASSERT_OFFSET(OKU_WINDOW, width, 80);
OKU_ASSERT_OFFSET(OKU_WINDOW, height, 84);
OKU_ASSERT_OFFSET(OKU_WINDOW, minWidth, 88);
OKU_ASSERT_OFFSET(OKU_WINDOW, minHeight, 92);

enum { OKU_WINDOW_TITLE = 1, OKU_WINDOW_HEADING = 2, OKU_WINDOW_DESCRIPTION = 3 };

/* Param of "UI/WindowText", extra 0: one of a window's texts becomes another. */
typedef struct OKU_WINDOW_TEXT {
    uint32_t size; /* 32 */
    uint32_t which;
    OKU_WORD window;
    const char16_t* text;
    uint32_t reserved24[2];
} OKU_WINDOW_TEXT;

OKU_ASSERT_SIZE(OKU_WINDOW_TEXT, 32);
OKU_ASSERT_OFFSET(OKU_WINDOW_TEXT, which, 4);
OKU_ASSERT_OFFSET(OKU_WINDOW_TEXT, window, 8);
OKU_ASSERT_OFFSET(OKU_WINDOW_TEXT, text, 16);

/* What of a control is asked for or set. */
enum {
    OKU_VALUE_TEXT = 1,       /* get, set: `text` */
    OKU_VALUE_CHECKED = 2,    /* get, set: `number` 0 or 1 */
    OKU_VALUE_SELECTION = 3,  /* get, set: `number` of the item, -1 for none */
    OKU_VALUE_ROW = 4,        /* get: `number` of the row that is selected in a list, 0 for none */
    OKU_VALUE_ENABLED = 5,    /* set: `number` 0 or 1; control 0 is the whole window */
    OKU_VALUE_READ_ONLY = 6,  /* set: `number` 0 or 1 */
    OKU_VALUE_FOCUS = 7,      /* set: the control gets the keys */
    OKU_VALUE_ADD_ITEM = 8,   /* set: `text` is one more item, at the end */
    OKU_VALUE_CLEAR_ITEMS = 9 /* set: no items any more, and none chosen */
};

/* Param of "UI/ControlSet" and "UI/ControlGet", extra 0. For a get the host fills `text` or `number` and gives
 * non-zero. A text that it fills in belongs to the host, and stays good until the plugin calls the host again. */
typedef struct OKU_CONTROL_VALUE {
    uint32_t size; /* 48 */
    uint32_t what;
    OKU_WORD window;
    uint32_t control;
    uint32_t reserved20;
    int64_t number;
    const char16_t* text;
    uint32_t reserved40[2];
} OKU_CONTROL_VALUE;

OKU_ASSERT_SIZE(OKU_CONTROL_VALUE, 48);
OKU_ASSERT_OFFSET(OKU_CONTROL_VALUE, what, 4);
OKU_ASSERT_OFFSET(OKU_CONTROL_VALUE, window, 8);
OKU_ASSERT_OFFSET(OKU_CONTROL_VALUE, control, 16);
OKU_ASSERT_OFFSET(OKU_CONTROL_VALUE, number, 24);
OKU_ASSERT_OFFSET(OKU_CONTROL_VALUE, text, 32);

/* Param of "UI/ControlPlace", extra 0: a control's rectangle becomes another one, a hint as ever. Control 0 is a child
 * window as a whole, inside its parent. */
typedef struct OKU_CONTROL_PLACE {
    uint32_t size; /* 32 */
    uint32_t control;
    OKU_WORD window;
    int32_t x;
    int32_t y;
    int32_t width;
    int32_t height;
} OKU_CONTROL_PLACE;

OKU_ASSERT_SIZE(OKU_CONTROL_PLACE, 32);
OKU_ASSERT_OFFSET(OKU_CONTROL_PLACE, control, 4);
OKU_ASSERT_OFFSET(OKU_CONTROL_PLACE, window, 8);
OKU_ASSERT_OFFSET(OKU_CONTROL_PLACE, x, 16);
OKU_ASSERT_OFFSET(OKU_CONTROL_PLACE, y, 20);
OKU_ASSERT_OFFSET(OKU_CONTROL_PLACE, width, 24);
OKU_ASSERT_OFFSET(OKU_CONTROL_PLACE, height, 28);

/* One labelled field of a row. */
typedef struct OKU_ROW_FIELD {
    uint32_t size; /* 24 */
    uint32_t reserved4;
    const char16_t* label;
    const char16_t* value;
} OKU_ROW_FIELD;

OKU_ASSERT_SIZE(OKU_ROW_FIELD, 24);
OKU_ASSERT_OFFSET(OKU_ROW_FIELD, label, 8);
OKU_ASSERT_OFFSET(OKU_ROW_FIELD, value, 16);

/* Param of "UI/RowSet", extra 0: a row of a list. A number that the list has not is a new row at the end; one that it
 * has is that row, all of which is replaced in its place. */
typedef struct OKU_ROW {
    uint32_t size; /* 48 */
    uint32_t control;
    OKU_WORD window;
    OKU_WORD row; /* names it in its list; not 0, and no number is used twice */
    const char16_t* text;
    const OKU_ROW_FIELD* fields; /* null for none */
    uint32_t fieldCount;
    uint32_t reserved44;
} OKU_ROW;

OKU_ASSERT_SIZE(OKU_ROW, 48);
OKU_ASSERT_OFFSET(OKU_ROW, control, 4);
OKU_ASSERT_OFFSET(OKU_ROW, window, 8);
OKU_ASSERT_OFFSET(OKU_ROW, row, 16);
OKU_ASSERT_OFFSET(OKU_ROW, text, 24);
OKU_ASSERT_OFFSET(OKU_ROW, fields, 32);
OKU_ASSERT_OFFSET(OKU_ROW, fieldCount, 40);

enum { OKU_POPUP_DISABLED = 1, OKU_POPUP_DEFAULT = 2, OKU_POPUP_SEPARATOR = 4 };

/* One item of a pop-up menu. */
typedef struct OKU_POPUP_ITEM {
    uint32_t size; /* 24 */
    uint32_t command;
    const char16_t* text; /* of a separator null */
    uint32_t flags;
    uint32_t reserved20;
} OKU_POPUP_ITEM;

OKU_ASSERT_SIZE(OKU_POPUP_ITEM, 24);
OKU_ASSERT_OFFSET(OKU_POPUP_ITEM, command, 4);
OKU_ASSERT_OFFSET(OKU_POPUP_ITEM, text, 8);
OKU_ASSERT_OFFSET(OKU_POPUP_ITEM, flags, 16);

/* Param of "UI/MenuOpen", extra 0: a menu where the user pointed at. What he chooses comes as OKU_WINDOW_MENU. */
typedef struct OKU_POPUP_MENU {
    uint32_t size; /* 32 */
    uint32_t itemCount;
    OKU_WORD window;
    const OKU_POPUP_ITEM* items;
    uint32_t control; /* whose menu it is */
    uint32_t reserved28;
} OKU_POPUP_MENU;

OKU_ASSERT_SIZE(OKU_POPUP_MENU, 32);
OKU_ASSERT_OFFSET(OKU_POPUP_MENU, itemCount, 4);
OKU_ASSERT_OFFSET(OKU_POPUP_MENU, window, 8);
OKU_ASSERT_OFFSET(OKU_POPUP_MENU, items, 16);
OKU_ASSERT_OFFSET(OKU_POPUP_MENU, control, 24);

enum {
    OKU_WINDOW_COMMAND = 1,       /* the button `control` was pressed, or the check clicked */
    OKU_WINDOW_CHANGED = 2,       /* the user changed the text or the choice of `control` */
    OKU_WINDOW_ROW_ACTIVATED = 3, /* the row `number` of the list `control` */
    OKU_WINDOW_ROW_MENU = 4,      /* the menu of that row is wanted; the row is the selected one now */
    OKU_WINDOW_MENU = 5,          /* the command `number` of the menu that is open was chosen */
    OKU_WINDOW_KEY_DOWN = 6,      /* the key `number` in `control`: 13 is Return */
    OKU_WINDOW_KEY_UP = 7,
    OKU_WINDOW_SIZED = 8,  /* `width` and `height` inside the frame, in the points of the rectangles */
    OKU_WINDOW_CLOSE = 9,  /* the user wants to close it */
    OKU_WINDOW_ENDED = 10, /* "UI/WindowEnd" was called with `number` */
    OKU_WINDOW_POSTED = 11 /* "UI/WindowPost" was called with `number` */
};

/* What a window's callback receives. */
typedef struct OKU_WINDOW_EVENT {
    uint32_t size; /* 48 */
    uint32_t kind;
    OKU_WORD window;
    uint32_t control;
    uint32_t reserved20;
    int64_t number;
    int32_t width;
    int32_t height;
    uint32_t reserved40[2];
} OKU_WINDOW_EVENT;

OKU_ASSERT_SIZE(OKU_WINDOW_EVENT, 48);
OKU_ASSERT_OFFSET(OKU_WINDOW_EVENT, kind, 4);
OKU_ASSERT_OFFSET(OKU_WINDOW_EVENT, window, 8);
OKU_ASSERT_OFFSET(OKU_WINDOW_EVENT, control, 16);
OKU_ASSERT_OFFSET(OKU_WINDOW_EVENT, number, 24);
OKU_ASSERT_OFFSET(OKU_WINDOW_EVENT, width, 32);
OKU_ASSERT_OFFSET(OKU_WINDOW_EVENT, height, 36);

enum {
    OKU_PAGE_SHOW = 1,
    OKU_PAGE_HIDE = 2,
    OKU_PAGE_DESTROY = 3,
    OKU_PAGE_APPLY = 4,
    OKU_PAGE_OK = 5,
    OKU_PAGE_ADD = 7, /* the contact that is entered is a new one */
    OKU_PAGE_PLACE = 10
};

enum { OKU_PAGE_TEXT_CAPACITY = 256 };

/* What the callback of a page of options or properties receives. The page is a window of the plugin with the flag
 * OKU_WINDOW_CHILD and this `parent`. */
typedef struct OKU_PAGE_EVENT {
    uint32_t size; /* 64 */
    uint32_t event;
    OKU_WORD* page; /* a word of the host's that is the page's own: 0 at first, and for the plugin to write */
    const OKU_CONTACT_RECORD* contact; /* null for a new contact, and for options */
    OKU_WORD parent;
    char16_t* title; /* out: OKU_PAGE_TEXT_CAPACITY characters each, the NUL included; null when not wanted */
    char16_t* description;
    int32_t x; /* the page's place inside its parent, a hint as those of controls */
    int32_t y;
    int32_t width;
    int32_t height;
} OKU_PAGE_EVENT;

OKU_ASSERT_SIZE(OKU_PAGE_EVENT, 64);
OKU_ASSERT_OFFSET(OKU_PAGE_EVENT, event, 4);
OKU_ASSERT_OFFSET(OKU_PAGE_EVENT, page, 8);
OKU_ASSERT_OFFSET(OKU_PAGE_EVENT, contact, 16);
OKU_ASSERT_OFFSET(OKU_PAGE_EVENT, parent, 24);
OKU_ASSERT_OFFSET(OKU_PAGE_EVENT, title, 32);
OKU_ASSERT_OFFSET(OKU_PAGE_EVENT, description, 40);
OKU_ASSERT_OFFSET(OKU_PAGE_EVENT, x, 48);
OKU_ASSERT_OFFSET(OKU_PAGE_EVENT, y, 52);
OKU_ASSERT_OFFSET(OKU_PAGE_EVENT, width, 56);
OKU_ASSERT_OFFSET(OKU_PAGE_EVENT, height, 60);

#endif
