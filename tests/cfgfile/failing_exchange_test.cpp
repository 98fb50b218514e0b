// SPDX-License-Identifier: MIT
// Each exchange of a template file's way fails once, in both directions.
#include "tests/cfgfile/template_test.h"

using namespace zel::test;

namespace {

class TemplateFailure : public TemplateTest {
protected:
    // Runs an operation with its n-th exchange failing, for each n that it gets to.
    template <class Connect, class Operation>
    static void walk(Connect connect, Operation operation) {
        int n = 0;
        for (bool reached = true; reached; ++n) {
            SCOPED_TRACE("exchange " + std::to_string(n));
            unplugAll();
            traceNothing();
            connect();
            const int before = bus().exchanges(0);
            const auto files = openDescriptors();
            if (n > 0)
                failFor(n);
            operation(n);
            EXPECT_EQ(openDescriptors(), files) << "a file stayed open";
            EXPECT_EQ(bus().openHandles(), 1);
            reached = bus().exchanges(0) - before >= n;
            forgiveHaste();
        }
        EXPECT_GT(n, 20);
    }
};

// Lines of a file that stand for a configuration's body, and for its end.
std::ptrdiff_t count(const std::string& text, const std::string& line) {
    std::ptrdiff_t found = 0;
    for (std::size_t at = text.find(line); at != text.npos; at = text.find(line, at + 1))
        ++found;
    return found;
}

void expectFile(int result, std::ptrdiff_t parts) {
    const std::string text = textOf("out");
    const auto bodies = count(text, "\nEND sFldSepData\n");
    EXPECT_EQ(result, bodies > 0 ? 1 : -1);
    EXPECT_EQ(count(text, "\nBEGIN sFldSepData\n"), bodies);
    EXPECT_EQ(count(text, "\n##NEXTCONFIG##\n"), parts);
    EXPECT_TRUE(text.starts_with(goldenFile("plain_unread")));
}

} // namespace

TEST_F(TemplateFailure, OfAnExchangeLeavesAWholeFileOrAHead) {
    walk(connectFilledPlain, [](int) { expectFile(WriteDevCfgToFile("out"), 0); });
}

TEST_F(TemplateFailure, OfAnExchangeLeavesAllPartsOfSeveralConfigurations) {
    walk(connectFilledPlus, [](int) {
        SetActConfig(1);
        expectFile(WriteDevCfgToFile("out"), 3);
        EXPECT_EQ(record().iActConfig, 1);
    });
}

// The error word tells less: the question for the pause, asked behind each write, clears it.
TEST_F(TemplateFailure, OfAnExchangeIsToldByTheResultOfALoad) {
    writeText("in", goldenFile("plain"));
    walk([] { connectRead(); },
         [](int) {
             const bool isWritten = ReadDevCfgFmFile("in") != 0;
             EXPECT_EQ(isWritten, marks() == 0) << "what isn't written waits";
         });
}

TEST_F(TemplateFailure, OfAnExchangeEndsTheLoadOfSeveralConfigurations) {
    writeText("in", goldenFile("tagplus"));
    walk([] { connectFilledPlus(); },
         [](int n) {
             SetActConfig(1);
             const int result = ReadDevCfgFmFile("in");
             EXPECT_EQ(record().iActConfig, result != 0 ? 1 : 2);
             EXPECT_TRUE(n > 0 || result == 1);
         });
}
