#include "platform/VXImage.h"

#include <gtest/gtest.h>

TEST(VXImage, OwnsOrBorrowsItsPixels) {
    const unsigned char pixels[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_EQ(VXImage(2, 1, pixels).GetBuffer(), pixels);
    EXPECT_EQ(VXImage16BPP(2, 2, nullptr).GetBuffer(), nullptr);

    VXImage copy;
    {
        const VXImage owner(1, 2, std::vector<unsigned char>(pixels, pixels + 8));
        copy = owner;
        EXPECT_NE(copy.GetBuffer(), owner.GetBuffer());
    }
    EXPECT_EQ(copy.GetBuffer()[7], 8);
}

TEST(VXImage, PixelsTooFewForTheSizeAreNone) {
    EXPECT_NE(VXImage16BPP(3, 1, std::vector<unsigned char>(6)).GetBuffer(), nullptr);
    EXPECT_EQ(VXImage16BPP(3, 1, std::vector<unsigned char>(5)).GetBuffer(), nullptr);
    EXPECT_EQ(VXImage(3, 1, std::vector<unsigned char>(11)).GetBuffer(), nullptr);
    const VXImage huge(0xFFFFFFFF, 0xFFFFFFFF, std::vector<unsigned char>(64));
    EXPECT_EQ(huge.GetBuffer(), nullptr) << "the size is computed without wrapping round";
    EXPECT_EQ(huge.GetWidth(), 0xFFFFFFFF);
}
