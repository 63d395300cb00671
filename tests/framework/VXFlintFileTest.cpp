#include "framework/VXFlintFile.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <cmath>
#include <limits>
#include <memory>

#include "framework/VXSwfTag.h"
#include "graphics/VXTwips.h"
#include "platform/CVXStreamReadWrite.h"
#include "platform/CVXTempFileStreamReadWrite.h"
#include "support/Bytes.h"
#include "support/LimitedStream.h"
#include "support/SilentAsserts.h"
#include "support/TagSweep.h"
#include "timeline/VXSwfDefineSpriteTag.h"

namespace {

VXErrorCodeEnum Load(VXFlintFile& file, const Bytes& bytes) {
    VXBitStream in = StreamOver(bytes);
    return file.LoadFromStream(in);
}

Bytes DumpOf(VXFlintFile& file) {
    VXBitStream out;
    EXPECT_EQ(file.DumpToStream(out), kVXSuccess);
    return BytesOf(out);
}

Bytes MemoryOf(const CVXStreamReadWrite& stream) {
    return Bytes(stream.GetMemory(), stream.GetMemory() + stream.GetMemorySize());
}

/// The same movie with everything behind offset 8 deflated.
Bytes Compressed(const Bytes& movie) {
    uLongf size = compressBound(static_cast<uLong>(movie.size()));
    Bytes result(size + 8);
    std::copy(movie.begin(), movie.begin() + 8, result.begin());
    result[0] = 'C';
    EXPECT_EQ(compress2(result.data() + 8, &size, movie.data() + 8, static_cast<uLong>(movie.size() - 8), 9),
              Z_OK);
    result.resize(size + 8);
    return result;
}

const Bytes kTags = Join({TagBytes(77, Hex("01 02 03")), TagBytes(255, Repeat(5000, 0x42)), Hex("40 00")});
const Bytes kDoAction = TagBytes(12, Hex("00"));

TEST(VXFlintFile, RawMoviesComeBackAsTheyWere) {
    const Bytes movie = MovieBytes(6, kTags);
    VXFlintFile file;
    ASSERT_EQ(Load(file, movie), kVXSuccess);
    EXPECT_EQ(file.GetFlintVersion(), 6);
    EXPECT_EQ(file.GetFileLength(), movie.size());
    EXPECT_EQ(file.GetWidth(), 100u);
    EXPECT_EQ(file.GetHeight(), 50u);
    EXPECT_EQ(file.GetFrameRate(), 12);
    EXPECT_EQ(file.GetFrameCount(), 1);
    EXPECT_EQ(file.GetCompression(), 0);
    EXPECT_EQ(DumpOf(file), movie);
    CVXStreamReadWrite target;
    target.SetMode(IVXStream::kWrite);
    EXPECT_EQ(file.DumpToStream(&target), kVXSuccess);
    EXPECT_EQ(MemoryOf(target), movie);
}

TEST(VXFlintFile, TheEndTagStandsBehindWhateverTheStreamHeld) {
    VXFlintFile file;
    ASSERT_EQ(Load(file, MovieBytes(6, Hex("40 00"))), kVXSuccess);
    VXBitStream out;
    EXPECT_EQ(out.Write(Repeat(30, 0x55).data(), 30u), kVXSuccess);
    EXPECT_EQ(file.DumpToStream(out), kVXSuccess);
    EXPECT_EQ(BytesOf(out), Join({Hex("46 57 53 06 20 00 00 00"
                                      "60 00 3E 80 00 1F 40"
                                      "00 0C 01 00"
                                      "40 00"),
                                  Repeat(9, 0x55), Hex("00 00")}));
}

TEST(VXFlintFile, CompressedMovies) {
    const Bytes movie = MovieBytes(6, kTags);
    CVXStreamReadWrite source(Compressed(movie).data(), Compressed(movie).size());
    VXFlintFile file;
    ASSERT_EQ(file.LoadFromStream(&source), kVXSuccess);
    EXPECT_EQ(file.GetCompression(), 1);
    CVXStreamReadWrite target;
    target.SetMode(IVXStream::kWrite);
    EXPECT_EQ(file.DumpToStream(&target), kVXSuccess);
    EXPECT_EQ(MemoryOf(target), Compressed(movie)) << "the length is that of the plain movie";

    LimitedStream full(30);
    EXPECT_EQ(file.DumpToStream(&full), kVXCompressionFailed);
    const SilentAsserts silence;
    VXBitStream memory;
    EXPECT_EQ(file.DumpToStream(memory), kVXSuccess) << "a plain body under the signature of the other";
    Bytes plain = movie;
    plain[0] = 'C';
    EXPECT_EQ(BytesOf(memory), plain);
    file.SetCompression(0);
    EXPECT_EQ(DumpOf(file), movie);
}

TEST(VXFlintFile, HeadersThatFail) {
    const SilentAsserts silence;
    const Bytes movie = MovieBytes(6, kTags);
    VXFlintFile file;
    EXPECT_EQ(Load(file, {}), kVXFailure);
    EXPECT_EQ(Load(file, Hex("46 57 53 06")), kVXFailure);
    for (const std::size_t at : {0u, 1u, 2u}) {
        Bytes bad = movie;
        bad[at] = 'X';
        EXPECT_EQ(Load(file, bad), kVXFailure);
    }
    EXPECT_EQ(file.LoadFromStream(static_cast<IVXStream*>(nullptr)), kVXFailure);
    EXPECT_EQ(file.DumpToStream(static_cast<IVXStream*>(nullptr)), kVXFailure);

    const Bytes compressed = Compressed(movie);
    for (const Bytes& length : {Hex("00 00 00 00"), Hex("07 00 00 00"), Hex("20 00 00 00")}) {
        Bytes bad = compressed;
        std::copy(length.begin(), length.end(), bad.begin() + 4);
        EXPECT_EQ(Load(file, bad), kVXFailure);
    }
    Bytes big = compressed;
    std::fill(big.begin() + 4, big.begin() + 8, static_cast<unsigned char>(0xFF));
    EXPECT_EQ(Load(file, big), kVXSuccess);
    Bytes corrupt = compressed;
    corrupt[12] ^= 0xFF;
    EXPECT_EQ(Load(file, corrupt), kVXFailure);
    for (std::size_t size = 0; size < compressed.size(); ++size) {
        VXFlintFile cut;
        EXPECT_EQ(Load(cut, Bytes(compressed.begin(), compressed.begin() + static_cast<long>(size))),
                  kVXFailure);
    }
}

TEST(VXFlintFile, PartialHeaderFieldsCountTheRestAsZero) {
    VXFlintFile file;
    EXPECT_EQ(Load(file, Hex("46 57 53 06 34 12")), kVXFailure) << "no rectangle";
    EXPECT_EQ(file.GetFileLength(), 0x1234u);
    EXPECT_EQ(Load(file, Hex("46 57 53 06 00 00 00 00 00 80")), kVXFailure) << "no count";
    EXPECT_EQ(file.GetFrameRate(), 0);
    EXPECT_EQ(Load(file, Hex("46 57 53 06 00 00 00 00 00 80 0C 07")), kVXSuccess);
    EXPECT_EQ(file.GetFrameCount(), 7);
    EXPECT_EQ(file.GetFrameRate(), 12) << "the fraction is dropped";
    EXPECT_EQ(file.GetNumTags(), 0u);
    EXPECT_EQ(DumpOf(file), Hex("46 57 53 06 0F 00 00 00 00 00 0C 07 00 00 00"));
}

TEST(VXFlintFile, AMissingEndTagIsAdded) {
    const Bytes movie = MovieBytes(6, kTags);
    VXFlintFile file;
    ASSERT_EQ(Load(file, Bytes(movie.begin(), movie.end() - 2)), kVXSuccess);
    EXPECT_EQ(DumpOf(file), movie);
    VXFlintFile more;
    ASSERT_EQ(Load(more, Join({movie, TagBytes(77, Hex("01"))})), kVXSuccess);
    EXPECT_EQ(DumpOf(more), movie) << "what follows the end tag is lost";
}

TEST(VXFlintFile, FrameInfoComesFromTheHeaderAlone) {
    const Bytes movie = MovieBytes(6, kTags);
    VXFlintFile file;
    unsigned int count = 77;
    unsigned int rate = 77;
    VXBitStream in = StreamOver(movie);
    EXPECT_EQ(file.GetFrameInfoFromHeader(in, &count, nullptr), kVXSuccess);
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(file.GetWidth(), 100u);
    EXPECT_EQ(file.GetNumTags(), 0u);
    in = StreamOver(movie);
    EXPECT_EQ(file.GetFrameInfoFromHeader(in, nullptr, &rate), kVXSuccess);
    EXPECT_EQ(rate, 12u);
    EXPECT_EQ(file.GetFrameInfoFromHeader(in, &count, &rate), kVXFailure);
    EXPECT_EQ(count, 1u);
}

TEST(VXFlintFile, ListsOfTypes) {
    std::list<VXSwfTagFactory::enuTagType> types = {VXSwfTagFactory::TAG_METADATA, VXSwfTagFactory::TAG_DOABC,
                                                    VXSwfTagFactory::TAG_METADATA};
    VXFlintFile file;
    EXPECT_EQ(file.SetListsTobeMaintained(types), kVXSuccess);
    const Bytes sprite = TagBytes(39, Join({Hex("05 00 00 00"), TagBytes(77, Hex("09"))}));
    ASSERT_EQ(Load(file, MovieBytes(6, Join({TagBytes(77, Hex("01")), sprite, TagBytes(77, Hex("02"))}))),
              kVXSuccess);
    std::list<VXSwfTag*>* list = nullptr;
    EXPECT_EQ(file.GetTagListOfType(VXSwfTagFactory::TAG_METADATA, &list), kVXSuccess);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->size(), 4u) << "each tag of the top level twice";
    EXPECT_EQ(list->back()->GetData()[0], 2);
    file.IncludeTag(MakeTag(77, 1).release(), 0);
    EXPECT_EQ(list->size(), 4u) << "only appended tags are recorded";
    EXPECT_EQ(file.GetTagListOfType(VXSwfTagFactory::TAG_SHOWFRAME, &list), kVXSuccess);
    EXPECT_EQ(list, nullptr);
    file.AppendTag(nullptr);
}

TEST(VXFlintFile, ScriptVersions) {
    const auto versions = [](const Bytes& tags) {
        VXFlintFile file;
        EXPECT_EQ(Load(file, MovieBytes(9, tags)), kVXSuccess);
        return std::pair<int, int>{file.GetActionScriptVersion(), file.CanSupportAS3Version()};
    };
    using Versions = std::pair<int, int>;
    const Bytes as3 = TagBytes(69, Hex("08 00 00 00"));
    const Bytes plain = TagBytes(69, Hex("10 00 00 00"));
    EXPECT_EQ(versions({}), (Versions{2, 1}));
    EXPECT_EQ(versions(Hex("40 00")), (Versions{2, 1}));
    EXPECT_EQ(versions(kDoAction), (Versions{2, 0}));
    EXPECT_EQ(versions(Join({as3, kDoAction})), (Versions{3, 1}));
    EXPECT_EQ(versions(Join({plain, as3, kDoAction})), (Versions{2, 0})) << "the first one counts";
}

TEST(VXFlintFile, CopiesAreParsedPlainMovies) {
    const Bytes movie = MovieBytes(6, Join({kTags, TagBytes(39, Hex("05 00 00 00 40 00"))}));
    VXFlintFile file;
    file.SetParsingMode(1);
    std::list<VXSwfTagFactory::enuTagType> types = {VXSwfTagFactory::TAG_METADATA};
    EXPECT_EQ(file.SetListsTobeMaintained(types), kVXSuccess);
    ASSERT_EQ(Load(file, Compressed(movie)), kVXSuccess);
    const std::unique_ptr<VXFlintFile> copy(file.Copy());
    EXPECT_EQ(file.GetCompression(), 1);
    EXPECT_EQ(copy->GetCompression(), 0);
    EXPECT_EQ(copy->GetNumTags(), file.GetNumTags());
    std::list<VXSwfTag*>* list = nullptr;
    EXPECT_EQ(copy->GetTagListOfType(VXSwfTagFactory::TAG_METADATA, &list), kVXSuccess);
    EXPECT_EQ(list, nullptr);
    file.SetCompression(0);
    EXPECT_EQ(DumpOf(*copy), DumpOf(file));
}

TEST(VXFlintFile, ACopyStatesAtLeastTheLengthThatWasStated) {
    VXFlintFile file;
    ASSERT_EQ(Load(file, MovieBytes(6, kTags)), kVXSuccess);
    const auto size = static_cast<unsigned int>(DumpOf(file).size());
    const auto copied = [&file](unsigned int stated) {
        file.SetFileLength(stated);
        const std::unique_ptr<VXFlintFile> copy(file.Copy());
        EXPECT_EQ(copy->GetNumTags(), file.GetNumTags());
        return copy->GetFileLength();
    };
    EXPECT_EQ(copied(0), size);
    EXPECT_EQ(copied(size - 2), size);
    EXPECT_EQ(copied(size), size + 2) << "the end tag stands behind the room";
    EXPECT_EQ(copied(0xFFFFFFFF), 0xFFFFFFFFu);
}

TEST(VXFlintFile, SizesAreTruncatedAndNeverUndefined) {
    VXFlintFile file;
    file.SetWidth(640);
    file.SetHeight(0xFFFFFFFF);
    EXPECT_EQ(file.GetWidth(), 640u);
    EXPECT_EQ(file.GetHeight(), 0xFFFFFFFFu);
    // Saturated twips take 32 bits, a width that five bits do not hold; the rectangle then reads as empty.
    VXFlintFile again;
    VXIgnore(Load(again, DumpOf(file)));  // what stands behind it is taken for tags
    EXPECT_EQ(again.GetWidth(), 0u);
    file.SetHeight(50000000);
    EXPECT_EQ(Load(again, DumpOf(file)), kVXSuccess);
    EXPECT_EQ(again.GetWidth(), 640u);
    EXPECT_EQ(again.GetHeight(), 50000000u);
}

TEST(VXFlintFile, AssignedMoviesShareTheirTags) {
    auto first = std::make_unique<VXFlintFile>();
    ASSERT_EQ(Load(*first, MovieBytes(6, kTags)), kVXSuccess);
    VXFlintFile second(*first);
    VXFlintFile third;
    third = second;
    first.reset();
    EXPECT_EQ(DumpOf(third), MovieBytes(6, kTags));
    EXPECT_EQ(DumpOf(second), MovieBytes(6, kTags));
}

TEST(VXFlintRectangle, WidthsOnTheWire) {
    const auto dump = [](VXFlintRectangle rectangle) {
        VXBitStream out;
        EXPECT_EQ(rectangle.DumpToStream(out), kVXSuccess);
        return BytesOf(out);
    };
    EXPECT_EQ(dump({}), Hex("00"));
    EXPECT_EQ(dump({0, 0, 1, -1}), Bits("00110 000000 010100 000000 101100"));
    VXFlintRectangle rectangle;
    rectangle.Set(-0.025, 0.0, 10.9, 0.024);  // half a twip goes up
    EXPECT_EQ(dump(rectangle), Bits("01001 000000000 011011010 000000000 000000000"));
    EXPECT_EQ(rectangle.GetWidth(), 10);
    EXPECT_EQ(rectangle.GetHeight(), 0);
    rectangle.Set(-1.0, 0.0, -0.5, -1.5);
    EXPECT_EQ(rectangle.GetHeight(), -1) << "toward zero";
    const Bytes widest = Bits(
        "11111 1000000000000000000000000000001 0111111111111111111111111111111"
        "0000000000000000000000000000001 1111111111111111111111111111111");
    SweepRecordOf<VXFlintRectangle>("31 bits", widest, widest);
}

TEST(VXTwips, EveryRealHasTwips) {
    EXPECT_EQ(VXToTwips(1.0), 20);
    EXPECT_EQ(VXToTwips(-0.075), -1);
    EXPECT_EQ(VXToTwips(1e300), std::numeric_limits<int>::max());
    EXPECT_EQ(VXToTwips(-std::numeric_limits<double>::infinity()), std::numeric_limits<int>::min());
    EXPECT_EQ(VXToTwips(std::nan("")), 0);
    EXPECT_EQ(VXTruncateToUnsigned(-1.5), 0xFFFFFFFFu);
    EXPECT_EQ(VXTruncateToUnsigned(4294967296.0 + 7.9), 7u);
    for (const int twips : {1, -1, 7, 12345, -2147483647}) EXPECT_EQ(VXToTwips(VXFromTwips(twips)), twips);
}

}  // namespace
