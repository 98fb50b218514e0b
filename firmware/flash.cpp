// SPDX-License-Identifier: MIT
// Flashes a firmware file and tells the progress by raising SIGUSR1.
#include "firmware/flash.h"

#include "firmware/boot_loader.h"
#include "firmware/image.h"
#include "firmware/interruption.h"
#include "frame/state/state.h"
#include "frame/zelTagErrors.h"

#include <array>
#include <csignal>
#include <cstdint>
#include <string>

using namespace zel;
using namespace zel::firmware;

namespace {

constexpr char kReaderRefuses = 'R';     // a status character
constexpr std::size_t kLongestLine = 43; // ':' and the digits of 21 bytes

int fail(std::int64_t word) {
    activeRecord().lLastErr = word;
    return 0;
}

// Raises the signal for each tenth that the lines so far complete exactly.
class Progress {
public:
    explicit Progress(std::size_t lines) : lines_(lines) { std::raise(SIGUSR1); }

    void tell(std::size_t done) {
        const int percentage = static_cast<int>(100 * done / lines_);
        if (percentage == last_ || percentage % 10 != 0)
            return;
        last_ = percentage;
        std::raise(SIGUSR1);
    }

private:
    std::size_t lines_;
    int last_ = 0;
};

// A longer line is cut. The bytes take the place of the digits.
int sendLine(IBootload& loader, Utilities& image, const std::string& line, char& reply) {
    std::array<char, 128> buffer = {};
    line.copy(buffer.data(), kLongestLine);
    const int count =
        image.encryptData(buffer.data(), reinterpret_cast<unsigned char*>(buffer.data()));
    return loader.sendLine(count, buffer.data(), &reply);
}

int sendLines(FlashReader& flash, IBootload& loader, Utilities& image) {
    Progress progress(image.lines().size());
    int result = 1;
    for (std::size_t i = 0; i < image.lines().size() && result != 0; ++i) {
        actOnSignal();
        char reply = 0;
        result = sendLine(loader, image, image.lines()[i], reply);
        progress.tell(i + 1);
        result = flash.fwflashLogs(reply, result);
    }
    return result;
}

} // namespace

IBootload* FlashReader::getProductInterfaceType() {
    if (!hasActiveDevice())
        return nullptr;
    if (hasActiveTag() && activeRecord().iDevType == 0)
        return new ZelTagUsbBootload;
    fail(ZELTAGAPI_ERR_BOOT_DEVICE);
    return nullptr;
}

int FlashReader::fwFlash(IBootload* loader, const char* name) {
    Utilities image;
    if (!image.openInputFile(name))
        return fail(ZELTAGAPI_ERR_BOOT_FILE);
    const FlashUnderWay underWay;
    if (loader->enterBlMode(static_cast<unsigned char>(image.micro())) == 0)
        return fail(ZELTAGAPI_ERR_BOOT_ENTRY);
    catchSignals();
    return sendLines(*this, *loader, image);
}

// That of the end forces success, whatever came before it.
int FlashReader::fwflashLogs(char reply, int result) {
    switch (reply) {
    case kAccepted:
        return result;
    case kAcceptedAtEnd:
        return 1;
    case kReaderRefuses:
        return fail(ZELTAGAPI_ERR_BOOT_READER_REFUSED);
    default:
        return fail(ZELTAGAPI_ERR_BOOT_UNKNOWN_REPLY);
    }
}

void FlashReader::sendProgressToEvent(int) {}
