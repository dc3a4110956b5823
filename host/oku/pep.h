// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
/* Personal events: what contacts publish, as the event "XMPP/OnPEPEvent" offers it to other plugins, and what an
 * account's "PFEPublishData" publishes. */
#ifndef OKU_PEP_H
#define OKU_PEP_H

#include "base.h"
#include "contact.h"

enum { OKU_PEP_TUNE = 1, OKU_PEP_MOOD = 2, OKU_PEP_LOCATION = 3 };

/* Param of "XMPP/OnPEPEvent". Extra is the record of the kind. A result other than 0 takes the event: nothing more is
 * done with it. */
typedef struct OKU_PEP_EVENT {
    uint32_t size; /* 128 */
    uint32_t reserved4;
    OKU_CONTACT_IDENTITY own;     /* the account's bare JID, class and number */
    OKU_CONTACT_IDENTITY contact; /* the sender's */
    uint32_t kind;
    uint32_t reserved124;
} OKU_PEP_EVENT;

OKU_ASSERT_SIZE(OKU_PEP_EVENT, 128);
OKU_ASSERT_OFFSET(OKU_PEP_EVENT, own, 8);
OKU_ASSERT_OFFSET(OKU_PEP_EVENT, own.id, 24);
OKU_ASSERT_OFFSET(OKU_PEP_EVENT, own.pfClass, 32);
OKU_ASSERT_OFFSET(OKU_PEP_EVENT, own.netId, 40);
OKU_ASSERT_OFFSET(OKU_PEP_EVENT, contact, 64);
OKU_ASSERT_OFFSET(OKU_PEP_EVENT, contact.id, 80);
OKU_ASSERT_OFFSET(OKU_PEP_EVENT, contact.pfClass, 88);
OKU_ASSERT_OFFSET(OKU_PEP_EVENT, contact.netId, 96);
OKU_ASSERT_OFFSET(OKU_PEP_EVENT, kind, 120);

/* Param of an account's "PFEPublishData". Extra is the record of the kind; its itemId is not read, and the record may
 * end before it. Null texts are left out. Returns 1 when a stanza went out, else 0. */
typedef struct OKU_PEP_PUBLISH {
    uint32_t size; /* 8 */
    uint32_t kind;
} OKU_PEP_PUBLISH;

OKU_ASSERT_SIZE(OKU_PEP_PUBLISH, 8);
OKU_ASSERT_OFFSET(OKU_PEP_PUBLISH, kind, 4);

/* What somebody listens to (XEP-0118). In an event no text is null. All of them empty: nothing any more. */
typedef struct OKU_PEP_TUNE_DATA {
    uint32_t size; /* 64 */
    uint32_t reserved4;
    const char16_t* track;
    const char16_t* artist;
    const char16_t* title;
    const char16_t* source; /* the album */
    const char16_t* uri;
    const char16_t* length; /* seconds */
    const char16_t* itemId;
} OKU_PEP_TUNE_DATA;

OKU_ASSERT_SIZE(OKU_PEP_TUNE_DATA, 64);
OKU_ASSERT_OFFSET(OKU_PEP_TUNE_DATA, track, 8);
OKU_ASSERT_OFFSET(OKU_PEP_TUNE_DATA, artist, 16);
OKU_ASSERT_OFFSET(OKU_PEP_TUNE_DATA, title, 24);
OKU_ASSERT_OFFSET(OKU_PEP_TUNE_DATA, source, 32);
OKU_ASSERT_OFFSET(OKU_PEP_TUNE_DATA, uri, 40);
OKU_ASSERT_OFFSET(OKU_PEP_TUNE_DATA, length, 48);
OKU_ASSERT_OFFSET(OKU_PEP_TUNE_DATA, itemId, 56);

/* How somebody feels (XEP-0107). In an event no text is null. */
typedef struct OKU_PEP_MOOD_DATA {
    uint32_t size; /* 32 */
    uint32_t reserved4;
    const char16_t* mood; /* the name of the mood's element, as the sender chose it */
    const char16_t* text;
    const char16_t* itemId;
} OKU_PEP_MOOD_DATA;

OKU_ASSERT_SIZE(OKU_PEP_MOOD_DATA, 32);
OKU_ASSERT_OFFSET(OKU_PEP_MOOD_DATA, mood, 8);
OKU_ASSERT_OFFSET(OKU_PEP_MOOD_DATA, text, 16);
OKU_ASSERT_OFFSET(OKU_PEP_MOOD_DATA, itemId, 24);

/* Where somebody is (XEP-0080). In an event a text is null when the sender said nothing of it, and itemId when it is
 * empty. */
typedef struct OKU_PEP_LOCATION_DATA {
    uint32_t size; /* 192 */
    uint32_t reserved4;
    const char16_t* accuracy;
    const char16_t* alt;
    const char16_t* area;
    const char16_t* bearing;
    const char16_t* building;
    const char16_t* country;
    const char16_t* countrycode;
    const char16_t* datum;
    const char16_t* description;
    const char16_t* error;
    const char16_t* floor;
    const char16_t* lat;
    const char16_t* locality;
    const char16_t* lon;
    const char16_t* postalcode;
    const char16_t* region;
    const char16_t* room;
    const char16_t* speed;
    const char16_t* street;
    const char16_t* text;
    const char16_t* timestamp;
    const char16_t* uri;
    const char16_t* itemId;
} OKU_PEP_LOCATION_DATA;

OKU_ASSERT_SIZE(OKU_PEP_LOCATION_DATA, 192);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, accuracy, 8);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, alt, 16);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, area, 24);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, bearing, 32);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, building, 40);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, country, 48);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, countrycode, 56);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, datum, 64);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, description, 72);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, error, 80);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, floor, 88);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, lat, 96);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, locality, 104);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, lon, 112);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, postalcode, 120);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, region, 128);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, room, 136);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, speed, 144);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, street, 152);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, text, 160);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, timestamp, 168);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, uri, 176);
OKU_ASSERT_OFFSET(OKU_PEP_LOCATION_DATA, itemId, 184);

#endif
