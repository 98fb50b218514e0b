/* SPDX-License-Identifier: MIT */
/* A program that links the library and uses one call of it: start-up ran before main, shut-down
 * runs at exit. */
#include "frame/zelTagAPI.h"
#include "mutex_counter.h"

#include <stdio.h>

int main(void) {
    puts(mutexesInitialised() == 1 && GetDevCnt() == 0 ? "main" : "main, but no library");
    fflush(stdout);
    return 0;
}
