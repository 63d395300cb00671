#include "support/Test.h"

namespace {

std::string g_Message;

void Keep(const char* message) { g_Message = message; }

}  // namespace

TEST(VXAssert, FormatsIntoABoundedMessageOfOneLine) {
    testing::internal::CaptureStderr();
    VXAssertFail("100%% of\n%s", "it");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "100% of it\n");
    const VXAssertHandler standard = VXSetAssertHandler(Keep);
    VXAssertFail("%s of %d\nlines\n", "two", 2);
    EXPECT_EQ(g_Message, "two of 2 lines ");
    VXAssertFail("%s", std::string(5000, 'x').c_str());
    EXPECT_EQ(g_Message, std::string(1023, 'x'));
    EXPECT_EQ(VXSetAssertHandler(nullptr), Keep);
    EXPECT_EQ(VXSetAssertHandler(standard), standard) << "null stands for the default";
}
