/* SPDX-License-Identifier: MIT */
/* A reader on a serial line: the line gets a number, and only it is asked. */
#include "frame/zelTagAPI.h"

#include <stdio.h>

int main(int argc, char** argv) {
    unsigned char id[32] = {0};
    SetComLinux(1, argc > 1 ? argv[1] : "/dev/ttyUSB0");
    SetComSrchRange(1, 1);
    SetBaudRate(9600);
    SetConnectProduct(ZELTAGAPI_ZELTAG); /* ask for proximity readers alone */
    if (!ComConnectPort(1, NULL)) {
        fprintf(stderr, "nobody answers on this line\n");
        return 1;
    }
    printf("%s\n", GetActiveID(id, 8) > 0 ? "card" : "no card");
    USBDisconnect();
    return 0;
}
