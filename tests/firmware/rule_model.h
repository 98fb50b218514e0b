// SPDX-License-Identifier: MIT
// The rules once more, one after the other, to hold the library's against.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace zel::test {

class RuleModel {
public:
    struct Reader {
        std::string partNumber, firmware;
        std::uint32_t current, secondBoot, secondApp; // version words
    };

    RuleModel(const std::string& file, const Reader& reader)
        : reader_(reader), current_(version(reader.current)),
          secondBoot_(version(reader.secondBoot)), secondApp_(version(reader.secondApp)) {
        readHeader(file);
    }

    // The number of the rule that refuses the file, 0 when all pass.
    int refusal() {
        std::size_t section = 0;
        while (section < header_.size() && header_[section] != "#NEW FW")
            ++section;
        if (section + 4 >= header_.size())
            return 205;
        const std::string told = value(section + 4);
        if (told.length() < 9)
            return 221;
        name_ = withoutRevision(upper(told.substr(1)));
        if (!tellsReader(section))
            return 207;
        return name_.length() < 9 ? 221 : refusalOfName();
    }

private:
    static std::string version(std::uint32_t word) {
        char text[16];
        std::snprintf(text, sizeof text, "%u%u%u", word / 65536 % 256, word / 256 % 256,
                      word % 256);
        return text;
    }

    void readHeader(const std::string& file) {
        std::string line;
        for (std::size_t i = 0; i <= file.size(); ++i) {
            const bool atEnd = i == file.size();
            if (!atEnd && file[i] != '\n') {
                line += file[i];
                continue;
            }
            if (atEnd && line.empty())
                return;
            if (!line.empty() && line.back() == '\r')
                line.resize(line.size() - 1);
            if (line == "M0" || line == "M1")
                return;
            header_.push_back(line);
            line.clear();
        }
    }

    std::string value(std::size_t index) const {
        std::string line = header_[index];
        while (!line.empty() && line[0] != ' ')
            line.erase(0, 1);
        return line;
    }

    static std::string upper(std::string text) {
        static const std::string small = "abcdefghijklmnopqrstuvwxyz";
        for (char& character : text)
            if (const auto place = small.find(character); place != std::string::npos)
                character = "ABCDEFGHIJKLMNOPQRSTUVWXYZ"[place];
        return text;
    }

    static std::string withoutRevision(const std::string& name) {
        if (name.find('-') == std::string::npos)
            return name;
        for (std::size_t i = name.size(); name[i - 1] != '-'; --i)
            if (std::strchr("0123456789", name[i - 1]) == nullptr || name[i - 1] == '\0')
                return name;
        std::string kept;
        for (std::size_t i = 0; name[i] != '-'; ++i)
            kept += name[i];
        return kept;
    }

    bool tellsReader(std::size_t section) const {
        for (std::size_t i = 0; i < section; ++i)
            if (value(i) == " " + reader_.firmware)
                return true;
        return false;
    }

    // Characters of a text; fewer where it ends.
    static std::string part(const std::string& text, std::size_t from, std::size_t count) {
        std::string found;
        for (std::size_t i = from; i < text.size() && found.size() < count; ++i)
            found += text[i];
        return found;
    }

    int overrideNumber() const {
        int number = 0;
        return std::sscanf(value(0).c_str(), "%d", &number) == 1 ? number : 0;
    }

    int refusalOfName() const {
        if (name_.rfind("TKG", 0) == 0)
            return name_.size() == 9 && name_[8] == secondApp_[2] ? 0 : 211;
        if (part(name_, 0, 3) != part(reader_.firmware, 0, 3))
            return 209;
        if (overrideNumber() == 0 && part(name_, 7, 999) != part(reader_.firmware, 7, 999))
            return 209;
        const bool isExempt = reader_.firmware.rfind("TKH", 0) == 0 ||
                              reader_.partNumber == "MDL-4Qz2BzT" ||
                              reader_.partNumber == "MDL-4Qz1BzT";
        return isExempt ? 0 : refusalOfChain();
    }

    bool isBelow(const char* bound) const { return std::strcmp(current_.c_str(), bound) < 0; }

    // A product that needs a version, and a 256K model for 151.
    bool isTooOld(const char* bound) const {
        return current_ == "151" ? value(4) != " 256" : isBelow(bound);
    }

    int refusalOfChain() const {
        const std::string code = part(name_, 9, 3);
        const bool isLater = static_cast<unsigned char>(name_[3]) >= '2';
        if (isLater && secondBoot_ != "000" && std::strcmp(secondBoot_.c_str(), "149") < 0)
            return 216;
        if ((code == "TKA" || code == "TKB" || code == "TKC") && isTooOld("148"))
            return 212;
        if ((code == "TKD" || code == "TKE") && isTooOld("149"))
            return 214;
        if (code == "TKF" && isBelow("152"))
            return 215;
        if (name_[7] == '0' && name_[8] == '6' && isBelow("156"))
            return 210;
        if (value(4) == " 256" && isBelow("151"))
            return 213;
        return part(name_, 14, 1) == "X" && secondApp_[2] != '1' ? 217 : 0;
    }

    Reader reader_;
    std::string current_, secondBoot_, secondApp_;
    std::vector<std::string> header_;
    std::string name_;
};

} // namespace zel::test
