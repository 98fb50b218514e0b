// SPDX-License-Identifier: MIT
// Puts a firmware file into a reader, line by line.
#pragma once

class IBootload;

class FlashReader {
public:
    // The boot loader of the active device; null when it has none.
    IBootload* getProductInterfaceType();

    // Sends the file through a boot loader: 1 when every line went through, else 0.
    int fwFlash(IBootload* loader, const char* name);

    // Judges the last status character of a line, with the line's result so far.
    int fwflashLogs(char reply, int result);

    // The place where progress beyond the signal would be told; does nothing.
    void sendProgressToEvent(int percentage);

    static void controlHandler(int signal);
};
