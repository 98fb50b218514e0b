// SPDX-License-Identifier: MIT
// A proximity reader that is driven by lines of text. Most answers are read and dropped, so what a
// lost line leaves shows in the reader alone.
#include "family/tag/ascii_protocol.h"
#include "family/tag/read_config.h"
#include "family/tag/records.h"
#include "family/tag/services.h"
#include "family/tag/tag.h"
#include "family/tag/write_config.h"
#include "frame/zelTagAPI.h"
#include "tests/steps/rows.h"
#include "tests/steps/tag_config.h"

#include <algorithm>
#include <string_view>

namespace zel::test::steps {

namespace {

constexpr std::int64_t kNoAnswer = 261;

sim::TagConfiguration& inReader() { return apparatus().tag->configuration(0); }

void prepareId() {
    freshBuffer(ZELTAGAPI_ID_SIZE);
    std::ranges::fill(activeIDBuf, std::uint8_t{0x77});
    config().sTimeParms.iIDHoldTO = 500;
}

// Half of an answer has no closing brace.
Operation idRow(std::string name, std::vector<Call> calls, std::vector<Sight> sights,
                const std::string& none) {
    return {.name = std::move(name),
            .place = Place::AsciiLine,
            .calls = std::move(calls),
            .prepare = prepareId,
            .sights = std::move(sights),
            .result = 40,
            .steps = {frame("ZTAG:QID.ID", ends(0, kNoAnswer, none))}};
}

std::vector<Operation> idRows() {
    return {
        idRow("AsciiIdentifier",
              {{"GetActiveID", [] { return GetActiveID(buffer().data(), 8) + 0LL; }},
               {"GetActiveID32", [] { return GetActiveID32(buffer().data(), 8) + 0LL; }}},
              {{"the identifier", [] { return shown(buffer().first(8)); }},
               {"activeIDBuf", [] { return shown(std::span(activeIDBuf).first(8)); }}},
              "00"),
        idRow("AsciiIdentifierOfTheFamily",
              {{"zeltag_GetActiveID", [] { return zeltag_GetActiveID(buffer().data(), 8) + 0LL; }},
               {"zeltag_GetActiveID32",
                [] { return zeltag_GetActiveID32(buffer().data(), 8) + 0LL; }}},
              {{"the identifier", [] { return shown(buffer().first(8)); }}}, "0"),
        // This one doesn't clear what it doesn't fill.
        idRow("AsciiIdentifierAlone",
              {{"acp_getActiveID", [] { return acp_getActiveID(buffer().data(), 8) + 0LL; }}},
              {{"the identifier", [] { return shown(buffer().first(8)); }}}, "."),
    };
}

// Without its prompt or its end the listing counts as none, and the record takes zeros for what it
// lacks: the two counts that have a least value get that. The version doesn't change the result.
struct ReadView {
    static std::string listed() {
        return shownWords({config().sIDDispParms.iIDDispLen, config().sIDBitCnts.iIDBitCnt,
                           config().sIDBitCnts.iTotalBitCnt, record().iLUID});
    }
    static std::string versioned() {
        return shownWords({record().iDID, config().bCfgValid, marksOf(0)});
    }
};

const std::vector<std::string> kLinkSetUp = {"ZTAG:cmd.echo=0", "ZTAG:cmd.prompt=1"};

Steps readSteps() {
    const Outcome good = passes(1, 0, "++");
    const Outcome notListed = passes(0, 0, "!+");
    const Outcome noVersion = ends(1, 0, "+.");
    return {frame(kLinkSetUp[0], good), frame(kLinkSetUp[1], good), frame("ZTAG:VAR", notListed),
            frame("ZTAG:DEV.VER", noVersion)};
}

Operation readRow() {
    return {.name = "AsciiReadConfiguration",
            .place = Place::AsciiLine,
            .calls = {{"ReadCfg", [] { return ReadCfg() + 0LL; }},
                      {"zeltag_ReadCfg", [] { return zeltag_ReadCfg() + 0LL; }},
                      {"zeltag_ReadCfgOneConfig", [] { return zeltag_ReadCfgOneConfig() + 0LL; }},
                      {"AcpReadCfg", [] { return AcpReadCfg() + 0LL; }}},
            .prepare =
                [] {
                    prepareRead();
                    record().iTagPlusState = 1;
                    apparatus().stream->lineProtocol().setEcho(false);
                    apparatus().stream->lineProtocol().setPrompt(true);
                },
            .sights = {{"listed", ReadView::listed}, {"version", ReadView::versioned}},
            .steps = readSteps()};
}

// A line that is lost is passed over, and a write tells of nothing that went wrong.
const std::vector<std::string> kAssignments = {"ztag:out.led=",
                                               "ztag:wieg.qual=",
                                               "ztag:op.sdk=",
                                               "ztag:disp.fac.send=",
                                               "ztag:op.cont=",
                                               "ztag:disp.fac.strip=",
                                               "ztag:chr.fac=",
                                               "ztag:op.beep=",
                                               "ztag:disp.id.hex=",
                                               "ztag:wieg.rev.bytes=",
                                               "ztag:wieg.rev.bits=",
                                               "ztag:wieg.inv.bits=",
                                               "ztag:wieg.id.bits=",
                                               "ztag:wieg.qual.bits=",
                                               "ztag:wieg.strip.lead.bits=",
                                               "ztag:wieg.strip.trail.bits=",
                                               "ztag:chr.eol=",
                                               "ztag:disp.fac.digits=",
                                               "ztag:chr.fac=",
                                               "ztag:disp.id.digits=",
                                               "ztag:chr.gone.1=",
                                               "ztag:chr.gone.2=",
                                               "ztag:chr.1=",
                                               "ztag:chr.2=",
                                               "ztag:chr.3=",
                                               "ztag:chr.count.lead=",
                                               "ztag:chr.count.trail="};

// What the reader holds of the lines that change something here, and the record's marks, which
// this protocol leaves alone.
Steps writeSteps() {
    Steps steps = {frame(kLinkSetUp[0], passes(1, 0, "++.")),
                   frame(kLinkSetUp[1], passes(1, 0, "++."))};
    for (const std::string& assignment : kAssignments) {
        const bool isLength = assignment == "ztag:disp.id.digits=";
        const bool isGone = assignment == "ztag:chr.gone.1=";
        const Outcome lost = passes(1, 0, isLength ? ".+." : isGone ? "+.." : "++.");
        steps.push_back(frame(assignment, lost, passes(1, 0, "++.")));
    }
    return steps;
}

// It takes long, so it is read once.
const tsTagCfg& readConfiguration() {
    static const tsTagCfg read = [] {
        EXPECT_EQ(ReadCfg(), 1);
        return config();
    }();
    return read;
}

Operation writeRow() {
    return {.name = "AsciiWriteConfiguration",
            .place = Place::AsciiLine,
            .calls = {{"zeltag_write_cfg", [] { return zeltag_write_cfg() + 0LL; }},
                      {"AcpWriteCfg", [] { return AcpWriteCfg() + 0LL; }}},
            .prepare =
                [] {
                    fillReader(0);
                    record().iTagPlusState = 1;
                    config() = readConfiguration();
                    config().sIDDispParms.iIDDispLen = 9;
                    config().sIDDispParms2.iCrdGnChr0 = 0x44;
                    markAll(0);
                    dynamic_cast<TroubledStream&>(*apparatus().wire).fillUp(12);
                },
            .sights = {{"digits", [] { return shownWords({inReader().block[0][1]}); }},
                       {"gone", [] { return shownWords({inReader().block[2][2]}); }},
                       {"marks", [] { return shownWords({marksOf(0)}); }}},
            .steps = writeSteps(),
            .seen = "++."};
}

// One line each, with nothing told of it.
Operation lineRow(std::string name, std::vector<Call> calls, std::string line, Sight sight) {
    return {.name = std::move(name),
            .place = Place::AsciiLine,
            .calls = std::move(calls),
            .prepare =
                [] {
                    fillReader(0);
                    config().sLEDCtrl.bAppCtrlsLED = config().sLEDCtrl.iRedLEDState = 1;
                },
            .sights = {sight},
            .steps = {frame(std::move(line), passes(1, 0, "."), passes(1, 0, "+"))}};
}

std::vector<Operation> lineRows() {
    const Sight beep = {"the beep", [] { return shownWords({apparatus().tag->lastBeep()}); }};
    const auto light = [](int (*set)(sLEDCtrl*)) {
        sLEDCtrl lights = config().sLEDCtrl;
        lights.bVolatile = 1;
        return set(&lights) + 0LL;
    };
    static const auto lightBy = light;
    return {lineRow("AsciiBeep",
                    {{"BeepNow", [] { return BeepNow(2, 0) + 0LL; }},
                     {"zeltag_BeepNow", [] { return zeltag_BeepNow(2, 0) + 0LL; }}},
                    "ztag:out.beep.short=2", beep),
            lineRow("AsciiLine",
                    {{"SendAcpCommand",
                      [] {
                          SendAcpCommand("out.beep.short=%d", 2);
                          return 1LL;
                      }}},
                    "ztag:out.beep.short=2", beep),
            lineRow("AsciiLed",
                    {{"SetLEDCtrl", [] { return lightBy(SetLEDCtrl); }},
                     {"zeltag_SetLEDCtrl", [] { return lightBy(zeltag_SetLEDCtrl); }}},
                    "ztag:out.led=1", kWriteSights[3]),
            lineRow("AsciiFactoryReset",
                    {{"ResetFactoryDflts", [] { return ResetFactoryDflts() + 0LL; }},
                     {"zeltag_ResetFactoryDflts", [] { return zeltag_ResetFactoryDflts() + 0LL; }}},
                    "ZTAG:CFG.RESET", kWriteSights[1])};
}

} // namespace

std::vector<Operation> asciiRows() {
    std::vector<Operation> rows = idRows();
    rows += {readRow(), writeRow()};
    rows += lineRows();
    return rows;
}

} // namespace zel::test::steps
