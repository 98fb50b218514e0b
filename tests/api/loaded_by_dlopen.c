/* SPDX-License-Identifier: MIT */
/* Opens the library at run time and closes it again, twice: start-up and shut-down run once each
 * time, and nothing of it stays mapped. */
#include "expect.h"
#include "mutex_counter.h"

#include <dlfcn.h>

static void loadAndUnload(const char* file, int round) {
    void* const library = dlopen(file, RTLD_NOW);
    EXPECT(library != NULL);
    if (!library)
        return;
    void* const again = dlopen(file, RTLD_NOW);
    EXPECT(again == library);
    EXPECT(mutexesInitialised() == round);
    int (*count)(void);
    *(void**)&count = dlsym(library, "GetDevCnt");
    EXPECT(count && count() == 0);
    dlclose(again);
    EXPECT(mutexesDestroyed() == round - 1);
    dlclose(library);
    EXPECT(mutexesDestroyed() == round);
    EXPECT(dlopen(file, RTLD_NOW | RTLD_NOLOAD) == NULL);
}

int main(int argc, char** argv) {
    if (argc != 2)
        return 64;
    loadAndUnload(argv[1], 1);
    loadAndUnload(argv[1], 2);
    return exitStatus();
}
