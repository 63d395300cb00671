#include <filesystem>

#include "support/GoldenMovie.h"
#include "support/Test.h"
#include "whole/TagMatcher.h"

namespace {

using Options = VXMovieCombiner::Options;
using std::string;

Bytes DumpWhole(VXWholeMovie& movie) {
    movie.SetPacking(VXWholeMovie::Packing::kNone);
    return BytesOfRecord(movie);
}

/// What is made of a movie that takes others in, or why not.
struct Combined {
    explicit Combined(const Bytes& movie) : combiner((Load(whole, movie), whole)) {}
    Combined& Take(const Bytes& source, const Options& options = {}) {
        VXBitStream in = StreamOver(source);
        const Bytes before = DumpWhole(whole);
        code = combiner.Combine(in, options);
        EXPECT_EQ(code == kVXSuccess, combiner.GetErrorText().empty());
        EXPECT_TRUE(code == kVXSuccess || DumpWhole(whole) == before);
        return *this;
    }
    Bytes Tags() {
        const Bytes movie = DumpWhole(whole);
        return {movie.begin() + 19, movie.end() - 2};
    }
    static void Load(VXWholeMovie& movie, const Bytes& bytes) {
        VXBitStream in = StreamOver(bytes);
        EXPECT_EQ(movie.LoadFromStream(in), kVXSuccess);
    }

    VXWholeMovie whole;
    VXMovieCombiner combiner;
    VXErrorCodeEnum code = kVXFailure;
};

Bytes Id(unsigned int type, unsigned int id, const Bytes& rest = {}) {
    return TagBytes(type, Join({Word(id), rest}));
}

// Bitmaps 1 and 2, at depth 5 in the first frame and 7 in the second, and a mask up to depth 20.
const Bytes kBackground = TagBytes(9, Hex("01 02 03"));
const Bytes kFirstFrame = Join({Bitmap(1), TagBytes(26, Hex("02 05 00 01 00")), kShowFrame});
const Bytes kSecondFrame = Join({Bitmap(2), TagBytes(26, Hex("42 07 00 02 00 14 00")), Id(3, 9), kShowFrame});
const Bytes kMovie = MovieBytes(8, Join({kBackground, kFirstFrame, kSecondFrame}));

TEST(VXMovieCombinerTest, ASourceBecomesASprite) {
    // 9 is free in the movie but referred to there. 2 is taken; 40 is referred to and not defined.
    const Bytes source = MovieBytes(
        8, Join({TagBytes(77, Text("x")), kBackground, Bitmap(2), Bitmap(9), Bitmap(12), Id(73, 2, Hex("AA")),
                 TagBytes(57, Join({Text("u"), Hex("01 00  0D 00"), Text("n")})), TagBytes(43, Text("label")),
                 TagBytes(26, Hex("02 05 00 02 00")), Id(15, 12, Hex("00")), Id(3, 40),
                 TagBytes(12, Hex("00")), LongTagBytes(900, Hex("01")), TagBytes(24, {}), kShowFrame,
                 TagBytes(56, Join({Hex("01 00  02 00"), Text("e")})), Id(59, 9, Hex("00")),
                 TagBytes(19, Hex("05")), kShowFrame}));
    Combined combined(kMovie);
    EXPECT_EQ(combined.Take(source).code, kVXSuccess) << combined.combiner.GetErrorText();
    const Bytes front = Join({Bitmap(3), Bitmap(4), Bitmap(12), Id(73, 3, Hex("AA")),
                              TagBytes(57, Join({Text("u"), Hex("01 00  0D 00"), Text("n")})),
                              TagBytes(56, Join({Hex("01 00  03 00"), Text("e")})), Id(59, 4, Hex("00"))});
    // The frame count is that of the header, 1.
    const Bytes sprite = LongTagBytes(
        39, Join({Hex("05 00 01 00"), TagBytes(43, Text("label")), TagBytes(26, Hex("02 05 00 03 00")),
                  Id(15, 12, Hex("00")), Id(3, 40), TagBytes(12, Hex("00")), LongTagBytes(900, Hex("01")),
                  kShowFrame, TagBytes(19, Hex("05")), kShowFrame, Hex("00 00")}));
    const Bytes placement = TagBytes(26, Hex("06 15 00 05 00 00"));
    EXPECT_EQ(combined.Tags(), Join({kBackground, front, sprite, placement, kFirstFrame, kSecondFrame}));
    EXPECT_EQ(combined.combiner.GetSpriteId(), 5);
    EXPECT_EQ(combined.combiner.GetDepth(), 21);
    EXPECT_FALSE(combined.combiner.HasRaisedVersion());
    EXPECT_EQ(combined.combiner.GetRemarks(), "");

    // The next one goes behind, on top, and into a new frame.
    Options options;
    options.Frame = 2;
    options.Name = VXString("m\xC3\xB6vie");
    options.Matrix.TranslateX = 1.0;
    options.LocksRoot = true;
    const Bytes small = MovieBytes(9, kShowFrame);
    const auto emptySprite = [](unsigned int id) { return Sprite(id, 1, kShowFrame); };
    const Bytes locked = Sprite(6, 1,
                                Join({Hex("1C 03  96 06 00 00 74 68 69 73 00  1C"
                                          "96 0D 00 00 5F 6C 6F 63 6B 72 6F 6F 74 00 05 01  4F  00"),
                                      kShowFrame}));
    const Bytes named = TagBytes(26, Join({Hex("26 16 00 06 00  0C A0 00"), Text("m\xC3\xB6vie")}));
    EXPECT_EQ(combined.Take(small, options).code, kVXSuccess);
    EXPECT_TRUE(combined.combiner.HasRaisedVersion());
    EXPECT_EQ(combined.whole.GetFlintVersion(), 9);
    options = Options();
    options.Frame = 3;
    options.Depth = 3;
    EXPECT_EQ(combined.Take(small, options).code, kVXSuccess);
    EXPECT_EQ(combined.Tags(),
              Join({kBackground, front, sprite, placement, kFirstFrame, locked, named, kSecondFrame,
                    emptySprite(7), TagBytes(26, Hex("06 03 00 07 00 00")), kShowFrame}));
}

TEST(VXMovieCombinerTest, WhatCannotBeCombinedChangesNothing) {
    Bytes all;
    for (unsigned int id = 1; id != 65535; ++id) std::ranges::copy(Id(36, id), std::back_inserter(all));
    const Bytes script = TagBytes(12, Hex("00"));
    const Bytes bytecode = TagBytes(82, Hex("00 00 00 00 00"));
    Options secondFrame;
    secondFrame.Frame = 4;
    Options noFrame;
    noFrame.Frame = 0;
    const struct {
        const char* what;
        Bytes movie;
        Bytes source;
        Options options;
        const char* error;
    } rows[] = {
        {"an ID too many",
         MovieBytes(8, all),
         MovieBytes(8, Bitmap(1)),
         {},
         "there are more characters than the 65535 IDs"},
        {"no movie", kMovie, Hex("47 57 53"), {}, "not an SWF movie"},
        {"a cut source",
         kMovie,
         Head(MovieBytes(8, TagBytes(77, Repeat(9, 1))), 25),
         {},
         "the last tag, of type 77, is cut: 6 bytes of it are there"},
        {"version 3 into older",
         MovieBytes(9, Sprite(1, 1, script)),
         MovieBytes(9, bytecode),
         {},
         "scripts of version 3 cannot stand beside older ones"},
        {"older into version 3",
         MovieBytes(9, bytecode),
         MovieBytes(9, TagBytes(26, Hex("80 01 00"))),
         {},
         "scripts of version 3 cannot stand beside older ones"},
        {"a frame that is not there", kMovie, kMovie, secondFrame, "there is no frame 4, the movie has 2"},
        {"frame 0", kMovie, kMovie, noFrame, "there is no frame 0, the movie has 2"},
        {"a full stage",
         MovieBytes(8, TagBytes(26, Hex("02 FF FF 01 00"))),
         kMovie,
         {},
         "no depth is left above all others"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Combined combined(row.movie);
        EXPECT_EQ(combined.Take(row.source, row.options).code, kVXFailure);
        EXPECT_EQ(combined.combiner.GetErrorText(), row.error);
    }
    Combined last(MovieBytes(8, all));
    EXPECT_EQ(last.Take(MovieBytes(8, kShowFrame)).combiner.GetSpriteId(), 65535);
    Options cut;
    cut.TakesCutSource = true;
    EXPECT_EQ(Combined(kMovie).Take(Head(MovieBytes(8, TagBytes(77, Repeat(9, 1))), 25), cut).code,
              kVXSuccess);
}

TEST(VXMovieCombinerTest, AMovieWithoutScriptsTakesTheKindOver) {
    const Bytes source =
        MovieBytes(9, Join({TagBytes(69, Hex("19 00 00 00")), TagBytes(82, Hex("00 00 00 00 00")),
                            TagBytes(76, Join({Hex("01 00 00 00"), Text("M")})), kShowFrame}));
    const Bytes taken =
        Join({TagBytes(82, Hex("00 00 00 00 00")), Sprite(1, 1, kShowFrame),
              TagBytes(76, Join({Hex("01 00 01 00"), Text("M")})), TagBytes(26, Hex("06 01 00 01 00 00"))});
    Options options;
    options.LocksRoot = true;  // means nothing here
    EXPECT_EQ(Combined(MovieBytes(9, kShowFrame)).Take(source, options).Tags(),
              Join({TagBytes(69, Hex("09 00 00 00")), taken, kShowFrame}));
    EXPECT_EQ(
        Combined(MovieBytes(9, Join({TagBytes(69, Hex("01 00 00 00")), kShowFrame}))).Take(source).Tags(),
        Join({TagBytes(69, Hex("09 00 00 00")), taken, kShowFrame}));
}

TEST(VXMovieCombinerTest, PicturesGetTheirTables) {
    const Bytes tables = Hex("FF D8  FF DB 00 04 01 02  FF D9");
    const Bytes scan = Hex("FF DA 00 02  11 FF 00 22");
    const struct {
        const char* what;
        Bytes tables;
        Bytes picture;
        Bytes joined;
    } rows[] = {
        {"tables and a picture", tables, Join({Hex("FF D8"), scan, Hex("FF D9")}),
         Join({Hex("FF D8 FF DB 00 04 01 02"), scan, Hex("FF D9")})},
        {"marks of older programs", Join({Hex("FF D9 FF D8"), tables}),
         Join({Hex("FF D9 FF D8 FF D8"), scan, Hex("FF D9")}),
         Join({Hex("FF D8 FF DB 00 04 01 02"), scan, Hex("FF D9")})},
        {"no tables and no end",
         {},
         Join({Hex("FF D8 FF FE 00 03 41"), scan}),
         Join({Hex("FF D8 FF FE 00 03 41"), scan, Hex("FF D9")})},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const Bytes source = MovieBytes(8, Join({TagBytes(8, row.tables), Id(6, 1, row.picture)}));
        Combined combined(MovieBytes(8, {}));
        EXPECT_EQ(combined.Take(source).code, kVXSuccess);
        EXPECT_EQ(combined.Tags(), Join({Id(21, 1, row.joined), Sprite(2, 1, {}),
                                         TagBytes(26, Hex("06 01 00 02 00 00")), kShowFrame}));
    }
}

// A load at mouse down: 16 bits of events below version 6, 32 from there on.
TEST(VXMovieCombinerTest, ClipEventsTakeTheFormOfTheVersion) {
    const auto placement = [](const char* actions) {
        return LongTagBytes(26, Join({Hex("82 01 00 01 00  00 00"), Hex(actions)}));
    };
    const Bytes narrow = placement("10 00  10 00 01 00 00 00 00  00 00");
    const Bytes wide = placement("10 00 00 00  10 00 00 00 01 00 00 00 00  00 00 00 00");
    const auto place = [](unsigned int depth, unsigned int id) {
        return TagBytes(26, Join({Hex("06"), Word(depth), Word(id), Hex("00")}));
    };
    const auto movie = [](unsigned char version, const Bytes& one) {
        return MovieBytes(version, Join({Sprite(1, 0, one), one, kShowFrame}));
    };
    const auto moved = [](Bytes one) { return one[9] = 2, one; };
    EXPECT_EQ(Combined(movie(5, narrow)).Take(movie(6, wide)).Tags(),
              Join({Sprite(2, 0, moved(wide)), Sprite(3, 1, Join({moved(wide), kShowFrame})), place(2, 3),
                    Sprite(1, 0, wide), wide, kShowFrame}));
    EXPECT_EQ(Combined(movie(6, wide)).Take(movie(5, narrow)).Tags(),
              Join({Sprite(2, 0, moved(wide)), Sprite(3, 1, Join({moved(wide), kShowFrame})), place(2, 3),
                    Sprite(1, 0, wide), wide, kShowFrame}));
}

/// Looks for all of the source in what was made of both.
std::vector<string> FaultsOf(const Bytes& movie, const Bytes& source) {
    Combined combined(movie);
    if (combined.Take(source).code != kVXSuccess) return {combined.combiner.GetErrorText()};
    const Bytes result = DumpWhole(combined.whole);
    TagMatcher matcher(source[3]);
    TagViews wanted;
    for (const TagView& tag : TagsOfMovie(source)) {
        const std::set<unsigned int> leftOut = {8, 9, 24, 41, 58, 63, 64, 65, 69, 77, 86, 93};
        if (!leftOut.contains(tag.type)) wanted.push_back(tag);
    }
    bool isUnchanged = false;
    // What a movie without scripts has in its file attributes may change.
    const auto isAttributes = [](const TagView& tag) { return tag.type == 69; };
    TagViews before = TagsOfMovie(movie);
    TagViews after = TagsOfMovie(result);
    std::erase_if(before, isAttributes);
    std::erase_if(after, isAttributes);
    TagViews found = InsertedTags(before, after, isUnchanged);
    if (!isUnchanged) matcher.Faults.push_back("the movie was changed");
    matcher.SetMainTimeline(combined.combiner.GetSpriteId());
    matcher.LearnIds(wanted, found, before);
    // Pictures may be joined with tables.
    const auto isPicture = [](const TagView& tag) { return tag.type == 6 || tag.type == 21; };
    std::erase_if(found, isPicture);
    std::erase_if(wanted, isPicture);
    // The last sprite is the new one, and the last tag its placement.
    const auto sprite =
        std::find_if(found.rbegin(), found.rend(), [](const TagView& tag) { return tag.type == 39; }).base();
    const TagViews front(found.begin(), sprite);
    const TagViews behind(sprite, found.end());
    const TagViews inside = TagsOfSprite(front.back());
    if (matcher.Match(wanted, {front, inside, behind}).size() != 2) matcher.Faults.push_back("more tags");
    return matcher.Faults;
}

TEST(VXMovieCombinerTest, AllOfASourceIsThere) {
    const SilentAsserts silence;
    EXPECT_EQ(FaultsOf(MovieBytes(8, Join({Bitmap(1), Bitmap(3), kShowFrame})), GoldenMovie(8)),
              std::vector<string>());
    // The movies of a folder in all pairs, for tries by hand.
    const char* folder = std::getenv("VXSWF_MOVIES");
    if (folder == nullptr) return;
    std::vector<std::pair<string, Bytes>> movies;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".swf") continue;
        std::ifstream file(entry.path(), std::ios::binary);
        movies.emplace_back(entry.path().filename(), PlainMovie({std::istreambuf_iterator<char>(file), {}}));
    }
    for (const auto& [name, into] : movies) {
        for (const auto& [other, from] : movies) {
            EXPECT_EQ(FaultsOf(into, from), std::vector<string>()) << other << " into " << name;
        }
    }
}

}  // namespace
