// SPDX-License-Identifier: MIT
// A firmware file's micro line and body, and its lines as bytes.
#include "firmware/image.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/virtual_time.h"

#include <cstring>
#include <fstream>

using zel::test::TemporaryFolder;

namespace {

using Lines = std::vector<std::string>;
using Bytes = std::vector<unsigned>;

class FirmwareImage : public ::testing::Test {
protected:
    static const char* file(const std::string& text) {
        std::ofstream("f.hex", std::ios::binary) << text;
        return "f.hex";
    }
    static Lines linesOf(const std::string& text) {
        Utilities image;
        EXPECT_TRUE(image.openInputFile(file(text)));
        return image.lines();
    }
    static int microOf(const std::string& text) { return Utilities().getMicro(file(text)); }

    // The bytes of a line, with bytes of 0xEE behind them left alone.
    static Bytes bytesOf(std::string line) {
        unsigned char output[64];
        std::memset(output, 0xEE, sizeof output);
        const unsigned count = Utilities().encryptData(line.data(), output);
        EXPECT_EQ(output[count], 0xEE);
        return {output, output + count};
    }

private:
    TemporaryFolder folder_;
};

} // namespace

TEST_F(FirmwareImage, GathersTheBodyLinesBehindTheFirstMicroLine) {
    EXPECT_EQ(linesOf(":00\n#NEW FW\nM0\n:01\n#:02\n\nPS a\n:03\nM1\n:04\nABCD1234"),
              (Lines{":01", ":03", ":04"}));
}

TEST_F(FirmwareImage, GathersNothingWithoutAMicroLine) {
    EXPECT_EQ(linesOf(":01\n:02\n"), Lines{});
}

TEST_F(FirmwareImage, KeepsLinesAsReadApartFromTheLineFeed) {
    EXPECT_EQ(linesOf("Mx\r\n:0a\r\n: \n:0B"), (Lines{":0a\r", ": ", ":0B"}));
}

TEST_F(FirmwareImage, IsNotReadWithoutAFile) {
    EXPECT_FALSE(Utilities().openInputFile("absent.hex"));
    EXPECT_FALSE(Utilities().openInputFile(nullptr));
    EXPECT_EQ(Utilities().getMicro("absent.hex"), -1);
    EXPECT_EQ(Utilities().getMicro(nullptr), -1);
}

TEST_F(FirmwareImage, HasTheMicroOfTheFirstMicroLine) {
    EXPECT_EQ(microOf("PS a\n M7\nM1\nM0\n"), 1);
    EXPECT_EQ(microOf("M0"), 0);
    EXPECT_EQ(microOf("M9\n"), 9);
    EXPECT_EQ(microOf("MZ\n"), 42);
}

TEST_F(FirmwareImage, HasMicroMinus1WithoutAMicroLine) { EXPECT_EQ(microOf(":00\n"), -1); }

TEST_F(FirmwareImage, HasMicroMinus48WithALoneM) { EXPECT_EQ(microOf("M\nM1\n"), -48); }

TEST_F(FirmwareImage, PutsAToZIntoUpperCaseAndNothingElse) {
    char text[] = "`az{AZ09:\xE9";
    Utilities().strToUpper(text);
    EXPECT_STREQ(text, "`AZ{AZ09:\xE9");
}

TEST_F(FirmwareImage, PointsAtTheDigitsAndCountsTheirBytes) {
    char line[] = ":0aFf10";
    unsigned char output = 0;
    char* digits = nullptr;
    EXPECT_EQ(Utilities().validateBuffer(line, &output, &digits), 3);
    EXPECT_EQ(digits, line + 1);
    EXPECT_STREQ(line, ":0AFF10");
}

TEST_F(FirmwareImage, CountsNoBytesForALineOfAnotherForm) {
    unsigned char output = 0;
    char* digits = nullptr;
    for (const char* text : {"", ":", "0011", ":001", " :00"}) {
        std::string line = text;
        EXPECT_EQ(Utilities().validateBuffer(line.data(), &output, &digits), 0) << text;
    }
    std::string line = ":00";
    EXPECT_EQ(Utilities().validateBuffer(nullptr, &output, &digits), 0);
    EXPECT_EQ(Utilities().validateBuffer(line.data(), nullptr, &digits), 0);
}

TEST_F(FirmwareImage, CountsTheLengthInSixteenBits) {
    unsigned char output = 0;
    char* digits = nullptr;
    std::string line = ":" + std::string(65536 + 4, '0');
    EXPECT_EQ(Utilities().validateBuffer(line.data(), &output, &digits), 2);
}

TEST_F(FirmwareImage, TurnsDigitsOfEitherCaseIntoBytes) {
    EXPECT_EQ(bytesOf(":0123456789abcdefABCDEF"),
              (Bytes{0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF, 0xAB, 0xCD, 0xEF}));
}

TEST_F(FirmwareImage, EndsALineAtAPairThatIsNoNumber) {
    EXPECT_EQ(bytesOf(":12G0"), Bytes{0x12});
    EXPECT_EQ(bytesOf(":120G34"), Bytes{0x12});
    for (const char* beside : {":12/034", ":12:034", ":12@034", ":120`34", ":120 34"})
        EXPECT_EQ(bytesOf(beside), Bytes{0x12}) << beside;
    EXPECT_EQ(bytesOf(":"), Bytes{});
}

TEST_F(FirmwareImage, TakesACarriageReturnForACharacter) {
    EXPECT_EQ(bytesOf(":1234\r"), Bytes{}) << "an odd count";
    EXPECT_EQ(bytesOf(":123\r"), Bytes{0x12});
}

TEST_F(FirmwareImage, MayTurnALineIntoBytesInPlace) {
    char line[] = ":A1b2C3";
    EXPECT_EQ(Utilities().encryptData(line, reinterpret_cast<unsigned char*>(line)), 3);
    EXPECT_EQ(std::string(line, 3), "\xA1\xB2\xC3");
}

TEST_F(FirmwareImage, PausesInMicroseconds) {
    zel::test::takePausedMicroseconds();
    Utilities().setSleep(1'500);
    EXPECT_EQ(zel::test::takePausedMicroseconds(), 1'500U);
}
