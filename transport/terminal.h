// SPDX-License-Identifier: MIT
// A serial line as the system's terminal: open it, set it up, discard what waits.
//
// On a descriptor that isn't a terminal, settings and discards change nothing.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zel::terminal {

// A descriptor for a path, or -1.
int openLine(const char* path);

// The speeds that a line can have stand for themselves; -1 for any other number.
std::int32_t get_baud(std::uint32_t rate);

// 8 data bits, no flow control, no echo, at this speed; the stop bits and the rest come with
// setRaw().
void prepare(int fd, std::uint32_t rate);

// 8 data bits, no parity, 1 stop bit, no flow control, every byte as it comes; a read returns at
// once with what is there.
void setRaw(int fd, std::uint32_t rate);

void setNonBlocking(int fd);
void setBlocking(int fd);

// Discards what hasn't been read, or sent.
void discardInput(int fd);
void discardOutput(int fd);
void discardBoth(int fd);

// Writes and waits until the bytes are on the line. The system takes a request for synchronous
// writes on a terminal and ignores it, so the wait is made here. The count written, or -1.
long writeThrough(int fd, const char* bytes, std::size_t size);

} // namespace zel::terminal
