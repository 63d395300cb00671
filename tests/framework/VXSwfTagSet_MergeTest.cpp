#include <gmock/gmock.h>

#include <iterator>
#include <memory>

#include "framework/VXFlintFile.h"
#include "scripting/VXSwfExportAssetsTag.h"
#include "support/TagSets.h"
#include "support/TagSweep.h"
#include "timeline/VXSwfDefineSpriteTag.h"
#include "timeline/VXSwfPlaceObject2Tag.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Exports = std::map<VXString, VXSwfExportAssetsTag*>;

/// Counts IDs up and notes what they were wanted for.
class CountingGenerator : public IVXSwfIdGenerator {
public:
    explicit CountingGenerator(unsigned short next = 0x100) : m_Next(next) {}
    unsigned short GetId(tVXSwfReservedIDEnum reserved) override {
        if (reserved != kVXSwfOrdinaryId) wanted.push_back(reserved);
        return m_Next++;
    }
    VXErrorCodeEnum GetId(unsigned short& id, tVXSwfReservedIDEnum reserved) override {
        id = GetId(reserved);
        return kVXSuccess;
    }

    std::vector<int> wanted;

private:
    unsigned short m_Next;
};

struct MergeOptions {
    int frame = 0;
    short includeABC = 0;
    short bindComponents = 0;
    short convertJpegTables = 0;
    unsigned int parsingMode = 0;
};

/// What a merge of a source with these tags adds to an empty movie, with IDs from 0x100 on.
Bytes Merged(const Bytes& sourceTags, const MergeOptions& options = {}) {
    VXSwfTagSet source;
    LoadTags(source, sourceTags, options.parsingMode);
    const Bytes before = DumpOf(source);
    VXSwfTagSet target;
    CountingGenerator generator;
    Exports exports;
    target.IncludeTagSetAsSprite(&source, options.frame, &generator, &exports, options.includeABC, nullptr,
                                 options.bindComponents, options.convertJpegTables);
    EXPECT_EQ(DumpOf(source), before) << "the source stays as it is";
    return DumpOf(target);
}

/// A merge without any of the options.
VXSwfDefineSpriteTag* Merge(VXSwfTagSet& target, VXSwfTagSet& source, int frame, IVXSwfIdGenerator& generator,
                            Exports* exports = nullptr) {
    return target.IncludeTagSetAsSprite(&source, frame, &generator, exports, 0, nullptr, 0, 0);
}

Bytes Text(const char* text) { return {text, text + std::char_traits<char>::length(text) + 1}; }

Bytes Export(unsigned int id, const char* name) {
    return TagBytes(56, Join({Word(1), Word(id), Text(name)}));
}

Bytes NamedPlacement(unsigned int id, unsigned int depth, const char* name) {
    return LongTagBytes(26, Join({Hex("22"), Word(depth), Word(id), Text(name)}));
}

TEST(VXSwfTagSetMerging, AMovieBecomesASprite) {
    const Bytes script = TagBytes(12, Hex("00"));
    const Bytes label = TagBytes(43, Text("a"));
    VXFlintFile source;
    LoadTags(source, Join({TagBytes(69, Hex("08 00 00 00")), TagBytes(9, Hex("FF 00 00")), Bitmap(1),
                           Export(1, "A"), script, Placement(1, 5),
                           LongTagBytes(76, Join({Word(2), Word(0), Text("M"), Word(1), Text("B")})), label,
                           kShowFrame, Sprite(2, 1, Join({script, Placement(1, 1), kShowFrame})),
                           TagBytes(3, Word(1)), TagBytes(8, Hex("FF D8")), TagBytes(24, {}),
                           TagBytes(28, Word(5)), TagBytes(77, Text("x")), TagBytes(86, Hex("00 00")),
                           TagBytes(59, Join({Word(2), Hex("00")})), kShowFrame}));
    source.IncludeTag(nullptr, 0);
    const Bytes sourceBytes = DumpOf(source);
    const Bytes front = Join({label, Bitmap(1)});
    const Bytes back = Join({kShowFrame, Bitmap(2), kShowFrame});
    VXFlintFile target;
    LoadTags(target, Join({front, back}));
    CountingGenerator generator;
    Exports exports;
    short hasFreeCharacter = 5;
    VXSwfDefineSpriteTag* sprite =
        target.IncludeTagSetAsSprite(&source, 1, &generator, &exports, 0, &hasFreeCharacter, 0, 0);

    const Bytes merged = Join(
        {Bitmap(0x101), Export(0x101, "A"), Sprite(0x102, 1, Join({script, Placement(0x101, 1), kShowFrame})),
         TagBytes(3, Word(0x101)), TagBytes(59, Join({Word(0x102), Hex("00")})),
         Sprite(0x100, 2,
                Join({Placement(0x101, 105), label, kShowFrame, TagBytes(28, Word(105)), kShowFrame})),
         LongTagBytes(76, Join({Word(2), Word(0x100), Text("M"), Word(0x101), Text("B")}))});
    EXPECT_EQ(DumpOf(target), Join({front, merged, back}));
    EXPECT_EQ(DumpOf(source), sourceBytes);
    EXPECT_EQ(hasFreeCharacter, 1);
    EXPECT_EQ(sprite, target.FindTagByID(0x100));
    EXPECT_EQ(sprite->GetNumShowFrameTags(), 2u);
    EXPECT_EQ(target.GetNumShowFrameTags(), 2u) << "frames of the destination stay as they are";
    EXPECT_EQ(target.GetAbsTagDepth(0), 1);

    VXSwfTagSet next;
    LoadTags(next, kShowFrame);
    Merge(target, next, 1, generator, &exports);
    EXPECT_EQ(DumpOf(target), Join({front, merged, Sprite(0x103, 1, kShowFrame), back})) << "in merge order";
}

TEST(VXSwfTagSetMerging, FramesThatAreNotThereMeanTheEnd) {
    for (const int frame : {0, 3, -1}) {
        VXSwfTagSet target;
        LoadTags(target, Join({kShowFrame, kShowFrame, Bitmap(1)}));
        VXSwfTagSet source;
        CountingGenerator generator;
        Merge(target, source, frame, generator);
        EXPECT_EQ(DumpOf(target), Join({kShowFrame, kShowFrame, Bitmap(1), Sprite(0x100, 0, {})})) << frame;
    }
}

TEST(VXSwfTagSetMerging, DepthsAreLifted) {
    const Bytes oldPlacement = TagBytes(4, Join({Word(1), Word(5), Hex("00")}));
    const struct {
        const char* what;
        Bytes in;
        Bytes out;
        unsigned int parsingMode = 0;
    } rows[] = {
        {"wraps", Placement(9, 65500), Placement(9, 64)},
        {"type 5", TagBytes(5, Join({Word(9), Word(5)})), TagBytes(5, Join({Word(9), Word(105)}))},
        {"type 28, loaded raw", TagBytes(28, Word(5)), TagBytes(28, Word(105)), 1},
        {"a clip depth goes along", LongTagBytes(26, Hex("42 05 00 09 00 0A 00")),
         LongTagBytes(26, Hex("42 69 00 09 00 6E 00"))},
        {"for type 70 it becomes the depth", TagBytes(70, Hex("42 00 05 00 09 00 0A 00")),
         LongTagBytes(70, Hex("42 00 69 00 09 00 69 00"))},
        {"type 70, loaded raw", TagBytes(70, Hex("02 00 05 00 09 00")),
         LongTagBytes(70, Hex("02 00 69 00 09 00")), 1},
        {"type 4 has no copy", oldPlacement, {}},
        {"type 4, loaded raw", oldPlacement, TagBytes(4, Join({Word(1), Word(105), Hex("00 00")})), 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        MergeOptions options;
        options.parsingMode = row.parsingMode;
        EXPECT_EQ(Merged(Join({Bitmap(1), row.in}), options),
                  Join({Bitmap(0x101), Sprite(0x100, 0, row.out)}));
    }
}

TEST(VXSwfTagSetMerging, TheFirstDefinitionOfAnIdWins) {
    EXPECT_EQ(Merged(Join({Bitmap(7), TagBytes(20, Join({Word(7), Hex("FF")})), Placement(7, 1)})),
              Join({Bitmap(0x101), Sprite(0x100, 0, Placement(0x101, 101))}));
    EXPECT_EQ(Merged(Join({TagBytes(20, Hex("07 00 FF")), Bitmap(7)})),
              Join({TagBytes(20, Hex("01 01 FF")), Sprite(0x100, 0, {})}));
}

TEST(VXSwfTagSetMerging, ExportsObeyZeroEntries) {
    EXPECT_EQ(Merged(Join({Export(9, "x"), Placement(9, 1)})),
              Join({Export(9, "x"), Sprite(0x100, 0, Placement(9, 101))}))
        << "nobody has asked for 9 yet";
    EXPECT_EQ(Merged(Join({Placement(9, 1), Export(9, "x")})),
              Join({Export(0, "x"), Sprite(0x100, 0, Placement(9, 101))}))
        << "the placement's question left an entry of 0";
}

TEST(VXSwfTagSetMerging, PackagesComeOnce) {
    const Bytes package = Export(1, "__Packages.a.B");
    const struct {
        const char* what;
        Bytes exports;
        bool isOnce;
        unsigned int parsingMode = 0;
    } rows[] = {
        {"a package", package, true},
        {"nothing but the prefix", Export(1, "__Packages"), true},
        {"loaded raw", package, true, 1},
        {"nine characters are not enough", Export(1, "__Package.a.B"), false},
        {"the first entry decides",
         TagBytes(56, Join({Word(2), Word(1), Text("a"), Word(1), Text("__Packages.a")})), false},
        {"an empty table", TagBytes(56, Word(0)), false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        VXSwfTagSet source;
        LoadTags(source, row.exports, row.parsingMode);
        VXSwfTagSet target;
        CountingGenerator generator;
        Exports exports;
        Merge(target, source, 0, generator, &exports);
        EXPECT_EQ(exports.size(), row.isOnce ? 1u : 0u);
        if (row.isOnce && row.parsingMode == 0) {
            EXPECT_EQ(exports.begin()->second, *source.begin());
        }
        Merge(target, source, 0, generator, &exports);
        if (row.isOnce) {
            EXPECT_THAT(TypesOf(target), ElementsAre(56, 39, 39));
        } else {
            EXPECT_THAT(TypesOf(target), ElementsAre(56, 39, 56, 39));
        }
        Merge(target, source, 0, generator, nullptr);
        EXPECT_EQ((*std::prev(target.end(), 2))->GetTagType(), 56u) << "without a map all come";
    }
}

TEST(VXSwfTagSetMerging, BytecodeComesWhenAskedFor) {
    const Bytes code = TagBytes(82, Hex("01 00 00 00 00 AA"));
    const Bytes sprite = Sprite(0x100, 0, {});
    for (const short includeABC : std::initializer_list<short>{0, 1, 2}) {
        MergeOptions options;
        options.includeABC = includeABC;
        EXPECT_EQ(Merged(code, options), includeABC == 1 ? Join({code, sprite}) : sprite) << includeABC;
    }
}

TEST(VXSwfTagSetMerging, PicturesTakeTheirTablesAlong) {
    const Bytes tables = TagBytes(8, Hex("FF D8"));
    const Bytes picture = TagBytes(6, Hex("01 00 AA BB"));
    const struct {
        const char* what;
        Bytes in;
        short convertJpegTables;
        Bytes out;
    } rows[] = {
        {"joined", Join({tables, picture}), 1, TagBytes(21, Hex("01 01 FF D8 AA BB 00"))},
        {"not asked for", Join({tables, picture}), 0, TagBytes(21, Hex("01 01 AA BB 00"))},
        {"no tables", picture, 1, TagBytes(21, Hex("01 01 AA BB 00"))},
        {"the first tables, wherever they are", Join({picture, tables, TagBytes(8, Hex("CC"))}), 2,
         TagBytes(21, Hex("01 01 FF D8 AA BB 00"))},
        {"empty tables", Join({TagBytes(8, {}), picture}), 1, TagBytes(21, Hex("01 01 AA BB 00"))},
        {"an empty picture", Join({tables, TagBytes(6, Word(1))}), 1, TagBytes(21, Hex("01 01 FF D8 00"))},
        {"a picture without an ID", TagBytes(6, Hex("01")), 1, TagBytes(21, Hex("00 00 00"))},
        {"a picture without a body", TagBytes(6, {}), 1, TagBytes(21, Hex("00 00 00"))},
        {"the same ID again", Join({picture, picture}), 1, TagBytes(21, Hex("01 01 AA BB 00"))},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        MergeOptions options;
        options.convertJpegTables = row.convertJpegTables;
        EXPECT_EQ(Merged(row.in, options), Join({row.out, Sprite(0x100, 0, {})}));
    }

    VXSwfTagSet source;
    source.AppendTag(MakeTag(6, 0).release());  // built by code, it is of another class
    VXBitStream in = StreamOver(picture);
    EXPECT_EQ((*source.begin())->LoadFromStream(in), kVXSuccess);
    VXSwfTagSet target;
    CountingGenerator generator;
    Merge(target, source, 0, generator);
    EXPECT_EQ(DumpOf(target), Join({TagBytes(21, Hex("01 01 AA BB 00")), Sprite(0x100, 0, {})}));
}

TEST(VXSwfTagSetMerging, TablesThatDwarfThePicturesAreJoinedWithinReason) {
    Bytes tags = LongTagBytes(8, Repeat(8u << 20, 0xFF));
    for (unsigned int id = 1; id < 10; ++id) tags = Join({tags, TagBytes(6, Word(id))});
    VXSwfTagSet source;
    LoadTags(source, tags);
    VXSwfTagSet target;
    CountingGenerator generator;
    target.IncludeTagSetAsSprite(&source, 0, &generator, nullptr, 0, nullptr, 0, 1);
    EXPECT_EQ(target.GetNumTags(), 10u);
    const std::size_t size = DumpOf(target).size();
    EXPECT_GT(size, 64u << 20);
    EXPECT_LT(size, 65u << 20) << "the ninth picture comes without";
}

TEST(VXSwfTagSetMerging, ComponentsGetTheirReservedIds) {
    const Bytes tags = Join({Bitmap(1), Bitmap(2), NamedPlacement(2, 1, "UIscrollbar_mc"),
                             NamedPlacement(1, 2, "button_mc"), NamedPlacement(2, 3, "button_mc"),
                             NamedPlacement(9, 4, "combobox_mc"), NamedPlacement(0, 5, "textarea_mc")});
    VXSwfTagSet source;
    LoadTags(source, tags);
    VXSwfTagSet target;
    CountingGenerator generator;
    target.IncludeTagSetAsSprite(&source, 0, &generator, nullptr, 0, nullptr, 1, 0);
    EXPECT_THAT(generator.wanted, ElementsAre(kVXSwfButtonId, kVXSwfScrollBarId))
        << "in the order of the kinds, and not for what nobody defines";
    EXPECT_EQ(
        DumpOf(target),
        Join({Bitmap(0x103), Bitmap(0x104),
              Sprite(0x100, 0,
                     Join({NamedPlacement(0x104, 101, "UIscrollbar_mc"),
                           NamedPlacement(0x103, 102, "button_mc"), NamedPlacement(0x104, 103, "button_mc"),
                           NamedPlacement(9, 104, "combobox_mc"), NamedPlacement(0, 105, "textarea_mc")}))}));

    VXSwfTagSet labelled;
    LoadTags(labelled, TagBytes(43, Hex("61 62 00")));
    VXSwfTagSet undefined;
    LoadTags(undefined, NamedPlacement(9, 1, "hotspotanim_mc"));
    labelled.IncludeTagSetAsSprite(&undefined, 0, &generator, nullptr, 0, nullptr, 1, 0);
    EXPECT_EQ(DumpOf(labelled), Join({TagBytes(43, Hex("06 01 00")),
                                      Sprite(0x105, 0, NamedPlacement(0x106, 101, "hotspotanim_mc"))}))
        << "the first tag without an ID is taken for the character that nobody defines";
}

TEST(VXSwfTagSetMerging, NothingToMergeGivesTheCallerAnEmptySprite) {
    VXSwfTagSet target;
    VXSwfTagSet source;
    LoadTags(source, Join({Bitmap(1), kShowFrame}));
    CountingGenerator generator;
    for (const bool isSourceNull : {true, false}) {
        const std::unique_ptr<VXSwfDefineSpriteTag> sprite(
            target.IncludeTagSetAsSprite(isSourceNull ? nullptr : &source, 1,
                                         isSourceNull ? &generator : nullptr, nullptr, 0, nullptr, 0, 0));
        ASSERT_NE(sprite, nullptr);
        EXPECT_EQ(sprite->GetNumTags(), 0u);
        EXPECT_EQ(sprite->GetCharacterId(), 0);
    }
    EXPECT_EQ(target.GetNumTags(), 0u);
}

TEST(VXSwfTagSetMerging, AMovieGoesIntoItself) {
    VXSwfTagSet movie;
    LoadTags(movie, Join({Bitmap(1), Placement(1, 1), kShowFrame}));
    CountingGenerator generator;
    Merge(movie, movie, 0, generator);
    EXPECT_EQ(DumpOf(movie), Join({Bitmap(1), Placement(1, 1), kShowFrame, Bitmap(0x101),
                                   Sprite(0x100, 1, Join({Placement(0x101, 101), kShowFrame}))}));
}

TEST(VXSwfTagSetMerging, OneCharacterComesWithWhatItNeeds) {
    VXSwfTagSet source;
    LoadTags(source, Join({Bitmap(1), Bitmap(2), Sprite(3, 0, Join({Placement(1), Placement(2)})), kShowFrame,
                           NamedPlacement(3, 1, "both")}));
    VXSwfTagSet target;
    LoadTags(target, kShowFrame);
    CountingGenerator generator;
    unsigned short ignored = 77;
    EXPECT_EQ(target.IncludeCharacter(&source, 9, ignored, &generator, 1), nullptr);
    EXPECT_EQ(target.IncludeCharacter(nullptr, 3, ignored, &generator, 1), nullptr);
    EXPECT_EQ(target.IncludeCharacter(&source, 3, ignored, nullptr, 1), nullptr);
    EXPECT_EQ(target.IncludeSpriteByName(&source, "neither", &generator, 1), nullptr);
    EXPECT_EQ(target.IncludeSpriteByName(nullptr, "both", &generator, 1), nullptr);
    EXPECT_EQ(DumpOf(target), kShowFrame);

    VXSwfTag* sprite = target.IncludeSpriteByName(&source, "both", &generator, 1);
    ASSERT_NE(sprite, nullptr);
    EXPECT_EQ(sprite->GetCharacterId(), 0x102);
    const Bytes both =
        Join({Bitmap(0x100), Bitmap(0x101), Sprite(0x102, 0, Join({Placement(0x101), Placement(0x100)}))});
    EXPECT_EQ(DumpOf(target), Join({both, kShowFrame}));
    const VXSwfTag* again = target.IncludeCharacter(&source, 1, ignored, &generator, 1);
    EXPECT_EQ(again, target.FindTagByID(0x103));
    EXPECT_EQ(DumpOf(target), Join({both, Bitmap(0x103), kShowFrame})) << "each time anew";
    EXPECT_EQ(ignored, 77);

    VXSwfTagSet other;
    LoadTags(other, Sprite(5, 0, Placement(1)));
    target.IncludeCharacter(&other, 5, ignored, &generator, 0);
    EXPECT_EQ(DumpOf(target), Join({Sprite(0x104, 0, Placement(0x103)), both, Bitmap(0x103), kShowFrame}))
        << "the map stays, and frame 0 is the start";
    EXPECT_EQ(target.IncludeCharacter(&source, 0, ignored, &generator, 1), nullptr)
        << "0 is the first tag without an ID, which needs nothing";
}

TEST(VXSwfTagSetMerging, ACharacterLeavesOldPlacementsBehind) {
    VXSwfTagSet source;
    const Bytes placement = TagBytes(4, Join({Word(1), Word(5), Hex("00 00")}));
    LoadTags(source, Join({Bitmap(1), Sprite(3, 0, placement)}));
    VXSwfTagSet target;
    CountingGenerator generator;
    unsigned short ignored = 0;
    target.IncludeCharacter(&source, 3, ignored, &generator, 0);
    // The placement counts as character 1 itself, and has no copy.
    EXPECT_EQ(DumpOf(target), Sprite(0x101, 0, placement));
}

/// Starts a new frame behind every tag.
class FramingSet : public VXSwfTagSet {
public:
    using VXSwfTagSet::IncludeTag;
    void IncludeTag(VXSwfTag* tag, int frame) override {
        VXSwfTagSet::IncludeTag(tag, frame);
        if (m_IsFraming) VXSwfTagSet::IncludeTag(MakeTag(1, 0).release(), 0);
    }
    bool m_IsFraming = false;
};

TEST(VXSwfTagSetMerging, HostsMayMoveTheFrameThatIsFilled) {
    VXSwfTagSet source;
    LoadTags(source, Join({Bitmap(1), Bitmap(2), Sprite(3, 0, Join({Placement(1), Placement(2)}))}));
    FramingSet target;
    LoadTags(target, kShowFrame);
    target.m_IsFraming = true;
    unsigned short id = 3;
    CountingGenerator generator;
    EXPECT_NE(target.IncludeCharacter(&source, id, id, &generator, 1), nullptr);
    EXPECT_THAT(TypesOf(target), ElementsAre(1, 39, 1, 36, 1, 36, 1));
}

/// Changes a variable with every ID.
class MeddlingGenerator : public CountingGenerator {
public:
    explicit MeddlingGenerator(unsigned short& variable) : m_Variable(variable) {}
    using CountingGenerator::GetId;
    unsigned short GetId(tVXSwfReservedIDEnum reserved) override {
        m_Variable = 0;
        return CountingGenerator::GetId(reserved);
    }

private:
    unsigned short& m_Variable;
};

TEST(VXSwfTagSetMerging, TheWantedIdIsTakenAtTheCall) {
    VXSwfTagSet source;
    LoadTags(source, Bitmap(1));
    VXSwfTagSet target;
    unsigned short id = 1;
    MeddlingGenerator generator(id);
    const VXSwfTag* copy = target.IncludeCharacter(&source, id, id, &generator, 1);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->GetCharacterId(), 0x100);
}

TEST(VXSwfTagSetMerging, SpritesHaveNamesOfTwoKinds) {
    VXSwfTagSet set;
    EXPECT_EQ(set.FindSprite("a"), nullptr);
    LoadTags(set, Join({Bitmap(5), Sprite(1, 0, {}), Placement(5), NamedPlacement(5, 1, "picture"),
                        NamedPlacement(1, 2, "a"), NamedPlacement(5, 3, "a"),
                        TagBytes(56, Join({Word(5), Word(1), Text("x"), Word(1), Text("again"), Word(2),
                                           Text("y"), Word(0), Text("z"), Word(3), Text("behind")})),
                        Export(7, "z"), Export(8, "y")}));
    VXSwfPlaceObject2Tag* placement = nullptr;
    EXPECT_EQ(set.FindSpriteId("b", &placement), 0);
    EXPECT_EQ(set.FindSpriteId("", &placement), 0);
    EXPECT_EQ(placement, nullptr);
    EXPECT_EQ(set.FindSpriteId("a", &placement), 1);
    EXPECT_EQ(placement, *std::next(set.begin(), 4));
    EXPECT_EQ(set.FindSprite("a"), set.FindTagByID(1));
    EXPECT_EQ(set.FindSprite("picture"), nullptr) << "not a sprite";
    EXPECT_EQ(set.FindSprite("b"), nullptr);

    EXPECT_EQ(set.FindSpriteIdByExportName("x"), 1);
    EXPECT_EQ(set.FindSpriteIdByExportName("again"), 0) << "an ID has its first name";
    EXPECT_EQ(set.FindSpriteIdByExportName("y"), 2);
    EXPECT_EQ(set.FindSpriteIdByExportName("z"), 7) << "an ID of 0 ends its table";
    EXPECT_EQ(set.FindSpriteIdByExportName("behind"), 0);
}

TEST(VXSwfTagSetMerging, TheEndRemovesAndFrees) {
    VXSwfTagSet set;
    set.AddFreeCharacterAtEnd();
    EXPECT_THAT(TypesOf(set), IsEmpty());

    const Bytes body = Join({Placement(1, 5), Bitmap(1)});
    LoadTags(set, Join({body, TagBytes(3, Word(9)), TagBytes(3, Word(8)), Placement(1, 5),
                        TagBytes(20, Word(2))}));
    set.IncludeTag(nullptr, 0);
    // The first of them a second time: it moves once.
    const auto free = set.FindNthTagOfType(VXSwfTagFactory::TAG_FREECHARACTER, 1);
    set.InsertTags(set.end(), free, std::next(free));
    set.AddFreeCharacterAtEnd();
    const Bytes rest = Join({body, Placement(1, 5), TagBytes(20, Word(2))});
    const Bytes removals = Join({TagBytes(28, Word(5)), TagBytes(28, Word(5))});
    const Bytes frees = Join({TagBytes(3, Word(1)), TagBytes(3, Word(9)), TagBytes(3, Word(8))});
    EXPECT_EQ(DumpOf(set), Join({rest, removals, frees}));
    set.AddFreeCharacterAtEnd();
    EXPECT_EQ(DumpOf(set), Join({rest, removals, removals, TagBytes(3, Word(1)), frees}));
}

}  // namespace
