// SPDX-License-Identifier: MIT
// The instructions, each by the feature reports' command that does the same.
#include "sim/tag/instructions.h"

#include <algorithm>

namespace zel::sim {

namespace {

constexpr std::uint8_t kProbe = 0xED;
constexpr std::size_t kMultiReply = 7;
constexpr std::size_t kMoveReply = 5;
constexpr TagBlock kFirstFields = {0x85, 0, 0, 0x10};

TagOutcome done(TagForm form, std::vector<std::uint8_t> data = {}) {
    return {form, std::move(data), TagStatus{}};
}

// `size` bytes of a reply from `first` on.
TagOutcome part(TagForm form, const TagBlock& reply, std::size_t first, std::size_t size) {
    const auto begin = reply.begin() + static_cast<std::ptrdiff_t>(first);
    return done(form, {begin, begin + static_cast<std::ptrdiff_t>(size)});
}

// The whole reply, cut or filled up to as many bytes as the host wants.
TagOutcome sized(const TagBlock& reply, std::size_t length) {
    std::vector<std::uint8_t> data(reply.begin(), reply.end());
    data.resize(length);
    return done(TagForm::Read, std::move(data));
}

TagOutcome acknowledged(const TagBlock&) { return done(TagForm::NoAnswer); }

// A TagPlus reader refuses with zeros.
TagOutcome unlessRefused(TagOutcome outcome, const TagBlock& reply) {
    return reply == TagBlock{} ? TagOutcome{} : std::move(outcome);
}

TagBlock bytesOf(std::span<const std::uint8_t> data) {
    TagBlock bytes = {};
    std::copy_n(data.begin(), std::min(data.size(), bytes.size()), bytes.begin());
    return bytes;
}

} // namespace

TagOutcome TagInstructions::run(const TagHeader& header) {
    if (canWrite(header))
        return done(TagForm::Write);
    switch (header.ins) {
    case 0x00:
        return identifier(header.length);
    case 0x01:
        return block(header);
    case 0x02:
        return acknowledged(reader_.run({0x90, header.p1}));
    case 0x03:
        return acknowledged(reader_.run({0xA0}));
    case 0x04:
        return luid(header);
    case 0x09:
        return multi(header);
    case 0x0A:
        return hasExtendedFields() && header.p1 == 0 ? fields(header.length) : TagOutcome{};
    case 0x0C:
        return service(header);
    case 0x0D:
        return speed(header);
    default:
        return {};
    }
}

// A reader without a card delivers zeros and says so.
TagOutcome TagInstructions::identifier(std::size_t length) {
    constexpr std::uint8_t kIdPages = 4;
    std::vector<std::uint8_t> data(4);
    for (std::uint8_t page = 0; page < kIdPages; ++page) {
        const TagBlock bytes = reader_.run({0x8D, page});
        data.insert(data.end(), bytes.begin(), bytes.end());
    }
    data[1] = reader_.run({0x8E})[0];
    data.resize(length);
    return {TagForm::Read, data, length > 1 && data[1] != 0 ? TagStatus{} : kNoCard};
}

TagOutcome TagInstructions::block(const TagHeader& header) {
    if (header.p1 > 3)
        return {};
    return sized(reader_.run({static_cast<std::uint8_t>(0x80 + header.p1)}), header.length);
}

// The probe is answered like the query.
TagOutcome TagInstructions::luid(const TagHeader& header) {
    if (header.p1 != header.p2 || (header.p1 != 0 && header.p1 != kProbe))
        return {};
    return sized(reader_.run({0x8A}), header.length);
}

// Versions, selections and moves are answered as over feature reports, less their first byte.
TagOutcome TagInstructions::multi(const TagHeader& header) {
    if (header.p1 == 0)
        return hasExtendedFields() ? TagOutcome{} : fields(header.length);
    if (!reader_.options().isTagPlus())
        return {};
    const TagBlock command = {0x89, header.p1, header.p2, header.length};
    switch (header.p1) {
    case 0x01:
        return state();
    case 0x03:
        return part(TagForm::Read, reader_.run(command), 1, kMultiReply);
    case 0x04:
        return part(TagForm::AtOnce, reader_.run(command), 0, command.size());
    case 0x81: {
        const TagBlock reply = reader_.run(command);
        return unlessRefused(part(TagForm::Read, reply, 1, kMultiReply), reply);
    }
    case 0x82: {
        const TagBlock reply = reader_.run(command);
        return unlessRefused(part(TagForm::Read, reply, 1, kMoveReply), reply);
    }
    default:
        return {};
    }
}

// The card type of the active configuration comes along.
TagOutcome TagInstructions::state() {
    const TagBlock state = reader_.run({0x89, 1});
    const TagBlock type = reader_.run({0x84});
    return done(TagForm::Read, {1, state[2], state[3], 0, type[1], type[2], type[3]});
}

TagOutcome TagInstructions::fields(std::size_t length) {
    std::vector<std::uint8_t> data;
    for (std::uint8_t page = 0; data.size() < length; ++page) {
        TagBlock command = kFirstFields;
        command[1] = page;
        const TagBlock bytes = reader_.run(command);
        data.insert(data.end(), bytes.begin(), bytes.end());
    }
    data.resize(length);
    return done(TagForm::Read, std::move(data));
}

TagOutcome TagInstructions::service(const TagHeader& header) {
    const TagBlock command = {0x8C, header.p1, header.p2, header.length};
    switch (header.p1) {
    case 0x01:
    case 0x02:
        return part(TagForm::Bare, reader_.run(command), 0, command.size());
    case 0x03:
        return acknowledged(reader_.run(command));
    case 0x06:
    case 0x86:
        return volume(header);
    default:
        return {};
    }
}

TagOutcome TagInstructions::volume(const TagHeader& header) {
    const TagBlock reply = reader_.run({0x8C, header.p1, header.p2});
    const bool isQuery = header.p1 == 0x06;
    return unlessRefused(part(isQuery ? TagForm::Bare : TagForm::Read, reply, 2, isQuery ? 1 : 0),
                         reply);
}

TagOutcome TagInstructions::speed(const TagHeader& header) {
    if (header.p1 == 0x01)
        return done(TagForm::Bare, {speedCode_});
    if (header.p1 != 0x81)
        return {};
    speedCode_ = header.p2;
    return done(TagForm::Read);
}

bool TagInstructions::canWrite(const TagHeader& header) const {
    switch (header.ins) {
    case 0x06:
        return true;
    case 0x0A:
        return !hasExtendedFields() && header.p1 == 0 && header.p2 == 0;
    case 0x81:
        return header.p1 < 4 || (header.p1 == 4 && reader_.options().isTagPlus());
    case 0x8A:
        return hasExtendedFields() && header.p1 == 0 &&
               (header.p2 == 0 || header.p2 == 0x01 || header.p2 == 0x11);
    default:
        return false;
    }
}

void TagInstructions::write(const TagHeader& header, std::span<const std::uint8_t> data) {
    const TagBlock bytes = bytesOf(data);
    switch (header.ins) {
    case 0x06:
        reader_.write({0x8A}, {0, bytes[0], bytes[1]});
        break;
    case 0x81:
        reader_.write({static_cast<std::uint8_t>(0x80 + header.p1)}, bytes);
        break;
    default:
        writeFields(header.p2 == 0 ? kFirstFields : TagBlock{0x85, 0, header.p2, 0}, data);
        break;
    }
}

// Whole pages; what is left of the last one becomes zeros.
void TagInstructions::writeFields(const TagBlock& firstPage, std::span<const std::uint8_t> data) {
    TagBlock page = firstPage;
    for (; !data.empty(); ++page[1]) {
        reader_.write(page, bytesOf(data));
        data = data.subspan(std::min(data.size(), page.size()));
    }
}

// The feature bit that moves separator and field data to instructions of their own.
bool TagInstructions::hasExtendedFields() const {
    constexpr std::uint8_t kExtended = 0x40;
    return (reader_.configuration(reader_.activeConfiguration()).block[1][7] & kExtended) != 0;
}

} // namespace zel::sim
