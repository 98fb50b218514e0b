// SPDX-License-Identifier: MIT
// What is left of a key in memory once a call that moved it is over: nothing on the stack, nothing
// in released memory. The record that an application filled keeps it, and so does the reader.
#include "family/tag/field_data.h"
#include "family/tag/tag.h"
#include "firmware/crc.h"
#include "frame/state/state.h"
#include "frame/zelTagAPI.h"
#include "frame/zelTagFiles.h"
#include "frame/zelTagSettings.h"
#include "tests/firmware/trailer_test.h"
#include "transport/usb_backend.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <functional>
#include <malloc.h>
#include <new>
#include <pthread.h>
#include <string_view>
#include <vector>

namespace {

constexpr std::size_t kPiece = 4; // bytes of a key that are a trace of it
constexpr std::array<unsigned char, 16> kKey = {0xA7, 0x3C, 0x5B, 0x91, 0xE2, 0x4D, 0x86, 0x1F,
                                                0xC8, 0x75, 0xBA, 0x29, 0xD3, 0x6E, 0x94, 0x53};
constexpr std::string_view kKeyAsText = "A7 3C 5B 91 E2 4D 86 1F C8 75 BA 29 D3 6E 94 53";

constinit int releasedTraces = 0;

bool holdsTrace(std::string_view area) {
    for (std::size_t at = 0; at + kPiece <= kKey.size(); ++at)
        if (area.find({reinterpret_cast<const char*>(&kKey[at]), kPiece}) != area.npos)
            return true;
    for (std::size_t at = 0; at < kKeyAsText.size(); at += 3)
        if (area.find(kKeyAsText.substr(at, 8)) != area.npos && at + 8 <= kKeyAsText.size())
            return true;
    return false;
}

void release(void* area) {
    if (area && holdsTrace({static_cast<const char*>(area), malloc_usable_size(area)}))
        ++releasedTraces;
    std::free(area);
}

} // namespace

void* operator new(std::size_t size) {
    if (void* const area = std::calloc(1, size ? size : 1))
        return area;
    throw std::bad_alloc();
}
void operator delete(void* area) noexcept { release(area); }
void operator delete(void* area, std::size_t) noexcept { release(area); }

namespace {

// A stack of its own, zeroed, that can be looked at afterwards.
class OwnStack {
public:
    // Makes the call on the stack.
    void run(std::function<void()> call) {
        pthread_attr_t attributes;
        pthread_attr_init(&attributes);
        EXPECT_EQ(pthread_attr_setstack(&attributes, pages_.data(), kSize), 0);
        pthread_t thread = {};
        EXPECT_EQ(pthread_create(&thread, &attributes, enter, &call), 0);
        pthread_join(thread, nullptr);
        pthread_attr_destroy(&attributes);
    }

    bool hasTrace() const {
        return holdsTrace({reinterpret_cast<const char*>(pages_.data()), kSize});
    }

private:
    static void* enter(void* call) {
        (*static_cast<const std::function<void()>*>(call))();
        return nullptr;
    }

    struct alignas(4096) Page {
        unsigned char bytes[4096] = {};
    };
    static constexpr std::size_t kSize = std::size_t{1} << 20;
    std::vector<Page> pages_ = std::vector<Page>(kSize / sizeof(Page));
};

// A reader that repeats each report.
namespace reader {

constinit std::array<unsigned char, 8> sent = {};
constinit int traces = 0;
constinit bool givesKey = false; // each chunk that it is asked for is a piece of one

int yes() { return 1; }
void nothing() {}
void tellIds(int, unsigned* vendor, unsigned* product) {
    *vendor = ZELTAG_USB_VENDOR;
    *product = ZELTAG_USB_PRODUCT;
}
void* open(int, char* name) {
    *name = 'r';
    return &sent;
}
void close(void*) {}
int take(void*, unsigned char, const unsigned char* data, long size) {
    traces += holdsTrace({reinterpret_cast<const char*>(data), static_cast<std::size_t>(size)});
    std::copy_n(data, sent.size(), sent.begin());
    return 1;
}
int answer(void*, unsigned char, unsigned char* data, long* size) {
    std::copy_n(sent.begin(), *size, data);
    if (givesKey && sent[3] != 0)
        std::copy_n(kKey.begin(), kPiece, data + kPiece);
    return 1;
}

constexpr UsbBackend kBackend = {yes, nothing, yes, tellIds, open, nothing, close, take, answer};

} // namespace reader

class KeyTraces : public zel::test::TrailerTest {
protected:
    KeyTraces() {
        EXPECT_EQ(UsbDriver_UseBackend(&reader::kBackend), 1);
        SetDevTypeSrch(0);
        EXPECT_EQ(zeltag_USBConnect(), 1);
        reader::traces = 0;
    }
    ~KeyTraces() override {
        USBDisconnect();
        _APIinit();
        cbIndex = 0;
        UsbDriver_UseBackend(nullptr);
    }

    // Makes the call and looks for what it left.
    static void expectNothingLeftBy(const std::function<void()>& call) {
        OwnStack stack;
        releasedTraces = 0;
        stack.run(call);
        EXPECT_EQ(releasedTraces, 0);
        EXPECT_FALSE(stack.hasTrace());
    }
};

TEST_F(KeyTraces, AreFoundWhereACallLeavesThem) {
    OwnStack stack;
    releasedTraces = 0;
    stack.run([] {
        volatile unsigned char left[kKey.size()];
        std::copy(kKey.begin(), kKey.end(), left);
        const std::string text(kKeyAsText);
    });
    EXPECT_TRUE(stack.hasTrace());
    EXPECT_EQ(releasedTraces, 1);
}

TEST_F(KeyTraces, OfTheKeyValuesOfARecordAreNone) {
    tsTagCfg& config = DevDat[iActDev].Cfg[0];
    std::copy(kKey.begin(), kKey.end(), config.sHashKeyData.key[1]);
    expectNothingLeftBy([&config] { WriteHashKeyBlock(&config, iActDev, 17); });
    EXPECT_EQ(reader::traces, 2);
}

TEST_F(KeyTraces, OfTheBlobsOfAFileAreNone) {
    const std::string text =
        "[Blob1]\r\nhdr=10 07 10 00\r\ndata=" + std::string(kKeyAsText) + "\r\n";
    write(text + "[EOF]\r\niEndOfIniFile=" + zel::test::crcDigits(text) + "\r\n");
    int result = 0;
    expectNothingLeftBy([&result] { result = LoadIniFile(kFile); });
    EXPECT_EQ(result, 1);
    EXPECT_EQ(reader::traces, 4);
}

TEST_F(KeyTraces, OfALongFileAreNone) {
    std::string text;
    for (int blob = 0; blob < 3000; ++blob)
        text += "[Blob" + std::to_string(blob) +
                "]\r\nhdr=10 07 10 00\r\ndata=" + std::string(kKeyAsText) + "\r\n";
    write(text + "[EOF]\r\niEndOfIniFile=" + zel::test::crcDigits(text) + "\r\n");
    bool holds = false;
    expectNothingLeftBy([&holds] { holds = CRC().pullIniCRC(kFile); });
    EXPECT_TRUE(holds);
}

TEST_F(KeyTraces, OfABlobThatAReaderGivesAreOnlyInTheCallersBuffer) {
    std::array<unsigned char, 4> header = {0x10, 0x07, 0x10, 0x00};
    std::array<unsigned char, 16> blob = {};
    reader::givesKey = true;
    expectNothingLeftBy([&] { ReadSecureData(header.data(), blob.data()); });
    reader::givesKey = false;
    EXPECT_TRUE(holdsTrace({reinterpret_cast<const char*>(blob.data()), blob.size()}));
}

} // namespace
