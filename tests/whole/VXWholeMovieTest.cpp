#include "support/GoldenMovie.h"
#include "support/Test.h"

namespace {

using Packing = VXWholeMovie::Packing;

Bytes Whole(VXWholeMovie& movie, Packing packing = Packing::kNone) {
    movie.SetPacking(packing);
    return BytesOfRecord(movie);
}

TEST(VXWholeMovieTest, AMovieComesBackAsItWas) {
    const Bytes info = Hex("60 00 3E 80 00 1F 40  80 0C 01 00");
    const auto movie = [](const Bytes& frameInfo, const Bytes& rest) {
        return Join({Hex("46 57 53 06 FF 00 01 00"), frameInfo, rest});  // its length is a lie
    };
    const struct {
        const char* what;
        Bytes bytes;
        const char* tail;
    } rows[] = {
        {"a rectangle that is wider than it must be, with bits behind it",
         movie(Hex("F8 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 7F  01 0C 01 00"), Hex("40 00 00 00")),
         ""},
        {"long headers, one over nothing, and types that nobody knows",
         movie(info, Join({LongTagBytes(1, {}), LongTagBytes(900, Hex("01")), Sprite(1, 7, Placement(2)),
                           TagBytes(39, {}), TagBytes(37, Hex("FF")), Hex("00 00")})),
         ""},
        {"no end tag", movie(info, kShowFrame), "there is no end tag"},
        {"half a header", movie(info, Hex("40 00 40")), "there is no end tag, and a byte that is no tag"},
        {"tags behind the end tag", movie(info, Hex("00 00 40 00 00 00")), "4 bytes follow the end tag"},
        {"a cut tag", movie(info, Hex("40 00 45 13 01")),
         "the last tag, of type 77, is cut: 3 bytes of it are there"},
        {"a cut length", movie(info, Hex("7F 13 01 00")),
         "the last tag, of type 77, is cut: 4 bytes of it are there"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        VXWholeMovie whole;
        ASSERT_EQ(LoadInto(whole, row.bytes), kVXSuccess) << whole.GetErrorText();
        EXPECT_EQ(whole.DescribeTail(), row.tail);
        EXPECT_EQ(Whole(whole), row.bytes);
        for (const Packing packing : {Packing::kDeflate, Packing::kLzma}) {
            if (packing == Packing::kLzma && !VXWholeMovie::HasLzma()) continue;
            VXWholeMovie again;
            ASSERT_EQ(LoadInto(again, Whole(whole, packing)), kVXSuccess) << again.GetErrorText();
            EXPECT_EQ(again.GetPacking(), packing);
            EXPECT_EQ(Whole(again), row.bytes);
        }
    }
}

TEST(VXWholeMovieTest, WhatAHostChangesIsAllThatIsNew) {
    const Bytes text = TagBytes(37, Join({Hex("05 00  00  80 00"), Text("n"), Text("gr\xC3\xBC\xC3\x9F")}));
    const Bytes label = LongTagBytes(43, Text("a"));
    VXWholeMovie movie;
    ASSERT_EQ(LoadInto(movie, Join({Hex("46 57 53 06 00 00 00 00  60 00 3E 80 00 1F 40  80 0C 01 00"), text,
                                    label, Hex("00 00 07")})),
              kVXSuccess);
    movie.SetFrameRate(30);
    ASSERT_EQ(movie.Parse(movie.begin()), kVXSuccess) << movie.GetErrorText();
    auto* field = dynamic_cast<VXSwfDefineEditTextTag*>(*movie.begin());
    ASSERT_NE(field, nullptr);
    field->SetText("new");
    EXPECT_EQ(Whole(movie), Join({Hex("46 57 53 06 2B 00 00 00  60 00 3E 80 00 1F 40  00 1E 01 00"),
                                  TagBytes(37, Join({Hex("05 00  00  80 00"), Text("n"), Text("new")})),
                                  label, Hex("00 00 07")}));
}

TEST(VXWholeMovieTest, ParsedTagsAreWhatALoadMakes) {
    const SilentAsserts silence;
    const Bytes bytes = GoldenMovie(8);
    VXFlintFile told;
    VXWholeMovie movie;
    std::list<VXSwfTagFactory::enuTagType> types = {VXSwfTagFactory::TAG_DEFINEEDITTEXT};
    EXPECT_EQ(movie.SetListsTobeMaintained(types), kVXSuccess);
    ASSERT_EQ(LoadInto(told, bytes), kVXSuccess);
    ASSERT_EQ(LoadInto(movie, bytes), kVXSuccess);
    EXPECT_EQ(movie.GetActionScriptVersion(), told.GetActionScriptVersion());
    const std::function<void(VXSwfTagSet&)> parse = [&](VXSwfTagSet& set) {
        for (auto tag = set.begin(); tag != set.end(); ++tag) {
            EXPECT_EQ(movie.Parse(set, tag), kVXSuccess) << movie.GetErrorText();
            if (auto* sprite = dynamic_cast<VXSwfDefineSpriteTag*>(*tag)) parse(*sprite);
        }
    };
    parse(movie);
    EXPECT_EQ(DumpOf(static_cast<VXFlintFile&>(movie)), DumpOf(told));
    EXPECT_EQ(TypesOf(movie), TypesOf(told));
    std::list<VXSwfTag*>* fields = nullptr;
    EXPECT_EQ(movie.GetTagListOfType(VXSwfTagFactory::TAG_DEFINEEDITTEXT, &fields), kVXSuccess);
    for (VXSwfTag* field : *fields) EXPECT_NE(dynamic_cast<VXSwfDefineEditTextTag*>(field), nullptr);
}

TEST(VXWholeMovieTest, WhatCannotBeParsedStays) {
    // A sprite without a frame count, and one sprite inside another 65 times.
    Bytes nested;
    for (unsigned int i = 0; i < 66; ++i) nested = Sprite(1, 0, nested);
    const Bytes bytes = MovieBytes(6, Join({TagBytes(39, Hex("01 00")), nested}));
    VXWholeMovie movie;
    ASSERT_EQ(LoadInto(movie, bytes), kVXSuccess);
    EXPECT_EQ(movie.Parse(movie.begin()), kVXFailure);
    EXPECT_EQ(movie.GetErrorText(), "the fields of a tag of type 39 cannot be read");
    VXSwfTagSet* set = &movie;
    auto place = std::next(movie.begin());
    unsigned int depth = 0;
    for (; movie.Parse(*set, place) == kVXSuccess; ++depth) {
        set = dynamic_cast<VXSwfTagSet*>(*place);
        place = set->begin();
    }
    EXPECT_EQ(depth, 64u);
    EXPECT_EQ(Whole(movie), bytes);
}

TEST(VXWholeMovieTest, LzmaEndsWithAMarkOrAtTheStatedLength) {
    // 11 bytes of header, tag 77 with 40 times 42, a frame and the end, by another program.
    const Bytes plain = Join({Hex("46 57 53 06 41 00 00 00  60 00 3E 80 00 1F 40  80 0C 01 00"),
                              TagBytes(77, Repeat(40, 0x42)), Hex("40 00 00 00")});
    const Bytes common = Hex("00 30 00 03 C6 0E 00 88 37 8B C0 AA 3C 88 11 07 4A BF C6 64 CB");
    const Bytes marked = Join({common, Hex("1F ED CD DF FF FC CB B0 00")});
    const Bytes unmarked = Join({common, Hex("18 E8 00 00")});
    const auto movie = [](const char* length, const Bytes& stream) {
        return Join({Hex("5A 57 53 06"), Hex(length), Hex("00 00 00 00  5D 00 00 01 00"), stream});
    };
    const struct {
        const char* what;
        Bytes bytes;
        bool isGood;
    } rows[] = {
        {"a mark", movie("41 00 00 00", marked), true},
        {"a mark, and a length that is too small", movie("20 00 00 00", marked), true},
        {"no mark", movie("41 00 00 00", unmarked), true},
        {"no mark, and a length that is not reached", movie("FF 00 00 00", unmarked), false},
        {"a cut stream", movie("41 00 00 00", Head(marked, 12)), false},
        {"properties that there are not",
         Join({Hex("5A 57 53 06 41 00 00 00  00 00 00 00  FF 00 00 01 00"), marked}), false},
        {"a header that ends early", Hex("5A 57 53 06 41 00 00 00  00 00 00 00  5D"), false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        VXWholeMovie whole;
        if (!VXWholeMovie::HasLzma()) {
            EXPECT_EQ(LoadInto(whole, row.bytes), kVXFailure);
            EXPECT_EQ(whole.GetErrorText(), "compressed with LZMA (ZWS), which this build cannot read");
            continue;
        }
        EXPECT_EQ(LoadInto(whole, row.bytes) == kVXSuccess, row.isGood) << whole.GetErrorText();
        if (!row.isGood) continue;
        EXPECT_EQ(whole.GetNumTags(), 2u);
        const Bytes dumped = Whole(whole);
        EXPECT_EQ(Bytes(dumped.begin() + 8, dumped.end()), Bytes(plain.begin() + 8, plain.end()));
    }
    VXFlintFile told;
    EXPECT_EQ(LoadInto(told, rows[0].bytes), kVXFailure);
}

}  // namespace
