// SPDX-License-Identifier: MIT
// The simulated reader's ASCII protocol: what a line does and what comes back.
#include "tests/sim/spoken_stream.h"

using namespace zel::sim;

namespace {
class TextLine : public zel::test::SpokenStream {
protected:
    void SetUp() override {
        SpokenStream::SetUp();
        stream_->lineProtocol().setEcho(false);
        stream_->lineProtocol().setPrompt(true);
    }

    // The value of a key in the listing, as it stands.
    std::string listed(const std::string& key) {
        const std::string listing = write("ZTAG:VAR\r");
        const std::string start = ":" + key + "=";
        const std::size_t at = listing.find(start);
        if (at == std::string::npos)
            return "not listed";
        const std::size_t value = at + start.size();
        return listing.substr(value, listing.find('\r', value) - value);
    }

    // An assignment's answer is the prompt alone, unless it is refused.
    bool assign(const std::string& text) { return write("\rztag:" + text + "\r") == kPrompt; }

    TagBlock& block(std::size_t n) { return reader_->configuration(0).block[n]; }

    static constexpr const char* kPrompt = "Norvanex>";
};
} // namespace

TEST_F(TextLine, IsEchoedUntilTheReaderIsToldNotTo) {
    stream_->lineProtocol().setEcho(true);
    stream_->lineProtocol().setPrompt(false);
    EXPECT_EQ(write("\rZTAG:cmd."), "\rZTAG:cmd.");
    EXPECT_EQ(write("echo=0\r"), "echo=0\r");
    EXPECT_EQ(write("ZTAG:cmd.prompt=1\r"), "Norvanex>");
    EXPECT_EQ(write("\r"), "") << "an empty line has no answer";
}

TEST_F(TextLine, AsksForTheVersion) { EXPECT_EQ(write("\rZTAG:DEV.VER\r"), "{1.4.2}\rNorvanex>"); }

TEST_F(TextLine, AsksForTheIdentifier) {
    reader_->present(cardOf(0x0123456789, 37));
    stream_->lineProtocol().setIdAge(0x1F4);
    EXPECT_EQ(write("\rZTAG:QID.ID\r"), "{1F4,0,0,37;123456789}\rNorvanex>");
    reader_->removeCard();
    EXPECT_EQ(write("\rZTAG:QID.ID\r"), "{1F4,0,0,0;0}\rNorvanex>");
}

TEST_F(TextLine, ReturnsToFactoryDefaults) {
    block(0)[1] = 9;
    EXPECT_EQ(write("\rZTAG:CFG.RESET\r"), "Norvanex>");
    EXPECT_EQ(block(0)[1], 5);
}

TEST_F(TextLine, Beeps) {
    EXPECT_TRUE(assign("out.beep.long=2"));
    EXPECT_EQ(reader_->lastBeep(), 0x82);
    EXPECT_TRUE(assign("out.beep.short=5"));
    EXPECT_EQ(reader_->lastBeep(), 5);
    EXPECT_EQ(reader_->beeps(), 2);
}

TEST_F(TextLine, ThatMeansNothingIsAnError) {
    EXPECT_EQ(write("ZTAG:DEV.NAME\r"), "Error\rNorvanex>");
    EXPECT_EQ(write("DEV.VER\r"), "Error\rNorvanex>");
    EXPECT_EQ(write("ztag:no.such=1\r"), "Error\rNorvanex>");
    EXPECT_EQ(write("ztag:wieg.qual.bits=x\r"), "Error\rNorvanex>");
    EXPECT_EQ(write("ztag:dev.luid=5\r"), "Error\rNorvanex>");
    EXPECT_EQ(write("ztag:wieg.qual=2\r"), "Error\rNorvanex>") << "a flag is 0 or 1";
}

TEST_F(TextLine, IsRemembered) {
    write("\rztag:out.led=3\rZTAG:VAR\r");
    EXPECT_EQ(stream_->lineProtocol().takeHeard(),
              (std::vector<std::string>{"ztag:out.led=3", "ZTAG:VAR"}));
    EXPECT_EQ(stream_->lineProtocol().takeHeard(), std::vector<std::string>{});
}

TEST_F(TextLine, IsAnsweredAsATestWants) {
    stream_->lineProtocol().setListing("ZTAG:a=1\r");
    stream_->lineProtocol().setIdAnswer("{");
    stream_->lineProtocol().setVersionAnswer("{F.15.15}");
    EXPECT_EQ(write("ZTAG:VAR\r"), "ZTAG:a=1\rNorvanex>");
    EXPECT_EQ(write("ZTAG:QID.ID\r"), "{Norvanex>");
    EXPECT_EQ(write("ZTAG:DEV.VER\r"), "{F.15.15}Norvanex>");
}

TEST_F(TextLine, ListsWellAboveSevenHundredBytesUpToThePrompt) {
    const std::string listing = write("ZTAG:VAR\r");
    EXPECT_GT(listing.size(), 720U);
    EXPECT_LT(listing.size(), 2000U);
    EXPECT_TRUE(listing.ends_with("\rNorvanex>"));
    EXPECT_EQ(listing.find("Norvanex>"), listing.size() - 9);
    EXPECT_LT(listing.find(":wieg.qual="), listing.find(":wieg.qual.bits="));
}

TEST_F(TextLine, ListsTheFactorySettings) {
    // blocks 03 05 11 10 1A 00 28 01 and 00 10 14 28 01 01 00 00, then zeros
    reader_->settings().luid = 77;
    EXPECT_EQ(listed("disp.fac.digits"), "3");
    EXPECT_EQ(listed("disp.id.digits"), "5");
    EXPECT_EQ(listed("wieg.strip.lead.bits"), "1");
    EXPECT_EQ(listed("wieg.strip.trail.bits"), "1");
    EXPECT_EQ(listed("wieg.id.bits"), "16");
    EXPECT_EQ(listed("wieg.qual.bits"), "26");
    EXPECT_EQ(listed("chr.fac"), "'\\x00'");
    EXPECT_EQ(listed("chr.eol"), "'('");
    EXPECT_EQ(listed("wieg.qual"), "False");
    EXPECT_EQ(listed("time.hold"), "1000");
    EXPECT_EQ(listed("time.lo"), "2000");
    EXPECT_EQ(listed("out.led"), "255");
    EXPECT_EQ(listed("dev.luid"), "77");
}

TEST_F(TextLine, SetsNumbers) {
    EXPECT_TRUE(assign("wieg.id.bits=17"));
    EXPECT_TRUE(assign("wieg.qual.bits=37"));
    EXPECT_TRUE(assign("disp.id.digits=8"));
    EXPECT_TRUE(assign("chr.count.lead=2"));
    EXPECT_TRUE(assign("chr.count.trail=1"));
    EXPECT_EQ(block(0), (TagBlock{3, 8, 0x11, 17, 37, 0, 0x28, 1}));
    EXPECT_EQ(block(2), (TagBlock{0, 0, 0, 0, 0x12}));
    EXPECT_EQ(listed("chr.count.trail"), "1");
    EXPECT_FALSE(assign("chr.count.lead=4")) << "two bits";
}

TEST_F(TextLine, SetsFlags) {
    block(0)[7] = 0;
    for (const char* key :
         {"wieg.qual", "disp.fac.strip", "disp.fac.send", "op.cont", "op.sdk", "disp.id.hex",
          "wieg.inv.bits", "op.beep", "wieg.rev.bits", "wieg.rev.bytes"}) {
        EXPECT_TRUE(assign(std::string(key) + "=1"));
        EXPECT_EQ(listed(key), "True") << key;
    }
    EXPECT_EQ(block(0)[7], 0x02 | 0x04 | 0x08 | 0x40 | 0x80);
    EXPECT_EQ(block(2)[1], 0x04 | 0x08 | 0x10 | 0x20 | 0x40);
    EXPECT_TRUE(assign("op.sdk=0"));
    EXPECT_EQ(listed("op.sdk"), "False");
}

TEST_F(TextLine, SetsCharactersPlainOrEscaped) {
    EXPECT_TRUE(assign("chr.gone.1='\\x0D'"));
    EXPECT_TRUE(assign("chr.gone.2='-'"));
    EXPECT_TRUE(assign("chr.1='\\x41'"));
    EXPECT_TRUE(assign("chr.2='\\x42'"));
    EXPECT_TRUE(assign("chr.3='\\xff'"));
    EXPECT_EQ(block(2), (TagBlock{0, 0, 0x0D, '-', 0, 'A', 'B', 0xFF}));
    EXPECT_EQ(listed("chr.gone.1"), "'\\x0D'");
    EXPECT_EQ(listed("chr.1"), "'A'");
    EXPECT_EQ(listed("chr.3"), "'\\xFF'");
    EXPECT_FALSE(assign("chr.1='AB'"));
    EXPECT_FALSE(assign("chr.1='\\xG'"));
}

TEST_F(TextLine, PutsDelimitersOutOfUseWithZero) {
    EXPECT_TRUE(assign("chr.eol='\\x00'"));
    EXPECT_TRUE(assign("chr.fac='\\x2C'"));
    EXPECT_TRUE(assign("disp.fac.digits=0"));
    EXPECT_EQ(block(0)[7] & 0x31, 0x30) << "no line end, delimiter in use, no fixed length";
    EXPECT_EQ(listed("chr.eol"), "'\\x00'");
    EXPECT_EQ(listed("chr.fac"), "','");
    EXPECT_TRUE(assign("chr.eol='\\x0A'"));
    EXPECT_TRUE(assign("chr.fac='\\x00'"));
    EXPECT_TRUE(assign("disp.fac.digits=4"));
    EXPECT_EQ(block(0)[7] & 0x31, 0x01);
    EXPECT_EQ(listed("disp.fac.digits"), "4");
}

TEST_F(TextLine, ListsWhatIsOutOfUseAsZero) {
    block(0) = {3, 5, 0x11, 16, 26, ',', 0x0D, 0x20};
    EXPECT_EQ(listed("disp.fac.digits"), "0");
    EXPECT_EQ(listed("chr.fac"), "'\\x00'");
    EXPECT_EQ(listed("chr.eol"), "'\\x00'");
}

TEST_F(TextLine, SetsLedsForTheHostAndGivesThemBack) {
    EXPECT_TRUE(assign("out.led=2"));
    EXPECT_TRUE(reader_->isGreenOn());
    EXPECT_FALSE(reader_->isRedOn());
    EXPECT_EQ(listed("out.led"), "2");
    EXPECT_TRUE(assign("out.led=255"));
    EXPECT_EQ(block(2)[1] & 0x02, 0);
    EXPECT_EQ(listed("out.led"), "255");
}

TEST_F(TextLine, SplitsParityBitsAboveFifteen) {
    EXPECT_TRUE(assign("wieg.strip.lead.bits=20"));
    EXPECT_TRUE(assign("wieg.strip.trail.bits=3"));
    EXPECT_EQ(block(0)[2], 0x3F);
    EXPECT_EQ(block(3), (TagBlock{5, 0}));
    EXPECT_EQ(listed("wieg.strip.lead.bits"), "20");
}

TEST_F(TextLine, KeepsWhatItSetsOverALossOfPower) {
    assign("wieg.id.bits=17");
    reader_->powerUp();
    EXPECT_EQ(listed("wieg.id.bits"), "17");
}
