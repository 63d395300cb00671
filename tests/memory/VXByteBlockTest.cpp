#include "support/Test.h"

#include "memory/VXPool.h"

TEST(VXByteBlock, CopiesShareTheArray) {
    auto* array = new unsigned char[2]{8, 9};
    VXByteBlock block = VXByteBlock::Adopt(array, 2);
    VXByteBlock other = block;
    other = *&other;
    EXPECT_EQ(other.GetBytes(), array);
    VXByteBlock moved = std::move(other);
    EXPECT_FALSE(other);
    other = std::move(moved);
    VXByteBlock detached = other;
    detached.Detach();
    detached.GetBytes()[0] = 1;
    EXPECT_EQ(detached[1], 9);
    EXPECT_EQ(array[0], 8);
    block = VXByteBlock();
    other.Detach();
    EXPECT_EQ(other.GetBytes(), array) << "the last holder needs no copy";
}

TEST(VXByteView, APartOfALargeBufferKeepsThePiecesThatItLiesIn) {
    constexpr unsigned int kSize = 4u << 20;
    auto* bytes = static_cast<unsigned char*>(VXPool::Resize(nullptr, 0, kSize));
    std::memset(bytes, 7, kSize);
    VXByteView part = VXByteView::TakeOver(bytes, kSize, kSize).Part((1u << 20) - 2, 4);
    EXPECT_EQ(part.GetBytes()[0] + part.GetBytes()[3], 14);
    EXPECT_EQ(bytes[(3u << 20) + 0x10000], 0) << "the system has its pages back";
    EXPECT_EQ(part.Part(3, 9).GetSize(), 1u);
    EXPECT_FALSE(part.Part(4, 1));
    part.Detach();
    EXPECT_EQ(part.GetBytes()[3], 7);
}

TEST(VXByteBlock, EmptyBlocksOwnNothing) {
    EXPECT_FALSE(VXByteBlock::Allocate(0));
    EXPECT_FALSE(VXByteBlock::CopyOf(nullptr, 0));
    EXPECT_FALSE(VXByteBlock::Adopt(nullptr, 7));
    VXByteBlock empty;
    EXPECT_EQ(empty.GetBytes(), nullptr);
    empty.Detach();
}
