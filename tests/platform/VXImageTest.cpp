#include "support/Test.h"

TEST(VXImage, OwnsOrBorrowsItsPixels) {
    const std::vector<unsigned char> pixels = {1, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_EQ(VXImage(2, 1, pixels.data()).GetBuffer(), pixels.data());
    VXImage copy;
    copy = VXImage(1, 2, pixels);
    EXPECT_EQ(copy.GetBuffer()[7], 8);
    EXPECT_NE(VXImage16BPP(3, 1, std::vector<unsigned char>(6)).GetBuffer(), nullptr);
    EXPECT_EQ(VXImage16BPP(3, 1, std::vector<unsigned char>(5)).GetBuffer(), nullptr) << "too few";
    EXPECT_EQ(VXImage(3, 1, std::vector<unsigned char>(11)).GetBuffer(), nullptr);
    EXPECT_EQ(VXImage(0xFFFFFFFF, 0xFFFFFFFF, pixels).GetBuffer(), nullptr) << "without wrapping round";
}
