#include "text/VXSwfDefineEditTextTag.h"

#include <gtest/gtest.h>

#include "framework/VXFlintIDMap.h"
#include "support/TagSweep.h"

namespace {

Bytes EditText(const Bytes& behindBounds) { return TagBytes(37, Join({Hex("05 00 00"), behindBounds})); }

}  // namespace

TEST(VXSwfDefineEditTextTag, DumpsWhatItLoads) {
    SweepTag("every field", EditText(Join({Bits("1000 0111 0010 0000"),  // text, colour, length, font, layout
                                           Hex("07 00 FA 00"             // font 7, 12.5 pixels
                                               "11 22 33 44"
                                               "0A 00"
                                               "02 01 00 02 00 03 00 04 00"
                                               "76 00"
                                               "74 65 78 74 00")})));
    SweepTag("every flag without a field", EditText(Join({Bits("0111 1000 1101 1111"), Hex("00")})));
    SweepTag("an 8-bit name survives", EditText(Hex("00 00 E9 E8 00")));
    SweepTag("text outside ASCII is cut to its number of units", EditText(Hex("80 00 00 E2 82 AC C3 A9 00")),
             EditText(Hex("80 00 00 E2 82 00")));
}

TEST(VXSwfDefineEditTextTag, WritesFlagsAsTheyStand) {
    const auto tag = NewTag<VXSwfDefineEditTextTag>(37);
    ASSERT_NE(tag, nullptr);
    tag->SetCharacterId(5);
    EXPECT_EQ(DumpOf(*tag), EditText(Hex("00 00 00")));
    tag->SetMaxLength(10);
    tag->SetFontSize(12);
    EXPECT_EQ(DumpOf(*tag), EditText(Hex("00 00 00"))) << "no flag, no field";
    tag->SetFont(7);
    tag->SetColor(VXFlintRGB(1, 2, 3, 0, 0));
    tag->SetText(VXString("a"));
    tag->SetText(VXString());
    EXPECT_EQ(DumpOf(*tag), EditText(Hex("85 00 07 00 F0 00 01 02 03 00 00 00")));
}

TEST(VXSwfDefineEditTextTag, TheFontFollowsTheMapEvenToZero) {
    const auto tag = NewTag<VXSwfDefineEditTextTag>(37);
    VXFlintIDMap map;
    map.Set(7, 70);
    tag->m_FontId = 7;
    tag->UpdateReferenceIDs(&map);
    EXPECT_EQ(tag->m_FontId, 7) << "there is no font yet";
    unsigned short id = 1;
    EXPECT_FALSE(tag->GetFontID(id));
    tag->SetFont(7);
    tag->UpdateReferenceIDs(nullptr);
    tag->UpdateReferenceIDs(&map);
    EXPECT_TRUE(tag->GetFontID(id));
    EXPECT_EQ(id, 70);
    tag->UpdateReferenceIDs(&map);
    EXPECT_EQ(tag->m_FontId, 0) << "70 is unknown";
    tag->m_HasFont = 2;
    EXPECT_FALSE(tag->GetFontID(id));
}
