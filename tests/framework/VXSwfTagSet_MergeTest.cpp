#include "support/Test.h"

using testing::ElementsAre;

namespace {

using Exports = std::map<VXString, VXSwfExportAssetsTag*>;

/// Counts IDs up from 0x100, notes what they were wanted for, and clears a variable of the caller.
class CountingGenerator : public IVXSwfIdGenerator {
public:
    explicit CountingGenerator(unsigned short* variable = nullptr) : m_Variable(variable) {}
    unsigned short GetId(tVXSwfReservedIDEnum reserved) override {
        if (reserved != kVXSwfOrdinaryId) wanted.push_back(reserved);
        if (m_Variable != nullptr) *m_Variable = 0;
        return m_Next++;
    }
    VXErrorCodeEnum GetId(unsigned short& id, tVXSwfReservedIDEnum reserved) override {
        id = GetId(reserved);
        return kVXSuccess;
    }

    std::vector<int> wanted;

private:
    unsigned short m_Next = 0x100;
    unsigned short* m_Variable;
};

struct MergeOptions {
    unsigned int parsingMode = 0;
    short includeABC = 0;
    short convertJpegTables = 0;
};

VXSwfDefineSpriteTag* Merge(VXSwfTagSet& target, VXSwfTagSet& source, int frame, IVXSwfIdGenerator& generator,
                            Exports* exports = nullptr, const MergeOptions& options = {}) {
    return target.IncludeTagSetAsSprite(&source, frame, &generator, exports, options.includeABC, nullptr, 0,
                                        options.convertJpegTables);
}

Bytes Export(unsigned int id, const char* name) {
    return TagBytes(56, Join({Word(1), Word(id), Text(name)}));
}

Bytes NamedPlacement(unsigned int id, unsigned int depth, const char* name) {
    return LongTagBytes(26, Join({Hex("22"), Word(depth), Word(id), Text(name)}));
}

TEST(VXSwfTagSetMerging, AMovieBecomesASprite) {
    const Bytes script = TagBytes(12, Hex("00"));
    const Bytes label = TagBytes(43, Text("a"));
    VXSwfTagSet source;
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
    VXSwfTagSet target;
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
    EXPECT_EQ(DumpOf(source), sourceBytes) << "the source stays as it is";
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

TEST(VXSwfTagSetMerging, WhatComesOfEachTag) {
    const Bytes none;
    const Bytes type4 = TagBytes(4, Hex("01 00 05 00 00"));
    const Bytes code = TagBytes(82, Hex("01 00 00 00 00 AA"));
    const Bytes tables = TagBytes(8, Hex("FF D8"));
    const Bytes picture = TagBytes(6, Hex("01 00 AA BB"));
    const Bytes converted = TagBytes(21, Hex("01 01 AA BB 00"));
    const Bytes joined = TagBytes(21, Hex("01 01 FF D8 AA BB 00"));
    const Bytes nothing = TagBytes(21, Hex("00 00 00"));
    const struct {
        const char* what;
        Bytes in, top, timeline;
        MergeOptions options{0, 0, 1};
    } rows[] = {
        {"a depth wraps", Placement(9, 65500), none, Placement(9, 64)},
        {"type 5", TagBytes(5, Hex("09 00 05 00")), none, TagBytes(5, Hex("09 00 69 00"))},
        {"type 28, loaded raw", TagBytes(28, Word(5)), none, TagBytes(28, Word(105)), {1}},
        {"a clip depth is lifted too", TagBytes(26, Hex("42 05 00 09 00 0A 00")), none,
         LongTagBytes(26, Hex("42 69 00 09 00 6E 00"))},
        {"for type 70 it becomes the depth", TagBytes(70, Hex("42 00 05 00 09 00 0A 00")), none,
         LongTagBytes(70, Hex("42 00 69 00 09 00 69 00"))},
        {"type 70, loaded raw",
         TagBytes(70, Hex("02 00 05 00 09 00")),
         none,
         LongTagBytes(70, Hex("02 00 69 00 09 00")),
         {1}},
        {"type 4 has no copy", Join({Bitmap(1), type4}), Bitmap(0x101), none},
        {"type 4, loaded raw",
         Join({Bitmap(1), type4}),
         Bitmap(0x101),
         TagBytes(4, Hex("01 00 69 00 00 00")),
         {1}},
        {"the first definition of an ID wins", Join({Bitmap(7), TagBytes(20, Word(7)), Placement(7, 1)}),
         Bitmap(0x101), Placement(0x101, 101)},
        {"nobody has asked for 9 yet", Join({Export(9, "x"), Placement(9, 1)}), Export(9, "x"),
         Placement(9, 101)},
        {"the placement's question left an entry of 0", Join({Placement(9, 1), Export(9, "x")}),
         Export(0, "x"), Placement(9, 101)},
        {"bytecode comes when asked for by 1", code, code, none, {0, 1, 0}},
        {"and by nothing else", code, none, none, {0, 2, 0}},
        {"the first tables, wherever they are", Join({picture, tables, TagBytes(8, Word(7))}), joined, none},
        {"tables are not asked for", Join({tables, picture}), converted, none, {0, 0, 0}},
        {"no tables, and the same ID again", Join({picture, picture}), converted, none},
        {"empty tables", Join({TagBytes(8, none), picture}), converted, none},
        {"an empty picture", Join({tables, TagBytes(6, Word(1))}), TagBytes(21, Hex("01 01 FF D8 00")), none},
        {"a picture without an ID", TagBytes(6, Hex("01")), nothing, none},
        {"a picture without a body", TagBytes(6, none), nothing, none},
    };
    for (const auto& row : rows) {
        VXSwfTagSet target, source;
        LoadTags(source, row.in, row.options.parsingMode);
        const Bytes before = DumpOf(source);
        CountingGenerator generator;
        Merge(target, source, 0, generator, nullptr, row.options);
        EXPECT_EQ(DumpOf(source), before) << row.what;
        EXPECT_EQ(DumpOf(target), Join({row.top, Sprite(0x100, 0, row.timeline)})) << row.what;
    }

    VXSwfTagSet target, source;
    source.AppendTag(MakeTag(6, 0).release());  // built by code, it is of another class
    VXBitStream in = StreamOver(picture);
    EXPECT_EQ((*source.begin())->LoadFromStream(in), kVXSuccess);
    CountingGenerator generator;
    Merge(target, source, 0, generator);
    EXPECT_EQ(DumpOf(target), Join({converted, Sprite(0x100, 0, none)}));
}

TEST(VXSwfTagSetMerging, PackagesComeOnce) {
    const struct {
        const char* what;
        Bytes exports;
        unsigned int parsingMode;
        std::vector<unsigned int> types;
    } rows[] = {
        {"nothing but the prefix", Export(1, "__Packages"), 0, {56, 39, 39}},
        {"loaded raw", Export(1, "__Packages.a.B"), 1, {56, 39, 39}},
        {"nine characters are not enough", Export(1, "__Package.a.B"), 0, {56, 39, 56, 39}},
        {"the first entry decides",
         TagBytes(56, Join({Word(2), Word(1), Text("a"), Word(1), Text("__Packages.a")})),
         0,
         {56, 39, 56, 39}},
        {"an empty table", TagBytes(56, Word(0)), 0, {56, 39, 56, 39}},
    };
    for (const auto& row : rows) {
        VXSwfTagSet target, source;
        LoadTags(source, row.exports, row.parsingMode);
        CountingGenerator generator;
        Exports exports;
        Merge(target, source, 0, generator, &exports);
        Merge(target, source, 0, generator, &exports);
        EXPECT_EQ(TypesOf(target), row.types) << row.what;
        EXPECT_EQ(exports.size(), 4 - row.types.size()) << row.what;
        Merge(target, source, 0, generator, nullptr);
        EXPECT_EQ(target.GetNumTags(), row.types.size() + 2) << "without a map all come";
    }
}

TEST(VXSwfTagSetMerging, TablesThatDwarfThePicturesAreJoinedWithinReason) {
    Bytes tags = LongTagBytes(8, Repeat(8u << 20, 0xFF));
    for (unsigned int id = 1; id < 10; ++id) tags = Join({tags, TagBytes(6, Word(id))});
    VXSwfTagSet target, source;
    LoadTags(source, tags);
    CountingGenerator generator;
    Merge(target, source, 0, generator, nullptr, {0, 0, 1});
    EXPECT_EQ(target.GetNumTags(), 10u);
    EXPECT_EQ(DumpOf(target).size() >> 20, 64u) << "the ninth picture comes without";
}

TEST(VXSwfTagSetMerging, ComponentsGetTheirReservedIds) {
    const auto placements = [](unsigned int button, unsigned int bar, unsigned int depth) {
        return Join({NamedPlacement(bar, depth, "UIscrollbar_mc"),
                     NamedPlacement(button, depth + 1, "button_mc"),
                     NamedPlacement(bar, depth + 2, "button_mc"), NamedPlacement(9, depth + 3, "combobox_mc"),
                     NamedPlacement(0, depth + 4, "textarea_mc")});
    };
    VXSwfTagSet target, source;
    LoadTags(source, Join({Bitmap(1), Bitmap(2), placements(1, 2, 1)}));
    CountingGenerator generator;
    target.IncludeTagSetAsSprite(&source, 0, &generator, nullptr, 0, nullptr, 1, 0);
    EXPECT_THAT(generator.wanted, ElementsAre(kVXSwfButtonId, kVXSwfScrollBarId))
        << "in the order of the kinds, and not for what nobody defines";
    EXPECT_EQ(DumpOf(target),
              Join({Bitmap(0x103), Bitmap(0x104), Sprite(0x100, 0, placements(0x103, 0x104, 101))}));

    VXSwfTagSet labelled, undefined;
    LoadTags(labelled, TagBytes(43, Text("ab")));
    LoadTags(undefined, NamedPlacement(9, 1, "hotspotanim_mc"));
    labelled.IncludeTagSetAsSprite(&undefined, 0, &generator, nullptr, 0, nullptr, 1, 0);
    EXPECT_EQ(DumpOf(labelled), Join({TagBytes(43, Hex("06 01 00")),
                                      Sprite(0x105, 0, NamedPlacement(0x106, 101, "hotspotanim_mc"))}))
        << "the first tag without an ID is taken for the character that nobody defines";
}

TEST(VXSwfTagSetMerging, NothingToMergeGivesTheCallerAnEmptySprite) {
    VXSwfTagSet target, source;
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

TEST(VXSwfTagSetMerging, FramesThatAreNotThereMeanTheEndAndAMovieGoesIntoItself) {
    for (const int frame : {0, 3, -1}) {
        VXSwfTagSet movie;
        LoadTags(movie, Join({kShowFrame, Bitmap(1)}));
        CountingGenerator generator;
        Merge(movie, movie, frame, generator);
        EXPECT_EQ(DumpOf(movie), Join({kShowFrame, Bitmap(1), Bitmap(0x101), Sprite(0x100, 1, kShowFrame)}));
    }
}

TEST(VXSwfTagSetMerging, OneCharacterComesWithWhatItNeeds) {
    VXSwfTagSet target, source;
    const Bytes type4 = TagBytes(4, Hex("01 00 05 00 00 00"));
    LoadTags(source, Join({Bitmap(1), Bitmap(2), Sprite(3, 0, Join({Placement(1), Placement(2)})), kShowFrame,
                           NamedPlacement(3, 1, "both"), Sprite(6, 0, type4)}));
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
    EXPECT_EQ(sprite, target.FindTagByID(0x102));
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
    VXSwfTagSet old;
    old.IncludeCharacter(&source, 6, ignored, &generator, 0);
    EXPECT_EQ(DumpOf(old), Sprite(0x106, 0, type4)) << "the placement counts as character 1, and has no copy";

    unsigned short id = 1;
    CountingGenerator meddling(&id);
    EXPECT_NE(target.IncludeCharacter(&source, id, id, &meddling, 1), nullptr)
        << "the ID is taken at the call, whatever the generator does to the variable";
}

// Shape records of six bits, which take two hundred times their bytes. What came raw is parsed by a copy.
TEST(VXSwfTagSetMerging, CopiesHaveALimit) {
    const auto shape = [](std::size_t records) {
        const Bytes four = Hex("20 82 08");
        return LongTagBytes(2, Join({Word(1), Hex("00 00 00 00"), Repeat(records / 4, four), Hex("00")}));
    };
    Bytes nested = shape(300000);
    for (unsigned int id = 16; id != 0; --id) nested = Sprite(id, 0, nested);
    VXFlintFile target, shapes, sprites;
    LoadTags(target, kShowFrame);
    LoadTags(shapes, shape(4000000), 1);
    LoadTags(sprites, nested, 1);
    CountingGenerator generator;
    unsigned short ignored = 0;
    EXPECT_THROW(delete (*shapes.begin())->Copy(), std::bad_alloc);
    EXPECT_THROW(delete shapes.Copy(), std::bad_alloc);
    EXPECT_THROW(Merge(target, shapes, 1, generator), std::bad_alloc);
    EXPECT_THROW(target.IncludeCharacter(&sprites, 1, ignored, &generator, 1), std::bad_alloc)
        << "each sprite comes with all that it holds";
    EXPECT_EQ(TypesOf(target), std::vector<unsigned int>{1});
    EXPECT_NE(Merge(target, sprites, 1, generator), nullptr) << "each call has its own limit";
}

/// A host's own tag, whose copies fail when their references are to change.
class FailingTag : public VXSwfTag {
public:
    FailingTag() : VXSwfTag(VXSwfTagFactory::TAG_DEFINEVIDEO, 1) {}
    unsigned short GetCharacterId() const override { return 2; }
    VXSwfTag* Copy() override { return new FailingTag; }
    void UpdateReferenceIDs(VXFlintIDMap*) override { throw 2; }
};

TEST(VXSwfTagSetMerging, WhatFailsIsTakenBack) {
    VXSwfTagSet source, other;
    LoadTags(source, Join({Bitmap(1), Export(1, "__Packages.a"), NamedPlacement(9, 1, "hotspotanim_mc"),
                           TagBytes(3, Word(1)), Sprite(3, 0, Join({Placement(2), Placement(1)}))}));
    source.AppendTag(new FailingTag);
    source.PlaceObject(3, -1, "failing", 0, 0, 0, {});
    LoadTags(other, Sprite(8, 0, Join({Placement(1), Placement(2), Placement(3)})));
    VXFlintFile target;
    std::list<VXSwfTagFactory::enuTagType> types{VXSwfTagFactory::TAG_DEFINEBITSLOSSLESS2};
    VXIgnore(target.SetListsTobeMaintained(types));
    LoadTags(target, Join({TagBytes(43, Text("first without an ID")), kShowFrame}));
    CountingGenerator generator;
    unsigned short ignored = 0;
    target.IncludeCharacter(&source, 1, ignored, &generator, 0xFFFFFFFF);
    const Bytes before = DumpOf(target);
    Exports exports;
    short frees = 5;
    EXPECT_THROW(target.IncludeTagSetAsSprite(&source, 1, &generator, &exports, 1, &frees, 1, 1), int);
    for (const unsigned int frame : {0u, 1u, 0xFFFFFFFFu}) {
        EXPECT_THROW(target.IncludeSpriteByName(&source, "failing", &generator, frame), int);
    }
    EXPECT_EQ(DumpOf(target), before);
    EXPECT_EQ(exports.size() + static_cast<unsigned int>(frees), 5u);
    std::list<VXSwfTag*>* bitmaps = nullptr;
    VXIgnore(target.GetTagListOfType(VXSwfTagFactory::TAG_DEFINEBITSLOSSLESS2, &bitmaps));
    EXPECT_THAT(*bitmaps, ElementsAre(target.FindTagByID(0x100)));
    auto* sprite =
        dynamic_cast<VXSwfDefineSpriteTag*>(target.IncludeCharacter(&other, 8, ignored, &generator, 1));
    EXPECT_EQ(DumpOf(static_cast<VXSwfTagSet&>(*sprite)),
              Join({Placement(0x100), Placement(2), Placement(3)}))
        << "new IDs of characters that were taken back are forgotten";
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
    EXPECT_EQ(set.FindSpriteIdByExportName("x"), 1);
    EXPECT_EQ(set.FindSpriteIdByExportName("again"), 0) << "an ID has its first name";
    EXPECT_EQ(set.FindSpriteIdByExportName("y"), 2);
    EXPECT_EQ(set.FindSpriteIdByExportName("z"), 7) << "an ID of 0 ends its table";
    EXPECT_EQ(set.FindSpriteIdByExportName("behind"), 0);
}

TEST(VXSwfTagSetMerging, TheEndRemovesAndFrees) {
    const Bytes body = Join({Placement(1, 5), Bitmap(1)});
    VXSwfTagSet set;
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
