// SPDX-License-Identifier: MIT
// Pieces are those that fgets() gives.
#include "firmware/piece_reader.h"
#include "tests/firmware/trailer_test.h"

#include <vector>

using namespace zel::test;
using zel::firmware::openFile;
using zel::firmware::PieceReader;

namespace {

using Pieces = std::vector<std::string>;

class PieceReading : public TrailerTest {
protected:
    static Pieces byFgets(std::size_t longest) {
        const auto file = openFile(kFile, "rb");
        std::vector<char> buffer(longest + 1);
        Pieces pieces;
        while (std::fgets(buffer.data(), static_cast<int>(buffer.size()), file.get()))
            pieces.emplace_back(buffer.data());
        return pieces;
    }
    static Pieces byReader(std::size_t longest) {
        const auto file = openFile(kFile, "rb");
        PieceReader reader(file.get(), longest);
        Pieces pieces;
        while (reader.next())
            pieces.emplace_back(reader.piece());
        return pieces;
    }

    // The text, and the line of the last piece, by whole lines where they come.
    static std::string byLines(std::size_t longest) {
        const auto file = openFile(kFile, "rb");
        PieceReader reader(file.get(), longest);
        std::string text(reader.wholeLines());
        for (; reader.next(); text += reader.wholeLines())
            text += reader.piece();
        return text + "\nline " + std::to_string(reader.line());
    }
    static std::string byPieces(std::size_t longest) {
        const auto file = openFile(kFile, "rb");
        PieceReader reader(file.get(), longest);
        std::string text;
        while (reader.next())
            text += reader.piece();
        return text + "\nline " + std::to_string(reader.line());
    }
};

} // namespace

TEST_F(PieceReading, GivesWhatFgetsGives) {
    using namespace std::string_literals;
    std::mt19937 random(3);
    for (const std::string& characters : {"a\n"s, "aaaaaaaaaaaaaaaaaaaaaaaaaaa\n"s, "a\0\n"s, "a"s})
        for (const std::size_t size : {1U, 200U, 1000U, 140000U})
            for (const std::size_t longest : {1U, 2U, 127U, 4095U}) {
                write(randomText(random, characters, size));
                ASSERT_EQ(byReader(longest), byFgets(longest)) << size << ' ' << longest;
                ASSERT_EQ(byLines(longest), byPieces(longest)) << size << ' ' << longest;
            }
}

TEST_F(PieceReading, EndsAPieceWithItsLineItsSizeOrTheFile) {
    write("ab\nabcde");
    EXPECT_EQ(byReader(3), (Pieces{"ab\n", "abc", "de"}));
    EXPECT_EQ(byReader(2), (Pieces{"ab", "\n", "ab", "cd", "e"}));
}

TEST_F(PieceReading, CountsTheLineOfALongLinesPiecesOnce) {
    write("abcdef\ng");
    const auto file = openFile(kFile, "rb");
    PieceReader reader(file.get(), 3);
    std::string lines = std::to_string(reader.line());
    while (reader.next())
        lines += ' ' + std::string(reader.piece()) + std::to_string(reader.line());
    EXPECT_EQ(lines, "0 abc1 def1 \n1 g2");
    EXPECT_EQ(reader.line(), 2);
    EXPECT_EQ(reader.piece(), "");
}

TEST_F(PieceReading, GoesOnWhereTheStreamStands) {
    write("ab\ncd\n");
    const auto file = openFile(kFile, "rb");
    std::fgetc(file.get());
    PieceReader reader(file.get(), 127);
    ASSERT_TRUE(reader.next());
    EXPECT_EQ(reader.piece(), "b\n");
}

TEST_F(PieceReading, TellsAFailedRead) {
    const auto folder = openFile(".", "rb");
    ASSERT_NE(folder, nullptr);
    PieceReader reader(folder.get(), 127);
    EXPECT_FALSE(reader.next());
    EXPECT_TRUE(reader.failed());
}
