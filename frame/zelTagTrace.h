/* SPDX-License-Identifier: MIT */
/** @file
 * For tools: what goes over the wire, as it goes. No lock.
 *
 * Optional: zelTagAPI.h doesn't include it.
 */
#ifndef ZELTAGAPI_TRACE_H
#define ZELTAGAPI_TRACE_H

#include "frame/zelTagExport.h"

ZELTAGAPI_BEGIN

/** What happened. */
enum zelTraceKind {
    ZELTAGAPI_TRACE_OPEN = 0,   /**< a device, a line or a connection was opened */
    ZELTAGAPI_TRACE_CLOSE = 1,  /**< it was closed */
    ZELTAGAPI_TRACE_SEND = 2,   /**< bytes went out */
    ZELTAGAPI_TRACE_RECEIVE = 3 /**< bytes came in */
};

/** How the device is reached. */
enum zelTraceTransport {
    ZELTAGAPI_TRACE_USB = 0,  /**< feature reports; the bytes are those behind the report ID */
    ZELTAGAPI_TRACE_LINE = 1, /**< a serial line */
    ZELTAGAPI_TRACE_TCP = 2   /**< a network bridge */
};

/** One event. It and what it points to hold during the call alone. */
typedef struct zelTraceEvent {
    int kind;                   /**< of zelTraceKind */
    int transport;              /**< of zelTraceTransport */
    int product;                /**< of a send and a receive: as GetProduct() tells, 0 unknown */
    int result;                 /**< 1 it went well, 0 it failed or nothing came */
    const char* device;         /**< its name or path, or "A.B.C.D:PORT"; empty: unknown */
    const unsigned char* bytes; /**< what was sent, also in vain, or received; null: none */
    long size;                  /**< how many bytes */
    unsigned long long began;   /**< microseconds of the time of day when it began */
    unsigned long long ended;   /**< and when it ended */
} zelTraceEvent;

/** Receives the events, each behind what it tells of. It is called on the thread whose call makes
 * the exchange, with the library's lock held or not, and must not call the library. */
typedef void (*zelObserver)(const zelTraceEvent* event, void* context);

/** Lets a function see every open, close, send and receive from now on, each attempt of a retried
 * send on its own. Without an observer an exchange costs a pointer test more. The bytes hold what
 * cards and keys hold. Not while another thread is inside the library.
 * @param observer the function; null: none
 * @param context handed to each of its calls */
ZELTAGAPI_EXPORT void zelTagAPI_observe(zelObserver observer, void* context);

ZELTAGAPI_END

#endif
