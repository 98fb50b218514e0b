// SPDX-License-Identifier: MIT
// Calls of the library while its n-th allocation fails, alone or with all behind it.
#include "family/tag/tag.h"
#include "frame/zelTagFiles.h"
#include "sim/demo/reader.h"
#include "sim/tag/stream.h"
#include "sim/wire/line.h"
#include "tests/faults/allocations.h"
#include "tests/faults/failing_calls.h"
#include "tests/support/files.h"
#include "tests/support/library_test.h"
#include "tests/support/temporary_folder.h"
#include "transport/line_opener.h"
#include "transport/usb_backend.h"

#include <csignal>
#include <cstring>

namespace zel::test {

namespace {

constexpr std::size_t kLongestMessage = 200; // of a refusal, which stays in errorString
constexpr char kPath[] = "/dev/line";
constexpr char kArrival[] = R"(\\?\HID#Vid_5a3e&Pid_9d23)";

// The simulated bus, whose own allocations don't fail.
const UsbBackend& bus() { return sim::usbBus().backend(); }

template <auto member, class Result, class... Arguments> Result spare(Arguments... arguments) {
    const Spared simulator;
    return (bus().*member)(arguments...);
}

constexpr UsbBackend kSparedBus = {
    spare<&UsbBackend::start, int>,
    spare<&UsbBackend::stop, void>,
    spare<&UsbBackend::list, int>,
    spare<&UsbBackend::ids, void, int, unsigned*, unsigned*>,
    spare<&UsbBackend::open, void*, int, char*>,
    spare<&UsbBackend::unlist, void>,
    spare<&UsbBackend::close, void, void*>,
    spare<&UsbBackend::setFeature, int, void*, unsigned char, const unsigned char*, long>,
    spare<&UsbBackend::getFeature, int, void*, unsigned char, unsigned char*, long*>,
};

int openLine(const char* path) {
    const Spared simulator;
    return sim::lines().open(path);
}

class FailingAllocation : public LibraryTest {
protected:
    FailingAllocation() {
        traceNothing();
        errorString.reserve(kLongestMessage);
        EXPECT_TRUE(UsbDriver_UseBackend(&kSparedBus));
        for (const std::string name : {"keys.ini", "firmware.hex"})
            std::filesystem::copy_file(ZELTAG_EXAMPLES "/" + name, name);
    }
    ~FailingAllocation() override { USBDisconnect(); }

    static void connectPlus() { connectReader({.tagPlusConfigurations = 1}); }

    // The reader that the firmware is for.
    static std::shared_ptr<sim::TagReader> connectDemo() {
        auto reader = sim::demoReader();
        sim::usbBus().plug(reader,
                           {sim::TagReader::kVendor, sim::TagReader::kProduct, "demonstration"});
        EXPECT_EQ(connect(), 1);
        ReadCfg();
        getPartNumberString();
        GetFWFilename();
        return reader;
    }

    static int reconnect() {
        USBDisconnect();
        return USBConnect(nullptr);
    }

private:
    TemporaryFolder folder_;
};

} // namespace

TEST_F(FailingAllocation, OfAConnectOnUsb) {
    plugReader();
    writeText("zelTagVIDPID.txt", "VER = \"1\"\n");
    failEach(reconnect);
}

TEST_F(FailingAllocation, OfAConnectOnALine) {
    sim::lines().attach(kPath,
                        std::make_shared<sim::TagStream>(std::make_shared<sim::TagReader>()));
    CPort_UseOpener(openLine);
    SetComLinux(1, kPath);
    onPause([](std::uint64_t) {
        const Spared simulator;
        sim::lines().pump();
    });
    const auto connectLine = [] {
        USBDisconnect();
        return ComConnect(nullptr);
    };
    failEach(connectLine, [] { return std::to_string(GetDevCnt()); });
    USBDisconnect();
    sim::lines().clear();
    CPort_UseOpener(nullptr);
}

TEST_F(FailingAllocation, OfAnArrival) {
    plugReader(kArrival);
    const auto arrive = [] {
        USBDisconnect();
        return zeltag_ChkAddArrival(kArrival);
    };
    failEach(arrive, [] { return std::to_string(GetDevCnt()); });
}

TEST_F(FailingAllocation, OfAWrittenTemplate) {
    connectPlus();
    const auto text = [] { return textOf("out.txt"); };
    failEach([] { return WriteDevCfgToFile("out.txt"); }, text);
}

// The call tells success of a file that it can't open once more to seal it; the seal doesn't hold.
TEST_F(FailingAllocation, OfASealedTemplate) {
    connectPlus();
    const auto seal = [] {
        return WriteDevCfgToSecureFile("out.txt") == 1 &&
               zelTagAPI_checkFile("out.txt", ZELTAGAPI_FILE_TEMPLATE, nullptr) == 1;
    };
    failEach(seal, [] { return textOf("out.txt"); });
}

TEST_F(FailingAllocation, OfAReadTemplate) {
    connectPlus();
    EXPECT_EQ(WriteDevCfgToSecureFile("a.txt"), 1);
    for (const auto read : {ReadDevCfgFmFile, ReadDevCfgFromSecureFile})
        failEach([&] { return read("a.txt"); });
    tsTagCfg config = {};
    failEach([&] { return zelTagAPI_readTemplate("a.txt", &config, 1, 0); });
    failEach([] { return zelTagAPI_checkFile("a.txt", ZELTAGAPI_FILE_TEMPLATE, nullptr); });
}

TEST_F(FailingAllocation, OfAStripeReadersFile) {
    iDevsFnd = 1;
    DevDat[0].iProduct = ZELTAGAPI_ZELBAND;
    failEach([] { return WriteDevCfgToFile("a.txt"); }, [] { return textOf("a.txt"); });
    failEach([] { return ReadDevCfgFmFile("a.txt"); });
    failEach([] { return zelTagAPI_checkFile("a.txt", ZELTAGAPI_FILE_BAND, nullptr); });
}

TEST_F(FailingAllocation, OfASensorsFile) {
    iDevsFnd = 1;
    DevDat[0].iProduct = ZELTAGAPI_ZELECHO;
    failEach([] { return WriteDevCfgToFile("a.txt"); }, [] { return textOf("a.txt"); });
    failEach([] { return ReadDevCfgFmFile("a.txt"); });
}

TEST_F(FailingAllocation, OfKeyBlobs) {
    connectPlus();
    failEach([] { return LoadIniFile("keys.ini"); });
    failEach([] { return zelTagAPI_checkFile("keys.ini", ZELTAGAPI_FILE_KEYS, nullptr); });
}

TEST_F(FailingAllocation, OfFirmware) {
    const auto before = std::signal(SIGUSR1, SIG_IGN); // tells the progress
    const auto reader = connectDemo();
    const auto flashed = [&] {
        const auto& bytes = reader->bootLoader().memory();
        return std::string(bytes.begin(), bytes.end());
    };
    failEach([] { return Bootload("firmware.hex"); }, flashed);
    const auto load = [] {
        constexpr char kDone[] = "Your operation is successfully executed.";
        return std::strcmp(CheckRulesAndBootload("firmware.hex"), kDone) == 0 ? 1 : 0;
    };
    failEach(load, flashed);
    std::signal(SIGUSR1, before);
}

TEST_F(FailingAllocation, OfACheckOfFirmware) {
    connectDemo();
    failEach([] { return zelTagAPI_checkFirmware("firmware.hex") == nullptr; });
    failEach([] { return CheckTamperedFirmwareFile("firmware.hex"); });
    zelFirmwareFile file = {};
    const auto told = [&] { return file.name + std::to_string(file.lines); };
    failEach([&] { return zelTagAPI_readFirmware("firmware.hex", &file); }, told);
}

TEST_F(FailingAllocation, OfADump) {
    connectReader();
    failEach([] { return DumpRawFeatureReports("dump.txt"); }, [] { return textOf("dump.txt"); });
}

TEST_F(FailingAllocation, OfTheOwnAddress) {
    failEach([] {
        GetMyIpAddress();
        return 1;
    });
}

} // namespace zel::test
