#include "bitstream/VXByteBlock.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

TEST(VXByteBlock, CopiesShareAndTheLastHolderHandsOverTheArray) {
    auto* array = new unsigned char[2]{8, 9};
    VXByteBlock block = VXByteBlock::Adopt(array, 2);
    VXByteBlock other = block;
    other = *&other;
    EXPECT_EQ(other.GetBytes(), array);
    VXByteBlock moved = std::move(other);
    EXPECT_FALSE(other);
    other = std::move(moved);
    const std::unique_ptr<unsigned char[]> copied(block.Release());
    EXPECT_FALSE(block);
    EXPECT_NE(copied.get(), array);
    EXPECT_EQ(copied[1], 9);
    other.Detach();
    VXByteBlock detached = other;
    detached.Detach();
    detached.GetBytes()[0] = 1;
    EXPECT_EQ(array[0], 8);
    const std::unique_ptr<unsigned char[]> same(other.Release());
    EXPECT_EQ(same.get(), array);
    const std::unique_ptr<unsigned char[]> own(detached.Release());
    EXPECT_EQ(own[1], 9);
}

TEST(VXByteBlock, EmptyBlocksOwnNothing) {
    EXPECT_FALSE(VXByteBlock::Allocate(0));
    EXPECT_FALSE(VXByteBlock::CopyOf(nullptr, 0));
    EXPECT_FALSE(VXByteBlock::Adopt(nullptr, 7));
    VXByteBlock empty;
    EXPECT_EQ(empty.Release(), nullptr);
    EXPECT_EQ(empty.GetBytes(), nullptr);
    empty.Detach();
}
