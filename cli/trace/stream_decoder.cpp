// SPDX-License-Identifier: MIT
// Byte streams: frames, lines of text and a magnetic stripe reader's commands, told by how they
// begin.
#include "cli/trace/decoder.h"
#include "cli/trace/frame_commands.h"
#include "cli/trace/stripe_commands.h"
#include "cli/trace/text_lines.h"

namespace zel::cli {

namespace {

class Stream : public Decoder {
public:
    Message sent(ByteView bytes, bool) override {
        form_ = formOf(bytes);
        switch (form_) {
        case Form::Frame:
        case Form::FrameData:
            return frames_.sent(bytes);
        case Form::Text:
            return messageOfLines(bytes);
        case Form::Stripe:
            return stripeCommand(bytes, stripeName(bytes), stripeCommand_);
        default:
            return allSecret(bytes);
        }
    }

    Message received(ByteView bytes) override {
        switch (form_) {
        case Form::Frame:
        case Form::FrameData:
            return frames_.received(bytes);
        case Form::Text:
            return messageOfLines(bytes);
        case Form::Stripe:
            return stripeReply(bytes, stripeCommand_);
        default:
            return allSecret(bytes);
        }
    }

    bool beginsAnew(ByteView sent, ByteView piece) const override {
        if (isStripeFrame(sent) || frames_.isWhole(sent))
            return true;
        return !sent.empty() && sent.back() == '\r' && piece.front() == '\r';
    }

private:
    enum class Form { Unknown, Frame, FrameData, Text, Stripe };

    Form formOf(ByteView bytes) const {
        if (frames_.isData(bytes))
            return Form::FrameData;
        if (FrameCommands::isHeader(bytes))
            return Form::Frame;
        if (isStripeFrame(bytes) && bytes[0] != '\r')
            return Form::Stripe;
        return areLines(bytes) ? Form::Text : Form::Unknown;
    }

    // The text without the zeros that fill it up, as far as it is a command at all.
    static std::string stripeName(ByteView bytes) { return {bytes.begin(), bytes.begin() + 3}; }

    Form form_ = Form::Unknown;
    FrameCommands frames_;
    Bytes stripeCommand_;
};

} // namespace

std::unique_ptr<Decoder> streamDecoder() { return std::make_unique<Stream>(); }

} // namespace zel::cli
