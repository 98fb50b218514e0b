// SPDX-License-Identifier: MIT
// The instructions, each by the feature reports' command that does the same.
#include "sim/tag/instructions.h"

#include "sim/tag/commands.h"

#include <algorithm>

namespace zel::sim {

namespace {

constexpr std::uint8_t kProbe = 0xED;
constexpr TagBlock kFirstFields = {opcode::kPage, 0, 0, 0x10};

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

// What an instruction delivers of the reply to the TagPlus command of its P1.
struct MultiAnswer {
    std::uint8_t command;
    TagForm form;
    std::size_t first;
    std::size_t size;
    bool zerosRefuse;
};

constexpr MultiAnswer kMultiAnswers[] = {
    {multi::kVersion, TagForm::Read, 1, 7, false},
    {multi::kCardTypes, TagForm::AtOnce, 0, 8, false},
    {multi::kSelect, TagForm::Read, 1, 7, true},
    {multi::kMoveSet, TagForm::Read, 1, 5, true},
};

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
    case instruction::kIdentifier:
        return identifier(header.length);
    case instruction::kBlock:
        return block(header);
    case instruction::kCommit:
        return acknowledged(reader_.run({opcode::kCommit, header.p1}));
    case instruction::kFactoryDefaults:
        return acknowledged(reader_.run({opcode::kFactoryDefaults}));
    case instruction::kLuid:
        return luid(header);
    case instruction::kMulti:
        return multi(header);
    case instruction::kFields:
        return hasExtendedFields() && header.p1 == 0 ? fields(header.length) : TagOutcome{};
    case instruction::kService:
        return service(header);
    case instruction::kSpeed:
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
        const TagBlock bytes = reader_.run({opcode::kIdentifierPage, page});
        data.insert(data.end(), bytes.begin(), bytes.end());
    }
    data[1] = reader_.run({opcode::kBitCount})[0];
    data.resize(length);
    return {TagForm::Read, data, length > 1 && data[1] != 0 ? TagStatus{} : kNoCard};
}

TagOutcome TagInstructions::block(const TagHeader& header) {
    if (header.p1 > 3)
        return {};
    return sized(reader_.run({static_cast<std::uint8_t>(opcode::kBlock0 + header.p1)}),
                 header.length);
}

// The probe is answered like the query.
TagOutcome TagInstructions::luid(const TagHeader& header) {
    if (header.p1 != header.p2 || (header.p1 != 0 && header.p1 != kProbe))
        return {};
    return sized(reader_.run({opcode::kLuid}), header.length);
}

TagOutcome TagInstructions::multi(const TagHeader& header) {
    if (header.p1 == 0)
        return hasExtendedFields() ? TagOutcome{} : fields(header.length);
    if (!reader_.options().isTagPlus())
        return {};
    if (header.p1 == multi::kQuery)
        return state();
    const auto* const row = std::ranges::find(kMultiAnswers, header.p1, &MultiAnswer::command);
    if (row == std::end(kMultiAnswers))
        return {};
    const TagBlock reply = reader_.run({opcode::kMulti, header.p1, header.p2, header.length});
    const TagOutcome outcome = part(row->form, reply, row->first, row->size);
    return row->zerosRefuse ? unlessRefused(outcome, reply) : outcome;
}

// The card type of the active configuration comes along.
TagOutcome TagInstructions::state() {
    const TagBlock state = reader_.run({opcode::kMulti, multi::kQuery});
    const TagBlock type = reader_.run({opcode::kCardType});
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
    const TagBlock command = {opcode::kService, header.p1, header.p2, header.length};
    switch (header.p1) {
    case service::kPartNumber:
    case service::kQueuedIdentifier:
        return part(TagForm::Bare, reader_.run(command), 0, command.size());
    case service::kBeep:
        return acknowledged(reader_.run(command));
    case service::kVolume:
    case service::kSetVolume:
        return volume(header);
    default:
        return {};
    }
}

TagOutcome TagInstructions::volume(const TagHeader& header) {
    const TagBlock reply = reader_.run({opcode::kService, header.p1, header.p2});
    const bool isQuery = header.p1 == service::kVolume;
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
    case instruction::kWriteLuid:
        return true;
    case instruction::kFields:
        return !hasExtendedFields() && header.p1 == 0 && header.p2 == 0;
    case instruction::kWriteBlock:
        return header.p1 < 4 || (header.p1 == 4 && reader_.options().isTagPlus());
    case instruction::kWriteFields:
        return hasExtendedFields() && header.p1 == 0 &&
               (header.p2 == 0 || header.p2 == 0x01 || header.p2 == 0x11);
    default:
        return false;
    }
}

void TagInstructions::write(const TagHeader& header, std::span<const std::uint8_t> data) {
    const TagBlock bytes = bytesOf(data);
    switch (header.ins) {
    case instruction::kWriteLuid:
        reader_.write({opcode::kLuid}, {0, bytes[0], bytes[1]});
        break;
    case instruction::kWriteBlock:
        reader_.write({static_cast<std::uint8_t>(opcode::kBlock0 + header.p1)}, bytes);
        break;
    default:
        writeFields(header.p2 == 0 ? kFirstFields : TagBlock{opcode::kPage, 0, header.p2, 0}, data);
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
