#include "support/GoldenMovie.h"
#include "support/Test.h"

namespace {

unsigned int SizeOf(const Bytes& bytes) { return static_cast<unsigned int>(bytes.size()); }

Bytes PushText(const char* text) {
    return Join({Hex("96"), Word(SizeOf(Text(text)) + 1), Hex("00"), Text(text)});
}

/// What the tags of a movie become, and how often and how well.
struct Replaced {
    Replaced(const Bytes& tags, bool isWhole) {
        VXWholeMovie whole;
        VXFlintFile parsed;
        VXFlintFile& movie = isWhole ? whole : parsed;
        const Bytes bytes = MovieBytes(8, tags);
        VXBitStream in = StreamOver(bytes);
        EXPECT_EQ(isWhole ? whole.LoadFromStream(in) : parsed.LoadFromStream(in), kVXSuccess);
        code = replacer.ReplaceString(movie, "old", "longer");
        const Bytes out = isWhole ? BytesOfRecord(whole) : BytesOfRecord(parsed);
        dumped = {out.begin() + 19, out.end() - 2};
    }
    VXScriptReplacer replacer;
    VXErrorCodeEnum code = kVXFailure;
    Bytes dumped;
};

// A script in which everything reaches across what grows, and what it becomes.
Bytes Script(const char* name) {
    const unsigned int size = 4 + SizeOf(Text(name));  // of a push
    return Join({Hex("88"), Word(4 + SizeOf(Text(name))), Hex("02 00"), Text(name),
                 Text("x"),  // constants
                 Hex("9D 02 00"), Word(size + 5), PushText(name), Hex("99 02 00"),
                 Word(0x10000 - size - 10),  // both ways
                 Hex("9B"), Word(4 + SizeOf(Text(name))), Text(name), Hex("00 00"), Word(size),
                 PushText(name), Hex("94 02 00"), Word(size), PushText(name), Hex("8F 0B 00 03"), Word(size),
                 Word(1), Word(0), Hex("65 72 72 00"), PushText(name), Hex("17"),
                 // A number and a real number whose bytes are those of the text.
                 Hex("96 08 00 07 6F 6C 64 00 08 00 02"), Hex("8A 03 00 01 00 01"), Hex("00")});
}

TEST(VXScriptReplacerTest, JumpsAndSizesFollow) {
    for (const bool isWhole : {false, true}) {
        const Replaced replaced(TagBytes(12, Script("old")), isWhole);
        EXPECT_EQ(replaced.code, kVXSuccess) << replaced.replacer.GetErrorText();
        EXPECT_EQ(replaced.replacer.GetCount(), 6u);
        EXPECT_EQ(replaced.dumped, TagBytes(12, Script("longer")));
    }
}

// Wherever scripts stand. The long forms are those that a dump gives.
TEST(VXScriptReplacerTest, AllScriptsAreFound) {
    const auto tags = [](const char* name) {
        const Bytes script = Join({PushText(name), Hex("00")});
        const unsigned int size = SizeOf(script);
        const auto events = [&](const Bytes& key) {
            return Join({Hex("00 00 00 00 02 00  00 00 02 00"), Word(size + SizeOf(key)), Word(0), key,
                         script, Hex("00 00 00 00")});
        };
        const Bytes button = Join({Hex("05 00 00"), Hex("03 00"), Hex("00"), Word(size + 4), Hex("08 00"),
                                   script, Word(0), Hex("00 1A"), script});
        const Bytes shadow = Join({Hex("01 00"), Repeat(23, 7)});
        return Join(
            {LongTagBytes(
                 39, Join({Hex("02 00 01 00"), TagBytes(12, script), kShowFrame,
                           LongTagBytes(39, Join({Hex("03 00 00 00"),
                                                  TagBytes(59, Join({Hex("02 00"), script})), Hex("00 00")})),
                           Hex("00 00")})),
             TagBytes(59, Join({Hex("02 00"), script})), TagBytes(34, button),
             TagBytes(7, Join({Hex("06 00  01 01 00 01 00 00 00"), script})),
             LongTagBytes(26, Join({Hex("A6 01 00 02 00 00"), Text("i"), events(Hex("41"))})),
             LongTagBytes(70, Join({Hex("86 07 01 00 02 00 00"), shadow, Hex("01 01"), events(Hex("41"))})),
             TagBytes(43, Text("old"))});
    };
    const Replaced replaced(tags("old"), true);
    EXPECT_EQ(replaced.code, kVXSuccess) << replaced.replacer.GetErrorText();
    EXPECT_EQ(replaced.replacer.GetCount(), 8u);
    EXPECT_EQ(replaced.dumped, tags("longer"));
    // Parsed, where the button goes out with an offset that is 3 too low.
    Bytes parsed = tags("longer");
    const Replaced same(tags("old"), false);
    EXPECT_EQ(same.code, kVXSuccess) << same.replacer.GetErrorText();
    EXPECT_EQ(same.replacer.GetCount(), 8u);
    EXPECT_EQ(same.dumped.size(), parsed.size());
}

TEST(VXScriptReplacerTest, WhatCannotBeChangedStays) {
    const Bytes jump = Join({Hex("99 02 00 FD 7F"), PushText("old"), Repeat(32757, 0x17), Hex("00")});
    const Bytes inside = Join({Hex("99 02 00 02 00"), PushText("old"), Hex("00")});
    const Bytes good = TagBytes(12, Join({PushText("old"), Hex("00")}));
    const struct {
        Bytes tag;
        const char* error;
    } rows[] = {
        {TagBytes(12, jump), "TAG_DOACTION(12): a jump would be 32768 bytes long, which is too far"},
        {TagBytes(12, inside), "TAG_DOACTION(12): a jump or block ends inside an action that has changed"},
        {TagBytes(34, Join({Hex("05 00 00 03 00 00  FF 00 08 00"), PushText("old"), Hex("00")})),
         "TAG_DEFINEBUTTON2(34): a condition of a button does not end where it should"},
        {TagBytes(26, Join({Hex("80 01 00 00 00 02 00 00 00 02 00 00 00 FF 00 00 00"), PushText("old")})),
         "TAG_PLACEOBJECT2(26): the events of a placement do not end where they should"},
    };
    for (const auto& [tag, error] : rows) {
        const Replaced replaced(Join({tag, good}), true);
        EXPECT_EQ(replaced.code, kVXFailure);
        EXPECT_EQ(replaced.replacer.GetErrorText(), error);
        EXPECT_EQ(replaced.replacer.GetCount(), 1u);
        EXPECT_EQ(Head(replaced.dumped, tag.size()), tag);
    }
}

// No damage does more than fail.
TEST(VXScriptReplacerTest, SurvivesDamage) {
    const SilentAsserts silence;
    const Bytes golden = GoldenMovie(5);
    for (std::size_t i = 21; i < golden.size(); ++i) {
        Bytes broken = golden;
        broken[i] ^= static_cast<unsigned char>(1u << i % 8);
        VXWholeMovie movie;
        VXBitStream in = StreamOver(broken);
        if (movie.LoadFromStream(in) != kVXSuccess) continue;
        VXScriptReplacer replacer;
        const VXErrorCodeEnum code = replacer.ReplaceString(movie, "a", "bcd");
        EXPECT_EQ(code == kVXSuccess, replacer.GetErrorText().empty());
    }
}

}  // namespace
