// SPDX-License-Identifier: MIT
// Transfers key and file references to the reader's secure element, four bytes a page.
#include "family/tag/error_words.h"
#include "family/tag/feature_report.h"
#include "family/tag/multi_config.h"
#include "family/tag/services.h"
#include "frame/zelTagAPI.h"

#include <algorithm>
#include <array>

using namespace zel;
using tag::Opcode;
using tag::Payload;

namespace {

constexpr std::uint8_t kTransfer = 0x90;
constexpr std::uint8_t kClosePage = 0xFF;
constexpr std::uint8_t kKey = 1;
constexpr std::uint8_t kFile = 2;
constexpr int kPageSize = 4;
constexpr int kMostBytes = 512;

struct Reference {
    const unsigned char* data;
    int length;
    std::uint8_t kind;
    std::uint8_t number;
};

Payload transfer(std::uint8_t page) { return tag::command(Opcode::Multi, kTransfer, 0, page); }

bool echoes(const Payload& request, const Payload& reply) {
    return std::equal(request.begin(), request.begin() + 4, reply.begin());
}

bool exchange(const Payload& request) {
    Payload reply;
    return tag::query(request, reply) && echoes(request, reply);
}

// Only a reply that doesn't come is told by the error word.
bool open(const Reference& reference) {
    Payload request = transfer(0);
    request[4] = reference.kind;
    request[5] = reference.number;
    request[6] = static_cast<std::uint8_t>(reference.length);
    if (!tag::send(request))
        return false;
    Payload reply;
    if (!tag::fetch(reply))
        return tag::fail(ZELTAGAPI_ERR_REFERENCE);
    return echoes(request, reply);
}

bool sendPages(const Reference& reference) {
    std::array<std::uint8_t, kMostBytes> area = {};
    std::copy_n(reference.data, reference.length, area.begin());
    const int pages = (reference.length + kPageSize - 1) / kPageSize;
    for (int page = 1; page <= pages; ++page) {
        Payload request = transfer(static_cast<std::uint8_t>(page));
        std::copy_n(area.begin() + (page - 1) * std::ptrdiff_t{kPageSize}, kPageSize,
                    request.begin() + 4);
        if (!exchange(request))
            return false;
    }
    return true;
}

bool close() { return exchange(transfer(kClosePage)) && tag::send(tag::command(Opcode::Commit)); }

int write(const Reference& reference) {
    if (!reference.data || reference.length < 0 || reference.length > kMostBytes) {
        tag::clearError();
        return tag::fail(ZELTAGAPI_ERR_REFERENCE);
    }
    zeltag_SendSelectActConfig(GetActConfig());
    tag::clearError();
    if (!open(reference))
        return 0;
    return sendPages(reference) && close() ? 1 : tag::fail(ZELTAGAPI_ERR_REFERENCE);
}

} // namespace

int zeltag_WriteSEKeyRefrence(unsigned char* data, int length, int keyNumber) {
    return write({data, length, kKey, static_cast<std::uint8_t>(keyNumber)});
}

int zeltag_WriteEV1FileRefrence(unsigned char* data, int length) {
    return write({data, length, kFile, 1});
}
