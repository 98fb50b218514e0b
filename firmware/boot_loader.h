// SPDX-License-Identifier: MIT
// The conversation with a reader's boot loader.
#pragma once

namespace zel::firmware {

// Status characters of the boot loader.
constexpr char kAccepted = '.';
constexpr char kAcceptedAtEnd = 'E';

} // namespace zel::firmware

// A boot loader that takes a firmware file line by line.
class IBootload {
public:
    // Puts the reader into its boot loader. Not 0 for success.
    virtual int enterBlMode(unsigned char micro) = 0;

    // Sends one line's bytes; `reply` receives the boot loader's last status character and may be
    // null. Not 0 for success.
    virtual int sendLine(int count, char* data, char* reply) = 0;

    virtual ~IBootload() = default;
};

// The boot loader of a proximity reader on USB, by feature reports of eight bytes. Its error words
// go to the record of pDevDat, whichever device is active.
class ZelTagUsbBootload : public IBootload {
public:
    int enterBlMode(unsigned char micro) override;
    int sendLine(int count, char* data, char* reply) override;

    // Sends the line's three frames of up to seven bytes each, also of a shorter line.
    int createAndSendLineBuffer(int count, const char* data);

    // The pause before a poll, with so many polls left behind it.
    void customSleep(unsigned char pollsLeft);

    // Judges a status character, with the whole reply behind it: 1 accepted, 0 refused, all ones
    // for "not ready".
    unsigned verifyReturnedChar(unsigned char status, const unsigned char* reply);
};
