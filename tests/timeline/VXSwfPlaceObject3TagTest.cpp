#include "support/Test.h"

namespace {

using Tag = VXSwfPlaceObject3Tag;

/// Writes its name in one byte. Who owns one is for the sanitizers to judge.
class NamedFilter : public VXFlintFilterShadow {
public:
    explicit NamedFilter(unsigned char name, VXErrorCodeEnum result = kVXSuccess)
        : m_Name(name), m_Result(result) {}
    VXErrorCodeEnum DumpToStream(VXBitStream& out) const override {
        VXIgnore(out.WriteByte(m_Name));
        return m_Result;
    }

private:
    unsigned char m_Name;
    VXErrorCodeEnum m_Result;
};

std::unique_ptr<Tag> Load(const Bytes& body) {
    return std::unique_ptr<Tag>(dynamic_cast<Tag*>(LoadTag(TagBytes(70, body)).release()));
}

Bytes Long(const char* body) { return LongTagBytes(70, Hex(body)); }

// Clip actions, clip depth and character, blend mode and filters; depth, character, clip depth; what is not
// parsed.
const char* const kRich = "C2 03 02 00 05 00 09 00 01 07 AA 0E DE AD BE EF";

TEST(VXSwfPlaceObject3Tag, DumpsTheBodyThatItLoadsUnderALongHeader) {
    const std::pair<const char*, Bytes> rows[] = {
        {"what it does not know stays", Hex(kRich)},
        {"a class name, a name that is not read, reserved bits", Hex("22 E8 02 00 61 00 05 00 62 00")},
        {"an image with a class name", Hex("02 10 02 00 61 62 00 05 00")},
        {"matrix, colours and ratio", Join({Hex("1C 00 02 00 00"), Bits("0 0 0000"), Hex("34 12")})}};
    for (const auto& [what, body] : rows) SweepTag(what, TagBytes(70, body), LongTagBytes(70, body));
}

TEST(VXSwfPlaceObject3Tag, PatchesDepthAndCharacterOnly) {
    const auto tag = Load(Hex(kRich));
    tag->SetMatrix(VXFlintMatrix());
    tag->SetName(VXString("lost"));
    tag->Scale(1, 2, 1, 2);
    tag->SetClipDepth(77);
    EXPECT_EQ(DumpOf(*tag), Long(kRich));
    Tag copy(*tag);
    copy.SetDepth(9, 0);
    tag->SetReferencedID(0x4321);
    EXPECT_EQ(DumpOf(*tag), Long("C2 03 02 00 21 43 09 00 01 07 AA 0E DE AD BE EF"));
    EXPECT_EQ(DumpOf(copy), Long("C2 03 09 00 05 00 09 00 01 07 AA 0E DE AD BE EF")) << "each has its own";
    EXPECT_EQ(tag->GetData()[4], 5) << "nor do they reach the body that the tag was loaded from";
    tag->SetDepth(0x1234, 1);
    EXPECT_EQ(tag->ClipDepth, 0x1234) << "the depth itself, not moved along";
    EXPECT_EQ(DumpOf(*tag), Long("C2 03 34 12 21 43 34 12 01 07 AA 0E DE AD BE EF"));
    const auto brief = Load(Hex("00 00 02 00 AA"));
    brief->HasCharacter = 1;
    for (const unsigned int offset : {brief->CharacterIdOffset, 4u, 5u, 0xFFFFFFFFu}) {
        brief->CharacterIdOffset = offset;
        brief->SetReferencedID(7);
    }
    EXPECT_EQ(DumpOf(*brief), Long("00 00 02 00 AA")) << "nothing outside the body";
}

TEST(VXSwfPlaceObject3Tag, TakesTheNameForTheClipDepth) {
    const auto tag = Load(Hex("62 00 02 00 05 00 61 62 00 09 00"));
    EXPECT_EQ(tag->GetHasName(), 0);
    EXPECT_EQ(tag->HasClassName, 0);
    EXPECT_EQ(tag->ClipDepth, 0x6261);
    tag->SetDepth(4, 1);
    EXPECT_EQ(DumpOf(*tag), Long("62 00 04 00 05 00 04 00 00 09 00")) << "and writes it there";
}

TEST(VXSwfPlaceObject3Tag, IsWrittenFromItsFieldsWhenBuilt) {
    const auto tag = NewTag<Tag>(70);
    EXPECT_EQ(DumpOf(*tag), Long("00 00 00 00"));
    tag->HasImage = 1;
    tag->ClassName = VXString("C");
    tag->SetReferencedID(5);
    EXPECT_EQ(DumpOf(*tag), Long("02 10 00 00 05 00"))
        << "Kept: an image is read with a class name, not written";
    tag->HasClassName = tag->HasCacheAsBitmap = tag->HasRatio = tag->HasClipActions = 1;
    tag->HasBlendMode = 14;
    tag->SetDepth(2, 0);
    tag->SetMatrix(VXFlintMatrix());
    tag->SetCxForm(nullptr);
    tag->Ratio = 0x1234;
    tag->SetName(VXString("n"));
    tag->SetClipDepth(9);
    tag->SetStaticEffectVector({new VXFlintFilterShadow});
    const Bytes bytes = Long(
        "FE 1F 02 00 43 00 05 00"  // class name, character
        "00 00 34 12 6E 00 09 00"  // matrix, colours, ratio, name, clip depth
        "01  00 00 00 00 FF 00 00 03 00 00 00 03 00 0F C9 00 00 00 00 0A 00 FF 00 21"
        "00  00 00 00 00 00 00 00 00 00 00");  // blend mode, always 0; clip actions
    EXPECT_EQ(DumpOf(*tag), bytes);
    const TagPtr copy(tag->Copy(), &VXSwfTagFactory::DeleteTag);
    EXPECT_TRUE(dynamic_cast<Tag&>(*copy).GetStaticEffectVector().empty()) << "they are in the body now";
    EXPECT_EQ(DumpOf(*copy), bytes);
}

TEST(VXSwfPlaceObject3Tag, OwnsItsFiltersOnce) {
    const auto tag = NewTag<Tag>(70);
    const auto other = NewTag<Tag>(70);
    VXFlintFilter* shared = new NamedFilter(0xAA);
    tag->SetStaticEffectVector({shared, nullptr, new NamedFilter(0xBB, kVXFailure), shared});
    EXPECT_EQ(DumpOf(*tag), Long("00 01 00 00 03 AA BB AA")) << "Kept: one that fails does not stop the dump";
    other->SetStaticEffectVector({shared});
    tag->SetStaticEffectVector({});
    EXPECT_EQ(DumpOf(*tag), Long("00 00 00 00"));
    Tag copy(*other);
    *other = *tag;
    EXPECT_EQ(copy.GetStaticEffectVector(), std::vector<VXFlintFilter*>{shared});
    tag->SetStaticEffectVector(std::vector<VXFlintFilter*>(256, shared));
    EXPECT_EQ(DumpOf(*tag), LongTagBytes(70, Join({Hex("00 01 00 00 00"), Repeat(256, 0xAA)})))
        << "the count is cut, they are not";
}

}  // namespace
