#include "support/Test.h"

using testing::ElementsAre;

namespace {

VXSwfTag* NewTagOf(unsigned int type) { return MakeTag(type, 0).release(); }

// Frames are named in any order, among edits that move them.
TEST(VXSwfTagSetEditing, FramesCountFromOne) {
    VXSwfTagSet set;
    std::vector<unsigned int> types;
    unsigned int random = 1;
    unsigned int numShowFrames = 0;
    for (unsigned int other = 100; other < 1000; ++other) {
        random = random * 1664525 + 1013904223;
        const unsigned int type = (random >> 20) % 3 == 0 ? 1 : other;
        const int frame = static_cast<int>((random >> 16) % 16 * (random >> 24) / 64) - 2;
        auto place = std::prev(types.end(), (random >> 8) % (types.size() + 1));
        const auto tag = std::prev(set.end(), std::distance(place, types.end()));
        if (random >> 29 == 0 && place != types.end()) {
            types.erase(place);
            set.EraseAndDeleteTags(tag, std::next(tag));
        } else if (random >> 29 == 1) {
            types.insert(place, type);
            set.IncludeTag(NewTagOf(type), tag);
        } else {
            place = frame < 0 ? types.end() : types.begin();
            for (int n = 0; n != frame && place != types.end() && (*place != 1 || ++n != frame);) ++place;
            types.insert(place, type);
            set.IncludeTag(NewTagOf(type), frame);
            numShowFrames += type == 1 ? 1 : 0;
        }
    }
    EXPECT_EQ(TypesOf(set), types);
    EXPECT_EQ(set.GetNumShowFrameTags(), numShowFrames);
}

TEST(VXSwfTagSetEditing, ShowFramesCountOnlyWhereAFrameIsNamed) {
    VXSwfTagSet set;
    set.IncludeShowFrameTags(0, -1);
    set.IncludeShowFrameTags(2, -1);
    set.IncludeTag(NewTagOf(1), 0);
    EXPECT_THAT(TypesOf(set), ElementsAre(1, 1, 1));
    EXPECT_EQ(set.GetNumShowFrameTags(), 3u);
    set.IncludeTag(NewTagOf(1), set.begin());
    set.AppendTag(NewTagOf(1));
    set.EraseAndDeleteTags(set.begin(), set.end());
    EXPECT_EQ(set.GetNumShowFrameTags(), 3u);
    set.IncludeShowFrameTags(3, 2);  // in front of the second, as far as there is one
    EXPECT_THAT(TypesOf(set), ElementsAre(1, 1, 1));
}

TEST(VXSwfTagSetEditing, RangesAreSharedWithTheirSource) {
    VXSwfTagSet target;
    LoadTags(target, kShowFrame);
    {
        VXSwfTagSet source;
        LoadTags(source, Join({Bitmap(1), Bitmap(2), Bitmap(3)}));
        target.InsertTags(target.begin(), std::next(source.begin()), source.end());
        EXPECT_EQ(source.GetNumTags(), 3u);
    }
    EXPECT_EQ(DumpOf(target), Join({Bitmap(2), Bitmap(3), kShowFrame})) << "the source has ended";
    // A range of the list itself, with its place inside the range, and a null entry.
    target.IncludeTag(nullptr, target.begin());
    target.InsertTags(std::next(target.begin()), target.begin(), target.end());
    EXPECT_EQ(target.GetNumTags(), 8u);
    EXPECT_EQ(*std::next(target.begin(), 2), *std::next(target.begin(), 5));
    const auto rest = target.EraseAndDeleteTags(std::next(target.begin()), std::next(target.begin(), 5));
    EXPECT_EQ(rest, std::next(target.begin()));
    EXPECT_EQ(DumpOf(target), Join({Bitmap(2), Bitmap(3), kShowFrame})) << "each was held twice";
}

TEST(VXSwfTagSetEditing, NoSpriteComesToHoldItself) {
    VXSwfTagSet movie;
    LoadTags(movie, Sprite(1, 0, Sprite(2, 0, {})));
    auto& outer = dynamic_cast<VXSwfDefineSpriteTag&>(**movie.begin());
    auto& inner = dynamic_cast<VXSwfDefineSpriteTag&>(**outer.begin());
    const Bytes whole = DumpOf(movie);
    outer.IncludeTag(&outer, -1);
    inner.IncludeTag(&outer, 0);
    inner.IncludeTag(&outer, inner.begin());
    inner.InsertTags(inner.end(), movie.begin(), movie.end());
    static_cast<VXSwfTagSet&>(inner) = movie;
    EXPECT_TRUE(DumpOf(movie) == whole);
    movie.IncludeTag(&inner, -1);
    VXSwfTag* last = &outer;  // holds what is below it twice, 64 times over
    for (int i = 0; i < 64; ++i) {
        auto sprite = NewTag<VXSwfDefineSpriteTag>(39);
        sprite->AppendTag(last);
        sprite->AppendTag(last);
        last = sprite.release();
        movie.AppendTag(last);
    }
    inner.AppendTag(last);
    EXPECT_EQ(inner.GetNumTags(), 0u);
    EXPECT_EQ(movie.GetNumTags(), 66u);
}

TEST(VXSwfTagSetEditing, ErasedTagsAreTheCallers) {
    VXSwfTagSet set;
    LoadTags(set, Join({Bitmap(1), Bitmap(2), kShowFrame}));
    VXSwfTag* first = *set.begin();
    const auto second = std::next(set.begin());
    EXPECT_EQ(set.EraseTags(set.begin(), set.begin()), set.begin());
    EXPECT_EQ(set.EraseTags(set.begin(), second), second);
    set.AppendTag(first);
    EXPECT_EQ(DumpOf(set), Join({Bitmap(2), kShowFrame, Bitmap(1)}));
    EXPECT_EQ(set.EraseAndDeleteTags(set.begin(), set.end()), set.end());
    EXPECT_EQ(set.GetNumTags(), 0u);
}

TEST(VXSwfTagSetEditing, SearchesByTypeAndId) {
    VXSwfTagSet set;
    set.AppendTag(nullptr);
    LoadTags(set, Join({Bitmap(7), kShowFrame, Bitmap(7), kShowFrame}));
    EXPECT_EQ(set.FindNthTagOfType(VXSwfTagFactory::TAG_DEFINEBITSLOSSLESS2, 2), std::next(set.begin(), 3));
    EXPECT_EQ(set.FindNthTagOfType(VXSwfTagFactory::TAG_DEFINEBITSLOSSLESS2, 3), set.end());
    EXPECT_EQ(set.FindNthTagOfType(VXSwfTagFactory::TAG_SHOWFRAME, 0), set.end());
    EXPECT_EQ(set.FindTagByID(7), *std::next(set.begin()));
    EXPECT_EQ(set.FindTagByID(0), *std::next(set.begin(), 2)) << "the first tag without an ID";
    EXPECT_EQ(set.FindTagByID(8), nullptr);
}

TEST(VXSwfTagSetEditing, SearchesBackwardWithinAFrame) {
    VXSwfTagSet set;
    LoadTags(set, Join({Bitmap(1), Bitmap(2), kShowFrame, Bitmap(3), Bitmap(4), kShowFrame, Bitmap(5)}));
    set.IncludeTag(nullptr, std::next(set.begin(), 4));
    constexpr auto kBitmap = VXSwfTagFactory::TAG_DEFINEBITSLOSSLESS2;
    const struct {
        unsigned int n, frame;
        short strict;
        unsigned int id;
    } rows[] = {
        {1, 1, 1, 2}, {2, 1, 1, 0},                              // the first tag is never found
        {1, 2, 1, 4}, {2, 2, 1, 3}, {3, 2, 1, 0}, {0, 2, 1, 0},  // nor is one beyond the frame
        {1, 3, 1, 0}, {1, 3, 0, 5}, {2, 3, 0, 0},                // there is no third frame
        {1, 0, 1, 0}, {1, 0, 0, 5},                              // frame 0 ends with the list
    };
    for (const auto& row : rows) {
        const VXSwfTag* tag = set.FindNthTagOfTypeBeforeFrame(kBitmap, row.n, row.frame, row.strict);
        EXPECT_EQ(tag == nullptr ? 0u : tag->GetCharacterId(), row.id) << row.n << " of " << row.frame;
    }
    EXPECT_EQ(set.FindNthTagOfTypeBeforeFrame(VXSwfTagFactory::TAG_SHOWFRAME, 2, 3, 0),
              *std::next(set.begin(), 2))
        << "ShowFrames do not stop a search for them";
    for (const Bytes& tags : {Bytes(), Bitmap(1), kShowFrame, Join({Bitmap(1), kShowFrame})}) {
        VXSwfTagSet brief;
        LoadTags(brief, tags);
        EXPECT_EQ(brief.FindNthTagOfTypeBeforeFrame(kBitmap, 1, 0, 0), nullptr);
        EXPECT_EQ(brief.FindNthTagOfTypeBeforeFrame(kBitmap, 1, 1, 0), nullptr);
    }
}

TEST(VXSwfTagSetEditing, DepthsMoveTheNearerCounter) {
    VXSwfTagSet set;
    const std::pair<unsigned short, unsigned short> rows[] = {
        {0, 1},         {0, 2},          {0xFFFF, 0xFFFE}, {0xFFFF, 0xFFFD}, {60000, 60000},
        {100, 100},     {0xFFFF, 59999}, {65000, 65000},   {0xFFFF, 64999},  // the upper one moves both ways
        {5, 5},         {0, 101},    // the lower one moves upward only
        {32550, 32550}, {0, 32551},  // as far from 64999 as from 101, so it is the lower one's
    };
    for (const auto& [asked, depth] : rows) EXPECT_EQ(set.GetAbsTagDepth(asked), depth) << asked;
    for (unsigned int depth = 32552; depth < 0x10000; ++depth) EXPECT_EQ(set.ReserveNextDepth(), depth);
    EXPECT_EQ(set.GetAbsTagDepth(0) + set.ReserveNextDepth(), 0) << "none is left";
    EXPECT_EQ(set.PlaceAndRemoveObject(7, -1, -1, "", 0, 0, 0), nullptr);
    EXPECT_EQ(set.GetAbsTagDepth(1), 1);  // nearer to the upper one
    EXPECT_EQ(set.GetAbsTagDepth(0xFFFF), 0);
    EXPECT_EQ(set.GetNumTags(), 0u);
}

/// The matrix of a new placement: unit scale, no skew and a translation in twips.
Bytes UnitMatrix(const char* translation) {
    return Bits(std::string("1 10010 010000000000000000 010000000000000000"  // ScaleX, ScaleY
                            "1 00000") +                                     // RotateSkew0, RotateSkew1
                translation);
}

TEST(VXSwfTagSetEditing, PlacesAndRemoves) {
    const std::vector<VXFlintFilter*> noFilters;
    VXSwfTagSet set;
    LoadTags(set, kShowFrame);
    ASSERT_NE(set.PlaceObject(0, -1, VXString(), 0, 0, 0, noFilters), nullptr);
    const Bytes moved = LongTagBytes(26, Join({Hex("05 01 00"), UnitMatrix("00000")}));
    EXPECT_EQ(DumpOf(set), Join({kShowFrame, moved})) << "without a character it moves what is there";
    set.EraseAndDeleteTags(std::next(set.begin()), set.end());

    // 10 pixels are 200 twips, −5 are −100.
    const Bytes matrix = UnitMatrix("01001 011001000 110011100");
    const Bytes named = LongTagBytes(26, Join({Hex("26 02 00 07 00"), matrix, Hex("6E 00")}));
    const auto character = NewTag<VXSwfDefinitionTag>(6);
    character->SetCharacterId(7);
    set.PlaceObject(7, 1, "n", 10, -5, 0, noFilters);
    set.PlaceObject(character.get(), 0, "n", 10, -5, 2, noFilters);
    set.PlaceObject(7, set.end(), "n", 10, -5, 2, noFilters);
    EXPECT_EQ(DumpOf(set), Join({named, named, kShowFrame, named}));

    set.EraseAndDeleteTags(set.begin(), set.end());
    LoadTags(set, Join({kShowFrame, kShowFrame}));
    EXPECT_NE(set.PlaceAndRemoveObject(7, 1, 2, "n", 10, -5, 2), nullptr);
    EXPECT_NE(set.PlaceAndRemoveObject(character.get(), 1, 2, "n", 10, -5, 0xFFFF), nullptr);
    const Bytes top = LongTagBytes(26, Join({Hex("26 FE FF 07 00"), matrix, Hex("6E 00")}));
    EXPECT_EQ(DumpOf(set), Join({named, top, kShowFrame, TagBytes(28, Hex("02 00")),
                                 TagBytes(28, Hex("FE FF")), kShowFrame}))
        << "removed at the depth as it came out";
    EXPECT_NE(set.PlaceAndRemoveObject(0, 1, 0, "", 0, 0, 0), nullptr);
    EXPECT_THAT(TypesOf(set), ElementsAre(26, 26, 26, 1, 28, 28, 1)) << "frame 0 removes nothing";

    VXSwfTagSet filtered;
    filtered.PlaceObject(7, -1, "", 0, 0, 5, std::vector<VXFlintFilter*>{new VXFlintFilterShadow});
    const Bytes tag = DumpOf(filtered);
    EXPECT_THAT(TypesOf(filtered), ElementsAre(70));
    EXPECT_EQ(Bytes(tag.begin() + 6, tag.begin() + 12), Hex("06 01 05 00 07 00"));
}

}  // namespace
