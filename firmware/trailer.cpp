// SPDX-License-Identifier: MIT
// Findings that the readers of the three trailers share.
#include "firmware/trailer.h"

namespace zel::firmware {

namespace {

constexpr std::size_t kDigits = 8;
constexpr std::string_view kDigit = "0123456789ABCDEF";

bool areDigits(std::string_view text) {
    return text.size() == kDigits && text.find_first_not_of(kDigit) == text.npos;
}

zelFileFault faultOf(bool isEqual, std::string_view told) {
    if (isEqual)
        return ZELTAGAPI_FAULT_NONE;
    return areDigits(told) ? ZELTAGAPI_FAULT_CHECKSUM : ZELTAGAPI_FAULT_TRAILER;
}

} // namespace

zelFileCheck checkTrailer(CRC& crc, const char* name, int kind) {
    if (kind == ZELTAGAPI_FILE_TEMPLATE)
        return checkTemplateTrailer(crc, name);
    return kind == ZELTAGAPI_FILE_FIRMWARE ? checkFirmwareTrailer(crc, name)
                                           : checkIniTrailer(crc, name);
}

zelFileCheck finding(zelFileFault fault, int line) { return {fault, line, {}, {}}; }

zelFileCheck comparison(bool isEqual, std::string_view told, std::string_view computed, int line) {
    zelFileCheck check = finding(faultOf(isEqual, told), line);
    told.copy(check.told, kDigits);
    computed.copy(check.computed, kDigits);
    return check;
}

unsigned long compute(CRC& crc, std::string_view text, unsigned long& checksum) {
    crc.Init();
    const long status = crc.checksumOf(text, checksum);
    crc.Free();
    return static_cast<unsigned long>(status);
}

std::string digitsOf(unsigned long checksum) {
    std::string digits(kDigits, '0');
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, checksum >>= 4)
        *digit = kDigit[checksum & 15];
    return digits;
}

} // namespace zel::firmware
