/* SPDX-License-Identifier: MIT */
/* Finds the readers and reads the card in the first one's field. */
#include "frame/zelTagAPI.h"

#include <stdio.h>

int main(void) {
    unsigned char id[32];
    SetDevTypeSrch(0);
    if (!USBConnect(NULL)) {
        fprintf(stderr, "no reader found\n");
        return 1;
    }
    const int bits = GetActiveID(id, 8);
    if (bits > 0)
        printf("%d bits, first byte 0x%02X\n", bits, id[0]);
    else if (GetLastLibErr() == 0)
        printf("no card\n");
    else
        fprintf(stderr, "the reader didn't answer\n");
    USBDisconnect();
    return 0;
}
