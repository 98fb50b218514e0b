// SPDX-License-Identifier: MIT
// References of a made-up program, which has all that is awkward in a page or to a shell.
#include "cli/reference/completion.h"
#include "cli/reference/manual.h"

#include <CLI/CLI.hpp>
#include <gtest/gtest.h>

namespace zel::cli {

namespace {

class Reference : public testing::Test {
protected:
    Reference() {
        app_.add_option("--kind,-k", kind_, "it's [one] of \\two")
            ->type_name("KIND")
            ->check(CLI::IsMember({"loud", "quiet"}));
        app_.add_option("PLACE", place_, ".hidden ones count, see `ls -a`")->required();
        app_.footer("Example:\n  odd-one -k loud here");
    }

    CommandOutline outline() const { return outlineOf(app_, {{"PLACE", {"here", "there"}}}); }
    std::string page() const {
        return manualOf(outline(), {"1.2", "2026-11-22", {{"Files", {{"x", "y"}}}}, {"ls(1)"}});
    }

    CLI::App app_{"Does odd things.", "odd-one"};
    std::string kind_;
    std::string place_;
};

bool holds(const std::string& text, const std::string& part) {
    return text.find(part) != text.npos;
}

TEST_F(Reference, PageTellsNameVersionAndHowToCall) {
    EXPECT_TRUE(page().starts_with(".TH ODD-ONE 1 2026-11-22 \"libzelTagAPI 1.2\""));
    EXPECT_TRUE(holds(page(), "\n.SH NAME\nodd\\-one \\- does odd things\n"));
    EXPECT_TRUE(holds(page(), "\n\\fBodd\\-one\\fR [\\fIOPTION\\fR]... \\fIPLACE\\fR\n"));
}

TEST_F(Reference, PageTakesNoTextForARequestOrAnEscape) {
    EXPECT_TRUE(holds(page(), "\n\\&.hidden ones count, see \\fBls \\-a\\fR\n"));
    EXPECT_TRUE(holds(page(), "\nit\\(aqs [one] of \\etwo\n"));
}

TEST_F(Reference, PageOfAProgramWithoutCommandsHasNoHeadingForThem) {
    EXPECT_FALSE(holds(page(), ".SH COMMANDS"));
    EXPECT_TRUE(holds(page(), "\nodd\\-one \\-k loud here\n"));
    EXPECT_TRUE(holds(page(), "\n.SH FILES\n.TP\n\\fBx\\fR\ny\n.SH SEE ALSO\n.BR ls (1)\n"));
}

TEST_F(Reference, BashCompletesTheWordsOfAnOptionAndOfAnArgument) {
    const std::string text = bashCompletionOf(outline());
    EXPECT_TRUE(holds(text, "'odd-one:--kind')\n        choices='loud quiet'\n"));
    EXPECT_TRUE(holds(text, "choices='here there --help -h --kind -k'\n"));
    EXPECT_TRUE(holds(text, "\ncomplete -F _odd_one odd-one\n"));
}

TEST_F(Reference, ZshTakesNoPartOfADescriptionForItsSyntax) {
    const std::string text = zshCompletionOf(outline());
    EXPECT_TRUE(text.starts_with("#compdef odd-one\n"));
    EXPECT_TRUE(holds(text, "'--kind[it'\\''s \\[one\\] of \\two]:KIND:(loud quiet)'"));
    EXPECT_TRUE(holds(text, "':PLACE:(here there)'"));
}

TEST_F(Reference, FishTakesNoPartOfADescriptionForItsSyntax) {
    const std::string text = fishCompletionOf(outline());
    EXPECT_TRUE(holds(text, " -l kind -s k -x -a 'loud quiet' -d 'it\\'s [one] of \\\\two'\n"));
    EXPECT_TRUE(holds(text, "-n '__odd_one_at odd-one' -a 'here there' -d 'PLACE'\n"));
}

TEST_F(Reference, OptionsKeptOutOfTheHelpAreKeptOutOfAll) {
    app_.add_option("--secret", kind_, "Not told")->group("");
    EXPECT_FALSE(holds(page(), "secret"));
    EXPECT_FALSE(holds(bashCompletionOf(outline()), "secret"));
}

} // namespace

} // namespace zel::cli
