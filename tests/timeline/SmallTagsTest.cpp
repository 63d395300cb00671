// Tags of few fields.
#include "support/Test.h"

namespace {

TEST(VXSwfRemoveObjectTag, DumpsWhatItLoads) {
    SweepTag("type 5 names the character", Hex("44 01 07 00 02 00"));
    SweepTag("bytes behind the depth are dropped", Hex("03 07 02 00 FF"), Hex("02 07 02 00"));
    SweepTag("a long header stays", Hex("3F 07 02 00 00 00 02 00"));
}

TEST(VXSwfRemoveObjectTag, CopiesBothFieldsAndNoHeader) {
    const TagPtr loaded = LoadTag(Hex("3F 07 02 00 00 00 02 00"));
    dynamic_cast<VXSwfRemoveObjectTag&>(*loaded).CharacterId = 7;
    dynamic_cast<VXSwfRemoveObjectTag&>(*loaded).SetDepth(9);
    const TagPtr copy(loaded->Copy(), &VXSwfTagFactory::DeleteTag);
    EXPECT_EQ(dynamic_cast<VXSwfRemoveObjectTag&>(*copy).CharacterId, 7) << "which type 28 does not carry";
    EXPECT_EQ(DumpOf(*copy), Hex("02 07 09 00")) << "not through the wire, so the long header is gone";
    EXPECT_EQ(TextOf(*copy), "TAG_REMOVEOBJECT2(28) - Depth=9 - Id(?)=7");
}

TEST(VXSwfPlaceObjectTag, DumpsWhatItLoads) {
    const Bytes placed =
        TagBytes(4, Join({Hex("05 00 03 00 00"), Bits("0 1 1010 0100000000 0100000000 0100000000")}));
    SweepTag("a colour transform has no alpha term", placed);
    SweepTag("without one, which a dump adds", Hex("05 01 05 00 03 00 00"), Hex("06 01 05 00 03 00 00 00"));
    const TagPtr tag = LoadTag(placed);
    EXPECT_EQ(tag->GetCharacterId(), 5) << "it is its character";
    EXPECT_EQ(tag->GetReferencedID(), 0) << "and refers to none";
    EXPECT_EQ(tag->Copy(), nullptr);
}

TEST(VXSwfPlaceObjectTag, TakesAWholeColourTransform) {
    const auto tag = NewTag<VXSwfPlaceObjectTag>(4, 1);
    tag->SetCharacterId(5);
    tag->SetDepth(3);
    tag->SetCxForm(nullptr);
    VXFlintCxForm cxForm;
    cxForm.HasAddTerms = 1;
    cxForm.AlphaAddTerm = 1;
    tag->SetCxForm(&cxForm);
    EXPECT_EQ(DumpOf(*tag), Join({Hex("07 01 05 00 03 00 00"), Bits("1 0 0010 00 00 00 01")}))
        << "with alpha";
}

TEST(VXSwfFileAttributesTag, KeepsThreeOfItsBits) {
    SweepTag("what a load skips is clear, and bytes behind go", TagBytes(69, Hex("FF FF FF FF 01")),
             TagBytes(69, Hex("19 00 00 00")));
    SweepTag("the long form stays", LongTagBytes(69, Hex("01 00 00 00")));
    const auto tag = NewTag<VXSwfFileAttributesTag>(69);
    tag->Reserved0 = tag->Reserved5 = tag->Reserved6 = 1;
    tag->SetHasDirectBlit(2);
    EXPECT_EQ(DumpOf(*tag), TagBytes(69, Hex("40 00 00 00")));
    tag->SetUseGPU(1);
    tag->SetNetworkAccess(-1);
    EXPECT_EQ(DumpOf(*tag), TagBytes(69, Hex("61 00 00 00")));
    EXPECT_EQ(LoadInto(*tag, TagBytes(69, Hex("18 00 00"))), kVXFailure) << "every one of 32 bits is wanted";
    EXPECT_EQ(tag->GetHasAS3(), 1) << "fields read by then keep their values";
}

TEST(VXSwfFreeCharacterTag, NamesTheCharacterThatCodeGaveItAndReadsNone) {
    const auto tag = NewTag<VXSwfFreeCharacterTag>(3);
    EXPECT_EQ(LoadInto(*tag, Hex("C2 00 09 00")), kVXSuccess);
    EXPECT_EQ(tag->GetReferencedID(), 0) << "not the ID in the body";
    EXPECT_EQ(DumpOf(*tag), Hex("C2 00 00 00"));
    tag->SetReferencedID(0x1234);
    EXPECT_EQ(DumpOf(*tag), Hex("C2 00 34 12"));
    SweepTag("in a loaded movie the type is raw", Hex("C2 00 09 00"));
}

TEST(VXSwfEnableDebugger2Tag, WritesAReservedWordAndAnEmptyPassword) {
    EXPECT_EQ(DumpOf(*NewTag<VXSwfEnableDebugger2Tag>(64)), Hex("03 10 00 00 00"));
    EXPECT_EQ(NewTag<VXSwfEnableDebugger2Tag>(64, 1), nullptr) << "raw in a loaded movie";
}

TEST(VXSwfSetBackgroundColorTag, WritesAlphaOnlyWhenTheColourWasGivenWithIt) {
    const auto tag = NewTag<VXSwfSetBackgroundColorTag>(9);
    tag->SetRGBColor(VXFlintRGB(0x11, 0x22, 0x33, 1, 0x44));
    EXPECT_EQ(DumpOf(*tag), Hex("44 02 11 22 33 44"));
    EXPECT_EQ(LoadInto(*tag, Hex("43 02 AA BB CC")), kVXSuccess);
    EXPECT_EQ(DumpOf(*tag), Hex("43 02 AA BB CC")) << "a load clears the flag";
}

TEST(VXSwfDefineBinaryDataTag, DumpsTheBytesOfAStream) {
    const auto tag = NewTag<VXSwfDefineBinaryDataTag>(87);
    tag->SetCharacterId(7);
    EXPECT_EQ(tag->SetBinaryData(nullptr), kVXFailure);
    EXPECT_EQ(DumpOf(*tag), Hex("C6 15 07 00 00 00 00 00")) << "no data yet";
    const Bytes data = Hex("01 02 03 04");
    CVXStreamReadWrite stream(data.data(), data.size());
    stream.Seek(3, kVXSeekFromStart);
    EXPECT_EQ(tag->SetBinaryData(&stream), kVXSuccess);
    EXPECT_EQ(DumpOf(*tag), Hex("CA 15 07 00 00 00 00 00 04 00 00 00"))
        << "all its length, and zeros for the rest";

    EXPECT_EQ(LoadInto(*tag, Hex("C8 15 07 00 FF FF FF FF 01 02")), kVXSuccess);
    EXPECT_EQ(DumpOf(*tag), Hex("C8 15 07 00 00 00 00 00 01 02")) << "behind the reserved word";
    const std::pair<const char*, unsigned int> cuts[] = {
        {"C4 15 07 00 00 00", 2}, {"C2 15 07 00", 2}, {"C6 15 07 00 00 00 00 00", 0}};
    for (const auto& [cut, size] : cuts) {
        EXPECT_EQ(LoadInto(*tag, Hex(cut)), kVXFailure) << cut;
        EXPECT_EQ(tag->GetBinaryDataSize(), size) << cut;
    }
    EXPECT_EQ(LoadInto(*tag, Hex("C7 15 07 00 00 00 00 00 AA")), kVXSuccess);
    const Bytes longer = Hex("00 00 00 00 BB CC");
    VXBitStream in = StreamOver(longer);
    EXPECT_EQ(tag->LoadDataFromStream(in), kVXSuccess);
    EXPECT_EQ(tag->GetBinaryDataSize(), 1u) << "the tag's length decides, whatever the stream holds";
}

TEST(VXSwfVXSpecialTag, HasADumpOfItsBytesAlone) {
    auto tag = NewTag<VXSwfVXSpecialTag>(997);
    EXPECT_EQ(DumpOf(*tag), Hex("40 F9")) << "no data, no body";
    const Bytes data = Hex("01 02 03 04 05");
    EXPECT_EQ(tag->SetSpecificData(data.data(), 5), kVXSuccess);
    tag->SetIsLongTag(1);
    EXPECT_EQ(DumpOf(*tag), Hex("7F F9 05 00 00 00 01 02 03 04 05"));
    tag->SetIsLongTag(0);
    EXPECT_EQ(tag->SetSpecificData(tag->GetSpecificData() + 3, 2), kVXSuccess) << "its own bytes";
    EXPECT_EQ(tag->SetSpecificData(data.data(), 0), kVXSuccess) << "changes nothing";
    EXPECT_EQ(tag->SetSpecificData(nullptr, 7), kVXFailure) << "changes nothing";
    const TagPtr copy(tag->Copy(), &VXSwfTagFactory::DeleteTag);
    tag.reset();
    EXPECT_EQ(DumpOf(*copy), Hex("42 F9 04 05"));
    EXPECT_EQ(dynamic_cast<VXSwfVXSpecialTag*>(LoadTag(Hex("42 F9 AA BB")).get()), nullptr)
        << "raw in a movie";
}

}  // namespace
