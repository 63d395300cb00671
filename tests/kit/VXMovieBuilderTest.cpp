#include <typeinfo>

#include "support/Test.h"

namespace {

Bytes TagsOf(VXFlintFile& movie) {
    movie.SetCompression(0);
    const Bytes bytes = BytesOfRecord(movie);
    const auto end = bytes.begin() + 8 + (5 + 4 * (bytes[8] >> 3) + 7) / 8 + 4;
    return {end, bytes.end() - 2};
}

TEST(VXMovieBuilderTest, GoesOnWithAMovie) {
    // Character 1, and 2 that an import defines; depths 1 to 9, one of them under a mask.
    const Bytes tags = Join({Bitmap(1), TagBytes(57, Join({Text("u"), Hex("01 00  02 00"), Text("n")})),
                             Placement(1, 3), LongTagBytes(26, Hex("42 04 00 01 00 09 00"))});
    for (const unsigned int mode : {0u, 1u}) {
        VXFlintFile movie;
        const Bytes bytes = MovieBytes(8, tags);
        VXBitStream in = StreamOver(bytes);
        movie.SetParsingMode(mode);
        ASSERT_EQ(movie.LoadFromStream(in), kVXSuccess);
        VXMovieBuilder builder(movie);
        builder.Place(builder.Define<TAG_DEFINEBITSLOSSLESS>(), 0, 0);
        builder.AddLabel("é");
        EXPECT_EQ(builder.Finish(), kVXSuccess) << builder.GetErrorText();
        EXPECT_EQ(movie.GetFrameCount(), 1);
        const VXSwfPlaceObject2Tag* last = nullptr;
        for (VXSwfTag* tag : movie)
            if (auto* placement = dynamic_cast<VXSwfPlaceObject2Tag*>(tag)) last = placement;
        ASSERT_NE(last, nullptr);
        EXPECT_EQ(last->GetDepth(), 10);
        EXPECT_EQ(last->GetReferencedID(), 3);
        const Bytes out = TagsOf(movie);
        const Bytes end = Join({TagBytes(43, Text("é")), kShowFrame});
        EXPECT_EQ(Bytes(out.end() - static_cast<std::ptrdiff_t>(end.size()), out.end()), end);
    }
}

TEST(VXMovieBuilderTest, SpritesButtonsAndEventsAreComplete) {
    VXFlintFile movie;
    VXMovieBuilder builder(movie, 100, 50, 12, 8);
    builder.BeginSprite();
    auto& shape = builder.Define<TAG_DEFINESHAPE3>();
    builder.Place(shape, 0, 0);
    const VXSwfDefineSpriteTag* sprite = builder.EndSprite();
    builder.AddEvent(builder.Place(sprite, 0, 0), &VXFlintClipEventFlags::ClipEventLoad,
                     VXActionWriter().Do(kVXActionStop));
    VXSwfDefineButton2Tag* button = builder.DefineButton(&shape, &shape, &shape);
    builder.AddAction(button, VXActionWriter().Do(kVXActionPlay), kVXKeySpace);
    builder.ShowFrame(2);
    ASSERT_EQ(builder.Finish(), kVXSuccess) << builder.GetErrorText();
    EXPECT_EQ(movie.GetFrameCount(), 2);
    EXPECT_EQ(TypesOf(movie), (std::vector<unsigned int>{69, 32, 39, 26, 34, 1, 1}));
    EXPECT_EQ(sprite->GetNumShowFrameTags(), 1u);
    const Bytes out = TagsOf(movie);
    const Bytes event = Hex("00 00  01 00 00 00  01 00 00 00  02 00 00 00  07 00  00 00 00 00");
    EXPECT_NE(std::search(out.begin(), out.end(), event.begin(), event.end()), out.end());
    const Bytes actions = Hex("06 00 08 00 06 00  00 00 00 40 06 00  40 00 40 00");
    EXPECT_EQ(Bytes(out.end() - static_cast<std::ptrdiff_t>(actions.size()), out.end()), actions);
}

TEST(VXMovieBuilderTest, SaysWhatIsMissing) {
    CVXStreamReadWrite noise("noise", 5);
    const VXImage noPixels;
    const struct {
        void (*step)(VXMovieBuilder&, IVXStream&);
        const char* error;
    } rows[] = {
        {[](VXMovieBuilder& b, IVXStream& s) { b.Place(b.DefineJpeg(s), 0, 0); },
         "what is given as a JPEG is none, or does not state its size"},
        {[](VXMovieBuilder& b, IVXStream& s) { b.StartSound(b.DefineSound(s)); },
         "what is given as an MP3 has no frame of one"},
        {[](VXMovieBuilder& b, IVXStream&) { b.Place(b.DefinePicture(VXImage()), 0, 0); },
         "a picture has no pixels, or more than 65535 in a row or column"},
        {[](VXMovieBuilder& b, IVXStream&) { b.AddScript(VXActionWriter().Jump("x")); },
         "a script cannot be written: there is no label \"x\""},
        {[](VXMovieBuilder& b, IVXStream&) { b.BeginSprite(); }, "a sprite was begun and not ended"},
        {[](VXMovieBuilder& b, IVXStream&) {
             for (int i = 0; i < 65535; ++i) b.Define<TAG_DEFINEBITSLOSSLESS>();
         },
         "the movie has more characters than there are IDs"},
        {[](VXMovieBuilder& b, IVXStream&) { b.DefineText("x", {.font = "No"}); },
         "no font \"No\" is installed; there are none, or no VXTypeEngineSession was begun"},
    };
    for (const auto& [step, error] : rows) {
        VXFlintFile movie;
        VXMovieBuilder builder(movie, 10, 10);
        step(builder, noise);
        EXPECT_EQ(builder.Finish(), kVXFailure);
        EXPECT_EQ(builder.GetErrorText(), error);
    }
}

TEST(VXMovieBuilderTest, TextsAreMeasuredAndAligned) {
    const VXTypeEngineSession engine;
    const VXString font = "DejaVu Sans";
    if (!VXInstalledFonts::Has(font)) GTEST_SKIP() << "without the font";
    VXFlintFile movie;
    VXMovieBuilder builder(movie, 200, 100);
    const VXTextStyle plain{.font = font, .size = 20};
    const VXTextStyle bold{.font = font, .size = 40, .isBold = true, .color = VXFlintRGB(255, 0, 0, 1, 128)};
    const double first = VXMovieBuilder::MeasureText("ab", plain) + VXMovieBuilder::MeasureText("c", bold);
    const VXSwfDefineTextTag* text =
        builder.DefineText({{"ab", plain}, {"c\nd", bold}}, VXTextAlign::kRight, 150);
    ASSERT_NE(text, nullptr);
    builder.DefineText("Ab", plain);  // moves the glyphs of the first one
    ASSERT_EQ(builder.Finish(), kVXSuccess) << builder.GetErrorText();
    ASSERT_EQ(text->m_TextRecords.size(), 3u);
    const auto& runs = text->m_TextRecords;
    EXPECT_EQ(text->GetTagType(), TAG_DEFINETEXT2);
    EXPECT_EQ(runs[0].m_GlyphEntries[0].m_GlyphIndex, 1u);  // behind A
    EXPECT_EQ(runs[0].m_XOffset, static_cast<int>((150 - first) * 20 + 0.5) + 40);
    EXPECT_EQ(runs[0].m_YOffset, 800);
    EXPECT_EQ(runs[0].m_Color.Alpha, 255);
    EXPECT_EQ(runs[2].m_YOffset, 1800);
    EXPECT_EQ(builder.DefineText("x", {.font = "DejaVu Sanz"}), nullptr);
    EXPECT_TRUE(builder.GetErrorText().starts_with(
        "no font \"DejaVu Sanz\" is installed; the nearest are \"DejaVu Sans\""))
        << builder.GetErrorText();
}

template <std::size_t First, std::size_t... Types>
void ExpectClasses(std::index_sequence<Types...>) {
    const auto expect = [](VXSwfTag* tag, const std::type_info& expected, std::size_t type) {
        const bool isPlain = typeid(*tag) == typeid(VXSwfTag) || typeid(*tag) == typeid(VXSwfDefinitionTag);
        EXPECT_EQ(isPlain ? typeid(VXSwfTag) : typeid(*tag), expected) << type;
        VXSwfTagFactory::DeleteTag(tag);
    };
    (expect(VXCreateTag<static_cast<enuTagType>(First + Types)>(),
            typeid(typename VXTagClass<static_cast<enuTagType>(First + Types)>::Class), First + Types),
     ...);
}

/// Compilers nest an expression over 1,024 types no deeper than 256.
template <std::size_t... Parts>
void ExpectAllClasses(std::index_sequence<Parts...>) {
    (ExpectClasses<Parts * 128>(std::make_index_sequence<128>()), ...);
}

TEST(VXTagClassTest, IsTheOneThatTheFactoryMakes) { ExpectAllClasses(std::make_index_sequence<8>()); }

}  // namespace
