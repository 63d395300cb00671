#include "timeline/VXSwfPlaceObject3Tag.h"

#include <gtest/gtest.h>

#include "support/TagSweep.h"

namespace {

using Tag = VXSwfPlaceObject3Tag;

/// Writes its name in one byte, and counts how many filters there are.
class CountedFilter : public VXFlintFilter {
public:
    CountedFilter(unsigned char name, VXErrorCodeEnum result = kVXSuccess)
        : VXFlintFilter(kVXFlintFilterShadow), m_Name(name), m_Result(result) {
        ++s_Live;
    }
    ~CountedFilter() override { --s_Live; }
    VXErrorCodeEnum DumpToStream(VXBitStream& out) const override {
        VXIgnore(out.WriteByte(m_Name));
        return m_Result;
    }
    VXErrorCodeEnum WriteToStream(IVXStream*) override { return kVXSuccess; }
    VXErrorCodeEnum ReadFromStream(IVXStream*) override { return kVXSuccess; }
    int GetStreamTransferSize() const override { return 0; }

    static int s_Live;

private:
    unsigned char m_Name;
    VXErrorCodeEnum m_Result;
};

int CountedFilter::s_Live = 0;

std::unique_ptr<Tag> Load(const Bytes& body) {
    return std::unique_ptr<Tag>(dynamic_cast<Tag*>(LoadTag(TagBytes(70, body)).release()));
}

Bytes BodyOf(VXSwfTag& tag) {
    const Bytes bytes = DumpOf(tag);
    return Bytes(bytes.begin() + ((bytes[0] & 0x3F) == 0x3F ? 6 : 2), bytes.end());
}

const Bytes kRich =
    Hex("C2 03"          // clip actions, clip depth and character; blend mode and filters
        "02 00"          // depth 2
        "05 00"          // character 5
        "09 00"          // clip depth 9
        "01 07 AA"       // filters
        "0E"             // blend mode
        "DE AD BE EF");  // clip actions

}  // namespace

TEST(VXSwfPlaceObject3Tag, DumpsTheBodyThatItLoadsUnderALongHeader) {
    const auto sweep = [](const std::string& what, const Bytes& body) {
        SweepTag(what, TagBytes(70, body), LongTagBytes(70, body));
    };
    sweep("what it does not know stays", kRich);
    sweep("a class name, a name that is not read, reserved bits", Hex("22 E8 02 00 61 00 05 00 62 00"));
    sweep("an image with a class name", Hex("02 10 02 00 61 62 00 05 00"));
    sweep("matrix, colours and ratio", Join({Hex("1C 00 02 00 00"), Bits("0 0 0000"), Hex("34 12")}));
}

TEST(VXSwfPlaceObject3Tag, PatchesDepthAndCharacterOnly) {
    const auto tag = Load(kRich);
    tag->SetMatrix(VXFlintMatrix());
    tag->SetName(VXString("lost"));
    tag->Scale(1, 2, 1, 2);
    tag->SetClipDepth(77);
    EXPECT_EQ(BodyOf(*tag), kRich);
    tag->SetDepth(0x1234, 0);
    EXPECT_EQ(BodyOf(*tag), Hex("C2 03 34 12 05 00 09 00 01 07 AA 0E DE AD BE EF"));
    tag->SetReferencedID(0x4321);
    EXPECT_EQ(BodyOf(*tag), Hex("C2 03 34 12 21 43 09 00 01 07 AA 0E DE AD BE EF"));
    tag->SetDepth(3, 1);
    EXPECT_EQ(tag->ClipDepth, 3) << "the depth itself, not moved along";
    EXPECT_EQ(BodyOf(*tag), Hex("C2 03 03 00 21 43 03 00 01 07 AA 0E DE AD BE EF"));
    tag->HasCharacter = 0;
    tag->SetReferencedID(1);
    tag->HasClipDepth = 0;
    tag->SetDepth(4, 1);
    EXPECT_EQ(BodyOf(*tag), Hex("C2 03 04 00 21 43 03 00 01 07 AA 0E DE AD BE EF"));
}

TEST(VXSwfPlaceObject3Tag, PatchesNothingOutsideTheBody) {
    const auto tag = Load(Hex("00 00 02 00 AA"));
    tag->HasCharacter = 1;
    tag->SetReferencedID(7);
    for (const unsigned int offset : {4u, 5u, 0xFFFFFFFFu}) {
        tag->CharacterIdOffset = offset;
        tag->SetReferencedID(7);
    }
    EXPECT_EQ(BodyOf(*tag), Hex("00 00 02 00 AA"));
}

TEST(VXSwfPlaceObject3Tag, TakesTheNameForTheClipDepth) {
    const auto tag = Load(Hex("62 00 02 00 05 00 61 62 00 09 00"));
    EXPECT_EQ(tag->GetHasName(), 0);
    EXPECT_EQ(tag->HasClassName, 0);
    EXPECT_EQ(tag->ClipDepth, 0x6261);
    tag->SetDepth(4, 1);
    EXPECT_EQ(BodyOf(*tag), Hex("62 00 04 00 05 00 04 00 00 09 00")) << "and writes it there";
}

TEST(VXSwfPlaceObject3Tag, PatchesOfACopyLeaveTheSourceAlone) {
    const auto tag = Load(kRich);
    Tag copy(*tag);
    copy.SetDepth(9, 0);
    tag->SetReferencedID(8);
    EXPECT_EQ(BodyOf(copy), Hex("C2 03 09 00 05 00 09 00 01 07 AA 0E DE AD BE EF"));
    EXPECT_EQ(BodyOf(*tag), Hex("C2 03 02 00 08 00 09 00 01 07 AA 0E DE AD BE EF"));
    EXPECT_EQ(tag->GetData()[4], 5) << "nor do they reach the body that the tag was loaded from";
}

TEST(VXSwfPlaceObject3Tag, IsWrittenFromItsFieldsWhenBuilt) {
    const auto tag = NewTag<Tag>(70);
    ASSERT_NE(tag, nullptr);
    EXPECT_EQ(DumpOf(*tag), LongTagBytes(70, Hex("00 00 00 00")));
    tag->HasImage = 1;
    tag->ClassName = VXString("C");
    tag->SetReferencedID(5);
    EXPECT_EQ(BodyOf(*tag), Hex("02 10 00 00 05 00")) << "an image is read with a class name, not written";
    tag->HasClassName = 1;
    tag->HasCacheAsBitmap = 1;
    tag->HasBlendMode = 14;
    tag->SetDepth(2, 0);
    tag->SetMatrix(VXFlintMatrix());
    tag->SetCxForm(nullptr);
    tag->HasRatio = 1;
    tag->Ratio = 0x1234;
    tag->SetName(VXString("n"));
    tag->SetClipDepth(9);
    tag->HasClipActions = 1;
    tag->SetStaticEffectVector({new VXFlintFilterShadow});
    EXPECT_EQ(BodyOf(*tag), Hex("FE 1F 02 00"
                                "43 00"  // class name
                                "05 00"  // character
                                "00 00"  // matrix and colour transform
                                "34 12"  // ratio
                                "6E 00"  // name
                                "09 00"  // clip depth
                                "01  00 00 00 00 FF 00 00 03 00 00 00 03 00 0F C9 00 00 00 00 0A 00 FF 00 21"
                                "00"  // blend mode
                                "00 00 00 00 00 00 00 00 00 00"));
    const Bytes bytes = DumpOf(*tag);
    const TagPtr copy(tag->Copy(), &VXSwfTagFactory::DeleteTag);
    EXPECT_TRUE(dynamic_cast<Tag&>(*copy).GetStaticEffectVector().empty()) << "they are in the body now";
    EXPECT_EQ(DumpOf(*copy), bytes);
}

TEST(VXSwfPlaceObject3Tag, OwnsItsFiltersOnce) {
    ASSERT_EQ(CountedFilter::s_Live, 0);
    {
        const auto tag = NewTag<Tag>(70);
        const auto other = NewTag<Tag>(70);
        VXFlintFilter* shared = new CountedFilter(0xAA);
        tag->SetStaticEffectVector({shared, nullptr, new CountedFilter(0xBB, kVXFailure), shared});
        EXPECT_EQ(BodyOf(*tag), Hex("00 01 00 00 03 AA BB AA"))
            << "a filter that fails does not stop the dump";
        other->SetStaticEffectVector({shared});
        tag->SetStaticEffectVector({new CountedFilter(0xCC)});
        EXPECT_EQ(CountedFilter::s_Live, 3) << "those that are replaced stay";
        tag->SetStaticEffectVector({shared});
        tag->SetStaticEffectVector({});
        EXPECT_EQ(BodyOf(*tag), Hex("00 00 00 00"));
        Tag copy(*other);
        *other = *tag;
        EXPECT_EQ(copy.GetStaticEffectVector(), std::vector<VXFlintFilter*>{shared});
        tag->SetStaticEffectVector(std::vector<VXFlintFilter*>(256, shared));
        EXPECT_EQ(BodyOf(*tag), Join({Hex("00 01 00 00 00"), Repeat(256, 0xAA)}))
            << "the count is cut, they are not";
    }
    EXPECT_EQ(CountedFilter::s_Live, 0);
}

TEST(VXSwfPlaceObject3Tag, HasNoNameOfItsOwnType) {
    VXString text;
    Load(Hex("01 00 02 00"))->GetTextInfo(text);
    EXPECT_EQ(text.GetUTF8String(),
              "Unknown(70) - wDepth=2 - No Matrix  - No Colorx - No ratio  - No ClipDepth No actions");
}
