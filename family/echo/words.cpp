// SPDX-License-Identifier: MIT
// The exported tables of the sensor's words; a row has the index of its word in the record.
#include "family/echo/words.h"
#include "frame/state/exported.h"

#include <cstddef>

#define ZEL_PAIR(word, description) {#word, description},
ZEL_EXPORTED(SonarParmsStr, {ZEL_SONAR_WORDS(ZEL_PAIR)})
ZEL_EXPORTED(WalkAwayParmsStr, {ZEL_WALK_AWAY_WORDS(ZEL_PAIR)})
ZEL_EXPORTED(WalkUpParmsStr, {ZEL_WALK_UP_WORDS(ZEL_PAIR)})
ZEL_EXPORTED(IdleParmsStr, {ZEL_IDLE_WORDS(ZEL_PAIR)})
#undef ZEL_PAIR

namespace {

// Whether the words, counted, stand where the records have them.
template <class Record, std::size_t Count>
constexpr bool isInOrder(const std::size_t (&offsets)[Count]) {
    for (std::size_t i = 0; i < Count; ++i)
        if (offsets[i] != i * sizeof(std::int16_t))
            return false;
    return sizeof(Record) == Count * sizeof(std::int16_t);
}

#define ZEL_OFFSET(word, description) offsetof(Record, word),
#define ZEL_PROVE(record, words)                                                                   \
    constexpr bool provesOrderOf(const record*) {                                                  \
        using Record = record;                                                                     \
        constexpr std::size_t kOffsets[] = {words(ZEL_OFFSET)};                                    \
        return isInOrder<record>(kOffsets);                                                        \
    }                                                                                              \
    static_assert(provesOrderOf(static_cast<const record*>(nullptr)));

ZEL_PROVE(sSonarParms, ZEL_SONAR_WORDS)
ZEL_PROVE(sWalkAwayParms, ZEL_WALK_AWAY_WORDS)
ZEL_PROVE(sWalkUpParms, ZEL_WALK_UP_WORDS)
ZEL_PROVE(sIdleParms, ZEL_IDLE_WORDS)

} // namespace
