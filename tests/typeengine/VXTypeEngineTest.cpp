#include "EngineFixture.h"
#include "support/Test.h"

using namespace BND_NT_NMT;
using testing::ElementsAre;

namespace {

class VXTypeEngine : public EngineFixture {};

}  // namespace

TEST_F(VXTypeEngine, FamiliesHoldTheirMembersHeaviestFirst) {
    std::vector<std::string> members;
    ForEachFont([&](const CTYFontDict& font) {
        const std::string name = TYFontDictGetFontName(font).GetUTF8String();
        if (!name.starts_with("DejaVu Sans") || name.starts_with("DejaVu Sans Mono")) return;
        members.push_back(name + ", " + TYFontDictGetStyleName(font).GetUTF8String() + ", " +
                          std::to_string(TYFontDictGetStyle(font)));
    });
    const auto first = std::find(members.begin(), members.end(), "DejaVu Sans Bold, Bold, 2");
    ASSERT_GE(members.end() - first, 4);
    EXPECT_THAT(std::vector<std::string>(first, first + 4),
                ElementsAre("DejaVu Sans Bold, Bold, 2", "DejaVu Sans Bold Oblique, Bold Oblique, 3",
                            "DejaVu Sans, Book, 0", "DejaVu Sans Oblique, Oblique, 1"))
        << "the condensed fonts, which carry this name too, are a family of their own";
    EXPECT_FALSE(Font("DejaVu Sans Condensed").IsEmpty());
    EXPECT_TRUE(Font("DejaVu").IsEmpty());
}

TEST_F(VXTypeEngine, MetricsAreFractionsOfTheEmAndWidthsAreNotRounded) {
    float first = -1, second = -1, third = -1;
    TYFontDictGetHorizontalMetrics(Font("DejaVu Sans"), first, second, third);
    EXPECT_EQ(first, 1901.0F / 2048);
    EXPECT_EQ(second, 483.0F / 2048);
    EXPECT_EQ(third, 0.0F);

    const CTYFontInstance instance = Instance(Font("DejaVu Sans"));
    EXPECT_EQ(Width(instance, u'A'), 1401 / 2.0F);
    EXPECT_EQ(Width(instance, u'\u0301'), 0.0F);
    for (const char16_t missing : {char16_t{0xFFFE}, char16_t{0xD800}, char16_t{0xDFFF}}) {
        EXPECT_EQ(TYFontInstanceGetGlyphID(instance, missing), 0U);
        EXPECT_EQ(Width(instance, missing), 1229 / 2.0F) << "of the glyph for what is missing";
    }
    EXPECT_EQ(TYFontInstanceGetWidth(instance, 0xFFFFFFFF), 0.0F) << "no such glyph";
}

TEST_F(VXTypeEngine, InstancesKeepFontAndMatrix) {
    const CTYFontDict font = TYFontDictNewSyntheticFont(Font("DejaVu Sans"), kTYItalic);
    const CTYFontInstance instance =
        TYFontInstanceNewFontInstance(font, {3, 0.5F, -0.25F, 7, 1, -2}, TYEncodingNewFromPreDefEncoding(13));
    const TYMatrix matrix = TYFontInstanceGetMatrix(instance);
    EXPECT_THAT((std::vector<float>{matrix.a, matrix.b, matrix.c, matrix.d, matrix.tx, matrix.ty}),
                ElementsAre(3, 0.5F, -0.25F, 7, 1, -2));
    EXPECT_EQ(TYFontDictGetStyle(TYFontInstanceGetFont(instance)), kTYItalic);
    EXPECT_EQ(Width(instance, u'A'), 1401.0F / 2048 * 3);
    for (const char* name : {"", "TYFontSetNew"}) EXPECT_EQ(GetVXBndAddressProc()(name), nullptr) << name;
}

TEST_F(VXTypeEngine, ImitationAddsOnlyWhatTheBaseLacks) {
    constexpr float kBold = 1024.0F / 24, kSlant = 0.2125F * 1556 / 2;
    const struct {
        const char* font;
        std::int32_t style;
        std::int32_t result;
        float wider, slant;
    } rows[] = {
        {"DejaVu Sans", kTYBold, kTYBold, kBold, 0},
        {"DejaVu Sans", kTYItalic, kTYItalic, 0, kSlant},
        {"DejaVu Sans Bold", kTYBoldItalic, kTYBoldItalic, 0, kSlant},
        {"DejaVu Sans Bold", kTYItalic, kTYBoldItalic, 0, kSlant},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.font) + ' ' + std::to_string(row.style));
        const CTYFontDict font = TYFontDictNewSyntheticFont(Font(row.font), row.style);
        EXPECT_EQ(TYFontDictGetStyle(font), row.result);
        const CTYFontInstance base = Instance(Font(row.font)), imitated = Instance(font);
        EXPECT_FLOAT_EQ(Width(imitated, u'l'), Width(base, u'l') + row.wider);
        EXPECT_FLOAT_EQ(Width(imitated, u'\u0301'), Width(base, u'\u0301')) << "0";
        const TYBox was = Box(base, u'l'), is = Box(imitated, u'l');
        EXPECT_NEAR(was.top, -1556 / 2.0, 0.01) << "y grows downwards";
        EXPECT_NEAR(is.bottom - is.top, was.bottom - was.top + row.wider, 0.05);
        EXPECT_NEAR(is.right - is.left, was.right - was.left + row.wider + row.slant, 0.05);
    }
    const CTYFontDict mono = Font("DejaVu Sans Mono");
    EXPECT_EQ(Width(Instance(TYFontDictNewSyntheticFont(mono, kTYBold)), u'l'), Width(Instance(mono), u'l'))
        << "every glyph of a font of fixed pitch keeps its width";
    EXPECT_TRUE(TYFontDictNewSyntheticFont(mono, 0).IsEmpty());
    EXPECT_TRUE(TYFontDictNewSyntheticFont(mono, 4).IsEmpty());
}

TEST_F(VXTypeEngine, PathsGrowBeyondTheirCapacityAndAlwaysHaveArrays) {
    const CTYFontInstance instance = Instance(Font("DejaVu Sans"));
    for (const std::int32_t capacity : {1, 0, -1, 0x7FFFFFFF}) {
        CGFMSharedBezierPath path = GFMNewSharedBezierPath(capacity);
        unsigned int count = 9;
        float* points = nullptr;
        KVMPointType* kinds = nullptr;
        const auto append = [&](char16_t character) {
            const CTYText text = TYNewTextFontInstanceCP(instance, character);
            EXPECT_EQ(TYTextGetOutlines(text, {}, TYTextGetBoundingBox(text, {}), path), character != u' ');
            GFMSharedBezierPathGetState(path, count, points, kinds);
            EXPECT_TRUE(points != nullptr && kinds != nullptr);
        };
        append(u' ');
        EXPECT_EQ(count, 0U);
        append(u'A');
        const std::vector<float> first(points, points + 2 * count);
        for (int i = 0; i < 99; ++i) append(u'A');
        ASSERT_EQ(count * 2, first.size() * 100);
        EXPECT_TRUE(std::equal(first.begin(), first.end(), points + 99 * first.size()));
    }
}

TEST_F(VXTypeEngine, InstancesKeepMoreFacesThanTheCacheDoes) {
    std::vector<std::pair<CTYFontInstance, float>> instances;
    ForEachFont([&](const CTYFontDict& font) {
        const CTYFontInstance instance = Instance(font);
        instances.emplace_back(instance, TYFontInstanceGetWidth(instance, 5));
    });
    for (const auto& [instance, width] : instances) EXPECT_EQ(TYFontInstanceGetWidth(instance, 5), width);
}

TEST_F(VXTypeEngine, StyleNamesAreCutToTheirBuffer) {
    const CTYFontDict font = Font("DejaVu Sans Bold Oblique");
    std::uint16_t buffer[8] = {9, 9, 9, 9, 9, 9, 9, 9};
    std::int32_t whole = -1, length = 4;
    EXPECT_EQ(VX_ENGINE(TYFontDictGetStyleNameProc)(font.Get(), &whole, buffer, &length, 1), nullptr);
    EXPECT_EQ(length, 4);
    EXPECT_EQ(whole, 12);
    EXPECT_THAT(buffer, ElementsAre('B', 'o', 'l', 'd', 0, 9, 9, 9));
    length = -1;
    EXPECT_NE(VX_ENGINE(TYFontDictGetStyleNameProcV2)(font.Get(), &whole, buffer, &length, 1, 0, 0), nullptr);
    EXPECT_EQ(buffer[0], 'B') << "there is no room for anything";
}

TEST_F(VXTypeEngine, EveryOutputIsWrittenOnFailure) {
    CTYFontDict font = Font("DejaVu Sans");
    const auto stale = font.Get();
    const CTYFontInstance instance = Instance(font);
    font = {};
    float a = 1, b = 1, c = 1;
    EXPECT_EQ(VX_ENGINE(TYFontDictGetHorizontalMetricsProc)(stale, &a, &b, &c)->code, kTYBadHandle);
    EXPECT_THAT((std::vector<float>{a, b, c}), ElementsAre(0, 0, 0));
    EXPECT_EQ(VX_ENGINE(TYFontDictGetFontNameProc)(TYFontInstanceGetFont(instance).Get(), nullptr)->code,
              kTYBadParameter)
        << "a counted result that nobody would give back";

    std::int32_t ok = 9;
    const CTYText text = TYNewTextFontInstanceCP(instance, u'A');
    const TYMatrix identity, endless{std::numeric_limits<float>::infinity(), 0, 0, 1, 0, 0};
    TYBox box{1, 1, 1, 1};
    const auto getBox = VX_ENGINE(TYTextGetBoundingBox);
    EXPECT_NE(getBox(text.Get(), &endless, &box), nullptr);
    EXPECT_EQ(getBox(static_cast<TYText>(TYHandle{instance.Get()}), &identity, &box)->code, kTYBadHandle);
    EXPECT_EQ(box.right, 0.0F);
    EXPECT_NE(VX_ENGINE(TYTextGetOutlines)(text.Get(), &identity, &box, 2, GFMSharedBezierPath{}, &ok),
              nullptr);
    EXPECT_EQ(ok, 0);

    EXPECT_TRUE(Instance({}).IsEmpty());
    EXPECT_TRUE(TYFamilyListGetNthFamily(TYFamilyListNewList(TYFontSetNew()), -1).IsEmpty());
}

TEST_F(VXTypeEngine, NothingIsAliveAfterTheEnd) {
    const auto count = VX_ENGINE(TYTestLiveHandleCount);
    const CTYFontDict font = Font("DejaVu Sans");
    const CTYFontInstance instance = Instance(font);
    std::vector<CTYText> texts;
    for (int i = 0; i < 100; ++i) texts.push_back(TYNewTextFontInstanceCP(instance, u'A'));
    EXPECT_EQ(count(), 102);
    VX_ENGINE(TYTerminateProc)();
    EXPECT_EQ(count(), 0);
    EXPECT_TRUE(CTYFontDict(font).IsEmpty()) << "a stale handle takes no reference";
    EXPECT_EQ(Width(instance, u'A'), 0.0F);
    const CTYFontDict again = Font("DejaVu Sans");
    EXPECT_EQ(VX_ENGINE(TYBaseReleaseProc)(font.Get())->code, kTYBadHandle);
    EXPECT_EQ(count(), 1) << "the engine starts again";
}
