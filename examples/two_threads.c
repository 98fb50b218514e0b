/* SPDX-License-Identifier: MIT */
/* One thread looks for cards while another one beeps: the library's lock keeps their reports
 * apart. A record is got, changed, set and written by several calls, so that thread holds it. */
#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"

#include <pthread.h>
#include <stdio.h>
#include <unistd.h>

#define LOOKS 20

static void* lookForCards(void* cards) {
    unsigned char id[32];
    for (int look = 0; look < LOOKS; ++look, usleep(20000))
        *(int*)cards += GetActiveID(id, 8) > 0;
    return NULL;
}

static int setHoldTime(short milliseconds) {
    struct sTimeParms times;
    pthread_mutex_lock(&zelLock); /* recursive: WriteCfg takes it once more */
    int isDone = GetTimeParms(&times) == 1;
    times.iIDHoldTO = milliseconds;
    isDone = isDone && SetTimeParms(&times) == 1 && WriteCfg() == 1;
    pthread_mutex_unlock(&zelLock);
    return isDone;
}

int main(void) {
    pthread_t thread;
    int cards = 0;
    SetDevTypeSrch(0);
    if (!USBConnect(NULL)) {
        fprintf(stderr, "no reader found\n");
        return 1;
    }
    if (pthread_create(&thread, NULL, lookForCards, &cards) != 0)
        return 1;
    const int isSet = setHoldTime(2000);
    const int beeps = BeepNow(1, 0);
    pthread_join(thread, NULL);
    printf("%s; setting %s, beep %s\n", cards > 0 ? "card seen" : "no card seen",
           isSet ? "written" : "failed", beeps ? "done" : "failed");
    USBDisconnect();
    return 0;
}
