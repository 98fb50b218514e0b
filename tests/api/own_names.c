/* SPDX-License-Identifier: MIT */
/* An application with variables and functions of its own under names that the library exports too:
 * each side keeps its own. It declares the library's calls itself and includes no header of it. */
#define _GNU_SOURCE
#include "expect.h"

#include <dlfcn.h>
#include <string.h>

extern int getLibraryVersion_Major(void);
extern int getActiveID(short size);
extern int GetDevCnt(void);
extern int SetActDev(short device);
extern int _APIfini(void);
extern void _APIinit(void);

char path[64] = "the application's path";
double space = 1.5;
unsigned baudrate = 4711;
long iDevsFnd = 9;
int listIndex = 5;
short activeIDBufSz = 99;

static int calls;
void initialize(void);
void Debug(void);
unsigned long long Ping(void);
int GetLibVersion(short* major, short* minor, short* build);
int USBDisconnect(void);
int GetActiveID(unsigned char* buffer, short size);
void zelband_Init(void);
void zelecho_Init(void);
int UsbDriver_Init(void);
unsigned long long GetTickCount(void);

void initialize(void) { ++calls; }
void Debug(void) { ++calls; }
unsigned long long Ping(void) { return (unsigned long long)++calls; }
int GetLibVersion(short* major, short* minor, short* build) {
    (void)minor;
    (void)build;
    *major = 99;
    return ++calls;
}
int USBDisconnect(void) { return ++calls; }
int GetActiveID(unsigned char* buffer, short size) {
    (void)buffer;
    (void)size;
    return ++calls;
}
void zelband_Init(void) { ++calls; }
void zelecho_Init(void) { ++calls; }
int UsbDriver_Init(void) { return ++calls; }
unsigned long long GetTickCount(void) { return (unsigned long long)++calls; }

int main(void) {
    void* const library = dlopen("libzelTagAPI.so.7", RTLD_NOW | RTLD_NOLOAD);
    EXPECT(library != NULL);
    if (!library)
        return 1;

    EXPECT(getLibraryVersion_Major() == 7);
    EXPECT(GetDevCnt() == 0);
    EXPECT(SetActDev(3) == 0);
    EXPECT(getActiveID(4) == 0);
    EXPECT(_APIfini() == 0);
    _APIinit();
    EXPECT(calls == 0);

    EXPECT(strcmp(path, "the application's path") == 0);
    EXPECT(space == 1.5 && baudrate == 4711 && iDevsFnd == 9);
    EXPECT(listIndex == 5 && activeIDBufSz == 99);

    char* const libraryPath = dlsym(library, "zelTagAPI_path");
    unsigned* const libraryBaudrate = dlsym(library, "zelTagAPI_baudrate");
    EXPECT(libraryPath != NULL && libraryPath != path && libraryPath[0] == '\0');
    EXPECT(libraryBaudrate != NULL && libraryBaudrate != &baudrate && *libraryBaudrate == 9600);
    dlclose(library);
    initialize();
    Debug();
    EXPECT(calls == 2);
    return exitStatus();
}
