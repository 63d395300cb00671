#include "support/Test.h"

namespace {

VXErrorCodeEnum Load(VXSwfTagSet& set, const Bytes& bytes) {
    VXBitStream in = StreamOver(bytes);
    return set.LoadFromStream(in, 8);
}

/// Counts its own end, for the rules of ownership.
class CountedTag : public VXSwfTag {
public:
    explicit CountedTag(int& ends) : VXSwfTag(VXSwfTagFactory::TAG_METADATA, 1), m_Ends(ends) {}
    ~CountedTag() override { ++m_Ends; }

private:
    int& m_Ends;
};

/// `depth` sprites inside one another, around `core`.
Bytes Nested(unsigned int depth, Bytes core) {
    for (; depth != 0; --depth) core = Sprite(5, 0, core);
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
    const Bytes tags = Join({TagBytes(77, Hex("01 02")), kShowFrame});
    const std::pair<const char*, unsigned int> rests[] = {
        {"", 6}, {"7F", 6}, {"00 00", 6}, {"00 00 40 00", 6}, {"05 00", 6}};
    for (const auto& [rest, consumed] : rests) {
        const Bytes bytes = Join({tags, Hex(rest)});
        VXBitStream in = StreamOver(bytes);
        VXSwfTagSet set;
        EXPECT_EQ(set.LoadFromStream(in, 6), kVXSuccess);
        EXPECT_EQ(in.GetPosition(), consumed) << "the end tag is left to the caller";
        EXPECT_EQ(set.GetNumShowFrameTags(), 1u);
        EXPECT_EQ(DumpOf(set), tags);
        EXPECT_EQ((*set.begin())->GetFLVersion(), 6);
        LoadTags(set, kShowFrame);
        EXPECT_EQ(DumpOf(set), Join({tags, kShowFrame})) << "a load appends";
        EXPECT_EQ(set.GetNumShowFrameTags(), 2u);
    }
}

TEST(VXSwfTagSet, AFailingTagEndsTheLoadAndIsNotKept) {
    const Bytes good = TagBytes(77, Hex("01"));
    VXSwfTagSet set;
    EXPECT_EQ(Load(set, Join({good, TagBytes(69, Hex("01 02 03")), kShowFrame})), kVXFailure);
    EXPECT_EQ(Load(set, Hex("7F 13 05 00")), kVXFailure) << "a header that ends early";
    EXPECT_EQ(Load(set, Hex("FF 09 05 00")), kVXFailure) << "the same for a sprite";
    EXPECT_EQ(DumpOf(set), good);
}

TEST(VXSwfTagSet, AParsingModeReachesEverySprite) {
    const Bytes tags = Nested(3, Join({TagBytes(69, Hex("08 00 00 00")), TagBytes(20, Hex("01 00 22"))}));
    VXSwfTagSet set;
    LoadTags(set, tags, 1);
    EXPECT_EQ(LevelsOf(&set), 3u);
    EXPECT_EQ(DumpOf(set), tags);
}

TEST(VXSwfTagSet, From64LevelsOnSpritesStayRaw) {
    // The share of nested bytes would end this earlier, so that much data stands behind.
    const Bytes padding = TagBytes(77, Repeat(60000, 1));
    for (const unsigned int depth : {63u, 64u, 65u, 200u}) {
        const Bytes tags = Join({Nested(depth, TagBytes(77, {})), padding});
        VXSwfTagSet set;
        EXPECT_EQ(Load(set, tags), kVXSuccess);
        EXPECT_EQ(LevelsOf(&set), std::min(depth, 64u));
        EXPECT_TRUE(DumpOf(set) == tags) << "no byte is lost at depth " << depth;
    }
    VXSwfTagSet set;
    EXPECT_EQ(Load(set, Sprite(1, 0, Join({Nested(69, TagBytes(77, {})), padding}))), kVXSuccess);
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

    Bytes lie = Nested(3, kShowFrame);
    std::fill(lie.begin() + 2, lie.begin() + 6, static_cast<unsigned char>(0xFF));
    VXSwfTagSet lying;
    EXPECT_EQ(Load(lying, lie), kVXSuccess);
    EXPECT_EQ(LevelsOf(&lying), 3u) << "a false length takes nothing from the sprites inside";

    Bytes many;
    for (int i = 0; i < 200; ++i) many = Join({many, Nested(3, kShowFrame)});
    VXSwfTagSet flat;
    EXPECT_EQ(Load(flat, many), kVXSuccess);
    EXPECT_EQ(flat.GetNumTags(), 200u);
    for (VXSwfTag* tag : flat) {
        EXPECT_EQ(LevelsOf(dynamic_cast<VXSwfDefineSpriteTag*>(tag)), 2u) << "side by side they are free";
    }
}

TEST(VXSwfTagSet, TheLastListDeletes) {
    int ends = 0;
    {
        VXSwfTagSet outer;
        outer.AppendTag(new CountedTag(ends));
        {
            VXSwfTagSet set;
            set.AppendTag(new CountedTag(ends));
            const VXSwfTagSet copy = set;
            outer = copy;
            outer = *&outer;
        }
        EXPECT_EQ(ends, 1) << "what the set had before";
        outer.AppendTag(*outer.begin());
        EXPECT_EQ(DumpOf(outer), Hex("40 13 40 13"));
    }
    EXPECT_EQ(ends, 2);
}

}  // namespace
