#include "support/Test.h"

namespace {

using Tag = VXSwfPlaceObject2Tag;

constexpr VXReal kNaN = std::numeric_limits<VXReal>::quiet_NaN();

const Bytes kFull = Join({Hex("7E 02 00 05 00"),            // all but clip actions and Move; depth, character
                          Bits("0 0 00110 010100 101100"),  // 1 pixel to the right, 1 up
                          Bits("1 0 0011 001 111 000 010"),  // add 1, −1, 0 and 2 for alpha
                          Hex("34 12 61 62 00 09 00")});     // ratio, name, clip depth

std::unique_ptr<Tag> Load(const Bytes& body, unsigned char version = 8) {
    return std::unique_ptr<Tag>(dynamic_cast<Tag*>(LoadTag(TagBytes(26, body), version).release()));
}

Bytes Long(const char* body) { return LongTagBytes(26, Hex(body)); }

struct Box : VXSizeNPositionData {
    Box(VXReal width, VXReal height) : m_Width(width), m_Height(height) {}
    VXReal GetXPosition() const override { return 1e9; }
    VXReal GetYPosition() const override { return 1e9; }
    VXReal GetXExtent() const override { return m_Width; }
    VXReal GetYExtent() const override { return m_Height; }

    VXReal m_Width;
    VXReal m_Height;
};

TEST(VXSwfPlaceObject2Tag, DumpsWhatItLoadsUnderALongHeader) {
    SweepTag("everything", TagBytes(26, kFull), LongTagBytes(26, kFull));
    SweepTag("a move; bytes behind the fields are dropped", Hex("84 06 01 02 00 FF"), Long("01 02 00"));
    SweepTag("the flag of an empty name is dropped", Hex("84 06 20 02 00 00"), Long("00 02 00"));
    SweepTag("a character of 0 keeps its flag", Hex("85 06 02 02 00 00 00"), Long("02 02 00 00 00"));
    SweepTag("clip actions of version 5 are parsed and grow",
             TagBytes(26, Hex("80 01 00  00 00  80 00  80 00 03 00 00 00 07 00  00 00")),
             Long("80 01 00  00 00  80 00 00 00  80 00 00 00 03 00 00 00 07 00  00 00 00 00"), 5);
    const char* eight = "C6 01 00 05 00 00 09 00 DE AD BE";
    SweepTag("those of version 6 are carried unread", TagBytes(26, Hex(eight)), Long(eight), 6);
    SweepTag("none become an empty block", TagBytes(26, Hex("80 01 00")),
             Long("80 01 00  00 00 00 00 00 00 00 00 00 00"), 6);
    const auto tag = Load(Join({Hex("04 00 00"), Bits("0 0 01000 00010100 11101100")}));
    DumpOf(*tag);
    EXPECT_EQ(tag->GetMatrix().NTranslateBits, 6u) << "the width of its dump";
}

TEST(VXSwfPlaceObject2Tag, FlagsStayOnceTheyAreSet) {
    const auto tag = NewTag<Tag>(26);
    tag->SetReferencedID(7);
    tag->SetName(VXString("n"));
    tag->SetName(VXString());
    tag->EditClipActions().ClipActionRecords.push_back(new VXFlintClipActionRecord);
    EXPECT_EQ(tag->HasCharacter, 0) << "until the dump";
    EXPECT_EQ(DumpOf(*tag),
              Long("A2 00 00 07 00 6E 00  00 00 00 00 00 00  00 00 00 00 00 00 00 00 00 00 00 00 00"));
    tag->SetReferencedID(0);
    tag->EditClipActions().ClipActionRecords = {};
    EXPECT_EQ(DumpOf(*tag), Long("A2 00 00 00 00 6E 00  00 00 00 00 00 00  00 00 00 00"));
    VXString name("mine");
    NewTag<Tag>(26)->GetName(name);
    EXPECT_EQ(name, VXString("mine")) << "where there is none";
}

TEST(VXSwfPlaceObject2Tag, TakesAColourTransform) {
    const auto tag = NewTag<Tag>(26);
    tag->SetCxForm(nullptr);
    EXPECT_EQ(DumpOf(*tag), Long("08 00 00 00")) << "Kept: the flag, and a fresh transform";
    tag->EditCxForm().HasAddTerms = 1;
    tag->EditCxForm().BlueAddTerm = 1;
    tag->SetAlpha(128);
    EXPECT_EQ(DumpOf(*tag),
              LongTagBytes(26, Join({Hex("08 00 00"), Bits("1 1 1010"
                                                           "0100000000 0100000000 0100000000 0010000000"
                                                           "0000000000 0000000000 0000000001 0000000000")})));
}

TEST(VXSwfPlaceObject2Tag, MovesTheClipDepthAlong) {
    const auto tag = NewTag<Tag>(26);
    tag->SetDepth(5, 0);
    tag->SetClipDepth(10);
    tag->SetDepth(2, 1);
    EXPECT_EQ(tag->ClipDepth, 7);
    EXPECT_NE(tag->HasClipDepth, 0);
    tag->SetClipDepth(0);
    EXPECT_EQ(tag->HasClipDepth, 0);
    tag->SetDepth(1, 1);
    tag->SetDepth(9, 0);
    EXPECT_EQ(tag->ClipDepth, 0xFFFF) << "in 16 bits, without the flag too, and only when asked";
}

auto FieldsOf(const VXFlintMatrix& m) {
    return std::tuple(m.HasScale, m.NScaleBits, m.ScaleX, m.ScaleY, m.HasRotate, m.NRotateBits, m.RotateSkew0,
                      m.RotateSkew1, m.NTranslateBits, m.TranslateX, m.TranslateY,
                      std::signbit(m.TranslateY));
}

TEST(VXSwfPlaceObject2Tag, ScalesAboutItsOrigin) {
    VXFlintMatrix plain;
    plain.TranslateX = 1.25;
    plain.TranslateY = -7.75;
    VXFlintMatrix skewed = plain;
    skewed.HasScale = skewed.HasRotate = 1;
    skewed.ScaleY = -3;
    skewed.ScaleX = 0;
    skewed.RotateSkew0 = 100;
    skewed.RotateSkew1 = 200;
    VXFlintMatrix hidden = skewed;
    hidden.HasRotate = 0;
    const struct {
        VXFlintMatrix matrix;
        unsigned int a, b, c, d;
        int scaleX, scaleY, skew0, skew1;
    } rows[] = {
        {plain, 100, 100, 100, 100, 65536, 65536, 0, 0},
        {plain, 3, 1, 16777217, 16777216, 21845, 65536, 0, 0},  // Kept: single precision
        {plain, 0, 1, 0, 0, INT_MAX, 65536, 0, 0},
        {hidden, 0, 1, 2, 3, 0, -4, 0, 0},
        {skewed, 2, 1, 1, 2, 0, -6, 200, 100},
    };
    for (const auto& row : rows) {
        const auto tag = NewTag<Tag>(26);
        tag->SetMatrix(row.matrix);
        tag->HasMatrix = 0;
        tag->Scale(row.a, row.b, row.c, row.d);
        EXPECT_NE(tag->HasMatrix, 0);
        EXPECT_EQ(FieldsOf(tag->GetMatrix()), std::tuple(1, 32u, row.scaleX, row.scaleY, row.matrix.HasRotate,
                                                         32u, row.skew0, row.skew1, 32u, 1.25, -7.75, true));
    }
    const auto tag = NewTag<Tag>(26);
    tag->Scale(Box(10.9, 4.0), Box(20.2, 2.99));          // extents are cut to whole pixels
    tag->Scale(Box(kNaN, -1.0), Box(0.5, 4294967295.0));  // both are 0, and both the greatest
    EXPECT_EQ(tag->GetMatrix().ScaleX, 131072);
    EXPECT_EQ(tag->GetMatrix().ScaleY, 32768);
}

TEST(VXSwfPlaceObject2Tag, GivesEveryMatrixBackAsItWas) {
    VXFlintMatrix plain;
    plain.HasScale = plain.HasRotate = 1;
    plain.NScaleBits = 31;
    plain.ScaleX = INT_MIN;
    plain.ScaleY = INT_MAX;
    plain.NRotateBits = 32;
    plain.RotateSkew0 = -1;
    plain.RotateSkew1 = 2;
    plain.NTranslateBits = 33;
    plain.TranslateX = -53687091.2;
    plain.TranslateY = 0.05;
    const auto with = [&plain](auto field, auto value) {
        VXFlintMatrix matrix = plain;
        matrix.*field = value;
        return matrix;
    };
    const VXFlintMatrix matrices[] = {plain,  // one that is packed, before and behind those that may not be
                                      with(&VXFlintMatrix::HasScale, short{2}),
                                      with(&VXFlintMatrix::HasRotate, short{-1}),
                                      with(&VXFlintMatrix::NScaleBits, 256u),
                                      with(&VXFlintMatrix::NRotateBits, UINT_MAX),
                                      with(&VXFlintMatrix::NTranslateBits, 1000u),
                                      with(&VXFlintMatrix::TranslateX, 0.051),
                                      with(&VXFlintMatrix::TranslateX, 1e300),
                                      plain,
                                      with(&VXFlintMatrix::TranslateY, -0.0)};
    const auto tag = NewTag<Tag>(26);
    for (const VXFlintMatrix& matrix : matrices) {
        tag->SetMatrix(matrix);
        EXPECT_EQ(FieldsOf(Tag(*tag).GetMatrix()), FieldsOf(matrix));
    }
    tag->SetMatrix(with(&VXFlintMatrix::TranslateX, kNaN));
    EXPECT_TRUE(std::isnan(tag->GetMatrix().TranslateX));
}

TEST(VXSwfPlaceObject2Tag, CopiesStandAlone) {
    auto tag = Load(Hex("C8 01 00 00 09 00 01 02 03"));
    tag->EditClipActions().ClipActionRecords.push_back(new VXFlintClipActionRecord);
    Tag copy(*tag);
    tag->EditCxForm().HasAddTerms = 1;
    EXPECT_EQ(copy.GetCxForm().HasAddTerms, 0);
    tag.reset();
    const auto other = NewTag<Tag>(26);
    *other = copy;
    EXPECT_EQ(DumpOf(*other), DumpOf(copy));
}

TEST(VXSwfPlaceObject2Tag, DescribesItself) {
    EXPECT_EQ(TextOf(*Load(kFull)),
              "TAG_PLACEOBJECT2(26) - wDepth=2 - No Scale - No R - TX(px)=0 - TY(px)=0 - RedAddTerm=1"
              " - GreenAddTerm=-1 - BlueAddTerm=0 - AlphaAddTerm=2 - No cx Mult  - Name=abRatio =4660"
              "ClipDepth =9No actions");
    const auto tag = Load(Hex("80 01 00 00 00 FF FF 00 00"), 5);
    VXFlintMatrix matrix;
    matrix.ToUnitMatrix();
    matrix.ScaleY = -1;
    matrix.RotateSkew0 = 0x28000;
    matrix.TranslateX = 59.9;
    matrix.TranslateY = -60.1;
    tag->SetMatrix(matrix);
    tag->SetAlpha(300);
    tag->EditClipActions().AllEventFlags.ClipEventKeyPress = 1;
    tag->EditClipActions().AllEventFlags.ClipEventDragOut = 1;
    EXPECT_EQ(TextOf(*tag),
              "TAG_PLACEOBJECT2(26) - wDepth=1 - NScaleBits=32 - ScaleX=1.0 - ScaleY=65536.65535"
              " - =NRotateBits32 - RotateSkew0=2.32768 - RotateSkew1=0.0 - TX(px)=2 - TY(px)=-3 - No cx Add "
              " - RedMultTerm=256 - GreenMultTerm=256 - BlueMultTerm=256 - AlphaMultTerm=300 - No ratio "
              " - No ClipDepth bClipEventKeyPressbClipEventDragOutbClipEventDragOverbClipEventRollOut"
              "bClipEventRollOverbClipEventReleaseOutsidebClipEventReleasebClipEventPressbClipEventInitialize"
              "bClipEventDatabClipEventKeyUpbClipEventKeyDownbClipEventMouseUpbClipEventMouseDown"
              "bClipEventMouseMovebClipEventUnloadbClipEventEnterFramebClipEventLoad");
}

}  // namespace
