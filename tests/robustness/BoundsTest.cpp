#include "robustness/Memory.h"
#include "support/Test.h"

namespace {

constexpr std::size_t kBody = 262144;
constexpr std::size_t kMostPerByte = 512;

/// As many copies of `part` as fill a body.
Bytes Fill(const Bytes& part) { return Repeat(kBody / part.size(), part); }

/// A shape without styles and as many copies of `bits` as fill a body, without an end.
Bytes Shape(const char* bits) {
    std::string whole;
    for (int i = 0; i < 8; ++i) whole += bits;
    return LongTagBytes(32, Join({Word(1), Hex("00 00 00 00"), Fill(Bits(whole))}));
}

Bytes Text(const char* widths, const Bytes& runs) {
    return TagBytes(11, Join({Word(1), Hex("00 00"), Hex(widths), runs}));
}

/// Sprites in sprites, `depth` of them, around a body.
Bytes Nested(unsigned int depth, Bytes tags) {
    for (unsigned int i = 0; i < depth; ++i) tags = Sprite(1, 0, tags);
    return tags;
}

/// A button with one condition, whose script is one action that claims bytes that are not there.
Bytes Button(unsigned int claimed) {
    return TagBytes(34, Join({Hex("01 00  00 03 00  00  00 00 00 00  96"), Word(claimed)}));
}

Bytes Chain(std::size_t conditions) {
    // Each condition is one byte behind the one before, and all scripts go on to the end.
    const Bytes chain = Repeat(conditions, Hex("01 00"));
    return TagBytes(34, Join({Hex("01 00  00 03 00  00"), chain, Repeat(64, 0x01), Hex("96 FF FF")}));
}

Bytes Compressed(const Bytes& movie, unsigned int claimed) {
    const Bytes packed = Deflated(Bytes(movie.begin() + 8, movie.end()), 9);
    return Join({Hex("43 57 53 05"), Word(claimed), Word(claimed >> 16), packed});
}

struct Row {
    const char* name;
    Bytes movie;
    VXErrorCodeEnum result = kVXSuccess;
    std::size_t inflated = 0;  // when the movie is compressed

    friend void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }
};

std::vector<Row> Rows() {
    const Bytes plain = MovieBytes(5, Repeat(2 * kBody, kShowFrame));
    const Bytes dense = MovieBytes(5, LongTagBytes(777, Noise(kBody)));
    const auto row = [](const char* name, const Bytes& tags, VXErrorCodeEnum result = kVXSuccess) {
        return Row{name, MovieBytes(5, tags), result};
    };
    const Bytes handler = Hex("00 01 00 00 00 00 00");
    return {
        row("sprites in sprites", Nested(2000, {})),
        row("shapes deep inside", Nested(15, Fill(TagBytes(17, {})))),
        row("tags without a body", Fill(TagBytes(777, {}))),
        row("button sounds without a body", Fill(TagBytes(17, {}))),
        row("placements without a body", Fill(TagBytes(70, {}))),
        row("placements with a transform", Fill(TagBytes(26, Hex("08 01 00 00")))),
        row("a length that lies",
            Join({Fill(kShowFrame), Word(777 << 6 | 63), Hex("FF FF FF FF"), Hex("01")})),
        row("shape records of six bits", Shape("001000"), kVXFailure),
        row("moves of no bits", Shape("000001 00000"), kVXFailure),
        row("edges of no length", Shape("11 0000 00 00"), kVXFailure),
        row("styles of one byte",
            LongTagBytes(32, Join({Word(1), Hex("00 FF FF FF"), Repeat(65535, 1), Hex("00 00 00")}))),
        row("a count of styles that lies",
            LongTagBytes(32, Join({Word(1), Hex("00  FF FF FF"), Repeat(70000, 0x10)})), kVXFailure),
        row("new styles of one byte",
            LongTagBytes(32, Join({Word(1), Hex("00 00 00 00"),
                                   Fill(Join({Hex("40 FE"), Repeat(254, 1), Hex("00 00")})), Hex("00")}))),
        row("glyphs of no bits", LongTagBytes(11, Join({Word(1), Hex("00 00 00 00"), Fill(Hex("80 FF"))}))),
        row("small texts of glyphs of no bits", Fill(Text("00 00", Hex("80 FF")))),
        row("small texts of glyphs behind the end", Fill(Text("FF 00", Hex("80 FF")))),
        row("runs without glyphs", LongTagBytes(11, Join({Word(1), Hex("00 00 00 00"), Fill(Hex("80 00"))}))),
        row("actions of one byte", LongTagBytes(12, Join({Fill(Hex("07")), Hex("00")}))),
        row("scripts that are cut short", Fill(Button(2500))),
        row("scripts that are cut too short", Fill(Button(65535)), kVXFailure),
        row("conditions in each other", Fill(Chain(100))),
        row("clip actions",
            LongTagBytes(26, Join({Hex("80 01 00  00 00 00 00"), Fill(handler), Hex("00 00")}))),
        row("names of nothing", LongTagBytes(76, Join({Hex("FF FF"), Fill(Hex("01 00 00"))}))),
        {"a movie that inflates a thousandfold", Compressed(plain, static_cast<unsigned int>(plain.size())),
         kVXSuccess, plain.size()},
        {"a header that claims four gigabytes", Compressed(dense, 0xFFFFFFFF), kVXSuccess, dense.size()},
    };
}

/// Peak memory of a load and a dump.
class Bounds : public testing::Test {
protected:
    /// `flat` comes on top of what the bytes may cost.
    void Measure(std::size_t size, std::size_t flat, const std::function<void()>& run) {
        const std::size_t before = Memory::GetLive();
        Memory::ResetPeak();
        run();
        const std::size_t peak = Memory::GetPeak() - before;
        EXPECT_EQ(Memory::GetLive(), before);
        EXPECT_LE(peak, kMostPerByte * size + flat);
        RecordProperty("BytesPerByte", std::to_string(peak / size));
    }

private:
    const SilentAsserts m_Silence;
};

class BoundsOfMovies : public Bounds, public testing::WithParamInterface<Row> {};

TEST_P(BoundsOfMovies, LoadAndDump) {
    const Row& row = GetParam();
    Measure(row.inflated != 0 ? row.inflated : row.movie.size(), 1 << 20, [&row] {
        VXFlintFile movie;
        VXBitStream in;
        CVXStreamReadWrite stream(row.movie.data(), row.movie.size());
        EXPECT_EQ(movie.LoadFromStream(&stream), row.result);
        VXBitStream out;
        VXIgnore(movie.DumpToStream(out));
    });
}

// Carried as bytes, and combined with itself.
TEST_P(BoundsOfMovies, CombineWithItself) {
    const Row& row = GetParam();
    const std::size_t size = row.inflated != 0 ? row.inflated : row.movie.size();
    Measure(2 * size, 1 << 20, [&row] {
        VXWholeMovie movie;
        CVXStreamReadWrite first(row.movie.data(), row.movie.size());
        EXPECT_EQ(movie.LoadFromStream(&first), kVXSuccess);
        CVXStreamReadWrite second(row.movie.data(), row.movie.size());
        VXMovieCombiner combiner(movie);
        VXMovieCombiner::Options options;
        options.TakesCutSource = true;
        EXPECT_EQ(combiner.Combine(&second, options), kVXSuccess) << combiner.GetErrorText();
        VXBitStream out;
        EXPECT_EQ(movie.DumpToStream(out), kVXSuccess);
    });
}

// A font is parsed only for a host that built it by code. A glyph of three bytes has no record but its end.
TEST_F(Bounds, FontsOfEmptyGlyphs) {
    const Bytes font =
        LongTagBytes(75, Join({Word(1), Hex("00 01 00 FF FF"), Repeat(2 * 65536, 0), Repeat(4 * 65535, 0)}));
    const auto loadAndDump = [&font] {
        const auto tag = NewTag<VXSwfDefineFont2Tag>(75);
        VXBitStream in = StreamOver(font);
        VXIgnore(tag->LoadFromStream(in));
        DumpOf(*tag);
    };
    loadAndDump();  // makes what lasts for the program
    Measure(font.size(), 0, loadAndDump);
}

INSTANTIATE_TEST_SUITE_P(Rows, BoundsOfMovies, testing::ValuesIn(Rows()), [](const auto& row) {
    std::string name = row.param.name;
    for (char& letter : name) letter = letter == ' ' ? '_' : letter;
    return name;
});

}  // namespace
