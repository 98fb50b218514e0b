// SPDX-License-Identifier: MIT
// The byte stream of a device: a serial line, or the process's one TCP socket.
//
// While that socket is open every object talks to it, also one that holds an open line.
#pragma once

#include <array>
#include <cstdint>

struct CPort {
public:
    CPort() = default;
    ~CPort();
    CPort(const CPort&) = delete;
    CPort& operator=(const CPort&) = delete;

    // The line's number: 1 to 256, any other counts as 1. In TCP mode the TCP port.
    void SetPort(unsigned long port);
    unsigned port() const { return iPort; }

    // Makes this a TCP stream, for good.
    void SetTcpIp(std::uint8_t a, std::uint8_t b, std::uint8_t c, std::uint8_t d);
    bool IsTcpIpMode() const { return bTcpIp; }

    // Sets the speed of all lines; one that is open takes it at once.
    void SetBaud(unsigned long rate);

    // These stand where a platform with other settings needs them: parity and stop bits are fixed,
    // and the waits are those of Read() and QuickRead().
    void SetParity(unsigned long) {}
    void SetStopBits(unsigned long) {}
    void CommitCTOs() {}
    void SetTimeoutFor_zelTag() {}
    void SetTimeoutFor_zelBand() {}

    // Opens the line that is registered for the number, or the socket.
    bool Connect();

    // Closes what is open. Always 1.
    int Disconnect();
    bool IsConn() const;

    // Discards what hasn't been sent. Nothing on a socket.
    void FlushTx();

    // Discards what hasn't been read; on a socket what comes within its wait, at most 128 bytes.
    void FlushRx();

    // Fills `size` bytes or what comes within about half a second; the rest is zero. The count. On
    // a socket the value of its last receive.
    std::int64_t Read(char* buffer, unsigned long size);

    // As Read(), but waits for 75 polls of a millisecond without data instead of for a total.
    std::int64_t QuickRead(char* buffer, unsigned long size);

    // Writes all, however long it takes; what the terminal hasn't sent is discarded after each
    // piece. The count.
    std::int64_t Write(const char* buffer, unsigned long size);

    // Writes a text two characters at a time, a millisecond behind each pair.
    void SendAscii(const char* text);

    // Whether one read of 1024 bytes holds the first text and, unless it is null, the second.
    bool ExpectAscii(const char* first, const char* second);

    // Discards both directions, 20 ms apart.
    void ACPClean();

private:
    void initPort(int fd);
    void closeLine();

    int iFd = -1;
    std::uint16_t iPort = 1;
    std::array<std::uint8_t, 4> ipAddr = {};
    bool bTcpIp = false;
};
