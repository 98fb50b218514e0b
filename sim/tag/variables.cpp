// SPDX-License-Identifier: MIT
// The table of variables, each with its place in the blocks.
#include "sim/tag/variables.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <iterator>

namespace zel::sim {

namespace {

constexpr unsigned kLedIsReaders = 255; // the reader, not its host, controls the LEDs

TagBlock& blockOf(TagReader& reader, unsigned block) {
    return reader.configuration(reader.activeConfiguration()).block[block];
}

// Bits of a byte.
template <unsigned Block, unsigned Byte, unsigned Shift = 0, unsigned Width = 8> struct Bits {
    static constexpr unsigned kMost = (1U << Width) - 1;
    static unsigned get(TagReader& reader) { return blockOf(reader, Block)[Byte] >> Shift & kMost; }
    static bool set(TagReader& reader, unsigned value) {
        if (value > kMost)
            return false;
        std::uint8_t& byte = blockOf(reader, Block)[Byte];
        byte = static_cast<std::uint8_t>((byte & ~(kMost << Shift)) | value << Shift);
        return true;
    }
};

// A byte that counts steps of so many milliseconds.
template <unsigned Byte, unsigned Step> struct Time {
    static unsigned get(TagReader& reader) { return Bits<1, Byte>::get(reader) * Step; }
    static bool set(TagReader& reader, unsigned value) {
        return Bits<1, Byte>::set(reader, value / Step);
    }
};

struct Led {
    using IsHosts = Bits<2, 1, 1, 1>;
    using Both = Bits<2, 0, 0, 2>;
    static unsigned get(TagReader& reader) {
        return IsHosts::get(reader) == 0 ? kLedIsReaders : Both::get(reader);
    }
    static bool set(TagReader& reader, unsigned value) {
        if (value == kLedIsReaders)
            return IsHosts::set(reader, 0);
        return Both::set(reader, value) && IsHosts::set(reader, 1);
    }
};

// Block 3 holds what a count has above the four bits that block 0 has for it.
template <unsigned Shift, unsigned Excess> struct Parity {
    using Low = Bits<0, 2, Shift, 4>;
    using Rest = Bits<3, Excess>;
    static unsigned get(TagReader& reader) { return Low::get(reader) + Rest::get(reader); }
    static bool set(TagReader& reader, unsigned value) {
        const unsigned low = std::min(value, Low::kMost);
        return Rest::set(reader, value - low) && Low::set(reader, low);
    }
};

// A byte that a flag of block 0 puts into use, and a value of 0 out of use.
template <unsigned Byte, unsigned Flag, unsigned WhenUsed> struct Optional {
    using Use = Bits<0, 7, Flag, 1>;
    using Value = Bits<0, Byte>;
    static unsigned get(TagReader& reader) {
        return Use::get(reader) == WhenUsed ? Value::get(reader) : 0;
    }
    static bool set(TagReader& reader, unsigned value) {
        return Value::set(reader, value) && Use::set(reader, value != 0 ? WhenUsed : 1 - WhenUsed);
    }
};

struct Luid {
    static unsigned get(TagReader& reader) { return reader.settings().luid; }
    static bool set(TagReader&, unsigned) { return false; }
};

struct DeviceId {
    static unsigned get(TagReader& reader) { return reader.deviceId(); }
    static bool set(TagReader&, unsigned) { return false; }
};

enum class Form { Number, Flag, Character };

struct Variable {
    std::string_view key;
    Form form;
    unsigned (*get)(TagReader&);
    bool (*set)(TagReader&, unsigned);
};

template <typename Place> constexpr Variable row(std::string_view key, Form form = Form::Number) {
    return {key, form, Place::get, Place::set};
}

constexpr Variable kVariables[] = {
    row<Bits<2, 5>>("chr.1", Form::Character),
    row<Bits<2, 6>>("chr.2", Form::Character),
    row<Bits<2, 7>>("chr.3", Form::Character),
    row<Bits<2, 4, 0, 2>>("chr.count.lead"),
    row<Bits<2, 4, 4, 2>>("chr.count.trail"),
    row<Optional<6, 5, 0>>("chr.eol", Form::Character),
    row<Optional<5, 4, 1>>("chr.fac", Form::Character),
    row<Bits<2, 2>>("chr.gone.1", Form::Character),
    row<Bits<2, 3>>("chr.gone.2", Form::Character),
    row<DeviceId>("dev.id"),
    row<Luid>("dev.luid"),
    row<Optional<0, 0, 1>>("disp.fac.digits"),
    row<Bits<0, 7, 3, 1>>("disp.fac.send", Form::Flag),
    row<Bits<0, 7, 2, 1>>("disp.fac.strip", Form::Flag),
    row<Bits<0, 1>>("disp.id.digits"),
    row<Bits<2, 1, 2, 1>>("disp.id.hex", Form::Flag),
    row<Bits<1, 6, 2, 1>>("disp.id.lower", Form::Flag),
    row<Bits<2, 1, 4, 1>>("op.beep", Form::Flag),
    row<Bits<0, 7, 6, 1>>("op.cont", Form::Flag),
    row<Bits<0, 7, 7, 1>>("op.sdk", Form::Flag),
    row<Bits<2, 0, 3, 1>>("out.beep"),
    row<Led>("out.led"),
    row<Bits<2, 0, 2, 1>>("out.relay"),
    row<Time<1, 4>>("time.bits"),
    row<Time<2, 50>>("time.hold"),
    row<Time<4, 4>>("time.key.press"),
    row<Time<5, 4>>("time.key.release"),
    row<Time<3, 50>>("time.lo"),
    row<Bits<0, 3>>("wieg.id.bits"),
    row<Bits<2, 1, 3, 1>>("wieg.inv.bits", Form::Flag),
    row<Bits<0, 7, 1, 1>>("wieg.qual", Form::Flag),
    row<Bits<0, 4>>("wieg.qual.bits"),
    row<Bits<2, 1, 5, 1>>("wieg.rev.bits", Form::Flag),
    row<Bits<2, 1, 6, 1>>("wieg.rev.bytes", Form::Flag),
    row<Parity<0, 0>>("wieg.strip.lead.bits"),
    row<Parity<4, 1>>("wieg.strip.trail.bits"),
};

std::string character(unsigned value) {
    if (value > 0x20 && value < 0x7F && value != '\'' && value != '\\')
        return {'\'', static_cast<char>(value), '\''};
    char text[8];
    std::snprintf(text, sizeof text, "'\\x%02X'", value & 0xFF);
    return text;
}

std::string textOf(Form form, unsigned value) {
    switch (form) {
    case Form::Flag:
        return value != 0 ? "True" : "False";
    case Form::Character:
        return character(value);
    default:
        return std::to_string(value);
    }
}

std::optional<unsigned> number(std::string_view digits, int base) {
    unsigned value = 0;
    const char* const end = digits.data() + digits.size();
    const auto result = std::from_chars(digits.data(), end, value, base);
    const bool isWhole = !digits.empty() && result.ec == std::errc{} && result.ptr == end;
    return isWhole ? std::optional(value) : std::nullopt;
}

} // namespace

std::string tagVariableLines(TagReader& reader) {
    std::string lines;
    for (const Variable& variable : kVariables)
        lines.append("ZTAG:")
            .append(variable.key)
            .append("=")
            .append(textOf(variable.form, variable.get(reader)) + '\r');
    return lines;
}

std::optional<unsigned> tagVariableValue(std::string_view text) {
    if (text == "True" || text == "False")
        return text == "True" ? 1U : 0U;
    if (text.size() < 3 || text.front() != '\'' || text.back() != '\'')
        return number(text, 10);
    const std::string_view quoted = text.substr(1, text.size() - 2);
    if (quoted.starts_with("\\x"))
        return number(quoted.substr(2), 16);
    return quoted.size() == 1 ? std::optional<unsigned>(static_cast<unsigned char>(quoted[0]))
                              : std::nullopt;
}

bool setTagVariable(TagReader& reader, std::string_view key, unsigned value) {
    const auto variable = std::find_if(std::begin(kVariables), std::end(kVariables),
                                       [&](const Variable& row) { return row.key == key; });
    return variable != std::end(kVariables) && variable->set(reader, value);
}

} // namespace zel::sim
