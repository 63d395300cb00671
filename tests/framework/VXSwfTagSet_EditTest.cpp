#include <gmock/gmock.h>

#include <iterator>
#include <string>

#include "framework/VXFlintFile.h"
#include "framework/VXSwfDefinitionTag.h"
#include "support/TagSets.h"
#include "support/TagSweep.h"
#include "timeline/VXFlintFilter.h"
#include "timeline/VXSwfPlaceObject3Tag.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

VXSwfTag* Label() { return MakeTag(43, 0).release(); }

VXSwfTag* ShowFrame() { return MakeTag(1, 0).release(); }

std::vector<VXSwfTag*> TagsOf(const VXSwfTagSet& set) { return {set.begin(), set.end()}; }

TEST(VXSwfTagSetEditing, ShowFramesCountOnlyWhereAFrameIsNamed) {
    VXSwfTagSet set;
    set.IncludeShowFrameTags(0, -1);
    EXPECT_EQ(set.GetNumTags(), 0u);
    set.IncludeShowFrameTags(2, -1);
    set.IncludeTag(ShowFrame(), 0);
    set.IncludeTag(Label(), 0);
    EXPECT_THAT(TypesOf(set), ElementsAre(43, 1, 1, 1));
    EXPECT_EQ(set.GetNumShowFrameTags(), 3u);
    set.IncludeTag(ShowFrame(), set.begin());
    set.AppendTag(ShowFrame());
    EXPECT_EQ(set.GetNumShowFrameTags(), 3u);
    set.EraseAndDeleteTags(set.begin(), set.end());
    EXPECT_EQ(set.GetNumShowFrameTags(), 3u);
    set.IncludeShowFrameTags(3, 2);  // in front of the second, as far as there is one
    EXPECT_THAT(TypesOf(set), ElementsAre(1, 1, 1));
}

TEST(VXSwfTagSetEditing, OnlyWhatIsAppendedIsListed) {
    VXFlintFile movie;
    std::list<VXFlintFile::enuTagType> types{VXSwfTagFactory::TAG_FRAMELABEL};
    EXPECT_EQ(movie.SetListsTobeMaintained(types), kVXSuccess);
    VXSwfTag* appended = Label();
    movie.IncludeTag(appended, -1);
    movie.IncludeTag(Label(), 0);
    movie.IncludeTag(Label(), 1);
    std::list<VXSwfTag*>* list = nullptr;
    EXPECT_EQ(movie.GetTagListOfType(VXSwfTagFactory::TAG_FRAMELABEL, &list), kVXSuccess);
    ASSERT_NE(list, nullptr);
    EXPECT_THAT(*list, ElementsAre(appended));
}

TEST(VXSwfTagSetEditing, RangesAreSharedWithTheirSource) {
    VXSwfTagSet target;
    target.AppendTag(ShowFrame());
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
    const std::vector<VXSwfTag*> tags = TagsOf(target);
    EXPECT_EQ(tags[2], tags[5]);
    const auto rest = target.EraseAndDeleteTags(std::next(target.begin()), std::next(target.begin(), 5));
    EXPECT_EQ(rest, std::next(target.begin()));
    EXPECT_EQ(DumpOf(target), Join({Bitmap(2), Bitmap(3), kShowFrame})) << "each was held twice";
}

TEST(VXSwfTagSetEditing, ErasedTagsAreTheCallers) {
    VXSwfTagSet set;
    LoadTags(set, Join({Bitmap(1), Bitmap(2), kShowFrame}));
    VXSwfTag* first = *set.begin();
    EXPECT_EQ(set.EraseTags(set.begin(), set.begin()), set.begin());
    EXPECT_EQ(set.GetNumTags(), 3u);
    const auto second = std::next(set.begin());
    EXPECT_EQ(set.EraseTags(set.begin(), second), second);
    EXPECT_EQ(DumpOf(set), Join({Bitmap(2), kShowFrame}));
    set.AppendTag(first);
    EXPECT_EQ(DumpOf(set), Join({Bitmap(2), kShowFrame, Bitmap(1)}));
    EXPECT_EQ(set.EraseAndDeleteTags(set.begin(), set.end()), set.end());
    EXPECT_THAT(TypesOf(set), IsEmpty());
    VXSwfTag* loose = Label();
    set.AppendTag(ShowFrame());
    VXSwfTag* replaced = *set.begin();
    *set.begin() = loose;  // hosts may write through iterators; what they took out is theirs
    VXSwfTagFactory::DeleteTag(replaced);
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
    const auto idOf = [&set](unsigned int n, unsigned int frame, short strict) {
        const VXSwfTag* tag =
            set.FindNthTagOfTypeBeforeFrame(VXSwfTagFactory::TAG_DEFINEBITSLOSSLESS2, n, frame, strict);
        return tag == nullptr ? 0u : tag->GetCharacterId();
    };
    EXPECT_EQ(idOf(1, 1, 1), 2u);
    EXPECT_EQ(idOf(2, 1, 1), 0u) << "the first tag is never found";
    EXPECT_EQ(idOf(1, 2, 1), 4u);
    EXPECT_EQ(idOf(2, 2, 1), 3u);
    EXPECT_EQ(idOf(3, 2, 1), 0u) << "beyond the frame";
    EXPECT_EQ(idOf(0, 2, 1), 0u);
    EXPECT_EQ(idOf(1, 3, 1), 0u) << "there is no third frame";
    EXPECT_EQ(idOf(1, 3, 0), 5u);
    EXPECT_EQ(idOf(2, 3, 0), 0u);
    EXPECT_EQ(idOf(1, 0, 1), 0u) << "frame 0 ends with the list";
    EXPECT_EQ(idOf(1, 0, 0), 5u);
    const auto showFrame = [&set](unsigned int n) {
        return set.FindNthTagOfTypeBeforeFrame(VXSwfTagFactory::TAG_SHOWFRAME, n, 3, 0);
    };
    EXPECT_EQ(showFrame(2), *std::next(set.begin(), 2)) << "ShowFrames do not stop a search for them";
    EXPECT_EQ(showFrame(3), nullptr);

    for (const Bytes& tags : {Hex(""), Bitmap(1), kShowFrame, Join({Bitmap(1), kShowFrame})}) {
        VXSwfTagSet brief;
        LoadTags(brief, tags);
        for (unsigned int frame = 0; frame < 2; ++frame) {
            EXPECT_EQ(
                brief.FindNthTagOfTypeBeforeFrame(VXSwfTagFactory::TAG_DEFINEBITSLOSSLESS2, 1, frame, 0),
                nullptr);
        }
    }
}

TEST(VXSwfTagSetEditing, DepthsMoveTheNearerCounter) {
    VXSwfTagSet set;
    EXPECT_EQ(set.GetAbsTagDepth(0), 1);
    EXPECT_EQ(set.GetAbsTagDepth(0), 2);
    EXPECT_EQ(set.GetAbsTagDepth(0xFFFF), 0xFFFE);
    EXPECT_EQ(set.GetAbsTagDepth(0xFFFF), 0xFFFD);
    EXPECT_EQ(set.GetAbsTagDepth(60000), 60000);
    EXPECT_EQ(set.GetAbsTagDepth(100), 100);
    EXPECT_EQ(set.GetAbsTagDepth(0xFFFF), 59999);
    EXPECT_EQ(set.GetAbsTagDepth(65000), 65000) << "the upper one moves both ways";
    EXPECT_EQ(set.GetAbsTagDepth(0xFFFF), 64999);
    EXPECT_EQ(set.GetAbsTagDepth(5), 5) << "the lower one moves upward only";
    EXPECT_EQ(set.ReserveNextDepth(), 101);
    EXPECT_EQ(set.GetAbsTagDepth(32550), 32550) << "as far from 64999 as from 101, so it is the lower one's";
    EXPECT_EQ(set.GetAbsTagDepth(0), 32551);
    for (unsigned int depth = 32552; depth < 0x10000; ++depth) EXPECT_EQ(set.ReserveNextDepth(), depth);
    EXPECT_EQ(set.GetAbsTagDepth(0), 0) << "counters wrap";
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
    VXSwfPlaceObject2Tag* placed = set.PlaceObject(0, -1, VXString(), 0, 0, 0, noFilters);
    ASSERT_NE(placed, nullptr);
    const Bytes moved = LongTagBytes(26, Join({Hex("05 01 00"), UnitMatrix("00000")}));
    EXPECT_EQ(DumpOf(set), Join({kShowFrame, moved})) << "without a character it moves what is there";
    set.EraseAndDeleteTags(std::next(set.begin()), set.end());

    // 10 pixels are 200 twips, −5 are −100.
    const Bytes matrix = UnitMatrix("01001 011001000 110011100");
    const Bytes named = LongTagBytes(26, Join({Hex("26 02 00 07 00"), matrix, Hex("6E 00")}));
    set.PlaceObject(7, 1, "n", 10, -5, 0, noFilters);
    EXPECT_EQ(DumpOf(set), Join({named, kShowFrame}));
    const auto character = NewTag<VXSwfDefinitionTag>(6);
    character->SetCharacterId(7);
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
}

TEST(VXSwfTagSetEditing, FiltersMakeATagOfType70) {
    VXSwfTagSet set;
    VXSwfPlaceObject2Tag* placed =
        set.PlaceObject(7, -1, "", 0, 0, 5, std::vector<VXFlintFilter*>{new VXFlintFilterShadow});
    ASSERT_NE(dynamic_cast<VXSwfPlaceObject3Tag*>(placed), nullptr);
    const Bytes tag = DumpOf(set);
    EXPECT_EQ(Bytes(tag.begin() + 6, tag.begin() + 12), Hex("06 01 05 00 07 00"));
}

}  // namespace
