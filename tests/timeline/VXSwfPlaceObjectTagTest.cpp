#include "timeline/VXSwfPlaceObjectTag.h"

#include <gtest/gtest.h>

#include "support/TagSweep.h"

namespace {

const Bytes kPlaced = Join({Hex("0A 01"      // type 4, 10 bytes
                                "05 00"      // character 5
                                "03 00"      // depth 3
                                "00"),       // no scale, no rotation, nothing moved
                            Bits("0 1 1010"  // multiply terms of 10 bits
                                 "0100000000 0100000000 0100000000")});

}  // namespace

TEST(VXSwfPlaceObjectTag, DumpsWhatItLoads) {
    SweepTag("with a colour transform, which has no alpha term", kPlaced);
    SweepTag("without one, which a dump adds", Hex("05 01 05 00 03 00 00"), Hex("06 01 05 00 03 00 00 00"));
    SweepTag("a long header stays", LongTagBytes(4, Hex("05 00 03 00 00 00")));
}

TEST(VXSwfPlaceObjectTag, IsItsCharacterAndRefersToNone) {
    const TagPtr tag = LoadTag(kPlaced);
    EXPECT_EQ(tag->GetCharacterId(), 5);
    EXPECT_EQ(tag->GetReferencedID(), 0);
    tag->SetCharacterId(6);
    EXPECT_EQ(DumpOf(*tag)[2], 6);
}

TEST(VXSwfPlaceObjectTag, CannotBeCopied) { EXPECT_EQ(LoadTag(kPlaced)->Copy(), nullptr); }

TEST(VXSwfPlaceObjectTag, TakesAWholeColourTransform) {
    const auto tag = NewTag<VXSwfPlaceObjectTag>(4, 1);
    ASSERT_NE(tag, nullptr);
    tag->SetCharacterId(5);
    tag->SetDepth(3);
    tag->SetCxForm(nullptr);
    EXPECT_EQ(DumpOf(*tag), Hex("06 01 05 00 03 00 00 00"));
    VXFlintCxForm cxForm;
    cxForm.HasAddTerms = 1;
    cxForm.AlphaAddTerm = 1;
    tag->SetCxForm(&cxForm);
    EXPECT_EQ(DumpOf(*tag), Join({Hex("07 01 05 00 03 00 00"), Bits("1 0 0010 00 00 00 01")}))
        << "the alpha term came along";
}
