// Tags of few fields.
#include "support/Test.h"

namespace {

TEST(VXSwfCSMTextSettingTag, DumpsItsFieldsAndALoadLeavesThemAlone) {
    const auto tag = NewTag<VXSwfCSMTextSettingTag>(74);
    EXPECT_EQ(LoadInto(*tag, TagBytes(74, Hex("07 00  48  00 00 00 00  00 00 00 00  00"))), kVXSuccess);
    EXPECT_EQ(DumpOf(*tag), TagBytes(74, Hex("00 00  50  00 00 00 00  00 00 00 00  00")));
    EXPECT_EQ(tag->GetReferencedID(), 7) << "the body is in force again";
    tag->m_TextId = 0x0102;
    tag->m_UseType = 2;
    tag->m_GridFit = 5;
    tag->m_Thickness = 0x3F800000;
    tag->m_Sharpness = 0xC0000001;
    EXPECT_EQ(DumpOf(*tag), TagBytes(74, Hex("02 01  A8  00 00 80 3F  01 00 00 C0  00")));
}

TEST(VXSwfDefineFontNameTag, DumpsItsFieldsAndALoadLeavesThemAlone) {
    const TagPtr owner = MakeTag(88, 0);
    auto* tag = dynamic_cast<VXSwfDefineFontNameTag*>(owner.get());
    EXPECT_EQ(LoadInto(*owner, TagBytes(88, Hex("07 00 41 00 00"))), kVXSuccess);
    EXPECT_EQ(DumpOf(*tag), TagBytes(88, Hex("FF FF 00 00")));
    EXPECT_EQ(tag->GetReferencedID(), 7) << "the body is kept";
    EXPECT_EQ(tag->AddFontInfo(0x0203, "Ab", "(c)"), kVXSuccess);
    EXPECT_EQ(DumpOf(*tag), TagBytes(88, Hex("03 02  41 62 00  28 63 29 00")));
    EXPECT_EQ(tag->AddFontInfo(1, "\xC3\xA9", ""), kVXSuccess);
    EXPECT_EQ(DumpOf(*tag), TagBytes(88, Hex("01 00  C3 00  00"))) << "one unit, so one of its two bytes";
}

Bytes EditText(const Bytes& behindBounds) { return TagBytes(37, Join({Hex("05 00 00"), behindBounds})); }

TEST(VXSwfDefineEditTextTag, DumpsWhatItLoads) {
    SweepTag("every field", EditText(Join({Bits("1000 0111 0010 0000"),  // text, colour, length, font, layout
                                           Hex("07 00 FA 00 11 22 33 44 0A 00"  // font 7, 12.5 pixels
                                               "02 01 00 02 00 03 00 04 00 76 00 74 65 78 74 00")})));
    SweepTag("every flag without a field", EditText(Join({Bits("0111 1000 1101 1111"), Hex("00")})));
    SweepTag("an 8-bit name survives", EditText(Hex("00 00 E9 E8 00")));
    SweepTag("text outside ASCII is cut to its number of units", EditText(Hex("80 00 00 E2 82 AC C3 A9 00")),
             EditText(Hex("80 00 00 E2 82 00")));
}

TEST(VXSwfDefineEditTextTag, WritesFlagsAsTheyStand) {
    const auto tag = NewTag<VXSwfDefineEditTextTag>(37);
    tag->SetCharacterId(5);
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
    unsigned short id = 1;
    EXPECT_FALSE(tag->GetFontID(id));
    EXPECT_EQ(tag->m_FontId, 7) << "there is no font yet";
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

}  // namespace
