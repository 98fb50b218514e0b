/* SPDX-License-Identifier: MIT */
/* Looks into the reader's field four times a second and tells which card comes and goes. */
#include "frame/zelTagAPI.h"

#include <stdio.h>
#include <string.h>
#include <unistd.h>

#define LOOKS 8 /* then it ends; an application goes on */
#define PAUSE_US 250000

int main(void) {
    unsigned char last[32] = {0};
    int lastBits = 0;
    SetDevTypeSrch(0);
    if (!USBConnect(NULL)) {
        fprintf(stderr, "no reader found\n");
        return 1;
    }
    for (int look = 0; look < LOOKS; ++look, usleep(PAUSE_US)) {
        unsigned char id[32] = {0};
        const int bits = GetActiveID(id, 8);
        if (bits == 0 && GetLastLibErr() != 0) {
            fprintf(stderr, "the reader didn't answer\n");
            break;
        }
        if (bits == lastBits && memcmp(id, last, sizeof id) == 0)
            continue;
        if (bits == 0)
            printf("card gone\n");
        else
            printf("card of %d bits, first byte 0x%02X\n", bits, id[0]);
        lastBits = bits;
        memcpy(last, id, sizeof id);
    }
    USBDisconnect();
    return 0;
}
