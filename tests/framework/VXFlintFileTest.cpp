#include "support/Test.h"

namespace {

using TypeList = std::list<VXSwfTagFactory::enuTagType>;

Bytes With(Bytes bytes, std::size_t at, const Bytes& part) {
    std::copy(part.begin(), part.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at));
    return bytes;
}

/// The same movie with everything behind offset 8 deflated.
Bytes Compressed(const Bytes& movie) {
    const Bytes body(movie.begin() + 8, movie.end());
    return With(Join({Head(movie, 8), Deflated(body, 9)}), 0, Hex("43"));
}

const Bytes kTags = Join({TagBytes(77, Hex("01 02 03")), TagBytes(255, Repeat(5000, 0x42)), kShowFrame});
const Bytes kMovie = MovieBytes(6, kTags);

class VXFlintFileTest : public testing::Test {
protected:
    const SilentAsserts silence;
    VXFlintFile file;
};

TEST_F(VXFlintFileTest, RawMoviesComeBackAsTheyWere) {
    ASSERT_EQ(LoadInto(file, Join({kMovie, TagBytes(77, Hex("01"))})), kVXSuccess);
    EXPECT_EQ(DumpOf(file), kMovie) << "what follows the end tag is lost";
    CVXStreamReadWrite target;
    target.SetMode(IVXStream::kWrite);
    EXPECT_EQ(file.DumpToStream(&target), kVXSuccess);
    EXPECT_EQ(BytesOf(target), kMovie);
    CVXStreamReadWrite reading(kTags.data(), kTags.size());
    EXPECT_EQ(file.DumpToStream(&reading), kVXFailure);
    VXBitStream out;
    out.SetOutputStream(&reading);
    EXPECT_EQ(file.DumpToStream(out), kVXFailure);
    EXPECT_EQ(BytesOf(reading), kTags);
    EXPECT_EQ(DumpOf(file), kMovie) << "a stream that reads leaves target and movie as they were";

    VXFlintFile cut;
    ASSERT_EQ(LoadInto(cut, Head(kMovie, kMovie.size() - 2)), kVXSuccess);
    EXPECT_EQ(DumpOf(cut), kMovie) << "a missing end tag is added";

    auto assigned = std::make_unique<VXFlintFile>();
    *assigned = file;
    VXFlintFile copied(*assigned);
    assigned.reset();
    EXPECT_EQ(DumpOf(copied), kMovie) << "assigned movies share their tags";
}

TEST_F(VXFlintFileTest, BodiesLieInTheBytesThatTheLibraryHolds) {
    const Bytes inner = TagBytes(61, Hex("05 00 01")), sprite = Sprite(5, 0, inner);
    const Bytes bytes = MovieBytes(6, Join({inner, sprite}));
    bool isHeld = true;
    const auto load = [&](int way, VXFlintFile& movie) {
        VXBitStream in = StreamOver(bytes);
        if (way == 1) {
            in = VXBitStream();
            VXIgnore(in.Write(bytes.data(), static_cast<unsigned int>(bytes.size())));
            EXPECT_EQ(in.SetPosition(0), 1);
        } else if (way == 2) {
            const auto drop = [&isHeld](const unsigned char*) { isHeld = false; };
            in.LoadFromSharedMem({bytes.data(), drop}, static_cast<unsigned int>(bytes.size()));
        }
        EXPECT_EQ(movie.LoadFromStream(in), kVXSuccess);
        const unsigned char* body = (*movie.begin())->GetData();
        const bool isView = body >= in.GetBuffer() && body < in.GetBuffer() + in.GetSize();
        EXPECT_EQ(isView, way != 0) << "borrowed bytes are copied";
        if (way == 0) return;
        EXPECT_EQ(in.SetPosition(0), 1);
        EXPECT_EQ(in.Write(Repeat(30, 0xFF).data(), 30u), kVXSuccess) << "into a buffer of its own";
    };
    for (const int way : {0, 1, 2}) {
        VXFlintFile movie;
        load(way, movie);
        EXPECT_EQ(DumpOf(movie), bytes);
        VXSwfTag* last = *std::prev(movie.end());
        auto* set = dynamic_cast<VXSwfTagSet*>(last);
        ASSERT_NE(set, nullptr);
        (*set->begin())->SetReferencedID(9);
        (*movie.begin())->SetReferencedID(9);
        VXBitStream kept = last->GetDataStream();
        EXPECT_EQ(BytesOf(kept), Join({Word(0), inner, Hex("00 00")})) << "the body of a sprite has its own";
        EXPECT_EQ(DumpOf(*set), TagBytes(61, Hex("09 00 01")));
        EXPECT_EQ(isHeld, true);
    }
    EXPECT_EQ(isHeld, false);
    EXPECT_EQ(bytes, MovieBytes(6, Join({inner, sprite}))) << "shared bytes are never changed";
}

TEST_F(VXFlintFileTest, TheEndTagStandsBehindWhateverTheStreamHeld) {
    ASSERT_EQ(LoadInto(file, MovieBytes(6, kShowFrame)), kVXSuccess);
    VXBitStream out;
    EXPECT_EQ(out.Write(Repeat(30, 0x55).data(), 30u), kVXSuccess);
    EXPECT_EQ(file.DumpToStream(out), kVXSuccess);
    EXPECT_EQ(BytesOf(out), Join({Hex("46 57 53 06 20 00 00 00  60 00 3E 80 00 1F 40  00 0C 01 00  40 00"),
                                  Repeat(9, 0x55), Hex("00 00")}));
}

TEST_F(VXFlintFileTest, CompressedMovies) {
    CVXStreamReadWrite source(Compressed(kMovie).data(), Compressed(kMovie).size());
    ASSERT_EQ(file.LoadFromStream(&source), kVXSuccess);
    EXPECT_EQ(file.GetCompression(), 1);
    CVXStreamReadWrite target;
    target.SetMode(IVXStream::kWrite);
    EXPECT_EQ(file.DumpToStream(&target), kVXSuccess);
    EXPECT_EQ(BytesOf(target), Compressed(kMovie)) << "the length is that of the plain movie";
    EXPECT_EQ(DumpOf(file), With(kMovie, 0, Hex("43"))) << "a plain body under the signature of the other";
    file.SetCompression(0);
    EXPECT_EQ(DumpOf(file), kMovie);
}

// 4 MiB that want 150 times that, and as much of what would load if it had come plain.
TEST_F(VXFlintFileTest, DataThatInflatesHasItsRoom) {
    constexpr std::size_t kBody = 4 << 20;
    const Bytes sounds = Repeat(kBody / 2, Hex("40 04"));                     // tags without a body
    const Bytes styles = Join({Hex("40 FE"), Repeat(254, 1), Hex("00 00")});  // of one byte each
    const Bytes shapes =
        Join({Word(1), Hex("00 00 00 00"), Repeat(kBody / styles.size(), styles), Hex("00")});
    for (const Bytes& tags : {sounds, LongTagBytes(32, shapes)}) {
        const Bytes movie = MovieBytes(5, Join({kTags, tags}));
        VXFlintFile bomb;
        EXPECT_EQ(LoadInto(bomb, Compressed(movie)), kVXFailure);
        EXPECT_GE(bomb.GetNumTags(), 3u) << "what was loaded stays";
        VXFlintFile plain;
        EXPECT_EQ(LoadInto(plain, movie), kVXSuccess);
    }
}

TEST_F(VXFlintFileTest, HeadersThatFail) {
    EXPECT_EQ(file.LoadFromStream(static_cast<IVXStream*>(nullptr)), kVXFailure);
    EXPECT_EQ(file.DumpToStream(static_cast<IVXStream*>(nullptr)), kVXFailure);
    for (const std::size_t at : {0u, 1u, 2u})
        EXPECT_EQ(LoadInto(file, With(kMovie, at, Hex("58"))), kVXFailure);
    const Bytes compressed = Compressed(kMovie);
    for (const char* length : {"00 00 00 00", "07 00 00 00", "20 00 00 00"}) {
        EXPECT_EQ(LoadInto(file, With(compressed, 4, Hex(length))), kVXFailure);
    }
    EXPECT_EQ(LoadInto(file, With(compressed, 12, Hex("FF FF"))), kVXFailure) << "damaged";
    for (std::size_t size = 0; size < compressed.size(); ++size) {
        EXPECT_EQ(LoadInto(file, Head(compressed, size)), kVXFailure);
    }
    EXPECT_EQ(LoadInto(file, With(compressed, 4, Hex("FF FF FF FF"))), kVXSuccess);
}

TEST_F(VXFlintFileTest, PartialHeaderFieldsCountTheRestAsZero) {
    EXPECT_EQ(LoadInto(file, Hex("46 57 53 06 34 12")), kVXFailure) << "no rectangle";
    EXPECT_EQ(file.GetFileLength(), 0x1234u);
    EXPECT_EQ(LoadInto(file, Hex("46 57 53 06 00 00 00 00 00 80")), kVXFailure) << "no count";
    EXPECT_EQ(file.GetFrameRate(), 0);
    EXPECT_EQ(LoadInto(file, Hex("46 57 53 06 00 00 00 00 00 80 0C 07")), kVXSuccess);
    EXPECT_EQ(DumpOf(file), Hex("46 57 53 06 0F 00 00 00 00 00 0C 07 00 00 00")) << "no fraction of a rate";
}

TEST_F(VXFlintFileTest, FrameInfoComesFromTheHeaderAlone) {
    unsigned int count = 77;
    unsigned int rate = 77;
    VXBitStream in = StreamOver(kMovie);
    EXPECT_EQ(file.GetFrameInfoFromHeader(in, nullptr, &rate), kVXSuccess);
    EXPECT_EQ(rate, 12u);
    EXPECT_EQ(file.GetFrameInfoFromHeader(in, &count, &rate), kVXFailure);
    EXPECT_EQ(count, 77u);
    in = StreamOver(kMovie);
    EXPECT_EQ(file.GetFrameInfoFromHeader(in, &count, nullptr), kVXSuccess);
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(file.GetNumTags(), 0u);
}

TEST_F(VXFlintFileTest, ListsOfTypesHoldWhatIsAppended) {
    TypeList types{VXSwfTagFactory::TAG_METADATA, VXSwfTagFactory::TAG_DOABC, VXSwfTagFactory::TAG_METADATA};
    EXPECT_EQ(file.SetListsTobeMaintained(types), kVXSuccess);
    const Bytes sprite = Sprite(5, 0, TagBytes(77, Hex("09")));
    ASSERT_EQ(LoadInto(file, MovieBytes(6, Join({TagBytes(77, Hex("01")), sprite}))), kVXSuccess);
    VXSwfTag* last = MakeTag(77, 1).release();
    file.IncludeTag(last, -1);
    file.IncludeTag(MakeTag(77, 1).release(), 0);
    file.IncludeTag(MakeTag(77, 1).release(), 1);
    file.AppendTag(nullptr);
    std::list<VXSwfTag*>* list = nullptr;
    EXPECT_EQ(file.GetTagListOfType(VXSwfTagFactory::TAG_METADATA, &list), kVXSuccess);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->size(), 4u) << "each tag that the top level ended with, twice";
    EXPECT_EQ(list->back(), last);
    EXPECT_EQ(file.GetTagListOfType(VXSwfTagFactory::TAG_SHOWFRAME, &list), kVXSuccess);
    EXPECT_EQ(list, nullptr);
}

TEST_F(VXFlintFileTest, ScriptVersions) {
    const Bytes as3 = TagBytes(69, Hex("08 00 00 00")), plain = TagBytes(69, Hex("10 00 00 00"));
    const Bytes doAction = TagBytes(12, Hex("00"));
    const std::pair<Bytes, int> rows[] = {
        {kShowFrame, 21}, {doAction, 20}, {Join({as3, doAction}), 31}, {Join({plain, as3, doAction}), 20}};
    for (const auto& [tags, answers] : rows) {
        VXFlintFile movie;
        EXPECT_EQ(LoadInto(movie, MovieBytes(9, tags)), kVXSuccess);
        EXPECT_EQ(movie.GetActionScriptVersion() * 10 + movie.CanSupportAS3Version(), answers);
    }
}

TEST_F(VXFlintFileTest, ACopyIsPlainAndStatesAtLeastTheLengthThatWasStated) {
    file.SetParsingMode(1);
    TypeList types{VXSwfTagFactory::TAG_METADATA};
    EXPECT_EQ(file.SetListsTobeMaintained(types), kVXSuccess);
    ASSERT_EQ(LoadInto(file, Compressed(kMovie)), kVXSuccess);
    const auto size = static_cast<unsigned int>(kMovie.size());
    const std::pair<unsigned int, unsigned int> rows[] = {
        {0, size}, {size - 2, size}, {size, size + 2}, {0xFFFFFFFF, 0xFFFFFFFF}};
    for (const auto& [stated, copied] : rows) {
        file.SetFileLength(stated);
        const std::unique_ptr<VXFlintFile> copy(file.Copy());
        EXPECT_EQ(copy->GetFileLength(), copied) << "the end tag stands behind the room";
        EXPECT_EQ(DumpOf(*copy), kMovie);
        std::list<VXSwfTag*>* list = nullptr;
        EXPECT_EQ(copy->GetTagListOfType(VXSwfTagFactory::TAG_METADATA, &list), kVXSuccess);
        EXPECT_EQ(list, nullptr);
    }
    EXPECT_EQ(file.GetCompression(), 1);
}

TEST_F(VXFlintFileTest, SizesAreTruncatedAndNeverUndefined) {
    file.SetWidth(640);
    file.SetHeight(0xFFFFFFFF);
    EXPECT_EQ(file.GetHeight(), 0xFFFFFFFFu);
    // Saturated twips take 32 bits, a width that five bits do not hold; the rectangle then reads as empty.
    VXFlintFile again;
    VXIgnore(LoadInto(again, DumpOf(file)));  // what stands behind it is taken for tags
    EXPECT_EQ(again.GetWidth(), 0u);
    file.SetHeight(50000000);
    EXPECT_EQ(LoadInto(again, DumpOf(file)), kVXSuccess);
    EXPECT_EQ(again.GetHeight(), 50000000u);
    EXPECT_EQ(VXTruncateToUnsigned(-1.5), 0xFFFFFFFFu);
    EXPECT_EQ(VXTruncateToUnsigned(4294967296.0 + 7.9), 7u);
}

}  // namespace
