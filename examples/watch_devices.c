/* SPDX-License-Identifier: MIT */
/* Follows readers as they are plugged in and out on Linux: libudev tells of them, and this program
 * tells the library. Ctrl-C ends it. */
#include "frame/zelTagAPI.h"

#include <libudev.h>
#include <poll.h>
#include <signal.h>
#include <stdio.h>
#include <string.h>

#define NAME_SIZE 512

/* What the library calls an arrival. */
static const char kArrival[] = "\\\\?\\HID#Vid_5a3e&Pid_9d23";

static volatile sig_atomic_t isOver = 0;

static void end(int signal) {
    (void)signal;
    isOver = 1;
}

static void printReaders(void) {
    char name[NAME_SIZE] = "";
    printf("%d reader%s\n", GetDevCnt(), GetDevCnt() == 1 ? "" : "s");
    for (int index = 0; index < GetDevCnt(); ++index) {
        SetActDev((short)index);
        GetDevName(name);
        printf("  %s\n", name);
    }
    SetActDev(0);
    fflush(stdout);
}

/* A connect closes nothing: what the table holds is closed first. */
static void connectAnew(void) {
    USBDisconnect();
    USBConnect(NULL);
    printReaders();
}

/* The record that an arrival adds only holds a place until the connect. Without an active reader
 * the library takes no arrival; the connect alone does then. */
static void tellArrival(void) {
    if (GetDevCnt() > 0)
        ChkAddArrival(kArrival);
    connectAnew();
}

static int isInTable(const char* node) {
    char name[NAME_SIZE] = "";
    for (int index = 0; index < GetDevCnt(); ++index) {
        SetActDev((short)index);
        GetDevName(name);
        if (strcmp(name, node) == 0)
            return 1;
    }
    return 0;
}

/* A removal takes the first reader of the table, whichever has the name; with others left the table
 * is made anew. */
static void tellRemoval(const char* node) {
    if (!isInTable(node) || ChkDelRemoval(node) != 1)
        return;
    if (GetDevCnt() > 0)
        connectAnew();
    else
        printReaders();
}

static void tell(struct udev_device* device) {
    const char* action = udev_device_get_action(device);
    const char* node = udev_device_get_devnode(device);
    if (!action || !node)
        return;
    if (strcmp(action, "add") == 0)
        tellArrival();
    else if (strcmp(action, "remove") == 0)
        tellRemoval(node);
}

/* Events of "udev" come when the node has its permissions, those of "kernel" before. */
static struct udev_monitor* listenTo(struct udev* udev) {
    struct udev_monitor* monitor = udev_monitor_new_from_netlink(udev, "udev");
    if (!monitor)
        return NULL;
    udev_monitor_filter_add_match_subsystem_devtype(monitor, "hidraw", NULL);
    udev_monitor_enable_receiving(monitor);
    return monitor;
}

static void follow(struct udev_monitor* monitor) {
    struct pollfd events = {udev_monitor_get_fd(monitor), POLLIN, 0};
    while (!isOver) {
        if (poll(&events, 1, -1) <= 0)
            continue;
        struct udev_device* device = udev_monitor_receive_device(monitor);
        if (!device)
            continue;
        tell(device);
        udev_device_unref(device);
    }
}

int main(void) {
    struct udev* udev = udev_new();
    struct udev_monitor* monitor = udev ? listenTo(udev) : NULL;
    if (!monitor) {
        fprintf(stderr, "udev can't be listened to\n");
        return 1;
    }
    signal(SIGINT, end);
    signal(SIGTERM, end);
    SetDevTypeSrch(0);
    connectAnew();
    follow(monitor);
    USBDisconnect();
    udev_monitor_unref(monitor);
    udev_unref(udev);
    return 0;
}
