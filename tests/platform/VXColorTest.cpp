#include "support/Test.h"

TEST(VXColor, KeepsItsPackedForm) {
    for (unsigned byte = 0; byte < 256; ++byte) {
        const unsigned word = byte << 24 | (byte ^ 0x55U) << 16 | (byte ^ 0xAAU) << 8 | (255 - byte);
        ASSERT_EQ(VXColor(word).GetColorAsUI(), word);
        // Whoever multiplies by 255 and truncates must get the byte again.
        ASSERT_EQ(static_cast<unsigned>(VXColor(byte << 16).GetComponent(0) * 255.0), byte);
    }
}

TEST(VXColor, ConvertsTheOtherModels) {
    EXPECT_EQ(VXColor::FromCMYK(0, 1, 0, 0.2, 1).GetColorAsUI(), 0xFFCC00CCU);
    EXPECT_EQ(VXColor::FromGray(0.2).GetColorAsUI(), 0x00333333U);
    const VXColor rgb = VXColor::FromCMYK(0.25, 0.5, 0.75, 0, 0.5).ConvertToRGB();
    EXPECT_EQ(rgb.ConvertToRGB(), VXColor::FromRGB(0.75, 0.5, 0.25, 0.5));
}

TEST(VXColor, KeepsComponentsOutOfRangeAndCutsTheirBytes) {
    const VXReal nan = std::numeric_limits<VXReal>::quiet_NaN();
    const VXReal infinity = std::numeric_limits<VXReal>::infinity();
    const VXColor color = VXColor::FromRGB(2.0, -1.0, 0.5, nan);
    EXPECT_EQ(color.GetComponent(0), 2.0);
    EXPECT_EQ(color.GetComponent(1), -1.0);
    for (const int none : {-1, 3, 4}) EXPECT_EQ(color.GetComponent(none), 0.0);
    EXPECT_EQ(color.GetColorAsUI(), 0x00FF0080U);
    EXPECT_EQ(VXColor::FromRGB(infinity, -infinity, nan).GetColorAsUI(), 0x00FF0000U);
}
