#include "scripting/VXSwfDoABCTag.h"

#include <gtest/gtest.h>

#include "support/TagSweep.h"

namespace {

using Tag = VXSwfDoABCTag;

VXErrorCodeEnum Load(Tag& tag, const Bytes& bytes) {
    VXBitStream in = StreamOver(bytes);
    return tag.LoadFromStream(in);
}

TEST(VXSwfDoABCTag, StaysRawInALoadedMovie) {
    const TagPtr tag = LoadTag(TagBytes(82, Hex("01000000 00 AABBCC")));
    EXPECT_EQ(dynamic_cast<Tag*>(tag.get()), nullptr);
}

TEST(VXSwfDoABCTag, DumpsWhatItLoads) {
    for (const Bytes& body : {Hex("01000000 00 AABBCC"), Hex("00000080 6100 AA"), Hex("01000000 61 00")}) {
        const auto tag = NewTag<Tag>(82);
        ASSERT_EQ(Load(*tag, TagBytes(82, body)), kVXSuccess);
        EXPECT_EQ(DumpOf(*tag), TagBytes(82, body));
        ASSERT_EQ(Load(*tag, LongTagBytes(82, body)), kVXSuccess) << "once more";
        EXPECT_EQ(DumpOf(*tag), LongTagBytes(82, body));
    }
}

TEST(VXSwfDoABCTag, LoadsWhatIsThere) {
    struct {
        const char* what;
        Bytes body;
        VXErrorCodeEnum result;
        unsigned int flags;
        Bytes code;
    } const cases[] = {
        {"flags cut short", Hex("010203"), kVXFailure, 0x030201, {}},
        {"no name", Hex("02000000"), kVXFailure, 2, {}},
        {"a name without its end", Hex("02000000 61"), kVXFailure, 2, {}},
        {"no code", Hex("02000000 00"), kVXSuccess, 2, {}},
        {"Kept: a name of fewer units than bytes reckons with code that is not there",
         Hex("02000000 C3A9 00"),
         kVXFailure,
         2,
         {}},
        {"and takes all that there is", Hex("02000000 C3A9 00 AA"), kVXSuccess, 2, Hex("AA")},
    };
    for (const auto& c : cases) {
        const auto tag = NewTag<Tag>(82);
        EXPECT_EQ(Load(*tag, TagBytes(82, c.body)), c.result) << c.what;
        EXPECT_EQ(tag->m_Flags, c.flags) << c.what;
        ASSERT_EQ(tag->GetABCDataLen(), c.code.size()) << c.what;
        EXPECT_EQ(Bytes(tag->GetABCData(), tag->GetABCData() + tag->GetABCDataLen()), c.code) << c.what;
    }
    // Fields read from a stream of somebody's own, longer than the tag says.
    const Bytes fields = Hex("02000000 616263 00 AA");
    VXBitStream in = StreamOver(fields);
    const auto tag = NewTag<Tag>(82);
    EXPECT_EQ(tag->LoadDataFromStream(in), kVXSuccess);
    EXPECT_EQ(tag->GetABCDataLen(), 1u) << "Kept: a length below 0 is all that remains";
}

TEST(VXSwfDoABCTag, IsBuiltByCode) {
    const auto tag = NewTag<Tag>(82);
    EXPECT_EQ(DumpOf(*tag), TagBytes(82, Hex("01000000 00"))) << "empty, with the flag set";
    tag->m_Name = "\xC3\xA9";
    tag->SetABCData(new unsigned char[2]{0xAA, 0xBB}, 2);
    EXPECT_EQ(DumpOf(*tag), TagBytes(82, Hex("01000000 C3 00 AABB"))) << "Kept: a byte for each unit";
    const unsigned char* kept = tag->GetData();
    for (unsigned int room = 0; room < 10; ++room) {
        const Bytes buffer(room);
        VXBitStream small = StreamOver(buffer);
        EXPECT_NE(tag->DumpToStream(small), kVXSuccess) << room;
        EXPECT_EQ(tag->GetData(), kept);
    }
}

TEST(VXSwfDoABCTag, ReplacedCodeIsTheCallers) {
    const auto tag = NewTag<Tag>(82);
    ASSERT_EQ(Load(*tag, TagBytes(82, Hex("01000000 00 AABB"))), kVXSuccess);
    const std::unique_ptr<unsigned char[]> old(tag->GetABCData());
    tag->SetABCData(new unsigned char[1]{0xCC}, 1);
    EXPECT_EQ(old[1], 0xBB);
    tag->SetABCData(tag->GetABCData(), 1);
    EXPECT_EQ(DumpOf(*tag), TagBytes(82, Hex("01000000 00 CC")));
    const std::unique_ptr<unsigned char[]> last(tag->GetABCData());
    tag->SetABCData(nullptr, 7);
    EXPECT_EQ(tag->GetABCDataLen(), 7u);
    EXPECT_EQ(DumpOf(*tag), TagBytes(82, Hex("01000000 00")));
    VXSwfTagFactory::DeleteTag(tag->Copy());
}

TEST(VXSwfDoABCTag, CopiesAreIndependent) {
    const auto tag = NewTag<Tag>(82);
    ASSERT_EQ(Load(*tag, LongTagBytes(82, Hex("05000000 6100 AABB"))), kVXSuccess);
    const TagPtr copy(tag->Copy(), &VXSwfTagFactory::DeleteTag);
    tag->GetABCData()[0] = 0;
    ASSERT_NE(dynamic_cast<Tag*>(copy.get()), nullptr);
    EXPECT_EQ(DumpOf(*copy), TagBytes(82, Hex("05000000 6100 AABB")));
}

}  // namespace
