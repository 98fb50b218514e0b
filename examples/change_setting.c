/* SPDX-License-Identifier: MIT */
/* Lets the reader hold an identifier for two seconds, and tells what is wrong where it can't. */
#include "frame/zelTagAPI.h"

#include <stdio.h>

static int tell(const char* what) {
    fprintf(stderr, "%s: error word 0x%llX\n", what, (unsigned long long)GetLastLibErr());
    USBDisconnect();
    return 1;
}

int main(void) {
    struct sTimeParms times;
    SetDevTypeSrch(0);
    if (!USBConnect(NULL)) {
        fprintf(stderr, "no reader found\n");
        return 1;
    }
    if (GetTimeParms(&times) != 1)
        return tell("the times can't be had");
    printf("identifiers are held for %d ms\n", times.iIDHoldTO);

    times.iIDHoldTO = 20000; /* beyond 12,750: refused, and nothing is changed */
    if (SetTimeParms(&times) != 1)
        printf("20000 ms: refused with the error word 0x%llX\n",
               (unsigned long long)GetLastLibErr());

    times.iIDHoldTO = 2000;
    if (SetTimeParms(&times) != 1)
        return tell("the times are out of range");
    if (WriteCfg() != 1)
        return tell("the reader didn't take them");
    if (ReadCfg() != 1 || GetTimeParms(&times) != 1)
        return tell("the times can't be read back");
    printf("identifiers are held for %d ms\n", times.iIDHoldTO);
    USBDisconnect();
    return 0;
}
