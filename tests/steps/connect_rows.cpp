// SPDX-License-Identifier: MIT
// What a connect exchanges with a device that it finds: it is probed, and its configuration read.
// A device whose read fails stays in the table, and the connect's own word tells of it.
#include "family/band/band.h"
#include "family/tag/tag.h"
#include "frame/zelTagAPI.h"
#include "tests/steps/rows.h"
#include "tests/steps/tag_config.h"

#include <cstring>

namespace zel::test::steps {

namespace {

constexpr std::uint64_t kOldWord = 0;

// The device's number, the table's count and the connect's word.
const std::vector<Sight> kSights = {
    {"number", [] { return shownWords({record().iDID}); }},
    {"found", [] { return shownWords({iDevsFnd}); }},
    {"lLastCnctErr", [] { return shownWords({static_cast<long long>(lLastCnctErr)}); }}};

// Nothing is closed by a connect, so the application disconnects.
void prepareConnect() {
    fillReader(0);
    lLastCnctErr = kOldWord;
    USBDisconnect();
    record().iDID = 0;
}

// The steps of a read as the connect's: what ends the read ends the connect.
Steps ofConnect(const Steps& read) {
    Steps steps;
    for (Step step : lostAlone(read)) {
        for (auto& outcome : step.outcomes)
            if (outcome) {
                const char number = outcome->seen[0];
                outcome->seen = {number, '+', outcome->result == 0 ? '!' : '.'};
                outcome->later.clear();
            }
        steps.push_back(std::move(step));
    }
    return steps;
}

// The probe is made ahead of the read, and by the read again where it has found nothing.
Steps usbSteps() {
    const Outcome good = passes(1, 0, "++.");
    std::string behind;
    Steps read = ofConnect(readOneSteps());
    for (const Step& step : read)
        behind += step.command + ' ';
    const Outcome notAskedAgain = ends(1, 0, "++.", behind);
    Steps steps = {query("8901", notAskedAgain, good, good, good), query("8901", good, good, good)};
    steps += read;
    return steps;
}

std::vector<Operation> usbRows() {
    return {{.name = "ConnectOnUsb",
             .place = Place::TagReports,
             .calls = {{"USBConnect", [] { return USBConnect(nullptr) + 0LL; }},
                       {"usbConnect", [] { return usbConnect() + 0LL; }}},
             .prepare = prepareConnect,
             .sights = kSights,
             .steps = usbSteps(),
             .again = [] { USBDisconnect(); },
             .seen = "++."}};
}

int64_t did;

// A line on which nobody answers is closed. A scan that finds nothing tells so by its result alone;
// where it was for one line also by the connect's word, which no connect on lines clears.
Operation scanRow(Place place, std::string name, std::vector<Call> calls, const std::string& probe,
                  void (*prepare)(), char word) {
    const Outcome none = lasting(ends(0, 0, {'.', '.', word}), {'+', '+', word});
    Step step = frame(probe, none, 2);
    return {.name = std::move(name),
            .place = place,
            .calls = std::move(calls),
            .prepare = prepare,
            .sights = {kSights[1],
                       {"open lines", [] { return shownWords({sim::lines().openLines()}); }},
                       kSights[2]},
            .steps = {step},
            .seen = "++."};
}

void prepareScan() {
    SetComSrchRange(1, 1);
    prepareConnect();
}

void prepareBandScan() {
    SetComSrchRange(1, 1);
    SetComLinux(1, "/dev/ttySIM1");
    lLastCnctErr = kOldWord;
    USBDisconnect();
}

std::vector<Operation> scanRows() {
    return {
        scanRow(Place::TagLine, "ScanOfLines",
                {{"zeltag_ComConnect", [] { return zeltag_ComConnect(&did) + 0LL; }},
                 {"zeltag_comConnect", [] { return zeltag_comConnect() + 0LL; }}},
                "04EDED04", prepareScan, '.'),
        scanRow(Place::TagLine, "ConnectOfALine",
                {{"zeltag_ComConnectPort", [] { return zeltag_ComConnectPort(1, &did) + 0LL; }},
                 {"zeltag_comConnectPort", [] { return zeltag_comConnectPort(1) + 0LL; }}},
                "04EDED04", prepareScan, '!'),
        scanRow(Place::BandLine, "BandScanOfLines",
                {{"zelband_ComConnect", [] { return zelband_ComConnect(&did) + 0LL; }},
                 {"zelband_comConnect", [] { return zelband_comConnect() + 0LL; }}},
                "QRZ", prepareBandScan, '.'),
        scanRow(Place::BandLine, "BandConnectOfALine",
                {{"zelband_ComConnectPort", [] { return zelband_ComConnectPort(1, &did) + 0LL; }},
                 {"zelband_comConnectPort", [] { return zelband_comConnectPort(1) + 0LL; }}},
                "QRZ", prepareBandScan, '!'),
    };
}

} // namespace

std::vector<Operation> connectRows() {
    std::vector<Operation> rows = usbRows();
    rows += scanRows();
    return rows;
}

} // namespace zel::test::steps
