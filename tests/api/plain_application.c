/* SPDX-License-Identifier: MIT */
/* An application that reads one card and knows nothing of a simulator. */
#include "frame/zelTagAPI.h"

#include <stdio.h>

int main(void) {
    unsigned char id[32] = {0};
    char name[512] = "";
    zeltag_USBDeviceConnect(ZELTAG_USB_VENDOR, ZELTAG_USB_PRODUCT, NULL);
    GetDevName(name);
    const int bits = GetActiveID(id, 8);
    printf("%d device, %s: %d bits, %02X%02X%02X%02X\n", GetDevCnt(), name, bits, id[3], id[2],
           id[1], id[0]);
    USBDisconnect();
    return bits == 26 ? 0 : 1;
}
