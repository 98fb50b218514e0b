// SPDX-License-Identifier: MIT
// Reads and writes a configuration by the ASCII protocol: variables of the reader and their words.
//
// A variable that the listing lacks reads as 0. Times are milliseconds, without a unit of the
// reader's own.
#include "family/tag/ascii_answer.h"
#include "family/tag/ascii_protocol.h"
#include "family/tag/blocks.h"
#include "transport/port.h"

#include <algorithm>
#include <array>
#include <cstdio>

using namespace zel;

namespace {

constexpr char kListing[] = "ZTAG:VAR\r";
constexpr char kVersion[] = "\rZTAG:DEV.VER\r";
constexpr std::size_t kShortestListing = 700; // an answer must be longer
constexpr std::size_t kShortestVersion = 10;
constexpr std::int16_t kKeyTime = 20; // ms
constexpr int kMostIdBits = 64;
constexpr int kFewestBits = 26;
constexpr int kHexadecimal = 16;
constexpr int kDecimal = 10;

using Answer = std::array<char, 2048>;

template <auto Record, auto Member> std::int16_t& word(tsTagCfg& config) {
    return config.*Record.*Member;
}

// A variable's name stands behind a colon in the listing.
struct Variable {
    const char* key;
    std::int16_t& (*word)(tsTagCfg&);
    bool isCharacter = false; // written as a quoted one
};

#define ZEL_WORD(record, member) word<&tsTagCfg::record, &record::member>

constexpr Variable kHoldTime = {":time.hold", ZEL_WORD(sTimeParms, iIDHoldTO)};
constexpr Variable kLockOutTime = {":time.lo", ZEL_WORD(sTimeParms, iIDLockOutTm)};
constexpr Variable kBeeper = {":out.beep", ZEL_WORD(sBprRlyCtrl, iBeeperState)};
constexpr Variable kRelay = {":out.relay", ZEL_WORD(sBprRlyCtrl, iRelayState)};
constexpr Variable kIdBits = {":wieg.id.bits", ZEL_WORD(sIDBitCnts, iIDBitCnt)};
constexpr Variable kTotalBits = {":wieg.qual.bits", ZEL_WORD(sIDBitCnts, iTotalBitCnt)};
constexpr Variable kLeadParity = {":wieg.strip.lead.bits", ZEL_WORD(sIDBitCnts, iLeadParityBitCnt)};
constexpr Variable kTrailParity = {":wieg.strip.trail.bits",
                                   ZEL_WORD(sIDBitCnts, iTrailParityBitCnt)};
constexpr Variable kGone1 = {":chr.gone.1", ZEL_WORD(sIDDispParms2, iCrdGnChr0), true};
constexpr Variable kGone2 = {":chr.gone.2", ZEL_WORD(sIDDispParms2, iCrdGnChr1), true};
constexpr Variable kLeadCount = {":chr.count.lead", ZEL_WORD(sIDDispParms2, iLeadChrCnt)};
constexpr Variable kTrailCount = {":chr.count.trail", ZEL_WORD(sIDDispParms3, iTrailChrCnt)};
constexpr Variable kEndOfLine = {":chr.eol", ZEL_WORD(sIDDispParms, iELDelim), true};
constexpr Variable kFacDigits = {":disp.fac.digits", ZEL_WORD(sIDDispParms, iFACDispLen)};
constexpr Variable kFacDelimiter = {":chr.fac", ZEL_WORD(sIDDispParms, iFACIDDelim), true};
constexpr Variable kUsesDelimiter = {":chr.fac", ZEL_WORD(sCfgFlags, bUseDelFac2Id), true};
constexpr Variable kIdDigits = {":disp.id.digits", ZEL_WORD(sIDDispParms, iIDDispLen)};
constexpr Variable kForcesBits = {":wieg.qual", ZEL_WORD(sCfgFlags, bFrcBitCntEx)};
constexpr Variable kHaltsKeys = {":op.sdk", ZEL_WORD(sCfgFlags, bHaltKBSnd)};
constexpr Variable kSendsFac = {":disp.fac.send", ZEL_WORD(sCfgFlags, bSndFac)};
constexpr Variable kSendsOnReceive = {":op.cont", ZEL_WORD(sCfgFlags, bSndOnRx)};
constexpr Variable kStripsFac = {":disp.fac.strip", ZEL_WORD(sCfgFlags, bStripFac)};
constexpr Variable kBeepsId = {":op.beep", ZEL_WORD(sCfgFlags2, bBeepID)};
constexpr Variable kHexDisplay = {":disp.id.hex", ZEL_WORD(sCfgFlags2, bDspHex)};
constexpr Variable kReversesBytes = {":wieg.rev.bytes", ZEL_WORD(sCfgFlags2, bRevBytes)};
constexpr Variable kReversesBits = {":wieg.rev.bits", ZEL_WORD(sCfgFlags2, bRevWiegBits)};
constexpr Variable kInvertsBits = {":wieg.inv.bits", ZEL_WORD(sCfgFlags2, bWiegInvData)};

#undef ZEL_WORD

constexpr const Variable* kRead[] = {
    &kHoldTime,      &kLockOutTime,  &kBeeper,         &kRelay,         &kIdBits,    &kTotalBits,
    &kLeadParity,    &kTrailParity,  &kGone1,          &kGone2,         &kLeadCount, &kTrailCount,
    &kEndOfLine,     &kFacDigits,    &kFacDelimiter,   &kUsesDelimiter, &kIdDigits,  &kForcesBits,
    &kHaltsKeys,     &kSendsFac,     &kSendsOnReceive, &kStripsFac,     &kBeepsId,   &kHexDisplay,
    &kReversesBytes, &kReversesBits, &kInvertsBits,
};

// The delimiter's variable takes two words one behind the other: the second one stands.
constexpr const Variable* kWrittenFirst[] = {
    &kForcesBits, &kHaltsKeys,  &kSendsFac,      &kSendsOnReceive, &kStripsFac,   &kUsesDelimiter,
    &kBeepsId,    &kHexDisplay, &kReversesBytes, &kReversesBits,   &kInvertsBits, &kIdBits,
    &kTotalBits,  &kLeadParity, &kTrailParity,   &kEndOfLine,      &kFacDigits,
};
constexpr const Variable* kWrittenLater[] = {&kFacDelimiter, &kIdDigits, &kGone1, &kGone2};
constexpr const Variable* kWrittenLast[] = {&kLeadCount, &kTrailCount};

constexpr const char* kCharacterKeys[tag::kCharacters] = {":chr.1", ":chr.2", ":chr.3"};

std::int16_t valueOf(const Answer& listing, const char* key) {
    return static_cast<std::int16_t>(AcpGetValue(listing.data(), key));
}

std::size_t readAnswer(CPort& port, Answer& answer) {
    answer.fill('\0');
    return static_cast<std::size_t>(std::max<std::int64_t>(
        port.Read(answer.data(), static_cast<unsigned long>(answer.size() - 1)), 0));
}

// What this protocol has no variable for.
void setFixedWords(tsTagCfg& config) {
    config.sCfgFlags3.bUse64Bit = 1;
    config.sBprRlyCtrl.bVolatile = 1;
    config.sLEDCtrl.bVolatile = 0;
    config.sTimeParms.iUSBKeyPrsTm = config.sTimeParms.iUSBKeyRlsTm = kKeyTime;
    config.sCfgFlags2.bUseInvDataF = 0;
    config.sCfgFlags2.bUseLeadChrs = 1;
}

// The states are told only where the application controls them.
void takeLed(tsTagCfg& config, int value) {
    config.sLEDCtrl.bAppCtrlsLED = value == tag::kReaderControlsLed ? 0 : 1;
    if (value == tag::kReaderControlsLed)
        return;
    config.sLEDCtrl.iRedLEDState = value & 1;
    config.sLEDCtrl.iGrnLEDState = value >> 1 & 1;
}

bool hasFixedLength(const tsTagCfg& config) { return config.sIDDispParms.iFACDispLen > 0; }

// Counts in their ranges, and the words that follow from others.
void settleWords(tsTagCfg& config) {
    sIDBitCnts& counts = config.sIDBitCnts;
    if (counts.iIDBitCnt < 1 || counts.iIDBitCnt > kMostIdBits)
        counts.iIDBitCnt = 1;
    if (counts.iTotalBitCnt < kFewestBits)
        counts.iTotalBitCnt = kFewestBits;
    config.ExtBlock[0] = static_cast<std::uint16_t>(counts.iLeadParityBitCnt);
    config.ExtBlock[1] = static_cast<std::uint16_t>(counts.iTrailParityBitCnt);
    config.sCfgFlags.bNoUseELChar = config.sIDDispParms.iELDelim == 0;
    config.sCfgFlags.bFixLenDsp = hasFixedLength(config);
}

// The leads take the shared characters whatever their count says; the trails take them from that
// count on.
void takeCharacters(tsTagCfg& config, const Answer& listing) {
    const std::array<std::int16_t, tag::kCharacters> shared = {valueOf(listing, kCharacterKeys[0]),
                                                               valueOf(listing, kCharacterKeys[1]),
                                                               valueOf(listing, kCharacterKeys[2])};
    for (std::size_t i = 0; i < shared.size(); ++i)
        *tag::leadsOf(config)[i] = shared[i];
    const int first = config.sIDDispParms2.iLeadChrCnt;
    for (int i = 0; i < tag::kCharacters; ++i) {
        const int at = first + i;
        const bool isInside = at >= 0 && at < tag::kCharacters;
        *tag::trailsOf(config)[static_cast<std::size_t>(i)] =
            isInside ? shared[static_cast<std::size_t>(at)] : std::int16_t{0};
    }
}

void takeListing(tsDevDat& record, tsTagCfg& config, const Answer& listing) {
    setFixedWords(config);
    takeLed(config, AcpGetValue(listing.data(), ":out.led"));
    for (const Variable* variable : kRead)
        variable->word(config) = valueOf(listing, variable->key);
    record.iLUID = static_cast<std::uint16_t>(AcpGetValue(listing.data(), ":dev.luid"));
    settleWords(config);
    takeCharacters(config, listing);
}

// "{number.number.number}", the first one hexadecimal.
void takeVersion(tsDevDat& record, tsTagCfg& config, const Answer& answer) {
    long long numbers[3] = {};
    tag::AnswerScan scan(answer.data(), "{");
    scan.number(numbers[0], kHexadecimal).skip('.').number(numbers[1], kDecimal).skip('.');
    if (!scan.number(numbers[2], kDecimal).isGood())
        return;
    record.iDID = static_cast<std::uint16_t>(static_cast<std::uint64_t>(numbers[0]) * 256 +
                                             static_cast<std::uint64_t>(numbers[1]) * 16 +
                                             static_cast<std::uint64_t>(numbers[2]));
    record.lLastErr = 0;
    config.bCfgValid = 1;
    tag::clearDirty(record, config);
}

void assign(const Variable& variable, tsTagCfg& config) {
    char format[64];
    std::snprintf(format, sizeof format, "%s=%s", variable.key + 1,
                  variable.isCharacter ? "'\\x%02X'" : "%d");
    SendAcpCommand(format, variable.word(config));
}

template <std::size_t Count>
void assignAll(const Variable* const (&variables)[Count], tsTagCfg& config) {
    for (const Variable* variable : variables)
        assign(*variable, config);
}

// The characters of the leads first, then those of the trails, three in all.
void assignCharacters(tsTagCfg& config) {
    const int leads = config.sIDDispParms2.iLeadChrCnt;
    for (int i = 0; i < tag::kCharacters; ++i) {
        const bool isLead = i < leads;
        const auto at = static_cast<std::size_t>(isLead || leads < 0 ? i : i - leads);
        char format[64];
        std::snprintf(format, sizeof format, "%s='\\x%%02X'",
                      kCharacterKeys[static_cast<std::size_t>(i)] + 1);
        SendAcpCommand(format, isLead ? *tag::leadsOf(config)[at] : *tag::trailsOf(config)[at]);
    }
}

} // namespace

// A listing that isn't whole is taken all the same.
int AcpReadCfg() {
    tsDevDat& record = activeRecord();
    CPort* const port = record.pPort;
    if (!port)
        return 0;
    tsTagCfg& config = activeConfig(record);
    tag::setUpLink(*port);
    port->SendAscii(kListing);
    Answer answer;
    const std::size_t listed = readAnswer(*port, answer);
    const bool isWhole = listed > kShortestListing && tag::hasPrompt(answer.data());
    takeListing(record, config, answer);
    port->FlushTx();
    port->SendAscii(kVersion);
    if (readAnswer(*port, answer) > kShortestVersion && tag::hasPrompt(answer.data()))
        takeVersion(record, config, answer);
    port->ACPClean();
    return isWhole ? 1 : 0;
}

int AcpWriteCfg() {
    tsDevDat& record = activeRecord();
    tsTagCfg& config = activeConfig(record);
    record.lLastErr = 0;
    if (!record.pPort)
        return 1;
    tag::setUpLink(*record.pPort);
    tag::sendLed(config);
    assignAll(kWrittenFirst, config);
    config.sCfgFlags.bFixLenDsp = hasFixedLength(config);
    assignAll(kWrittenLater, config);
    assignCharacters(config);
    assignAll(kWrittenLast, config);
    record.pPort->ACPClean();
    return 1;
}
