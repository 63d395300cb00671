#include "support/Test.h"

namespace {

const Bytes kId = Hex("07 00");
const Bytes kBounds = Bits("01010 0000000000 0110010000 0000000000 0011001000");  // 20 × 10 pixels
/// Fills from the right, moves to the origin, draws a line and a curve.
const Bytes kRecords =
    Bits("0001 0001  0 00101 00000 1  11 1000 0 0 0110010000  10 0000 01 00 00 01  000000");

Bytes ShapeBytes(unsigned int type, const Bytes& head, const Bytes& styles) {
    return TagBytes(type, Join({kId, head, styles, kRecords}));
}

TEST(VXSwfDefineShapeTag, DumpsWhatItLoads) {
    const Bytes caps = Hex("01 00 11 22 33 80  01 14 00 46 00 44 55 66 90");
    for (const unsigned int type : {2u, 22u}) {
        const Bytes bytes = ShapeBytes(type, kBounds, Hex("01 00 11 22 33  01 14 00 44 55 66"));
        SweepTag("opaque colours", bytes, bytes);
    }
    SweepTag("colours with alpha", ShapeBytes(32, kBounds, Hex("01 00 11 22 33 80  01 14 00 44 55 66 90")));
    const Bytes fourth = ShapeBytes(83, Join({kBounds, Hex("00 02")}), caps);
    SweepTag("both bounds and lines with caps", fourth);
    SweepTag("strokes that scale come out as ones that do not, and reserved bits are dropped",
             ShapeBytes(83, Join({kBounds, Hex("00 FD")}), caps), fourth);
    SweepTag("bytes behind the records are dropped", TagBytes(2, Join({kId, Hex("00 00 00 00 00 FF")})),
             TagBytes(2, Join({kId, Hex("00 00 00 00 00")})));
    EXPECT_EQ(DumpOf(*NewTag<VXSwfDefineShapeTag>(83)), Hex("C8 14 00 00 00 00 02 00 00 00"));
    const auto shape = NewTag<VXSwfDefineShapeTag>(2, 1);
    EXPECT_EQ(LoadInto(*shape, TagBytes(2, Join({kId, kBounds, Hex("02 00 11 22 33")}))), kVXFailure);
    EXPECT_EQ(shape->GetBounds().XMax, 20.0) << "what was read stays";
    EXPECT_EQ(shape->ShapeWithStyle.FillStyles.FillStyles.at(0).Color.Blue, 0x33);
}

TEST(VXSwfDefineShapeTag, CountsOfStylesFollowTheVersion) {
    const Bytes unknown = Repeat(255, 19);  // fills of a type byte alone
    const auto shape = [](unsigned int type, const char* head, const Bytes& fills) {
        return TagBytes(type, Join({kId, Hex("00"), Hex(head), fills, Hex("00 00 00")}));
    };
    EXPECT_EQ(DumpOf(*LoadTag(shape(2, "FF", unknown))), shape(2, "FF FF 00", unknown))
        << "255 is a count to type 2, and goes out in a form that it cannot read";
    EXPECT_EQ(DumpOf(*LoadTag(shape(22, "FF FF 00", unknown))), shape(22, "FF FF 00", unknown));
    EXPECT_EQ(DumpOf(*LoadTag(shape(22, "FF 01 00", Hex("13")))), shape(22, "01", Hex("13")));
}

TEST(VXSwfDefineShapeTag, BoundsAreWhatWasSet) {
    const auto tag = NewTag<VXSwfDefineShapeTag>(83);
    tag->SetBounds({1.5, 2.0, 30.0, 40.0}, 3);
    EXPECT_EQ(tag->EdgeBounds.XMin, 1.5);
    EXPECT_EQ(tag->EdgeBounds.YMax, 40.0);
    EXPECT_EQ(tag->GetBounds().XMin, -1.5);
    EXPECT_EQ(tag->GetBounds().YMax, 43.0);
    tag->SetCharacterId(9);
    EXPECT_EQ(TextOf(*tag), "TAG_DEFINESHAPE4(83) - Id=9-Rect =(-1,-1),(33,43)") << "toward zero";
}

TEST(VXSwfDefineShapeTag, BitmapsGetNewIdsAndCopiesKeepTheirs) {
    // A clipped bitmap fill, and one that a style change brings along.
    const auto withIds = [](const char* first, const char* second) {
        return Join({kId, Hex("00 01 41"), Hex(first), Hex("00 00 00"), Bits("0 10000"), Hex("01 40"),
                     Hex(second), Hex("00 00 00 00")});
    };
    VXFlintIDMap map;  // the shape's own ID, 7, stays
    for (const unsigned char id : Hex("05 06 07")) map.Set(id, id * 10);
    ExpectRenumbered(2, withIds("05 00", "06 00"), map, withIds("32 00", "3C 00"));
}

TEST(VXSwfStrokePattern, StylesHaveTheirPatterns) {
    const std::vector<VXReal> patterns[] = {{}, {21, 7}, {7, 7}, {21, 7, 7, 7}, {21, 7, 7, 7, 7, 7}, {}};
    VXSwfStrokePattern pattern;
    for (int style = 0; style < 6; ++style) {
        pattern.SetOffset(3.0);
        pattern.SetCurIndex(1);
        pattern.SetStrokeStyleEnum(static_cast<VXStrokeStyleEnum>(style));
        EXPECT_EQ(pattern.GetPattern(), patterns[style]) << style;
        EXPECT_EQ(pattern.GetOffset() + pattern.GetCurIndex(), 0.0);
    }
}

}  // namespace
