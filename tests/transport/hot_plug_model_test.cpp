// SPDX-License-Identifier: MIT
// Random arrivals, removals and devices of all kinds, step by step against the plain model.
#include "tests/transport/hot_plug_model.h"

#include "family/band/band.h"
#include "family/echo/echo.h"
#include "tests/transport/device_table.h"
#include "transport/line_opener.h"
#include "transport/port.h"

#include <cctype>
#include <filesystem>
#include <random>
#include <sys/socket.h>
#include <unistd.h>

using namespace zel;
using namespace zel::test;

namespace {

constexpr int kSequences = 40;
constexpr int kSteps = 250;

std::ptrdiff_t descriptors() {
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return std::distance(begin(all), end(all));
}

HandleNumber numberOf(void* handle) { return reinterpret_cast<HandleNumber>(handle); }

class TableAgainstModel : public DeviceTable {
protected:
    TableAgainstModel() {
        plugReader("bus");
        CPort_UseOpener(openLine);
        SetComLinux(1, "/dev/line");
    }
    ~TableAgainstModel() override {
        USBDisconnect();
        CPort_UseOpener(nullptr);
        hangUp();
    }

    void run(unsigned seed) {
        begin(seed);
        for (int step = 0; step < kSteps && !HasFailure(); ++step) {
            SCOPED_TRACE("seed " + std::to_string(seed) + " step " + std::to_string(step));
            act();
            compare();
        }
        finish();
    }

private:
    static int openLine(const char*) {
        int ends[2] = {-1, -1};
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
        devices_.push_back(ends[1]);
        return ends[0];
    }
    static void hangUp() {
        for (const int fd : devices_)
            ::close(fd);
        devices_.clear();
    }

    void begin(unsigned seed) {
        USBDisconnect();
        clearTable();
        cbIndex = 0;
        model_ = {};
        random_.seed(seed);
        growth_ = below(4); // some sequences fill the table, others empty it
        bus().takeTrace();
    }
    int below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }
    std::string anyName() {
        static constexpr const char* kLetters[] = {"alpha", "bravo", "delta", "gamma"};
        return kLetters[below(4)];
    }
    std::string inAnyCase(std::string name) {
        for (char& c : name)
            if (below(2) == 1)
                c = static_cast<char>(toupper(static_cast<unsigned char>(c)));
        return name;
    }

    void act() {
        if (below(3) < growth_)
            return grow();
        switch (below(6)) {
        case 0:
            return grow();
        case 1:
            EXPECT_EQ(ResetDevLst(nullptr, below(2)), model_.reset(nullptr, false));
            return;
        case 2:
            return select();
        default:
            return remove();
        }
    }
    void grow() {
        switch (below(7)) {
        case 0:
        case 1:
            return addUsb();
        case 2:
        case 3:
            return addLine();
        case 4:
            return arrive(zelecho_ChkAddArrival, kEchoName, &TableModel::arriveSensor);
        case 5:
            return copyRecord();
        default:
            return arrive(below(2) == 0 ? zeltag_ChkAddArrival : zelband_ChkAddArrival, kTagName,
                          &TableModel::arrive);
        }
    }

    void addUsb() {
        if (below(3) != 0)
            cbIndex = iDevsFnd;
        std::string name = anyName();
        char opened[512] = {};
        bus().backend().list();
        void* const handle = bus().backend().open(0, opened);
        bus().backend().unlist();
        model_.take(cbIndex, name, numberOf(handle));
        zeltag_FoundDevice(name.data(), handle, -1);
    }
    void addLine() {
        if (iDevsFnd >= kMaxDevices)
            return;
        const std::string name = anyName();
        TableRow& row = model_.row(model_.count++);
        row.name = name;
        tsDevDat& record = DevDat[iDevsFnd];
        addSerial(name.c_str());
        record.pPort->SetPort(1);
        EXPECT_TRUE(record.pPort->Connect());
        if (!row.port)
            row.port = record.pPort;
    }
    void copyRecord() {
        const int index = below(kMaxDevices);
        const TableRow copy = model_.row(index);
        EXPECT_EQ(ResetDevLst(&DevDat[index], 0), model_.reset(&copy, false));
    }
    void arrive(int (*add)(const char*), std::string name,
                int (TableModel::*expected)(const std::string&)) {
        if (below(8) == 0)
            return expectRefused(add, name + "x");
        name = inAnyCase(name);
        const int result = (model_.*expected)(name);
        EXPECT_EQ(add(name.c_str()), result);
    }
    static void expectRefused(int (*add)(const char*), const std::string& name) {
        EXPECT_EQ(add(name.c_str()), 0);
    }
    void remove() {
        const bool known = model_.count > 0 && below(5) != 0;
        const std::string name = known ? model_.row(below(model_.count)).name : "nobody";
        EXPECT_EQ(ChkDelRemoval(inAnyCase(name).c_str()), model_.remove(name));
    }
    void select() { iActDev = static_cast<std::int16_t>(model_.active = below(130) - 2); }

    void compare() {
        EXPECT_EQ(iDevsFnd, model_.count);
        EXPECT_EQ(iActDev, model_.active);
        EXPECT_EQ(bus().openHandles(), std::ssize(model_.open));
        for (int i = 0; i < kMaxDevices; ++i) {
            const TableRow& row = model_.row(i);
            EXPECT_EQ(numberOf(DevDat[i].hDev), row.handle) << i;
            EXPECT_EQ(DevDat[i].szDevName, row.name) << i;
            EXPECT_EQ(DevDat[i].pPort, row.port) << i;
        }
    }

    static int countOf(const std::string& trace, const std::string& start) {
        int count = 0;
        for (std::size_t at = trace.find(start); at != std::string::npos;
             at = trace.find(start, at + 1))
            ++count;
        return count;
    }

    // Each line's far end reads its end: the library let go of it.
    void finish() {
        USBDisconnect();
        const std::string trace = bus().takeTrace();
        EXPECT_EQ(countOf(trace, "open bus"), countOf(trace, "close bus"));
        EXPECT_EQ(countOf(trace, "isn't open"), 0);
        EXPECT_EQ(bus().openHandles(), 0);
        for (const int fd : devices_) {
            char byte = 0;
            EXPECT_EQ(recv(fd, &byte, 1, MSG_DONTWAIT), 0);
        }
        hangUp();
        for (const tsDevDat& record : DevDat)
            EXPECT_EQ(record.pPort, nullptr);
    }

    static inline std::vector<int> devices_;
    TableModel model_;
    std::mt19937 random_;
    int growth_ = 0;
};

} // namespace

TEST_F(TableAgainstModel, StaysTheSameThroughRandomArrivalsAndRemovals) {
    const std::ptrdiff_t before = descriptors();
    for (unsigned seed = 1; seed <= kSequences && !HasFailure(); ++seed)
        run(seed);
    EXPECT_EQ(descriptors(), before);
}
