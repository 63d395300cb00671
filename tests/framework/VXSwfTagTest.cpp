#include "framework/VXSwfTag.h"

#include <gtest/gtest.h>

#include <list>

#include "framework/VXFlintIDMap.h"
#include "framework/VXSwfDefinitionTag.h"
#include "framework/VXSwfTagSet.h"
#include "platform/CVXStreamReadWrite.h"
#include "support/Bytes.h"
#include "support/LimitedStream.h"
#include "support/TagSweep.h"

namespace {

std::string TextOf(VXSwfTag& tag) {
    VXString text;
    tag.GetTextInfo(text);
    return text.GetUTF8String();
}

/// Loads and answers the code, for tags that must fail.
VXErrorCodeEnum LoadCode(VXSwfTag& tag, const Bytes& bytes) {
    VXBitStream in = StreamOver(bytes);
    return tag.LoadFromStream(in);
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

TEST(VXSwfTag, RawTagsComeBackAsTheyWere) {
    SweepTag("no body", Hex("40 00"));
    SweepTag("a short body", TagBytes(77, Hex("01 02 03")));
    SweepTag("a long header on a short body", Hex("7F 13 05 00 00 00"
                                                  "01 02 03 04 05"));
    SweepTag("the longest short body", Join({Hex("7E 13"), Repeat(62, 0xAB)}));
    SweepTag("the shortest long body", Join({Hex("7F 13 3F 00 00 00"), Repeat(63, 0xAB)}));
    SweepTag("the highest type", Hex("C2 FF"
                                     "01 02"));
}

TEST(VXSwfTag, AnEmptyLongHeaderStaysLong) {
    const TagPtr tag = LoadTag(Hex("7F 13 00 00 00 00"));
    EXPECT_EQ(tag->GetData(), nullptr);
    EXPECT_EQ(DumpOf(*tag), Hex("7F 13 00 00 00 00"));
}

TEST(VXSwfTag, LengthsAreCutToWhatIsThere) {
    for (const char* bytes : {"7F 13 FF FF FF FF"
                              "01 02",
                              "45 13"
                              "01 02"}) {
        const TagPtr tag = LoadTag(Hex(bytes));
        EXPECT_EQ(tag->GetTagLen(), 2u);
        EXPECT_EQ(tag->GetDataStream().GetSize(), 2u);
    }
    const TagPtr tag = MakeTag(77, 1);
    EXPECT_EQ(LoadCode(*tag, Hex("45 13")), kVXFailure);
    EXPECT_EQ(tag->GetTagLen(), 0u);
    EXPECT_EQ(LoadCode(*tag, Hex("7F 13 05 00")), kVXFailure);
    EXPECT_EQ(LoadCode(*tag, Hex("7F")), kVXFailure);
}

TEST(VXSwfTag, ASecondLoadReplacesTheFirst) {
    const TagPtr tag = LoadTag(TagBytes(77, Repeat(100, 0x11)));
    EXPECT_EQ(LoadCode(*tag, TagBytes(78, Hex("22 33"))), kVXSuccess);
    EXPECT_EQ(tag->GetTagType(), VXSwfTagFactory::TAG_DEFINESCALINGGRID);
    // The flag that a long header set stays.
    EXPECT_EQ(DumpOf(*tag), LongTagBytes(78, Hex("22 33")));
    EXPECT_EQ(LoadCode(*tag, Hex("C0 12")), kVXSuccess);
    EXPECT_EQ(tag->GetData(), nullptr);
}

TEST(VXSwfTag, IdsAndReferencesAreTheFirstWord) {
    const auto ids = [](unsigned int type) {
        const TagPtr tag = MakeTag(type, 1);
        VXIgnore(LoadCode(*tag, TagBytes(type, Hex("34 12 00"))));
        return std::pair<unsigned int, unsigned int>{tag->GetCharacterId(), tag->GetReferencedID()};
    };
    using Ids = std::pair<unsigned int, unsigned int>;
    EXPECT_EQ(ids(6), (Ids{0x1234, 0}));
    EXPECT_EQ(ids(77), (Ids{0x1234, 0})) << "a raw tag of an unknown kind still shows its ID";
    EXPECT_EQ(ids(15), (Ids{0x1234, 0x1234}));
    for (const unsigned int type : {3u, 61u, 73u, 74u, 78u, 88u})
        EXPECT_EQ(ids(type), (Ids{0, 0x1234})) << type;
    for (const unsigned int type : {1u, 43u, 82u}) EXPECT_EQ(ids(type), (Ids{0, 0})) << type;

    const TagPtr zones = LoadTag(TagBytes(73, Hex("34 12")));
    EXPECT_EQ(zones->GetCharacterIdFromData(), 0x1234);
    zones->SetReferencedID(0x0201);
    EXPECT_EQ(DumpOf(*zones), TagBytes(73, Hex("01 02")));
    const TagPtr grid = LoadTag(TagBytes(77, Hex("34 12 56")));
    grid->SetReferencedID(7);
    EXPECT_EQ(grid->GetCharacterId(), 0x1234) << "has no reference";
    grid->SetCharacterId(0xBBAA);
    EXPECT_EQ(DumpOf(*grid), TagBytes(77, Hex("AA BB 56")));

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

TEST(VXSwfTag, ReferencesFollowTheMap) {
    const TagPtr tag = LoadTag(TagBytes(78, Hex("05 00")));
    tag->UpdateReferenceIDs(nullptr);
    VXFlintIDMap map;
    tag->UpdateReferenceIDs(&map);
    EXPECT_EQ(tag->GetReferencedID(), 5);
    EXPECT_EQ(map.size(), 1u) << "the walk enters what it asks for";
    map.Set(5, 9);
    tag->UpdateReferenceIDs(&map);
    EXPECT_EQ(tag->GetReferencedID(), 9);
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

TEST(VXSwfTag, PeepingGoesBack) {
    const Bytes bytes = Join({Hex("FF"), LongTagBytes(77, Hex("01 02 03"))});
    VXBitStream in = StreamOver(bytes);
    EXPECT_EQ(in.SetPosition(1), 1);
    unsigned int length = 99;
    EXPECT_EQ(VXSwfTag::PeepTagLength(in, length), kVXSuccess);
    EXPECT_EQ(length, 3u);
    EXPECT_EQ(in.GetPosition(), 1u);
    VXSwfTag::enuTagType type = VXSwfTagFactory::TAG_END;
    EXPECT_EQ(VXSwfTag::PeepTagType(in, type), kVXSuccess);
    EXPECT_EQ(type, VXSwfTagFactory::TAG_METADATA);
    EXPECT_EQ(in.GetPosition(), 1u);

    const Bytes cut = Hex("7F 13 05 00");
    in = StreamOver(cut);
    EXPECT_EQ(VXSwfTag::PeepTagLength(in, length), kVXFailure);
    EXPECT_EQ(in.GetPosition(), 4u) << "stays where the read ended";
    EXPECT_EQ(VXSwfTag::PeepTagType(in, type), kVXFailure);
}

TEST(VXSwfTag, CopiesAreIndependentAndDropTheVersion) {
    const TagPtr tag = LoadTag(LongTagBytes(77, Hex("34 12")), 9);
    const TagPtr copy(tag->Copy(), &VXSwfTagFactory::DeleteTag);
    tag->SetCharacterId(1);
    EXPECT_EQ(DumpOf(*copy), LongTagBytes(77, Hex("34 12")));
    EXPECT_EQ(copy->GetFLVersion(), 0);
    const TagPtr bits = MakeTag(6, 0);
    EXPECT_EQ(LoadCode(*bits, TagBytes(6, Hex("34 12 56"))), kVXSuccess);
    const TagPtr raw(bits->Copy(), &VXSwfTagFactory::DeleteTag);
    EXPECT_EQ(dynamic_cast<VXSwfDefinitionTag*>(raw.get()), nullptr) << "of the class that a load gives";
    EXPECT_EQ(raw->GetCharacterId(), 0x1234);
}

TEST(VXSwfTag, DependenciesComeFirst) {
    VXSwfTagSet set;
    VXSwfTag* grid = LoadTag(TagBytes(78, Hex("07 00"))).release();
    VXSwfTag* font = LoadTag(TagBytes(48, Hex("07 00"))).release();
    VXSwfTag* lost = LoadTag(TagBytes(78, Hex("08 00"))).release();
    for (VXSwfTag* tag : {grid, font, lost}) set.AppendTag(tag);
    std::list<VXSwfTag*> list;
    for (int round = 0; round < 2; ++round) {
        grid->BuildDependencyList(list, &set);
        font->BuildDependencyList(list, &set);
        lost->BuildDependencyList(list, &set);
        EXPECT_EQ(list, std::list<VXSwfTag*>{font}) << "a reference brings its character, and itself never";
    }
}

TEST(VXSwfDefinitionTag, TheIdStandsInFrontOfTheFields) {
    WordTag tag;
    EXPECT_EQ(LoadCode(tag, TagBytes(6, Hex("34 12 78 56"))), kVXSuccess);
    EXPECT_EQ(tag.GetCharacterId(), 0x1234);
    EXPECT_EQ(tag.word, 0x5678);
    EXPECT_EQ(tag.GetTagLen(), 2u);
    EXPECT_EQ(tag.GetData()[0], 0x78);
    tag.SetCharacterId(0x0908);
    EXPECT_EQ(DumpOf(tag), TagBytes(6, Hex("08 09 78 56")));

    EXPECT_EQ(LoadCode(tag, TagBytes(6, Hex("22 11 FF FF"))), static_cast<VXErrorCodeEnum>(9));
    EXPECT_EQ(tag.GetCharacterId(), 0x1122) << "also when the fields fail";
}

TEST(VXSwfDefinitionTag, ABodyWithoutRoomForAnIdFails) {
    WordTag tag;
    tag.SetCharacterId(5);
    EXPECT_EQ(LoadCode(tag, Hex("80 01")), kVXFailure);
    EXPECT_EQ(LoadCode(tag, TagBytes(6, Hex("34"))), kVXFailure);
    EXPECT_EQ(tag.GetTagLen(), 0u);
    EXPECT_EQ(tag.GetData(), nullptr);
    EXPECT_EQ(tag.GetDataStream().GetSize(), 0u);
    EXPECT_EQ(tag.GetCharacterId(), 5);
}

TEST(VXSwfDefinitionTag, WithoutABodyTheKeptOneGoesOutBehindTheId) {
    WordTag tag;
    EXPECT_EQ(LoadCode(tag, TagBytes(6, Hex("34 12 78 56"))), kVXSuccess);
    VXBitStream out;
    EXPECT_EQ(tag.DumpToStream(out, nullptr), kVXSuccess);
    EXPECT_EQ(BytesOf(out), TagBytes(6, Hex("34 12"
                                            "34 12 78 56")));
    EXPECT_EQ(tag.GetTagLen(), 4u) << "the length keeps what was written";
    EXPECT_EQ(tag.GetDataStream().GetSize(), 2u) << "views are cut to what is there";
}

TEST(VXSwfDefinitionTag, AFailedWriteLeavesALoanOnlyInSlot18) {
    WordTag tag;
    EXPECT_EQ(LoadCode(tag, TagBytes(6, Hex("34 12 78 56"))), kVXSuccess);
    const unsigned char* kept = tag.GetData();
    Bytes room(5);
    VXBitStream small = StreamOver(room);
    EXPECT_EQ(tag.DumpToStream(small), kVXFailure);
    EXPECT_EQ(tag.GetData(), kept);

    VXBitStream body;
    EXPECT_EQ(body.Write("..abc", 5u), kVXSuccess);
    VXBitStream none = StreamOver(room);
    EXPECT_EQ(none.SetPosition(5), 1);
    EXPECT_EQ(tag.DumpToStream(none, &body), kVXFailure);
    EXPECT_EQ(tag.GetData(), body.GetBuffer() + 2);
    tag.SetData(nullptr);
    EXPECT_EQ(tag.GetData(), kept);
}

TEST(VXSwfTagLoans, StackAndUnstack) {
    WordTag tag;
    EXPECT_EQ(LoadCode(tag, TagBytes(6, Hex("34 12 78 56"))), kVXSuccess);
    const unsigned char* kept = tag.GetData();
    Bytes first = Hex("01 02 03 04");
    Bytes second = Hex("05 06 07 08");
    tag.SetData(first.data());
    tag.SetData(second.data());
    EXPECT_EQ(tag.GetData(), second.data() + 2);
    tag.SetData(nullptr);
    EXPECT_EQ(tag.GetData(), first.data() + 2);
    tag.SetData(nullptr);
    EXPECT_EQ(tag.GetData(), kept);
    tag.SetData(nullptr);
    EXPECT_EQ(tag.GetData(), nullptr);
    tag.SetData(nullptr);
    EXPECT_EQ(tag.GetData(), nullptr);
}

TEST(VXSwfTagLoans, NoLoanOutlivesItsLength) {
    WordTag loaded;
    Bytes body = Hex("01 02 03 04");
    loaded.SetData(body.data());
    loaded.SetTagLen(4);
    EXPECT_EQ(LoadCode(loaded, TagBytes(6, Join({Hex("34 12 78 56"), Repeat(50, 1)}))), kVXSuccess);
    EXPECT_EQ(loaded.GetData()[0], 0x78);

    WordTag assigned;
    assigned.SetData(body.data());
    assigned.SetTagLen(4);
    assigned = loaded;
    EXPECT_EQ(assigned.GetData(), loaded.GetData()) << "copies share the bytes";
    WordTag copied(loaded);
    copied = *&copied;
    EXPECT_EQ(copied.GetData(), loaded.GetData());
    VXBitStream out;
    EXPECT_EQ(copied.DumpHdrAndData(out), kVXSuccess);
    EXPECT_EQ(BytesOf(out), TagBytes(6, Join({Hex("34 12 78 56"), Repeat(50, 1)})));
}

TEST(VXSwfTagLoans, HeadersCanBeMadeForAnyShortLength) {
    WordTag tag;
    VXBitStream out;
    EXPECT_EQ(tag.GenerateTagHdr(5, out), kVXSuccess);
    EXPECT_EQ(BytesOf(out), Hex("85 01"));
    EXPECT_EQ(tag.IsParsed(), 1);
}

}  // namespace
