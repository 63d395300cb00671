#include "framework/VXSwfTagSet.h"

#include <gtest/gtest.h>

#include "framework/VXSwfTag.h"
#include "support/Bytes.h"
#include "support/TagSweep.h"
#include "timeline/VXSwfDefineSpriteTag.h"

namespace {

VXErrorCodeEnum Load(VXSwfTagSet& set, const Bytes& bytes, unsigned char version = 8) {
    VXBitStream in = StreamOver(bytes);
    return set.LoadFromStream(in, version);
}

Bytes DumpOf(VXSwfTagSet& set) {
    VXBitStream out;
    EXPECT_EQ(set.DumpToStream(out), kVXSuccess);
    return BytesOf(out);
}

/// Counts its own end, for the rules of ownership.
class CountedTag : public VXSwfTag {
public:
    explicit CountedTag(int& ends, enuTagType type = VXSwfTagFactory::TAG_METADATA)
        : VXSwfTag(type, 1), m_Ends(ends) {}
    ~CountedTag() override { ++m_Ends; }

private:
    int& m_Ends;
};

Bytes Sprite(const Bytes& tags) {
    return LongTagBytes(39, Join({Hex("05 00"
                                      "00 00"),
                                  tags, Hex("00 00")}));
}

/// `depth` sprites inside one another, around `core`.
Bytes Nested(unsigned int depth, Bytes core) {
    for (; depth != 0; --depth) core = Sprite(core);
    return core;
}

/// How many sprites inside one another were opened.
unsigned int LevelsOf(VXSwfTagSet* set) {
    unsigned int levels = 0;
    while (set != nullptr && set->GetNumTags() != 0) {
        set = dynamic_cast<VXSwfDefineSpriteTag*>(*set->begin());
        if (set != nullptr) ++levels;
    }
    return levels;
}

TEST(VXSwfTagSet, LoadsUpToTheEndTagOrTheEndOfTheData) {
    const Bytes tags = Join({TagBytes(77, Hex("01 02")), Hex("40 00")});
    for (const Bytes& rest : {Hex(""), Hex("7F"), Hex("00 00"), Hex("00 00 40 00 40 00"), Hex("05 00")}) {
        VXSwfTagSet set;
        EXPECT_EQ(Load(set, Join({tags, rest})), kVXSuccess);
        EXPECT_EQ(set.GetNumTags(), 2u);
        EXPECT_EQ(set.GetNumShowFrameTags(), 1u);
        EXPECT_EQ(DumpOf(set), tags);
    }
}

TEST(VXSwfTagSet, TheEndTagIsNotConsumed) {
    const Bytes bytes = Join({TagBytes(77, Hex("01")), Hex("00 00 11")});
    VXBitStream in = StreamOver(bytes);
    VXSwfTagSet set;
    EXPECT_EQ(set.LoadFromStream(in, 8), kVXSuccess);
    EXPECT_EQ(in.GetPosition(), 3u);
}

TEST(VXSwfTagSet, EachTagGetsTheVersion) {
    VXSwfTagSet set;
    EXPECT_EQ(Load(set, Sprite(TagBytes(77, Hex("01"))), 6), kVXSuccess);
    EXPECT_EQ((*set.begin())->GetFLVersion(), 6);
    auto* sprite = dynamic_cast<VXSwfDefineSpriteTag*>(*set.begin());
    ASSERT_NE(sprite, nullptr);
    EXPECT_EQ((*sprite->begin())->GetFLVersion(), 6);
}

TEST(VXSwfTagSet, AFailingTagEndsTheLoadAndIsNotKept) {
    VXSwfTagSet set;
    // File attributes of three bytes, between two good tags.
    EXPECT_EQ(Load(set, Join({TagBytes(77, Hex("01")), TagBytes(69, Hex("01 02 03")), Hex("40 00")})),
              kVXFailure);
    EXPECT_EQ(set.GetNumTags(), 1u);
    EXPECT_EQ(Load(set, Hex("7F 13 05 00")), kVXFailure) << "a header that ends early";
    EXPECT_EQ(Load(set, Hex("FF 09 05 00")), kVXFailure) << "the same for a sprite";
    EXPECT_EQ(set.GetNumTags(), 1u);
}

TEST(VXSwfTagSet, ALoadAppends) {
    VXSwfTagSet set;
    EXPECT_EQ(Load(set, Hex("40 00")), kVXSuccess);
    EXPECT_EQ(Load(set, Hex("40 00")), kVXSuccess);
    EXPECT_EQ(set.GetNumShowFrameTags(), 2u);
    EXPECT_EQ(DumpOf(set), Hex("40 00 40 00"));
}

TEST(VXSwfTagSet, AParsingModeReachesEverySprite) {
    const Bytes attributes = TagBytes(69, Hex("08 00 00 00"));
    const Bytes tags = Nested(3, Join({attributes, TagBytes(6, Hex("01 00 22"))}));
    VXSwfTagSet set;
    set.SetParsingMode(1);
    EXPECT_EQ(Load(set, tags), kVXSuccess);
    EXPECT_EQ(LevelsOf(&set), 3u);
    EXPECT_EQ(DumpOf(set), tags);
}

TEST(VXSwfTagSet, From64LevelsOnSpritesStayRaw) {
    // The share of nested bytes would end this earlier, so that much data stands behind.
    const Bytes padding = TagBytes(77, Repeat(60000, 1));
    for (const unsigned int depth : {63u, 64u, 65u, 200u}) {
        const Bytes tags = Join({Nested(depth, TagBytes(77, Hex("AB"))), padding});
        VXSwfTagSet set;
        EXPECT_EQ(Load(set, tags), kVXSuccess);
        EXPECT_EQ(LevelsOf(&set), std::min(depth, 64u));
        EXPECT_TRUE(DumpOf(set) == tags) << "no byte is lost at depth " << depth;
    }
}

TEST(VXSwfTagSet, ACopiedSpriteOpensAsManyLevelsAsALoadedOne) {
    const Bytes padding = TagBytes(77, Repeat(60000, 1));
    const Bytes tags = LongTagBytes(
        39, Join({Hex("01 00 00 00"), Nested(69, TagBytes(77, Hex("AB"))), padding, Hex("00 00")}));
    VXSwfTagSet set;
    EXPECT_EQ(Load(set, tags), kVXSuccess);
    EXPECT_EQ(LevelsOf(&set), 64u);
    const TagPtr copy((*set.begin())->Copy(), &VXSwfTagFactory::DeleteTag);
    EXPECT_EQ(LevelsOf(dynamic_cast<VXSwfDefineSpriteTag*>(copy.get())), 63u) << "below itself";
}

TEST(VXSwfTagSet, NestedBodiesTakeSixteenTimesTheDataAtMost) {
    // 40 levels around 50,000 bytes would take two megabytes.
    const Bytes tags = Nested(40, TagBytes(77, Repeat(50000, 1)));
    VXSwfTagSet set;
    EXPECT_EQ(Load(set, tags), kVXSuccess);
    EXPECT_EQ(LevelsOf(&set), 17u) << "the outermost, and sixteen in it";
    EXPECT_TRUE(DumpOf(set) == tags);
    // Small sprites side by side never meet the limit.
    Bytes many;
    for (int i = 0; i < 200; ++i) many = Join({many, Nested(3, Hex("40 00"))});
    VXSwfTagSet flat;
    EXPECT_EQ(Load(flat, many), kVXSuccess);
    EXPECT_EQ(flat.GetNumTags(), 200u);
    for (VXSwfTag* tag : {*flat.begin(), *std::prev(flat.end())}) {
        EXPECT_EQ(LevelsOf(dynamic_cast<VXSwfDefineSpriteTag*>(tag)), 2u);
    }
}

TEST(VXSwfTagSet, AFalseLengthTakesNothingFromTheSpritesInside) {
    Bytes tags = Nested(3, Hex("40 00"));
    for (int i = 2; i < 6; ++i) tags[static_cast<std::size_t>(i)] = 0xFF;
    VXSwfTagSet set;
    EXPECT_EQ(Load(set, tags), kVXSuccess);
    EXPECT_EQ(LevelsOf(&set), 3u);
    EXPECT_EQ(DumpOf(set).size(), tags.size());
}

TEST(VXSwfTagSet, NullEntriesAreSkipped) {
    VXSwfTagSet set;
    set.AppendTag(nullptr);
    set.AppendTag(LoadTag(TagBytes(77, Hex("0A 00"))).release());
    set.IncludeTag(nullptr, -1);
    EXPECT_EQ(set.GetNumTags(), 3u);
    EXPECT_EQ(DumpOf(set), TagBytes(77, Hex("0A 00")));
    EXPECT_NE(set.FindTagByID(10), nullptr);
    EXPECT_EQ(set.FindNthTagOfType(VXSwfTagFactory::TAG_METADATA, 2), set.end());
    std::list<VXSwfTag*> list;
    set.BuildDependencyList(list, &set);
    EXPECT_EQ(list.size(), 1u);
    set.UpdateReferenceIDs(nullptr);
}

TEST(VXSwfTagSet, TheLastListDeletes) {
    int ends = 0;
    {
        VXSwfTagSet outer;
        {
            VXSwfTagSet set;
            set.AppendTag(new CountedTag(ends));
            VXSwfTagSet copy = set;
            outer = copy;
            outer = *&outer;
            VXSwfTagSet replaced;
            replaced.AppendTag(new CountedTag(ends));
            replaced = set;
            EXPECT_EQ(ends, 1) << "what the set had before";
        }
        EXPECT_EQ(ends, 1);
        outer.AppendTag(*outer.begin());
        EXPECT_EQ(DumpOf(outer), Hex("40 13 40 13"));
    }
    EXPECT_EQ(ends, 2);
}

TEST(VXSwfTagSet, FramesCountFromOne) {
    VXSwfTagSet set;
    EXPECT_EQ(Load(set, Hex("40 00 40 00")), kVXSuccess);
    const auto include = [&set](unsigned int type, int frame) {
        set.IncludeTag(MakeTag(type, 1).release(), frame);
    };
    include(100, 2);
    include(101, 0);
    include(102, -1);
    include(103, 3);
    include(104, -2);
    include(105, 1);
    include(1, 1);
    Bytes expected;
    for (const unsigned int type : {101u, 105u, 1u, 1u, 100u, 1u, 102u, 103u, 104u}) {
        expected = Join({expected, TagBytes(type, {})});
    }
    EXPECT_EQ(DumpOf(set), expected);
    EXPECT_EQ(set.GetNumShowFrameTags(), 3u);
}

}  // namespace
