// SPDX-License-Identifier: MIT
// Joins the pieces of a stream to messages and numbers the devices.
#include "cli/trace/tracer.h"

#include <algorithm>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <utility>

namespace zel::cli {

struct Tracer::Channel {
    std::string device;
    std::size_t number;
    bool isStream;
    std::unique_ptr<Decoder> decoder = nullptr;
    Bytes pieces = {};        // of a stream: sent or received, and not yet written
    bool isReceiving = false; // which of them
};

namespace {

ByteView bytesOf(const zelTraceEvent& event) {
    return {event.bytes, event.bytes ? static_cast<std::size_t>(event.size) : 0};
}

} // namespace

Tracer::Tracer(Form form, Sink sink) : form_(form), sink_(std::move(sink)) {
    zelTagAPI_observe(observe, this);
}

Tracer::~Tracer() { finish(); }

void Tracer::finish() {
    zelTagAPI_observe(nullptr, nullptr);
    for (const auto& channel : channels_)
        writePieces(*channel);
}

void Tracer::observe(const zelTraceEvent* event, void* context) {
    static_cast<Tracer*>(context)->take(*event);
}

Tracer::Channel& Tracer::channelOf(const zelTraceEvent& event) {
    const auto known = std::find_if(channels_.begin(), channels_.end(), [&](const auto& channel) {
        return channel->device == event.device;
    });
    if (known != channels_.end())
        return **known;
    const bool isStream = event.transport != ZELTAGAPI_TRACE_USB;
    channels_.push_back(
        std::make_unique<Channel>(Channel{event.device, channels_.size(), isStream}));
    return *channels_.back();
}

void Tracer::take(const zelTraceEvent& event) {
    Channel& channel = channelOf(event);
    if (event.kind == ZELTAGAPI_TRACE_SEND || event.kind == ZELTAGAPI_TRACE_RECEIVE)
        return exchange(channel, event);
    writePieces(channel);
    const std::string failed = event.result == 1 ? "" : " fails";
    const bool opens = event.kind == ZELTAGAPI_TRACE_OPEN;
    write(channel,
          {opens ? "open" : "close", opens ? "open" : "close", channel.device + failed, ""});
    if (opens)
        channel.decoder = nullptr;
    lastEnd_ = event.ended;
}

void Tracer::exchange(Channel& channel, const zelTraceEvent& event) {
    if (!channel.decoder)
        channel.decoder = channel.isStream
                              ? streamDecoder()
                              : reportDecoder(event.product, static_cast<std::size_t>(event.size));
    channel.isStream ? exchangePiece(channel, event) : exchangeReport(channel, event);
    lastEnd_ = event.ended;
}

void Tracer::exchangeReport(Channel& channel, const zelTraceEvent& event) {
    writeGapBefore(event.began);
    const bool isSent = event.kind == ZELTAGAPI_TRACE_SEND;
    const ByteView bytes = bytesOf(event);
    if (isSent)
        writeMessage(channel, true, channel.decoder->sent(bytes, event.result == 1));
    else
        writeMessage(channel, false, channel.decoder->received(bytes));
    if (isSent && event.result != 1)
        write(channel, {"failure", "!", "not sent", ""});
}

// A frame goes out in two pieces, a line of text in many; an answer is read in up to three.
void Tracer::exchangePiece(Channel& channel, const zelTraceEvent& event) {
    const bool isReceived = event.kind == ZELTAGAPI_TRACE_RECEIVE;
    const ByteView piece = bytesOf(event);
    const bool isNew = isReceived != channel.isReceiving ||
                       (!isReceived && !channel.pieces.empty() && !piece.empty() &&
                        channel.decoder->beginsAnew(channel.pieces, piece));
    if (isNew) {
        writePieces(channel);
        channel.isReceiving = isReceived;
    }
    if (channel.pieces.empty() && !isReceived)
        writeGapBefore(event.began);
    channel.pieces.insert(channel.pieces.end(), piece.begin(), piece.end());
}

void Tracer::writePieces(Channel& channel) {
    const Bytes pieces = std::exchange(channel.pieces, {});
    if (!channel.decoder || (pieces.empty() && !channel.isReceiving))
        return;
    const bool isReceived = std::exchange(channel.isReceiving, false);
    writeMessage(channel, !isReceived,
                 isReceived ? channel.decoder->received(pieces)
                            : channel.decoder->sent(pieces, true));
}

void Tracer::writeMessage(Channel& channel, bool isSent, const Message& message) {
    if (message.bytes.empty())
        return write(channel, {"failure", "!", isSent ? "nothing sent" : "no answer", ""});
    hasMasked_ = hasMasked_ || (message.holdsSecrets() && !form_.showsSecrets);
    write(channel, {isSent ? "send" : "receive", isSent ? ">" : "<",
                    asText(message, form_.showsSecrets), message.name});
}

void Tracer::write(Channel& channel, const Line& line) {
    if (form_.json) {
        Json object = {{"event", line.event}, {"device", channel.device}, {"text", line.text}};
        if (!line.name.empty())
            object["name"] = line.name;
        return sink_(toText(object));
    }
    const std::string number = channels_.size() > 1 ? std::to_string(channel.number) : "";
    const std::string name = line.name.empty() ? "" : "  " + line.name;
    sink_(fmt::format("{}{} {}{}", number, line.mark, line.text, name));
}

void Tracer::writeGapBefore(unsigned long long began) {
    constexpr unsigned long long kMillisecond = 1000;
    if (lastEnd_ == 0 || began < lastEnd_ + kMillisecond)
        return;
    const unsigned long long gap = (began - lastEnd_) / kMillisecond;
    sink_(form_.json ? toText(Json{{"event", "pause"}, {"milliseconds", gap}})
                     : fmt::format("~ {} ms", gap));
}

} // namespace zel::cli
