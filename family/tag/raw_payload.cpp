// SPDX-License-Identifier: MIT
// Sends a report of the caller's choice and keeps its reply, both for callers that pass numbers.
#include "family/tag/card_data.h"
#include "family/tag/feature_report.h"
#include "family/tag/stream.h"

#include <algorithm>
#include <array>
#include <span>

using namespace zel;
using tag::Payload;

namespace {

// Byte 0 is the place of the report ID; the payload follows.
using RawBuffer = std::array<std::uint8_t, 33>;
constinit RawBuffer rawRequest = {};
constinit RawBuffer rawReply = {};

constexpr int kPlaces = 10; // that a caller reaches
constexpr int kFirstToSend = 8;
constexpr int kNoSuchPlace = 2; // the byte read from any other place

bool isPlace(short index) { return index >= 0 && index < kPlaces; }

void store(short index, short value) {
    if (index == 0) {
        rawRequest.fill(0);
        rawReply.fill(0);
    }
    rawRequest[static_cast<std::size_t>(index)] = static_cast<std::uint8_t>(value);
}

// Bytes 1 to 5 of the request are the frame's header; the reply stands at the front.
bool exchangeOnStream() {
    rawReply.fill(0);
    const std::span request(rawRequest);
    tag::stream::Frame frame(request.subspan(1, 5));
    if (!tag::stream::readEight(frame))
        return false;
    std::copy_n(frame.data(), tag::kPayloadSize, rawReply.begin());
    return true;
}

// A reply is forgotten when the next request has been sent; it stands behind the report ID.
bool exchange() {
    rawRequest[0] = 0;
    if (tag::stream::isActive())
        return exchangeOnStream();
    Payload payload;
    std::copy_n(rawRequest.begin() + 1, payload.size(), payload.begin());
    if (!tag::send(payload))
        return false;
    rawReply.fill(0);
    const bool received = tag::fetch(payload);
    std::copy(payload.begin(), payload.end(), rawReply.begin() + 1);
    return received;
}

} // namespace

int zeltag_SetRawPayload_index(short index, short value) {
    if (index < 0)
        return 0;
    if (isPlace(index))
        store(index, value);
    return index < kFirstToSend || exchange() ? 1 : 0;
}

int zeltag_GetRawPayload_index(short index) {
    return isPlace(index) ? rawReply[static_cast<std::size_t>(index)] : kNoSuchPlace;
}
