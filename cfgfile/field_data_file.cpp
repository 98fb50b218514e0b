// SPDX-License-Identifier: MIT
// Writes the field and separator data of a configuration as rows of hexadecimal bytes.
#include "cfgfile/field_data_file.h"

#include <cstddef>

namespace zel::cfgfile {

namespace {

constexpr int kSize = sizeof(uSFD);
constexpr int kOldHeader = 12;
constexpr int kRow = 8;
constexpr int kMostRows = 16;

int bits(std::uint8_t byte, int shift, int mask) { return (byte >> shift) & mask; }

// The rows of one configuration, from its first byte on.
class Rows {
public:
    Rows(std::FILE* file, const tsTagCfg& config) : file_(file), config_(config) {}

    // A row of width 0 prints one byte and counts none.
    void row(int width) {
        for (int i = 0; i < width - 1; ++i)
            std::fprintf(file_, "%02X.", byteFrom(config_, count_ + i));
        const int last = width > 0 ? width - 1 : 0;
        std::fprintf(file_, "%02X\n", byteFrom(config_, count_ + last));
        count_ += width;
    }

    void rows(int count, int width) {
        for (int i = 0; i < count; ++i)
            row(width);
    }

    // Whole rows of eight; where the counts passed the data by a whole row, sixteen of them.
    void rest() {
        const int whole = (kSize - count_) / kRow;
        rows(whole < 0 || whole > kMostRows ? kMostRows : whole, kRow);
        if (count_ >= kSize)
            return;
        for (; count_ < kSize; ++count_)
            std::fprintf(file_, "%02X.", byteFrom(config_, count_));
        std::fputc('\n', file_);
    }

private:
    std::FILE* file_;
    const tsTagCfg& config_;
    int count_ = 0;
};

void heading(std::FILE* file, const char* label) { std::fprintf(file, "\n/ %s =\n", label); }

} // namespace

// The low nibble decides here; a reader's own page count compares the whole byte.
FieldDataShape shapeOf(const uSFD& data) {
    const std::uint8_t* const byte = data.bytes;
    const int header = bits(byte[0], 0, 15);
    if (header == kOldHeader)
        return {2, bits(byte[1], 4, 15), 4, bits(byte[1], 0, 15), 2};
    return {header, bits(byte[1], 0, 31), bits(byte[1], 4, 14), bits(byte[2], 0, 31),
            bits(byte[2], 4, 14)};
}

std::uint8_t byteFrom(const tsTagCfg& config, int index) {
    const std::size_t offset = offsetof(tsTagCfg, uSFD) + static_cast<std::size_t>(index);
    return offset < sizeof config ? reinterpret_cast<const std::uint8_t*>(&config)[offset] : 0;
}

// A row of width 0 shows the byte that follows.
bool showsKeys(const tsTagCfg& config) {
    const FieldDataShape shape = shapeOf(config.uSFD);
    const int counted =
        shape.header + shape.fields * shape.fieldWidth + shape.separators * shape.separatorWidth;
    const bool showsNext = shape.separators > 0 && shape.separatorWidth == 0;
    return counted + (showsNext ? 1 : 0) > kSize;
}

void writeFieldData(std::FILE* file, const tsTagCfg& config) {
    const FieldDataShape shape = shapeOf(config.uSFD);
    Rows rows(file, config);
    heading(file, "FldSepHdr[2]");
    rows.row(shape.header);
    heading(file, "FldDefs[][4]");
    rows.rows(shape.fields, shape.fieldWidth);
    heading(file, "SepDefs[][2]");
    rows.rows(shape.separators, shape.separatorWidth);
    heading(file, "SepData[]");
    rows.rest();
}

} // namespace zel::cfgfile
