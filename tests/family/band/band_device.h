// SPDX-License-Identifier: MIT
// A simulated magnetic stripe reader as the only device, on a line or on the bus, and its traces.
#pragma once

#include "family/band/band.h"
#include "sim/band/reader.h"
#include "tests/family/line_scan.h"
#include "transport/port.h"
#include "transport/port_objects.h"

namespace zel::test {

// The frame of a text as a trace shows it.
inline std::string quotedFrame(std::string text) {
    text.resize(sim::BandReader::kFrameSize - 1, '0');
    return '"' + text + "\\r\"\n";
}

inline std::string filledUp(std::string text, std::size_t size, char fill = '0') {
    text.resize(size, fill);
    return text;
}

// What a trace shows of a command on a line, and of its reply.
inline std::string traced(const std::string& command, const std::string& reply) {
    return "> " + quotedFrame(command) + "~ 5 ms\n< " + quotedFrame(reply);
}

inline sim::BandCard cardOf(const sim::TrackCodes& first, const sim::TrackCodes& second = {},
                            const sim::TrackCodes& third = {}) {
    return {{first, second, third}};
}

class BandTest : public LineScan {
protected:
    ~BandTest() override { EXPECT_EQ(reader->violations(), 0) << reader->lastViolation(); }

    static tsBand& settings() { return DevDat[0].Band; }
    static std::int64_t error() { return DevDat[0].lLastErr; }

    // Lets the n-th command from now on go wrong, from 0.
    void failAt(int n, sim::BandFault fault = sim::BandFault::WrongFirstByte) {
        reader->fail(fault, 1, n);
    }

    std::shared_ptr<sim::BandReader> reader = std::make_shared<sim::BandReader>();
};

class BandLineTest : public BandTest {
protected:
    BandLineTest() {
        lines().attach(kPath, reader);
        DevDat[0].iDevType = 1;
        DevDat[0].iProduct = 2;
        CPort* const line = freshPort(DevDat[0]);
        line->SetPort(1);
        EXPECT_TRUE(line->Connect());
        iDevsFnd = 1;
        iActDev = 0;
        told();
    }

    // A card whose first field tells "=567".
    void swipeNumbers() {
        reader->swipe(sim::bandCard("%AB^CDEF?", ";1234=5678?"));
        EXPECT_EQ(zelband_SetActiveID(2, 1, 0, 255), 1);
    }

    // The commands that went out, by their first three characters.
    static std::string sent() {
        std::istringstream trace(told());
        std::string text;
        for (std::string line; std::getline(trace, line);)
            if (line.starts_with("> \""))
                text += line.substr(3, 3) + ' ';
        return text;
    }
};

// The scan of USB finds no such reader, so its handle is handed over.
class BandUsbTest : public BandTest {
protected:
    BandUsbTest() {
        port = bus().plug(reader, {sim::BandReader::kVendor, sim::BandReader::kProduct, "stripe"});
        char name[512] = {};
        const UsbBackend& backend = bus().backend();
        EXPECT_EQ(backend.list(), 1);
        void* const handle = backend.open(0, name);
        backend.unlist();
        cbIndex = 0;
        zelband_FoundDevice(name, handle, -1);
        iActDev = 0;
        bus().takeTrace();
    }

    // The trace with each report as its command alone, and no replies: "QRZ ~2 QSV ~2".
    static std::string toldBriefly() {
        std::istringstream trace(bus().takeTrace());
        std::string text;
        for (std::string line; std::getline(trace, line);) {
            if (line.starts_with('>'))
                text += ' ' + line.substr(line.rfind(' ') + 1);
            if (line.starts_with('~'))
                text += " ~" + line.substr(2, line.rfind(' ') - 2);
        }
        return text.empty() ? text : text.substr(1);
    }

    std::size_t port = 0;
};

} // namespace zel::test
