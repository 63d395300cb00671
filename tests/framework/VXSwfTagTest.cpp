#include "support/Test.h"

namespace {

TEST(VXSwfTag, RawTagsComeBackAsTheyWere) {
    SweepTag("no body", Hex("40 00"));
    SweepTag("a short body", TagBytes(77, Hex("01 02 03")));
    SweepTag("a long header on a short body", Hex("7F 13 05 00 00 00  01 02 03 04 05"));
    SweepTag("the longest short body", Join({Hex("7E 13"), Repeat(62, 0xAB)}));
    SweepTag("the shortest long body", Join({Hex("7F 13 3F 00 00 00"), Repeat(63, 0xAB)}));
    SweepTag("the highest type", Hex("C2 FF  01 02"));
}

TEST(VXSwfTag, LengthsAreCutToWhatIsThere) {
    for (const char* bytes : {"7F 13 FF FF FF FF  01 02", "45 13  01 02"}) {
        const TagPtr tag = LoadTag(Hex(bytes));
        EXPECT_EQ(tag->GetTagLen(), 2u);
        EXPECT_EQ(tag->GetDataStream().GetSize(), 2u);
    }
    const TagPtr tag = MakeTag(77, 1);
    for (const char* cut : {"45 13", "7F 13 05 00", "7F"}) EXPECT_EQ(LoadInto(*tag, Hex(cut)), kVXFailure);
}

TEST(VXSwfTag, ASecondLoadReplacesTheFirst) {
    const TagPtr tag = LoadTag(TagBytes(77, Repeat(100, 0x11)));
    EXPECT_EQ(LoadInto(*tag, TagBytes(78, Hex("22 33"))), kVXSuccess);
    EXPECT_EQ(DumpOf(*tag), LongTagBytes(78, Hex("22 33"))) << "the flag that a long header set stays";
    EXPECT_EQ(LoadInto(*tag, TagBytes(78, TagBytes(77, Repeat(50, 0x44)))), kVXSuccess);
    VXBitStream own = tag->GetDataStream();
    EXPECT_EQ(tag->LoadFromStream(own), kVXSuccess) << "from the body that it replaces";
    EXPECT_EQ(DumpOf(*tag), LongTagBytes(77, Repeat(50, 0x44)));
    EXPECT_EQ(LoadInto(*tag, Hex("C0 12")), kVXSuccess);
    EXPECT_EQ(tag->GetData(), nullptr);
}

TEST(VXSwfTag, IdsAndReferencesAreTheFirstWord) {
    const struct {
        std::vector<unsigned int> types;
        unsigned int id, reference;
    } rows[] = {
        {{6, 77}, 0x1234, 0},  // 77: a raw tag of an unknown kind still shows its ID
        {{15}, 0x1234, 0x1234},
        {{3, 61, 73, 74, 78, 88}, 0, 0x1234},
        {{1, 43, 82}, 0, 0},
    };
    for (const auto& row : rows) {
        for (const unsigned int type : row.types) {
            const TagPtr tag = MakeTag(type, 1);
            EXPECT_EQ(LoadInto(*tag, TagBytes(type, Hex("34 12 00"))), kVXSuccess);
            EXPECT_EQ(tag->GetCharacterId(), row.id) << type;
            EXPECT_EQ(tag->GetReferencedID(), row.reference) << type;
            tag->SetReferencedID(0x0201);
            EXPECT_EQ(DumpOf(*tag), TagBytes(type, Hex(row.reference != 0 ? "01 02 00" : "34 12 00")))
                << type;
        }
    }
    const TagPtr zones = LoadTag(TagBytes(73, Hex("34 12")));
    EXPECT_EQ(zones->GetCharacterIdFromData(), 0x1234);
    const TagPtr single = LoadTag(TagBytes(73, Hex("34")));
    single->SetReferencedID(0x0201);
    single->SetCharacterId(0x0201);
    EXPECT_EQ(single->GetReferencedID(), 0);
    EXPECT_EQ(single->GetCharacterIdFromData(), 0);
    EXPECT_EQ(DumpOf(*single), TagBytes(73, Hex("34")));
    const TagPtr built = MakeTag(73, 0);
    built->SetCharacterId(5);
    EXPECT_EQ(built->GetCharacterIdFromData(), 5) << "without a body, the ID that was set";
}

TEST(VXSwfTag, TextInfo) {
    EXPECT_EQ(TextOf(*MakeTag(1023, 1)), "TAG_DEFINEBITSPTR(1023)");
    EXPECT_EQ(TextOf(*MakeTag(0, 1)), "TAG_END(0)");
    for (const unsigned int type : {16u, 60u, 61u, 62u, 64u, 76u, 82u, 87u, 996u}) {
        EXPECT_EQ(TextOf(*MakeTag(type, 1)), "Unknown(" + std::to_string(type) + ")");
    }
    const TagPtr tag = MakeTag(6, 0);
    tag->SetCharacterId(300);
    EXPECT_EQ(TextOf(*tag), "TAG_DEFINEBITS(6) - Id=300");
}

TEST(VXSwfTag, PeepingGoesBackUnlessItFails) {
    const Bytes bytes = Join({Hex("FF"), LongTagBytes(77, Hex("01 02 03"))});
    VXBitStream in = StreamOver(bytes);
    EXPECT_EQ(in.SetPosition(1), 1);
    unsigned int length = 99;
    VXSwfTag::enuTagType type = VXSwfTagFactory::TAG_END;
    EXPECT_EQ(VXSwfTag::PeepTagLength(in, length), kVXSuccess);
    EXPECT_EQ(VXSwfTag::PeepTagType(in, type), kVXSuccess);
    EXPECT_EQ(length, 3u);
    EXPECT_EQ(type, VXSwfTagFactory::TAG_METADATA);
    EXPECT_EQ(in.GetPosition(), 1u);
    const Bytes cut = Hex("7F 13 05 00");
    in = StreamOver(cut);
    EXPECT_EQ(VXSwfTag::PeepTagLength(in, length), kVXFailure);
    EXPECT_EQ(in.GetPosition(), 4u);
    EXPECT_EQ(VXSwfTag::PeepTagType(in, type), kVXFailure);
}

TEST(VXSwfTag, CopiesAreOfTheClassThatALoadGivesAndDropTheVersion) {
    const TagPtr bits = MakeTag(6, 0);
    bits->SetFLVersion(9);
    EXPECT_EQ(LoadInto(*bits, LongTagBytes(6, Hex("34 12 56"))), kVXSuccess);
    const TagPtr copy(bits->Copy(), &VXSwfTagFactory::DeleteTag);
    bits->SetCharacterId(1);
    EXPECT_EQ(dynamic_cast<VXSwfDefinitionTag*>(copy.get()), nullptr);
    EXPECT_EQ(DumpOf(*copy), LongTagBytes(6, Hex("34 12 56")));
    EXPECT_EQ(copy->GetFLVersion(), 0);
}

/// A definition whose fields are one word, which a load refuses when it is 0xFFFF; opens what is protected.
class WordTag : public VXSwfDefinitionTag {
public:
    WordTag() : VXSwfDefinitionTag(VXSwfTagFactory::TAG_DEFINEBITS) {}
    VXErrorCodeEnum LoadDataFromStream(VXBitStream& in) override {
        VX_RETURN_IF_FAILED(in.ReadWord(word));
        return word == 0xFFFF ? static_cast<VXErrorCodeEnum>(9) : kVXSuccess;
    }
    using VXSwfDefinitionTag::DumpToStream;
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override {
        VXBitStream body;
        BeginBody(body);
        VX_RETURN_IF_FAILED(body.WriteWord(word));
        return DumpBody(out, body);
    }
    using VXSwfTag::DumpHdrAndData;
    using VXSwfTag::GenerateTagHdr;
    using VXSwfTag::IsParsed;
    using VXSwfTag::SetData;
    using VXSwfTag::SetTagLen;

    unsigned short word = 0;
};

class VXSwfDefinitionTagTest : public testing::Test {
protected:
    VXSwfDefinitionTagTest() {
        EXPECT_EQ(LoadInto(tag, TagBytes(6, Hex("34 12 78 56"))), kVXSuccess);
        kept = tag.GetData();
    }

    WordTag tag;
    const unsigned char* kept = nullptr;
};

TEST_F(VXSwfDefinitionTagTest, AHostsOwnBodyIsTakenAtItsWord) {
    struct Host : WordTag {
        unsigned char* GetData() override { return bytes; }
        unsigned int GetTagLen() override { return 2; }
        unsigned char bytes[2] = {0xCD, 0xAB};
    } host;
    VXBitStream stream = host.GetDataStream();
    EXPECT_EQ(BytesOf(stream), Hex("CD AB"));
    ASSERT_EQ(LoadInto(host, TagBytes(6, Hex("34 12 78 56"))), kVXSuccess);
    EXPECT_EQ(host.word, 0xABCD);
}

TEST_F(VXSwfDefinitionTagTest, TheIdStandsInFrontOfTheFields) {
    EXPECT_EQ(tag.GetCharacterId(), 0x1234);
    EXPECT_EQ(tag.word, 0x5678);
    EXPECT_EQ(tag.GetTagLen(), 2u);
    EXPECT_EQ(tag.GetData()[0], 0x78);
    tag.SetCharacterId(0x0908);
    EXPECT_EQ(DumpOf(tag), TagBytes(6, Hex("08 09 78 56")));
    EXPECT_EQ(LoadInto(tag, TagBytes(6, Hex("22 11 FF FF"))), static_cast<VXErrorCodeEnum>(9));
    EXPECT_EQ(tag.GetCharacterId(), 0x1122) << "also when the fields fail";
    for (const char* noRoom : {"80 01", "81 01 34"}) {
        EXPECT_EQ(LoadInto(tag, Hex(noRoom)), kVXFailure);
        EXPECT_EQ(tag.GetTagLen(), 0u);
        EXPECT_EQ(tag.GetData(), nullptr);
        EXPECT_EQ(tag.GetDataStream().GetSize(), 0u);
        EXPECT_EQ(tag.GetCharacterId(), 0x1122);
    }
}

TEST_F(VXSwfDefinitionTagTest, WithoutABodyTheKeptOneGoesOutBehindTheId) {
    VXBitStream out;
    EXPECT_EQ(tag.GenerateTagHdr(5, out), kVXSuccess);
    EXPECT_EQ(tag.IsParsed(), 1);
    EXPECT_EQ(tag.DumpToStream(out, nullptr), kVXSuccess);
    EXPECT_EQ(BytesOf(out), Join({Hex("85 01"), TagBytes(6, Hex("34 12  34 12 78 56"))}));
    EXPECT_EQ(tag.GetTagLen(), 4u) << "the length keeps what was written";
    EXPECT_EQ(tag.GetDataStream().GetSize(), 2u) << "views are cut to what is there";
}

TEST_F(VXSwfDefinitionTagTest, AFailedWriteLeavesALoanOnlyInSlot18) {
    Bytes room(5);
    VXBitStream small = StreamOver(room);
    EXPECT_EQ(tag.DumpToStream(small), kVXFailure);
    EXPECT_EQ(tag.GetData(), kept);
    VXBitStream body;
    EXPECT_EQ(body.Write("..abc", 5u), kVXSuccess);
    EXPECT_EQ(tag.DumpToStream(small, &body), kVXFailure);
    EXPECT_EQ(tag.GetData(), body.GetBuffer() + 2);
    tag.SetData(nullptr);
    EXPECT_EQ(tag.GetData(), kept);
}

TEST_F(VXSwfDefinitionTagTest, LoansStackAndEndWithALoadOrAnAssignment) {
    Bytes first(4), second(4);
    tag.SetData(first.data());
    tag.SetData(second.data());
    EXPECT_EQ(tag.GetData(), second.data() + 2);
    const unsigned char* const below[] = {first.data() + 2, kept, nullptr, nullptr};
    for (const unsigned char* data : below) {
        tag.SetData(nullptr);
        EXPECT_EQ(tag.GetData(), data);
    }
    const Bytes longer = TagBytes(6, Join({Hex("34 12 78 56"), Repeat(50, 1)}));
    tag.SetData(first.data());
    tag.SetTagLen(4);
    EXPECT_EQ(LoadInto(tag, longer), kVXSuccess);
    WordTag assigned;
    assigned.SetData(first.data());
    assigned.SetTagLen(4);
    assigned = tag;
    assigned.SetData(first.data());
    assigned.SetTagLen(4);
    WordTag copied(assigned);
    copied = *&copied;
    EXPECT_EQ(copied.GetData(), tag.GetData()) << "copies share the bytes";
    VXBitStream out;
    EXPECT_EQ(copied.DumpHdrAndData(out), kVXSuccess);
    EXPECT_EQ(BytesOf(out), longer);
    copied.SetTagLen(0xFFFF);
    out.Clean();
    EXPECT_EQ(copied.DumpHdrAndData(out), kVXSuccess);
    EXPECT_EQ(BytesOf(out), longer) << "the header states what is there";
}

}  // namespace
