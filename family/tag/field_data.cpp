// SPDX-License-Identifier: MIT
// Pages of eight bytes, asked for and sent one by one; on a stream all at once.
#include "family/tag/field_data.h"

#include "base/wipe.h"
#include "family/tag/blocks.h"
#include "family/tag/error_words.h"
#include "family/tag/feature_report.h"
#include "family/tag/stream.h"

#include <algorithm>
#include <array>
#include <span>

namespace zel::tag {

namespace {

constexpr std::uint8_t kFieldSelector = 0x10; // second byte of the selector
constexpr std::uint8_t kFirstKey = 1;
constexpr std::uint8_t kSecondKey = 17;
constexpr std::uint8_t kOldHeader = 12; // first byte of the old form, and its number of pages
constexpr std::uint8_t kNoData = 255;   // first byte of a store never written; 0 too
constexpr int kMostPages = 18;
constexpr int kMostOnStream = 128; // bytes

using Staging = std::array<std::uint8_t, kMostPages * kPayloadSize>;

Payload fieldPage(int page) {
    return command(Opcode::Page, static_cast<std::uint8_t>(page), 0, kFieldSelector);
}

// Whether the first page has data; it tells how many pages there are.
bool startsData(const Payload& first, int& pages) {
    if (first[0] == 0 || first[0] == kNoData)
        return false;
    if (first[0] != kOldHeader)
        pages = first[3];
    return true;
}

// A page that can't be fetched is told by the error word and stands as zeros.
bool readPages(Staging& staging) {
    int pages = kOldHeader;
    for (int page = 0; page < std::min(pages, kMostPages); ++page) {
        if (!send(fieldPage(page)))
            return fail(ZELTAGAPI_ERR_READ);
        Payload reply;
        if (!fetch(reply)) {
            fail(ZELTAGAPI_ERR_READ);
            reply = {};
        }
        if (page == 0 && !startsData(reply, pages))
            return true;
        std::copy(reply.begin(), reply.end(),
                  staging.begin() + page * static_cast<std::ptrdiff_t>(kPayloadSize));
    }
    return true;
}

// The first page tells how many there are. A reader that doesn't deliver it has none.
void readOnStream(tsDevDat& record, const tsTagCfg& config, Staging& staging) {
    const auto instruction = hasFeature(config, kExtendedFeatures)
                                 ? stream::Instruction::ExtendedField
                                 : stream::Instruction::Multi;
    stream::Frame first(instruction, 0, 0, kPayloadSize);
    if (!stream::read(first)) {
        record.bSepFldOK = 0;
        return;
    }
    const int size = std::min(first.data()[3] * static_cast<int>(kPayloadSize), kMostOnStream);
    stream::Frame all(instruction, 0, 0, size);
    if (stream::read(all))
        std::copy_n(all.data(), size, staging.begin());
}

// Bytes past the record go out as zeros.
Payload pageOf(const uSFD& data, int page) {
    Payload bytes = {};
    const std::size_t start = static_cast<std::size_t>(page) * kPayloadSize;
    if (start + kPayloadSize <= sizeof data.bytes)
        std::copy_n(data.bytes + start, kPayloadSize, bytes.begin());
    return bytes;
}

void sendOnStream(tsDevDat& record, stream::Frame&& frame, std::span<const std::uint8_t> data) {
    frame.setOutgoing(data);
    if (!stream::write(frame))
        record.bSepFldOK = 0;
}

void sendPage(tsDevDat& record, const Payload& request, const Payload& data) {
    const Written written = write(request, data);
    if (written == Written::Yes)
        return;
    fail(ZELTAGAPI_ERR_WRITE);
    record.bSepFldOK = 0;
    if (written == Written::CommandOnly)
        record.bPartNumOK = 0;
}

} // namespace

bool readFieldData(tsDevDat& record, tsTagCfg& config) {
    Staging staging = {};
    if (record.bSepFldOK != 0) {
        if (stream::isActive())
            readOnStream(record, config, staging);
        else if (!readPages(staging))
            return false;
    }
    std::copy_n(staging.begin(), sizeof config.uSFD.bytes, config.uSFD.bytes);
    return true;
}

int pagesOf(const uSFD& data) { return data.bytes[0] == kOldHeader ? kOldHeader : data.bytes[3]; }

bool pagesFit(const uSFD& data) {
    return static_cast<std::size_t>(pagesOf(data)) * kPayloadSize <= sizeof data.bytes;
}

void writeFieldData(tsDevDat& record, const tsTagCfg& config) {
    const int pages = pagesOf(config.uSFD);
    if (stream::isActive()) {
        const auto instruction = hasFeature(config, kExtendedFeatures)
                                     ? stream::Instruction::SetExtended
                                     : stream::Instruction::ExtendedField;
        const int size = std::min(pages * static_cast<int>(kPayloadSize), kMostOnStream);
        sendOnStream(record, {instruction, 0, 0, size}, config.uSFD.bytes);
        return;
    }
    for (int page = 0; page < pages; ++page)
        sendPage(record, fieldPage(page), pageOf(config.uSFD, page));
}

// With the enhanced security flag both go out, else those that don't start with 0.
void writeKeys(tsTagCfg& config) {
    for (const std::uint8_t selector : {kFirstKey, kSecondKey}) {
        const std::uint8_t* const key = config.sHashKeyData.key[selector == kFirstKey ? 0 : 1];
        if (enhanceSecurityFlagCurrFWState || key[0] != 0)
            WriteHashKeyBlock(&config, iActDev, selector);
    }
}

} // namespace zel::tag

using namespace zel::tag;

void WriteHashKeyBlock(tsTagCfg* config, int, unsigned char selector) {
    const auto& key = config->sHashKeyData.key[selector == kFirstKey ? 0 : 1];
    if (stream::isActive()) {
        sendOnStream(zel::activeRecord(),
                     {stream::Instruction::SetExtended, 0, selector, sizeof key}, key);
        return;
    }
    for (std::uint8_t page = 0; page < 2; ++page) {
        zel::Wiped<Payload> data;
        std::copy_n(key + page * kPayloadSize, kPayloadSize, data.area.begin());
        sendPage(zel::activeRecord(), command(Opcode::Page, page, selector), data.area);
    }
}
