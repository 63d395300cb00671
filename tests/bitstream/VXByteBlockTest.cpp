#include "bitstream/VXByteBlock.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace {

const unsigned char kText[] = {'b', 'o', 'd', 'y'};

TEST(VXByteBlock, CopiesShareAndTheLastHolderFrees) {
    VXByteBlock first = VXByteBlock::CopyOf(kText, 4);
    VXByteBlock second = first;
    EXPECT_EQ(second.GetBytes(), first.GetBytes());
    first = VXByteBlock();
    EXPECT_FALSE(first);
    EXPECT_EQ(second.GetBytes()[3], 'y');
    second = *&second;
    ASSERT_EQ(second.GetSize(), 4u);
    VXByteBlock third = std::move(second);
    EXPECT_FALSE(second);
    third.Detach();
    VXByteBlock fourth = third;
    fourth.Detach();
    EXPECT_NE(fourth.GetBytes(), third.GetBytes());
    fourth.GetBytes()[0] = 'B';
    EXPECT_EQ(third.GetBytes()[0], 'b');
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

TEST(VXByteBlock, ArraysGoInAndOut) {
    auto* array = new unsigned char[3]{1, 2, 3};
    VXByteBlock alone = VXByteBlock::Adopt(array, 3);
    EXPECT_EQ(alone.GetBytes(), array);
    const std::unique_ptr<unsigned char[]> same(alone.Release());
    EXPECT_EQ(same.get(), array) << "a sole holder hands over the array itself";
    EXPECT_FALSE(alone);

    VXByteBlock shared = VXByteBlock::Adopt(new unsigned char[2]{8, 9}, 2);
    const VXByteBlock other = shared;
    const std::unique_ptr<unsigned char[]> copied(shared.Release());
    EXPECT_NE(copied.get(), other.GetBytes());
    EXPECT_EQ(copied[1], 9);
    EXPECT_EQ(other.GetBytes()[1], 9);

    VXByteBlock own = VXByteBlock::CopyOf(kText, 4);
    const std::unique_ptr<unsigned char[]> fromOwn(own.Release());
    EXPECT_EQ(fromOwn[0], 'b');
}

}  // namespace
