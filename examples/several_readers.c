/* SPDX-License-Identifier: MIT */
/* Goes through all readers; each call works on the one that was made active. */
#include "frame/zelTagAPI.h"

#include <stdio.h>

int main(void) {
    SetDevTypeSrch(0);
    USBConnect(NULL); /* 0 also where one of several can't be read: the count tells */
    for (int index = 0; index < GetDevCnt(); ++index) {
        unsigned char id[32] = {0};
        char name[512] = "";
        SetActDev((short)index);
        GetDevName(name);
        const int bits = GetActiveID(id, 8);
        printf("%d  %-8s  LUID %d  %s\n", index, name, GetLUID() & 0xFFFF,
               bits > 0 ? "card" : "no card");
    }
    USBDisconnect();
    return 0;
}
