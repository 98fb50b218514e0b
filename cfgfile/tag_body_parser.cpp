// SPDX-License-Identifier: MIT
// Parses one configuration of a proximity reader's file.
#include "base/runtime.h"
#include "cfgfile/tag_body.h"
#include "cfgfile/tag_file.h"
#include "cfgfile/tag_tables.h"
#include "cfgfile/text_lines.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

using namespace zel;
using namespace zel::cfgfile;

namespace {

constexpr int kFieldDataSize = sizeof(uSFD);

// A line of the field data's name and a word marks the block, in any order.
bool marks(const char* text, const char* word) {
    return std::strstr(text, kFieldData) && std::strstr(text, word);
}

// The file's settings of one configuration.
class Body {
public:
    explicit Body(tsTagCfg& config) : config_(config) {}

    // Whether there is more to read behind this line.
    bool take(char* text) {
        if (isComment(text))
            return true;
        if (inBlock_ && marks(text, "END"))
            return false;
        if (inBlock_)
            takeBytes(text);
        else if (marks(text, "BEGIN"))
            enterBlock();
        else
            takeSetting(text);
        return true;
    }

    // Whether any line was a known key's, or the field data's first.
    bool isFound() const { return found_; }

private:
    void enterBlock() {
        inBlock_ = found_ = true;
        count_ = 0;
    }

    // The first token that is no number ends the line; bytes past the field data are dropped.
    void takeBytes(char* text) {
        constexpr char kBetween[] = ",. \t";
        char* rest = nullptr;
        for (char* token = strtok_r(text, kBetween, &rest); token;
             token = strtok_r(nullptr, kBetween, &rest)) {
            unsigned number = 0;
            if (std::sscanf(token, "%x", &number) != 1)
                return;
            if (count_ < kFieldDataSize)
                config_.uSFD.bytes[count_++] = static_cast<std::uint8_t>(number);
        }
    }

    void takeSetting(char* text) {
        const KeyValue setting = keyValueIn(text);
        if (setting.key)
            found_ |=
                ProcessFCfgTokenVal(setting.key, static_cast<short>(setting.value), &config_) != 0;
    }

    tsTagCfg& config_;
    bool inBlock_ = false;
    bool found_ = false;
    int count_ = 0;
};

// The value takes the low half of an option's word.
bool storeOption(const tsNamePair& pair, const char* name, short value, std::uint32_t& option) {
    if (!isSameKey(textOf(pair.name), name))
        return false;
    option = (option & 0xFFFF0000U) | static_cast<std::uint16_t>(value);
    return true;
}

bool storeWord(const Section& section, const char* name, short value, tsTagCfg& config) {
    for (const tag::Word& word : tag::wordsOf(section.record)) {
        if (!isSameKey(textOf(section.names[word.index].name), name))
            continue;
        tag::set(config, word, value);
        return true;
    }
    return false;
}

} // namespace

// The first table that has the key takes the value: a pad's name reaches one record only.
int ProcessFCfgTokenVal(const char* name, short value, tsTagCfg* config) {
    if (!name || !config)
        return 0;
    if (storeOption(AZERTYShiftLock[0], name, value, config->AZERTYShiftLock) ||
        storeOption(ExtendedPrecisionMath[0], name, value, config->ExtendedPrecisionMath))
        return 1;
    for (const Section& section : kSections)
        if (storeWord(section, name, value, *config))
            return 1;
    return 0;
}

namespace zel::cfgfile {

bool parseBody(std::FILE* file, tsTagCfg& config) {
    Lines lines(file);
    Body body(config);
    char* text = lines.next();
    while (text && body.take(text))
        text = lines.next();
    return body.isFound();
}

} // namespace zel::cfgfile
