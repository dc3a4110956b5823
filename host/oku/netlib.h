// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
/* Sockets: "NetLib/Create", "NetLib/ConnectService", "NetLib/Send", "NetLib/InitSSL", "NetLib/Close",
 * "NetLib/Destroy" and "OKU/NL/GetDefaultSettings". A socket is named by a string, which is its handle; InitSSL,
 * Close and Destroy take the name as param. TLS and the DNS lookup of the SRV name are the host's work. */
#ifndef OKU_NETLIB_H
#define OKU_NETLIB_H

#include "base.h"

/* Param of "NetLib/Create", extra 0. */
typedef struct NL_CREATE_RECORD {
    uint32_t size; /* 72 */
    uint32_t reserved4[4];
    uint32_t kind; /* 2: a client's stream socket */
    uint32_t reserved24[2];
    OKU_HANDLER callback; /* (NL_EVENT, data by the event's kind, context) */
    OKU_WORD context;
    uint32_t reserved48[2];
    const char16_t* name;
    uint32_t reserved64[2];
} NL_CREATE_RECORD;

OKU_ASSERT_SIZE(NL_CREATE_RECORD, 72);
OKU_ASSERT_OFFSET(NL_CREATE_RECORD, kind, 20);
OKU_ASSERT_OFFSET(NL_CREATE_RECORD, callback, 32);
OKU_ASSERT_OFFSET(NL_CREATE_RECORD, context, 40);
OKU_ASSERT_OFFSET(NL_CREATE_RECORD, name, 56);

/* Proxy types as they stand in NL_CONNECT_RECORD and NL_PROXY_DEFAULTS. */
enum { NL_PROXY_SOCKS4 = 1, NL_PROXY_SOCKS4A = 2, NL_PROXY_SOCKS5 = 3, NL_PROXY_HTTP = 4 };

/* Param of "NetLib/ConnectService", extra 0. Connecting an open socket replaces its connection. */
typedef struct NL_CONNECT_RECORD {
    uint32_t size; /* 88 */
    uint32_t reserved4[3];
    const char16_t* host;
    uint32_t port;
    uint32_t reserved28;
    const char16_t* socket;
    const char16_t* proxyHost;
    uint32_t proxyType;
    uint32_t proxyPort;
    const char16_t* proxyUser;     /* null without a proxy login */
    const char16_t* proxyPassword; /* null without a proxy login */
    uint32_t proxyEnabled;
    uint32_t reserved76;
    const char16_t* serviceName; /* the SRV name, or an empty string for none */
} NL_CONNECT_RECORD;

OKU_ASSERT_SIZE(NL_CONNECT_RECORD, 88);
OKU_ASSERT_OFFSET(NL_CONNECT_RECORD, host, 16);
OKU_ASSERT_OFFSET(NL_CONNECT_RECORD, port, 24);
OKU_ASSERT_OFFSET(NL_CONNECT_RECORD, socket, 32);
OKU_ASSERT_OFFSET(NL_CONNECT_RECORD, proxyHost, 40);
OKU_ASSERT_OFFSET(NL_CONNECT_RECORD, proxyType, 48);
OKU_ASSERT_OFFSET(NL_CONNECT_RECORD, proxyPort, 52);
OKU_ASSERT_OFFSET(NL_CONNECT_RECORD, proxyUser, 56);
OKU_ASSERT_OFFSET(NL_CONNECT_RECORD, proxyPassword, 64);
OKU_ASSERT_OFFSET(NL_CONNECT_RECORD, proxyEnabled, 72);
OKU_ASSERT_OFFSET(NL_CONNECT_RECORD, serviceName, 80);

/* Param of "NetLib/Send", extra 0. The result, read as a signed 32-bit value, is the caller's result of the send. */
typedef struct NL_SEND_RECORD {
    uint32_t size; /* 32 */
    uint32_t reserved4;
    const char* data;
    uint32_t length;
    uint32_t reserved20;
    const char16_t* socket;
} NL_SEND_RECORD;

OKU_ASSERT_SIZE(NL_SEND_RECORD, 32);
OKU_ASSERT_OFFSET(NL_SEND_RECORD, data, 8);
OKU_ASSERT_OFFSET(NL_SEND_RECORD, length, 16);
OKU_ASSERT_OFFSET(NL_SEND_RECORD, socket, 24);

enum {
    NL_EVENT_DESTROYED = 1,
    NL_EVENT_CONNECTED = 2,
    NL_EVENT_CLOSED = 3, /* data: non-null for an end that nobody asked for */
    NL_EVENT_RECEIVED = 4, /* data: NL_RECEIVED */
    NL_EVENT_CLOSED_TOO = 6, /* as NL_EVENT_CLOSED */
    NL_EVENT_TLS = 8, /* data: NL_TLS_STATE */
    NL_EVENT_CERTIFICATE = 10 /* the handler's result is the answer: 1 overrides a bad certificate */
};

/* Param of the socket's callback. */
typedef struct NL_EVENT {
    uint32_t size; /* 8 */
    uint32_t kind;
} NL_EVENT;

OKU_ASSERT_SIZE(NL_EVENT, 8);
OKU_ASSERT_OFFSET(NL_EVENT, kind, 4);

/* Data of NL_EVENT_RECEIVED. A NUL stands behind the bytes; the receiver may write over them. */
typedef struct NL_RECEIVED {
    uint32_t size; /* 16 */
    int32_t length;
    char* data;
} NL_RECEIVED;

OKU_ASSERT_SIZE(NL_RECEIVED, 16);
OKU_ASSERT_OFFSET(NL_RECEIVED, length, 4);
OKU_ASSERT_OFFSET(NL_RECEIVED, data, 8);

/* Data of NL_EVENT_TLS. */
typedef struct NL_TLS_STATE {
    uint32_t size; /* 8 */
    uint32_t state; /* 1: TLS is up */
} NL_TLS_STATE;

OKU_ASSERT_SIZE(NL_TLS_STATE, 8);
OKU_ASSERT_OFFSET(NL_TLS_STATE, state, 4);

/* Param of "OKU/NL/GetDefaultSettings", extra 0: the host's own proxy settings, written into the record. */
typedef struct NL_PROXY_DEFAULTS {
    uint32_t size; /* 1556 */
    char16_t host[256];
    char16_t user[256];
    char16_t password[256];
    uint32_t port;
    uint32_t enabled;
    uint32_t type;
    uint32_t auth;
} NL_PROXY_DEFAULTS;

OKU_ASSERT_SIZE(NL_PROXY_DEFAULTS, 1556);
OKU_ASSERT_OFFSET(NL_PROXY_DEFAULTS, host, 4);
OKU_ASSERT_OFFSET(NL_PROXY_DEFAULTS, user, 516);
OKU_ASSERT_OFFSET(NL_PROXY_DEFAULTS, password, 1028);
OKU_ASSERT_OFFSET(NL_PROXY_DEFAULTS, port, 1540);
OKU_ASSERT_OFFSET(NL_PROXY_DEFAULTS, enabled, 1544);
OKU_ASSERT_OFFSET(NL_PROXY_DEFAULTS, type, 1548);
OKU_ASSERT_OFFSET(NL_PROXY_DEFAULTS, auth, 1552);

#endif
