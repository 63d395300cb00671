#include "support/Test.h"

namespace {

using Tag = VXSwfDoABCTag;

TEST(VXSwfDoABCTag, LoadsWhatIsThere) {
    const struct {
        const char* what;
        Bytes body;
        VXErrorCodeEnum result;
        unsigned int flags;
        Bytes code;
    } rows[] = {
        {"code", Hex("00000080 6100 AABB"), kVXSuccess, 0x80000000, Hex("AABB")},
        {"flags cut short", Hex("010203"), kVXFailure, 0x030201, {}},
        {"a name without its end", Hex("02000000 61"), kVXFailure, 2, {}},
        {"no code", Hex("02000000 00"), kVXSuccess, 2, {}},
        {"Kept: a name of fewer units than bytes reckons with code that is not there",
         Hex("02000000 C3A9 00"),
         kVXFailure,
         2,
         {}},
        {"and takes all that there is", Hex("02000000 C3A9 00 AA"), kVXSuccess, 2, Hex("AA")},
    };
    for (const auto& row : rows) {
        const auto tag = NewTag<Tag>(82);
        EXPECT_EQ(LoadInto(*tag, TagBytes(82, row.body)), row.result) << row.what;
        EXPECT_EQ(tag->m_Flags, row.flags) << row.what;
        ASSERT_EQ(tag->GetABCDataLen(), row.code.size()) << row.what;
        EXPECT_EQ(Bytes(tag->GetABCData(), tag->GetABCData() + tag->GetABCDataLen()), row.code) << row.what;
    }
    // Fields read from a stream of somebody's own, longer than the tag says.
    const Bytes fields = Hex("02000000 616263 00 AA");
    VXBitStream in = StreamOver(fields);
    const auto tag = NewTag<Tag>(82);
    EXPECT_EQ(tag->LoadDataFromStream(in), kVXSuccess);
    EXPECT_EQ(tag->GetABCDataLen(), 0u) << "a length below 0 is none";
    const TagPtr raw = LoadTag(TagBytes(82, Hex("01000000 00 AABBCC")));
    EXPECT_EQ(dynamic_cast<Tag*>(raw.get()), nullptr) << "raw in a loaded movie";
}

TEST(VXSwfDoABCTag, DumpsWhatWasLoadedOrBuilt) {
    const auto tag = NewTag<Tag>(82);
    EXPECT_EQ(DumpOf(*tag), TagBytes(82, Hex("01000000 00"))) << "empty, with the flag set";
    tag->m_Name = "\xC3\xA9";
    tag->SetABCData(new unsigned char[2]{0xAA, 0xBB}, 2);
    EXPECT_EQ(DumpOf(*tag), TagBytes(82, Hex("01000000 C3 00 AABB"))) << "Kept: a byte for each unit";
    ASSERT_EQ(LoadInto(*tag, LongTagBytes(82, Hex("05000000 6100 AABB"))), kVXSuccess);
    EXPECT_EQ(DumpOf(*tag), LongTagBytes(82, Hex("05000000 6100 AABB")));
    ExpectShortDumpsFail(*tag, 13);
    const TagPtr copy(tag->Copy(), &VXSwfTagFactory::DeleteTag);
    tag->GetABCData()[0] = 0;
    EXPECT_EQ(DumpOf(*copy), TagBytes(82, Hex("05000000 6100 AABB"))) << "copies are independent";

    const std::unique_ptr<unsigned char[]> old(tag->GetABCData());
    tag->SetABCData(new unsigned char[1]{0xCC}, 1);
    EXPECT_EQ(old[1], 0xBB) << "replaced code is the caller's";
    tag->SetABCData(tag->GetABCData(), 1);
    EXPECT_EQ(DumpOf(*tag), LongTagBytes(82, Hex("05000000 6100 CC")));
    const std::unique_ptr<unsigned char[]> last(tag->GetABCData());
    tag->SetABCData(nullptr, 7);
    EXPECT_EQ(tag->GetABCDataLen(), 7u);
    EXPECT_EQ(DumpOf(*tag), LongTagBytes(82, Hex("05000000 6100")));
    VXSwfTagFactory::DeleteTag(tag->Copy());
}

}  // namespace
