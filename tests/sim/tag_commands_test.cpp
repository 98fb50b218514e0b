// SPDX-License-Identifier: MIT
// What a trace calls the commands of a simulated reader.
#include "sim/tag/commands.h"

#include "tests/sim/simulated_reader.h"

using namespace zel::sim;
using zel::test::SpokenReader;

namespace {

using Block = TagReader::Block;

struct Row {
    Block command;
    const char* name;
};

const Row kRows[] = {
    {{0x80}, "block 0"},
    {{0x81}, "block 1"},
    {{0x82}, "block 2"},
    {{0x83}, "block 3"},
    {{0x84}, "card type"},
    {{0x85, 3, 0, 0x10}, "page 3 of fields"},
    {{0x85, 1, 0x01, 0}, "key 1 page 1"},
    {{0x85, 0, 0x11, 0}, "key 2 page 0"},
    {{0x85, 0, 0x01, 0x10}, "page"},
    {{0x86}, ""},
    {{0x88, 1, 4}, "card data"},
    {{0x89, 0x01}, "multi: query"},
    {{0x89, 0x03, 2, 4}, "multi: version of unit 2 slot 4"},
    {{0x89, 0x04, 255}, "multi: card types page 255"},
    {{0x89, 0x10}, "multi"},
    {{0x89, 0x81, 2}, "multi: select 2"},
    {{0x89, 0x82, 3, 1}, "multi: move set 3 to 1"},
    {{0x89, 0x90, 0, 0, 1, 9, 5}, "multi: key reference 9"},
    {{0x89, 0x90, 0, 0, 2, 1, 5}, "multi: file reference 1"},
    {{0x89, 0x90, 0, 7, 1, 2, 3, 4}, "multi: reference page 7"},
    {{0x89, 0x90, 0, 0xFF}, "multi: reference end"},
    {{0x8A}, "LUID"},
    {{0x8C, 0x01, 2}, "service: part number 2"},
    {{0x8C, 0x02, 4}, "service: queued identifier page 4"},
    {{0x8C, 0x03, 130}, "service: beep 130"},
    {{0x8C, 0x04, 4, 2}, "service: firmware version 2"},
    {{0x8C, 0x04, 7, 6}, "service: firmware file 6"},
    {{0x8C, 0x04, 5, 6}, "service"},
    {{0x8C, 0x05, 3}, "service: serial number page 3"},
    {{0x8C, 0x06}, "service: volume"},
    {{0x8C, 0x07}, "service: radio"},
    {{0x8C, 0x86, 3}, "service: set volume 3"},
    {{0x8C, 0x87, 1}, "service: set radio 1"},
    {{0x8D, 3}, "identifier page"},
    {{0x8E}, "bit count"},
    {{0x8F}, "identifier"},
    {{0x90, 0x21}, "commit"},
    {{0xA0}, "factory defaults"},
};

} // namespace

TEST(CommandNames, SayWhatACommandIsAbout) {
    for (const Row& row : kRows)
        EXPECT_EQ(tagCommandName(row.command), row.name);
}

TEST(CommandNames, AreMissingForAnEmptyReport) { EXPECT_EQ(tagCommandName({}), ""); }

TEST(CommandNames, CallTheDataOfAWriteByItsCommand) {
    SpokenReader reader;
    const Block data = {0x8F, 1, 2};
    EXPECT_EQ(reader.nameOf(data), "identifier");
    reader.command({0x85, 3, 0, 0x10});
    EXPECT_EQ(reader.nameOf(data), "page 3 of fields data");
    reader.command(data);
    EXPECT_EQ(reader.nameOf(data), "identifier") << "the write is over";
}

TEST(CommandNames, CallACommandBehindAQueryByItself) {
    SpokenReader reader;
    reader.query({0x80});
    EXPECT_EQ(reader.nameOf(Block{0x81}), "block 1");
}
