/* SPDX-License-Identifier: MIT */
/** @file
 * Proximity readers behind a network serial bridge: one TCP byte stream, two UDP probes.
 *
 * The library has one socket for all devices. Connecting one device closes it for another; while it
 * is open, every device on a line talks to it. Addresses are IPv4, byte by byte as in the dotted
 * form.
 */
#ifndef ZELTAGAPI_NETWORK_H
#define ZELTAGAPI_NETWORK_H

#include "frame/zelTagExport.h"

#include <stdint.h>

ZELTAGAPI_BEGIN

/** @name Network
 *
 * No lock.
 * @{ */

/** Tells where USBConnect() looks for a bridge when it comes to TCP, see SetDevTypeSrch(). All zero
 * at start: such a connect tries the 254 hosts of network 0.0.0, which takes minutes where that
 * network answers nothing at once. No traffic.
 * @param a first byte of the address
 * @param b second byte
 * @param c third byte
 * @param d fourth byte; 0: the hosts 1 to 254 in turn. Each host that is tried takes the socket
 * from the one found before, so behind such a search only a reader at host 254 can be reached:
 * connect again with the host's own address, which the record's IPAddr tells
 * @param port TCP port
 * @return always 1 */
ZELTAGAPI_EXPORT int SetIpPort(unsigned char a, unsigned char b, unsigned char c, unsigned char d,
                               unsigned short port);

/** This machine's IPv4 address: that of the first interface in the system's list that is called
 * eth0, wlan0, eth1, wlan1, eth2 or wlan2. No traffic.
 * @return the address with its first byte lowest, as a signed 32-bit number; 0 for no such
 * interface */
ZELTAGAPI_EXPORT int64_t GetMyIpAddress(void);

/** Looks for a bridge among the hosts a.b.c.first to a.b.c.last by two UDP probes each (ports 11000
 * and 30718), two seconds a host that doesn't answer. Forgets the open socket of a TCP device.
 * @param a first byte of the addresses
 * @param b second byte
 * @param c third byte
 * @param first first host
 * @param last last host
 * @return 0 when none answered; the host's number when it answered the first probe, the first byte
 * of the answering address when it answered the second */
ZELTAGAPI_EXPORT int FindXport(unsigned short a, unsigned short b, unsigned short c,
                               unsigned short first, unsigned short last);

/** Asks a bridge for its MAC address (IEEE 802.3) by the second probe, half a second at most.
 * @param a first byte of its address
 * @param b second byte
 * @param c third byte
 * @param d fourth byte
 * @param mac receives six bytes: 00 20 4A 00 00 00 when nothing fitting answers
 * @return 1; 0 when the system gives no socket or `mac` is null */
ZELTAGAPI_EXPORT int socket_GetMACAddress(unsigned char a, unsigned char b, unsigned char c,
                                          unsigned char d, unsigned char* mac);

/** @} */

ZELTAGAPI_END

#endif
