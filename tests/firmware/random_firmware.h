// SPDX-License-Identifier: MIT
// Random readers and firmware files, near enough to good ones that each rule gets its turn.
#pragma once

#include "tests/firmware/firmware_file.h"
#include "tests/firmware/rule_model.h"

#include <cstdint>
#include <random>
#include <string>

namespace zel::test {

class RandomFirmware {
public:
    explicit RandomFirmware(unsigned seed) : engine_(seed) {}

    RuleModel::Reader reader() {
        RuleModel::Reader reader{any({"ZT7", "ZT7", "ZT7", "MDL-4Qz1BzT", "MDL-4Qz2BzT", ""}),
                                 family() + "_0302", version(), version(), version()};
        if (oneIn(4))
            reader.firmware = name();
        return reader;
    }

    // A firmware file for this reader, with a fault or two in many of them.
    std::string file(const RuleModel::Reader& reader) {
        FirmwareHeader header;
        header.overrideNumber = any({"0", "1", "1", "1", "-1", "", "abc", " 2"});
        header.ps = any({"128", "128", "256", "256", " 256", ""});
        header.partNumber = reader.partNumber;
        header.readerFirmware = reader.firmware;
        header.newName = oneIn(3) ? reader.firmware.substr(0, 3) + name().substr(3) : name();
        if (oneIn(8))
            header.newName = reader.firmware + any({"", "-12", "-D"});
        Lines lines = header.lines();
        for (int faults = oneIn(2) ? below(3) : 0; faults > 0; --faults)
            spoil(lines);
        const std::string end = any({"\n", "\n", "\r\n"});
        return sealed(joined(lines, end) + any({"M0", "M0", "M1", "M2", ""}) + end);
    }

private:
    int below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(engine_); }
    bool oneIn(int count) { return below(count) == 0; }

    std::string any(std::initializer_list<const char*> texts) {
        return texts.begin()[below(static_cast<int>(texts.size()))];
    }

    std::string family() { return any({"ZT7", "ZT7", "ZT7", "TKH", "TKG"}); }

    std::uint32_t version() {
        static constexpr std::uint32_t kWords[] = {0,        0x010407, 0x010408, 0x010409,
                                                   0x010500, 0x010501, 0x010502, 0x010505,
                                                   0x010506, 0x010C03, 0x010401, 0x020000};
        return kWords[below(static_cast<int>(std::size(kWords)))];
    }

    std::string name() {
        if (oneIn(8))
            return "TKG_0000" + std::to_string(below(10));
        std::string text = family() + any({"_", "1", "2", "0"}) + "030" +
                           any({"06", "02", "02", "60"}) +
                           any({"TKA", "TKB", "TKC", "TKD", "TKE", "TKF", "ABC", "tkd"}) + "--" +
                           any({"X", "Y", "x"}) + any({"", "-12", "-D", "-D-7", "-"});
        if (oneIn(3))
            std::erase(text, '-');
        if (oneIn(5))
            text.resize(static_cast<std::size_t>(below(static_cast<int>(text.size()))));
        return text.size() < 3 ? text + "ZT7" : text;
    }

    std::string oddLine() {
        std::string line = any({"", " ", "\r", "M0", "M1", "M2", "#NEW FW", "#NEW FW ", "PS 256",
                                "FN ", "bytes ", "long "});
        if (line == "long ")
            line += std::string(5000, 'x');
        for (int i = line == "bytes " ? below(40) : 0; i > 0; --i)
            line += static_cast<char>(below(256));
        return line;
    }

    void spoil(Lines& lines) {
        const auto place = lines.begin() + below(static_cast<int>(lines.size()));
        switch (below(4)) {
        case 0:
            lines.erase(place);
            break;
        case 1:
            lines.insert(place, oddLine());
            break;
        case 2:
            *place = oddLine();
            break;
        default:
            lines.erase(place, lines.end());
        }
        if (lines.empty())
            lines.push_back("");
    }

    std::mt19937 engine_;
};

} // namespace zel::test
