// SPDX-License-Identifier: MIT
// Talks to the boot loader of a proximity reader. What one flash learns of the reader outlives it:
// the flags of the loader are never cleared.
#include "firmware/boot_loader.h"

#include "base/bytes.h"
#include "base/pause.h"
#include "frame/zelTagErrors.h"
#include "frame/zelTagState.h"
#include "transport/usb_driver.h"

#include <algorithm>
#include <array>
#include <cstdint>

using namespace zel::firmware;
using zel::pauseFor;

namespace {

constexpr int kPayload = 8;
constexpr int kFrames = 3;
constexpr int kFrameData = 7;
constexpr int kLongestLine = kFrames * kFrameData;
constexpr int kEntryPolls = 60;
constexpr int kLinePolls = 3;
constexpr unsigned kNotReady = 0xFFFFFFFF;
constexpr unsigned kLongestDelay = 4000; // ms that a reader may ask for

constexpr unsigned kBeforeEntryPause = 1'000'000; // µs
constexpr unsigned kAfterEntryPause = 3'000'000;
constexpr unsigned kEntryPollPause = 50'000;
constexpr unsigned kFramePause = 10'000;
constexpr unsigned kOtherMicroPause = 80'000; // before a poll; a micro other than 0
constexpr unsigned kQuickPause = 2'000;
constexpr unsigned kSlowPause = 50'000;

constexpr char kNoReply = static_cast<char>(0x80);

constexpr unsigned char kEnter = 0xF0;
constexpr unsigned char kPollAgain = 'T';
constexpr unsigned char kLark = 'W';
constexpr unsigned char kFast = '>';
constexpr unsigned char kFastFrames = ';';

// Report ID 0, then the payload: P[n] is report[n + 1].
using Report = std::array<unsigned char, 1 + kPayload>;
constexpr std::size_t kStatus = 2;
constexpr std::size_t kDetail = 3;
constexpr std::size_t kDelay = 4;

bool sendReport(const Report& report) { return UsbDriver_SendFR(kPayload, 0, report.data()) != 0; }

bool fetchReport(Report& report) { return UsbDriver_RecvFR(kPayload, 0, report.data()) != 0; }

int fail(std::int64_t word) {
    pDevDat->lLastErr = word;
    return 0;
}

void noteLark(unsigned char detail) {
    if (detail == kLark)
        ReaderIsLark = 1;
}

// A counted "not ready" is polled again; all else but "ready" ends the entry.
int awaitEntry() {
    Report reply = {};
    for (int left = kEntryPolls;; --left) {
        if (!fetchReport(reply))
            return fail(ZELTAGAPI_ERR_BOOT_REPLY);
        if (reply[kStatus] == kAccepted) {
            noteLark(reply[kDetail]);
            return 1;
        }
        if (reply[kStatus] != kPollAgain || left == 0)
            return fail(ZELTAGAPI_ERR_BOOT_REFUSED);
        pauseFor(kEntryPollPause);
    }
}

void noteDetail(unsigned char detail) {
    delayNextLine = detail == kFast ? 0 : 1;
    if (detail == kFast || detail == kFastFrames)
        fastBootloader = 1;
    noteLark(detail);
}

// A Lark reader may ask for time after a line.
void heedDelay(const unsigned char* reply) {
    const unsigned delay = zel::wordOf(reply[kDelay + 1], reply[kDelay]);
    if (ReaderIsLark != 0 && delay >= 1 && delay <= kLongestDelay)
        pauseFor(delay * 1000);
}

} // namespace

int ZelTagUsbBootload::enterBlMode(unsigned char micro) {
    giTargetMicro = micro;
    pauseFor(kBeforeEntryPause);
    const bool sent = sendReport({0, kEnter, micro});
    if (!sent)
        fail(ZELTAGAPI_ERR_BOOT_ENTRY);
    pauseFor(kAfterEntryPause);
    return awaitEntry() != 0 && sent ? 1 : 0;
}

int ZelTagUsbBootload::createAndSendLineBuffer(int count, const char* data) {
    int left = std::clamp(count, 0, kLongestLine);
    for (int frame = 0; frame < kFrames; ++frame) {
        const int size = std::min(left, kFrameData);
        Report report = {0, static_cast<unsigned char>(size)};
        std::copy_n(data, size, report.begin() + 2);
        data += size;
        left -= size;
        if (!sendReport(report))
            return fail(ZELTAGAPI_ERR_BOOT_FRAME);
        if (ReaderIsLark == 0 && fastBootloader == 0)
            pauseFor(kFramePause);
    }
    return 1;
}

void ZelTagUsbBootload::customSleep(unsigned char pollsLeft) {
    const bool firstPoll = pollsLeft == kLinePolls - 1;
    if (giTargetMicro != 0)
        pauseFor(kOtherMicroPause);
    else if (ReaderIsLark == 1)
        pauseFor(firstPoll ? kQuickPause : kSlowPause);
    else
        pauseFor(delayNextLine != 0 ? kSlowPause : kQuickPause);
}

unsigned ZelTagUsbBootload::verifyReturnedChar(unsigned char status, const unsigned char* reply) {
    if (status == kPollAgain)
        return kNotReady;
    if (status != kAccepted && status != kAcceptedAtEnd)
        return static_cast<unsigned>(fail(ZELTAGAPI_ERR_BOOT_LINE));
    noteDetail(reply[kDetail]);
    heedDelay(reply);
    return 1;
}

int ZelTagUsbBootload::sendLine(int count, char* data, char* reply) {
    char ignored = 0;
    char& status = reply ? *reply : ignored;
    status = kNoReply;
    if (createAndSendLineBuffer(count, data) == 0)
        return 0;
    for (int left = kLinePolls - 1; left >= 0; --left) {
        customSleep(static_cast<unsigned char>(left));
        Report answer = {};
        if (!fetchReport(answer))
            return fail(ZELTAGAPI_ERR_BOOT_REPLY);
        status = static_cast<char>(answer[kStatus]);
        const unsigned verdict = verifyReturnedChar(answer[kStatus], answer.data());
        if (verdict != kNotReady)
            return static_cast<int>(verdict);
    }
    return fail(ZELTAGAPI_ERR_BOOT_LINE);
}
