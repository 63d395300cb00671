#include "timeline/VXSwfPlaceObject2Tag.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <utility>

#include "platform/VXSizeNPositionData.h"
#include "support/TagSweep.h"

namespace {

using Tag = VXSwfPlaceObject2Tag;

const Bytes kFull = Join({Hex("7E"                           // all but clip actions and Move
                              "02 00"                        // depth 2
                              "05 00"),                      // character 5
                          Bits("0 0 00110 010100 101100"),   // 1 pixel to the right, 1 up
                          Bits("1 0 0011 001 111 000 010"),  // add 1, −1, 0 and 2 for alpha
                          Hex("34 12"                        // ratio
                              "61 62 00"                     // name
                              "09 00")});                    // clip depth 9

std::string TextOf(VXSwfTag& tag) {
    VXString text;
    tag.GetTextInfo(text);
    return text.GetUTF8String();
}

std::unique_ptr<Tag> Load(const Bytes& body, unsigned char version = 8) {
    return std::unique_ptr<Tag>(dynamic_cast<Tag*>(LoadTag(TagBytes(26, body), version).release()));
}

struct Box : VXSizeNPositionData {
    Box(VXReal width, VXReal height) : m_Width(width), m_Height(height) {}
    VXReal GetXPosition() const override { return 1e9; }
    VXReal GetYPosition() const override { return 1e9; }
    VXReal GetXExtent() const override { return m_Width; }
    VXReal GetYExtent() const override { return m_Height; }

    VXReal m_Width;
    VXReal m_Height;
};

}  // namespace

TEST(VXSwfPlaceObject2Tag, DumpsWhatItLoadsUnderALongHeader) {
    SweepTag("a move", Hex("83 06 01 02 00"), Hex("BF 06 03 00 00 00 01 02 00"));
    SweepTag("everything", TagBytes(26, kFull), LongTagBytes(26, kFull));
    SweepTag("bytes behind the fields are dropped", TagBytes(26, Hex("00 02 00 FF")),
             LongTagBytes(26, Hex("00 02 00")));
    SweepTag("the flag of an empty name is dropped", TagBytes(26, Hex("20 02 00 00")),
             LongTagBytes(26, Hex("00 02 00")));
    SweepTag("a character of 0 keeps its flag", TagBytes(26, Hex("02 02 00 00 00")),
             LongTagBytes(26, Hex("02 02 00 00 00")));
}

TEST(VXSwfPlaceObject2Tag, CarriesClipActionsByVersion) {
    const Bytes five =
        Hex("80 01 00"
            "00 00  80 00  80 00 03 00 00 00 07 00  00 00");
    SweepTag("version 5 is parsed and grows", TagBytes(26, five),
             LongTagBytes(26, Hex("80 01 00"
                                  "00 00  80 00 00 00  80 00 00 00 03 00 00 00 07 00  00 00 00 00")),
             5);
    const Bytes eight =
        Hex("C6 01 00 05 00 00 09 00"
            "DE AD BE");  // behind character, matrix and clip depth
    SweepTag("version 6 is carried unread", TagBytes(26, eight), LongTagBytes(26, eight), 6);
    SweepTag("no bytes become an empty block", TagBytes(26, Hex("80 01 00")),
             LongTagBytes(26, Hex("80 01 00  00 00 00 00 00 00 00 00 00 00")), 6);

    const auto tag = Load(eight, 6);
    EXPECT_EQ(tag->RawClipActions.GetSize(), 3u);
    EXPECT_EQ(tag->GetClipActions().IsNonEmpty(), 0);
}

TEST(VXSwfPlaceObject2Tag, WorksOutThreeFlags) {
    const auto tag = NewTag<Tag>(26);
    tag->SetReferencedID(7);
    tag->SetName(VXString("n"));
    tag->SetName(VXString());
    tag->GetClipActions().ClipActionRecords.push_back(new VXFlintClipActionRecord);
    EXPECT_EQ(tag->HasCharacter, 0) << "until the dump";
    EXPECT_EQ(DumpOf(*tag), LongTagBytes(26, Hex("A2 00 00 07 00 6E 00"
                                                 "00 00 00 00 00 00"
                                                 "00 00 00 00 00 00 00 00 00"
                                                 "00 00 00 00")));
    tag->SetReferencedID(0);
    tag->GetClipActions().ClipActionRecords.clear();
    EXPECT_EQ(DumpOf(*tag), LongTagBytes(26, Hex("A2 00 00 00 00 6E 00"
                                                 "00 00 00 00 00 00"
                                                 "00 00 00 00")))
        << "flags stay once they are set";
}

TEST(VXSwfPlaceObject2Tag, TakesAColourTransform) {
    const auto tag = NewTag<Tag>(26);
    tag->SetCxForm(nullptr);
    EXPECT_EQ(DumpOf(*tag), LongTagBytes(26, Hex("08 00 00 00"))) << "the flag, and a fresh transform";
    EXPECT_EQ(std::as_const(*tag).GetCxForm().HasAlpha, 1);
    tag->GetCxForm().HasAddTerms = 1;
    tag->GetCxForm().BlueAddTerm = 1;
    tag->SetAlpha(128);
    EXPECT_EQ(DumpOf(*tag),
              LongTagBytes(26, Join({Hex("08 00 00"), Bits("1 1 1010"
                                                           "0100000000 0100000000 0100000000 0010000000"
                                                           "0000000000 0000000000 0000000001 0000000000")})));
    VXFlintCxForm plain;
    plain.HasAlpha = 0;
    plain.HasMultTerms = 1;
    plain.AlphaMultTerm = 1;
    tag->SetCxForm(&plain);
    EXPECT_EQ(DumpOf(*tag), LongTagBytes(26, Hex("08 00 00 40"))) << "without alpha nothing has a width";
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
    EXPECT_EQ(tag->ClipDepth, 0xFFFF) << "in 16 bits, and without the flag too";
    tag->SetDepth(9, 0);
    EXPECT_EQ(tag->ClipDepth, 0xFFFF);
}

TEST(VXSwfPlaceObject2Tag, LeavesTheNameOfTheCallerWithoutOne) {
    const auto tag = NewTag<Tag>(26);
    VXString name("mine");
    tag->GetName(name);
    EXPECT_EQ(name, VXString("mine"));
    tag->SetName(VXString("its"));
    tag->GetName(name);
    EXPECT_EQ(name, VXString("its"));
}

TEST(VXSwfPlaceObject2Tag, ScalesAboutItsOrigin) {
    const auto scaled = [](VXFlintMatrix matrix, unsigned int a, unsigned int b, unsigned int c,
                           unsigned int d) {
        const auto tag = NewTag<Tag>(26);
        matrix.TranslateX = 1.25;
        matrix.TranslateY = -7.75;
        tag->SetMatrix(matrix);
        tag->HasMatrix = 0;
        tag->Scale(a, b, c, d);
        const VXFlintMatrix result = tag->GetMatrix();
        EXPECT_NE(tag->HasMatrix, 0);
        EXPECT_EQ(result.NScaleBits, 32u);
        EXPECT_EQ(result.NRotateBits, 32u);
        EXPECT_EQ(result.NTranslateBits, 32u);
        EXPECT_EQ(result.TranslateX, 1.25);
        EXPECT_EQ(result.TranslateY, -7.75);
        return result;
    };
    const auto scalesOf = [&](const VXFlintMatrix& matrix) {
        EXPECT_NE(matrix.HasScale, 0);
        return std::pair(matrix.ScaleX, matrix.ScaleY);
    };
    EXPECT_EQ(scalesOf(scaled({}, 100, 100, 100, 100)), std::pair(65536, 65536));
    EXPECT_EQ(scalesOf(scaled({}, 10, 20, 10, 10)), std::pair(131072, 65536));
    EXPECT_EQ(scalesOf(scaled({}, 3, 1, 16777217, 16777216)), std::pair(21845, 65536)) << "single precision";
    EXPECT_EQ(scalesOf(scaled({}, 0, 1, 0, 0)), std::pair(INT_MAX, 65536));

    VXFlintMatrix skewed;
    skewed.HasScale = 1;
    skewed.ScaleX = 0;
    skewed.ScaleY = -3;
    skewed.RotateSkew0 = 100;
    skewed.RotateSkew1 = 200;
    VXFlintMatrix result = scaled(skewed, 0, 1, 2, 3);
    EXPECT_EQ(scalesOf(result), std::pair(0, -4));
    EXPECT_EQ(std::pair(result.RotateSkew0, result.RotateSkew1), std::pair(0, 0));
    EXPECT_EQ(result.HasRotate, 0);
    skewed.HasRotate = 1;
    result = scaled(skewed, 2, 1, 1, 2);
    EXPECT_EQ(std::pair(result.RotateSkew0, result.RotateSkew1), std::pair(200, 100));
}

TEST(VXSwfPlaceObject2Tag, GivesEveryMatrixBackAsItWas) {
    VXFlintMatrix plain;
    plain.HasScale = 1;
    plain.NScaleBits = 31;
    plain.ScaleX = INT_MIN;
    plain.ScaleY = INT_MAX;
    plain.HasRotate = 1;
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
    const VXFlintMatrix matrices[] = {plain,
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
        const VXFlintMatrix got = Tag(*tag).GetMatrix();
        EXPECT_EQ(got.HasScale, matrix.HasScale);
        EXPECT_EQ(got.NScaleBits, matrix.NScaleBits);
        EXPECT_EQ(got.ScaleX, matrix.ScaleX);
        EXPECT_EQ(got.ScaleY, matrix.ScaleY);
        EXPECT_EQ(got.HasRotate, matrix.HasRotate);
        EXPECT_EQ(got.NRotateBits, matrix.NRotateBits);
        EXPECT_EQ(got.RotateSkew0, matrix.RotateSkew0);
        EXPECT_EQ(got.RotateSkew1, matrix.RotateSkew1);
        EXPECT_EQ(got.NTranslateBits, matrix.NTranslateBits);
        EXPECT_EQ(got.TranslateX, matrix.TranslateX);
        EXPECT_EQ(got.TranslateY, matrix.TranslateY);
        EXPECT_EQ(std::signbit(got.TranslateY), std::signbit(matrix.TranslateY));
    }
    tag->SetMatrix(with(&VXFlintMatrix::TranslateX, std::numeric_limits<VXReal>::quiet_NaN()));
    EXPECT_NE(tag->GetMatrix().TranslateX, tag->GetMatrix().TranslateX);
}

TEST(VXSwfPlaceObject2Tag, RemembersTheWidthsOfItsDump) {
    const auto tag = Load(Join({Hex("04 00 00"), Bits("0 0 01000 00010100 11101100")}));
    EXPECT_EQ(tag->GetMatrix().NTranslateBits, 8u);
    DumpOf(*tag);
    EXPECT_EQ(tag->GetMatrix().NTranslateBits, 6u);
    EXPECT_EQ(tag->GetMatrix().TranslateY, -1.0);
}

TEST(VXSwfPlaceObject2Tag, ScalesByTheExtentsOfTheHost) {
    const auto tag = NewTag<Tag>(26);
    tag->Scale(Box(10.9, 4.0), Box(20.2, 2.99));
    EXPECT_EQ(tag->GetMatrix().ScaleX, 131072);
    EXPECT_EQ(tag->GetMatrix().ScaleY, 32768);
    const VXReal nan = std::numeric_limits<VXReal>::quiet_NaN();
    tag->Scale(Box(nan, -1.0), Box(0.5, 4294967295.0));
    EXPECT_EQ(tag->GetMatrix().ScaleX, 131072) << "both are 0";
    EXPECT_EQ(tag->GetMatrix().ScaleY, 32768) << "both are the greatest";
}

TEST(VXSwfPlaceObject2Tag, CopiesStandAlone) {
    auto tag = Load(Hex("C8 01 00 00 09 00 01 02 03"));
    tag->GetCxForm().HasAddTerms = 1;
    tag->GetClipActions().ClipActionRecords.push_back(new VXFlintClipActionRecord);
    Tag copy(*tag);
    tag->GetCxForm().HasAddTerms = 0;
    EXPECT_EQ(copy.GetCxForm().HasAddTerms, 1);
    const Bytes bytes = DumpOf(copy);
    tag.reset();
    EXPECT_EQ(DumpOf(copy), bytes);
    const auto other = NewTag<Tag>(26);
    *other = copy;
    EXPECT_EQ(DumpOf(*other), bytes);
}

TEST(VXSwfPlaceObject2Tag, DescribesItself) {
    EXPECT_EQ(
        TextOf(*Load(Hex("01 02 00"))),
        "TAG_PLACEOBJECT2(26) - wDepth=2 - No Matrix  - No Colorx - No ratio  - No ClipDepth No actions");
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
    tag->GetClipActions().AllEventFlags.ClipEventKeyPress = 1;
    tag->GetClipActions().AllEventFlags.ClipEventDragOut = 1;
    EXPECT_EQ(TextOf(*tag),
              "TAG_PLACEOBJECT2(26) - wDepth=1 - NScaleBits=32 - ScaleX=1.0 - ScaleY=65536.65535"
              " - =NRotateBits32 - RotateSkew0=2.32768 - RotateSkew1=0.0 - TX(px)=2 - TY(px)=-3 - No cx Add "
              " - RedMultTerm=256 - GreenMultTerm=256 - BlueMultTerm=256 - AlphaMultTerm=300 - No ratio "
              " - No ClipDepth bClipEventKeyPressbClipEventDragOutbClipEventDragOverbClipEventRollOut"
              "bClipEventRollOverbClipEventReleaseOutsidebClipEventReleasebClipEventPressbClipEventInitialize"
              "bClipEventDatabClipEventKeyUpbClipEventKeyDownbClipEventMouseUpbClipEventMouseDown"
              "bClipEventMouseMovebClipEventUnloadbClipEventEnterFramebClipEventLoad");
}
