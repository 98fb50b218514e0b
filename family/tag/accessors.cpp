// SPDX-License-Identifier: MIT
// Single words of the records, got and set through the exported calls on the whole record.
#include "family/tag/accessors.h"

#include "frame/state/state.h"
#include "frame/zelTagAPI.h"

using namespace zel;

namespace {

// A record's place in tsTagCfg and the calls that move it whole.
template <class Record> struct Access {
    Record tsTagCfg::*member;
    int (*get)(Record*);
    int (*set)(Record*);
};

// The record as the library holds it, for the words that another product's call leaves alone.
template <class Record> Record held(const Access<Record>& access) {
    return activeConfig(activeRecord()).*access.member;
}

template <class Record> int getWord(const Access<Record>& access, std::int16_t Record::*word) {
    Record record = held(access);
    const int result = access.get(&record);
    return result == 1 ? record.*word : result;
}

template <class Record>
int setWord(const Access<Record>& access, std::int16_t Record::*word, short value) {
    Record record = held(access);
    const int result = access.get(&record);
    if (result != 1)
        return result;
    record.*word = value;
    return access.set(&record);
}

// The feature byte keeps its low seven bits set whatever a caller gives.
constexpr int kFeaturesAlwaysSet = 0x7F;

constexpr short stored(std::int16_t sTimeParms::*word, short value) {
    const bool isFeatures = word == &sTimeParms::ExFeatures01;
    return static_cast<short>(isFeatures ? value | kFeaturesAlwaysSet : value);
}

template <class Record> constexpr short stored(std::int16_t Record::*, short value) {
    return value;
}

} // namespace

#define ZEL_RECORD(record, table, calls)                                                           \
    static constexpr Access<s##record> k##record{&tsTagCfg::s##record, Get##calls, Set##calls};
#define ZEL_WORD(record, index, name, label, kind, description, place)                             \
    int zeltag_get##record##_##name() { return getWord(k##record, &s##record::name); }             \
    int zeltag_set##record##_##name(short value) {                                                 \
        return setWord(k##record, &s##record::name, stored(&s##record::name, value));              \
    }
#include "frame/records.def"
#undef ZEL_RECORD
#undef ZEL_WORD
