// SPDX-License-Identifier: MIT
#include "firmware/messages.h"

#include "tests/firmware/message_texts.h"
#include "tests/support/library_test.h"

using namespace zel::test;

namespace {

class Messages : public LibraryTest {
protected:
    ~Messages() override { errorString.clear(); }
};

} // namespace

TEST_F(Messages, AreTheseSeventeen) {
    for (const auto& row : kMessages) {
        errorCodes->errorEncountered(row.code);
        EXPECT_EQ(errorString, row.text);
    }
}

TEST_F(Messages, OfAnUnknownNumberLeavesTheEarlierOneInPlace) {
    errorString = "earlier";
    for (int code = -300; code < 300; ++code)
        if (messageOf(code).empty())
            errorCodes->errorEncountered(code);
    EXPECT_EQ(errorString, "earlier");
}

TEST_F(Messages, StartWithNoneRaised) { EXPECT_EQ(errorString, ""); }

TEST_F(Messages, OutliveAConnection) {
    errorCodes->errorEncountered(219);
    connectReader();
    USBDisconnect();
    EXPECT_EQ(errorString, "219:- One of the Rules Failed");
}

TEST_F(Messages, AreEnteredTwiceWithoutHarm) {
    ErrorCodes codes;
    codes.initMapForErrorCode();
    codes.errorEncountered(218);
    EXPECT_EQ(errorString, "218:- Error in File Opening");
}

TEST_F(Messages, OfARefusalComeWithFalse) {
    EXPECT_FALSE(zel::firmware::refuse(11));
    EXPECT_EQ(errorString, "11:- The file was either modified or tampered");
}

TEST_F(Messages, CanBeMissing) {
    ErrorCodes* const kept = errorCodes;
    errorString = "earlier";
    errorCodes = nullptr;
    EXPECT_FALSE(zel::firmware::refuse(11));
    errorCodes = kept;
    EXPECT_EQ(errorString, "earlier");
}
