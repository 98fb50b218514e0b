/* SPDX-License-Identifier: MIT */
/* The door, on the library; it knows nothing of the simulator. */
#include "door.h"

#include "frame/zelTagAPI.h"

#include <stddef.h>
#include <stdint.h>

/* A 26-bit card holds a facility code and a card number, each side of them a parity bit. */
#define BITS 26
#define FACILITY 26
#define NUMBER 3512

static uint32_t numberIn(const unsigned char* id) {
    return (uint32_t)id[0] | (uint32_t)id[1] << 8 | (uint32_t)id[2] << 16 | (uint32_t)id[3] << 24;
}

int doorConnect(void) {
    SetDevTypeSrch(0);
    return USBConnect(NULL);
}

void doorDisconnect(void) { USBDisconnect(); }

enum Door doorLook(void) {
    unsigned char id[32] = {0};
    const int bits = GetActiveID(id, 8);
    const uint32_t number = numberIn(id);
    if (bits == 0)
        return GetLastLibErr() == 0 ? DOOR_CLOSED : DOOR_NO_READER;
    return bits == BITS && (number >> 17 & 0xFF) == FACILITY && (number >> 1 & 0xFFFF) == NUMBER
               ? DOOR_OPEN
               : DOOR_CLOSED;
}
