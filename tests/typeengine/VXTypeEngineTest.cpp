#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "EngineFixture.h"

using namespace BND_NT_NMT;
using testing::ElementsAre;

namespace {

class VXTypeEngine : public EngineFixture {};

}  // namespace

TEST_F(VXTypeEngine, IsReachedByNameOnly) {
    const VXBndAddressProc find = GetVXBndAddressProc();
#define VX_EXPECT_FOUND(name) EXPECT_NE(find(#name), nullptr) << #name;
    VX_TYPE_ENGINE_PROCEDURES(VX_EXPECT_FOUND)
#undef VX_EXPECT_FOUND
    for (const char* name : {"", "TYFontSetNew", "TYFontSetNewProcV2", "tyfontsetnewproc"}) {
        EXPECT_EQ(find(name), nullptr) << name;
    }
    EXPECT_EQ(find(nullptr), nullptr);
}

TEST_F(VXTypeEngine, FamiliesHoldTheirMembersHeaviestFirst) {
    const CTYFamilyList list = TYFamilyListNewList(TYFontSetNew());
    std::vector<std::string> members;
    for (int i = 0; i < TYFamilyListGetNumFams(list); ++i) {
        const CTYFamily family = TYFamilyListGetNthFamily(list, i);
        std::vector<std::string> found;
        bool isWanted = false;
        for (int k = 0; k < TYFamilyGetNumFonts(family); ++k) {
            const CTYFontDict font = TYFamilyGetNthFont(family, k);
            const std::string name = TYFontDictGetFontName(font).GetUTF8String();
            isWanted |= name == "DejaVu Sans";
            found.push_back(name + ", " + TYFontDictGetStyleName(font).GetUTF8String() + ", " +
                            std::to_string(TYFontDictGetStyle(font)));
        }
        if (isWanted) members.insert(members.end(), found.begin(), found.end());
    }
    EXPECT_THAT(members, ElementsAre("DejaVu Sans Bold, Bold, 2", "DejaVu Sans Bold Oblique, Bold Oblique, 3",
                                     "DejaVu Sans, Book, 0", "DejaVu Sans Oblique, Oblique, 1"))
        << "the condensed fonts, which carry this name too, are a family of their own";
    EXPECT_FALSE(Font("DejaVu Sans Condensed").IsEmpty());
    EXPECT_TRUE(Font("DejaVu").IsEmpty());
}

TEST_F(VXTypeEngine, MetricsAreFractionsOfTheEm) {
    float first = -1, second = -1, third = -1;
    TYFontDictGetHorizontalMetrics(Font("DejaVu Sans"), first, second, third);
    EXPECT_EQ(first, 1901.0F / 2048);
    EXPECT_EQ(second, 483.0F / 2048);
    EXPECT_EQ(third, 0.0F);
}

TEST_F(VXTypeEngine, WidthsAreNotRounded) {
    const CTYFontInstance instance = Instance(Font("DejaVu Sans"));
    EXPECT_EQ(Width(instance, u'A'), 1401 / 2.0F);
    EXPECT_EQ(Width(instance, u' '), 651 / 2.0F);
    EXPECT_EQ(Width(instance, u'\u0301'), 0.0F);
    for (const char16_t missing : {char16_t{0xFFFE}, char16_t{0xD800}, char16_t{0xDFFF}}) {
        EXPECT_EQ(TYFontInstanceGetGlyphID(instance, missing), 0U);
        EXPECT_EQ(Width(instance, missing), 1229 / 2.0F) << "of the glyph for what is missing";
    }
    EXPECT_EQ(TYFontInstanceGetWidth(instance, 0xFFFFFFFF), 0.0F) << "no such glyph";
}

TEST_F(VXTypeEngine, InstancesKeepFontAndMatrix) {
    const TYMatrix given{3, 0.5F, -0.25F, 7, 1, -2};
    const CTYFontInstance instance =
        TYFontInstanceNewFontInstance(TYFontDictNewSyntheticFont(Font("DejaVu Sans"), kTYItalic), given,
                                      TYEncodingNewFromPreDefEncoding(13));
    const TYMatrix matrix = TYFontInstanceGetMatrix(instance);
    EXPECT_THAT((std::vector<float>{matrix.a, matrix.b, matrix.c, matrix.d, matrix.tx, matrix.ty}),
                ElementsAre(3, 0.5F, -0.25F, 7, 1, -2));
    EXPECT_EQ(TYFontDictGetStyle(TYFontInstanceGetFont(instance)), kTYItalic);
    EXPECT_EQ(TYFontDictGetFontName(TYFontInstanceGetFont(instance)), "DejaVu Sans");
    EXPECT_EQ(Width(instance, u'A'), 1401.0F / 2048 * 3);
}

TEST_F(VXTypeEngine, BoldIsImitatedByThickerStrokes) {
    const CTYFontInstance plain = Instance(Font("DejaVu Sans"));
    const CTYFontDict font = TYFontDictNewSyntheticFont(Font("DejaVu Sans"), kTYBold);
    EXPECT_EQ(TYFontDictGetStyle(font), kTYBold);
    const CTYFontInstance bold = Instance(font);
    EXPECT_FLOAT_EQ(Width(bold, u'l'), Width(plain, u'l') + 1024.0F / 24);
    EXPECT_FLOAT_EQ(Width(bold, u'\u0301'), Width(plain, u'\u0301') + 1024.0F / 24) << "every advance grows";

    const TYBox thin = Box(plain, u'l'), thick = Box(bold, u'l');
    EXPECT_NEAR(thick.right - thick.left, thin.right - thin.left + 1024.0 / 24, 0.05);
    EXPECT_NEAR(thick.bottom - thick.top, thin.bottom - thin.top + 1024.0 / 24, 0.05);

    const CTYFontDict mono = Font("DejaVu Sans Mono");
    EXPECT_EQ(Width(Instance(TYFontDictNewSyntheticFont(mono, kTYBold)), u'l'), Width(Instance(mono), u'l'))
        << "every glyph of a font of fixed pitch keeps its width";
}

TEST_F(VXTypeEngine, ItalicIsImitatedByASlant) {
    const TYBox upright = Box(Instance(Font("DejaVu Sans")), u'l');
    EXPECT_NEAR(upright.top, -1556 / 2.0, 0.01) << "y grows downwards";
    EXPECT_NEAR(upright.bottom, 0, 0.01);
    const TYBox slanted = Box(Instance(TYFontDictNewSyntheticFont(Font("DejaVu Sans"), kTYItalic)), u'l');
    EXPECT_NEAR(slanted.left, upright.left, 0.01);
    EXPECT_NEAR(slanted.right, upright.right + 0.2125 * 1556 / 2, 0.01);
}

TEST_F(VXTypeEngine, ImitationAddsOnlyWhatTheBaseLacks) {
    const CTYFontDict bold = Font("DejaVu Sans Bold");
    const CTYFontDict both = TYFontDictNewSyntheticFont(bold, kTYBoldItalic);
    EXPECT_EQ(TYFontDictGetStyle(both), kTYBoldItalic);
    EXPECT_EQ(Width(Instance(both), u'l'), Width(Instance(bold), u'l')) << "it is bold already";
    EXPECT_NEAR(Box(Instance(both), u'l').right, Box(Instance(bold), u'l').right + 0.2125 * 1556 / 2, 0.01);
    EXPECT_EQ(TYFontDictGetStyle(TYFontDictNewSyntheticFont(bold, kTYItalic)), kTYBoldItalic);
    EXPECT_TRUE(TYFontDictNewSyntheticFont(bold, 0).IsEmpty());
    EXPECT_TRUE(TYFontDictNewSyntheticFont(bold, 4).IsEmpty());
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
    EXPECT_EQ(length, 0);
    EXPECT_EQ(whole, 0);
    EXPECT_EQ(buffer[0], 'B') << "there is no room for anything";
}

TEST_F(VXTypeEngine, EveryOutputIsWrittenOnFailure) {
    CTYFontDict font = Font("DejaVu Sans");
    const auto stale = font.Get();
    const CTYFontInstance instance = Instance(font);
    font = {};
    const auto wrong = static_cast<TYText>(TYHandle{instance.Get()});

    TYFontDict dict = stale;
    EXPECT_NE(VX_ENGINE(TYFontDictNewSyntheticFontProc)(&dict, stale, 1, 0x40000000, 0, 0, nullptr), nullptr);
    EXPECT_EQ(dict, TYFontDict{});
    float a = 1, b = 1, c = 1;
    EXPECT_EQ(VX_ENGINE(TYFontDictGetHorizontalMetricsProc)(stale, &a, &b, &c)->code, kTYBadHandle);
    EXPECT_THAT((std::vector<float>{a, b, c}), ElementsAre(0, 0, 0));
    auto name = static_cast<TYString>(TYHandle{stale});
    EXPECT_NE(VX_ENGINE(TYFontDictGetFontNameProc)(stale, &name), nullptr);
    EXPECT_EQ(name, TYString{});
    EXPECT_EQ(VX_ENGINE(TYFontDictGetFontNameProc)(TYFontInstanceGetFont(instance).Get(), nullptr)->code,
              kTYBadParameter)
        << "a counted result that nobody would give back";

    const char16_t character = u'A';
    TYGlyphID glyph = 9;
    std::int32_t consumed = 9;
    const auto getGlyph = VX_ENGINE(TYFontInstanceGetGlyphIDProcV2);
    EXPECT_EQ(getGlyph(instance.Get(), &glyph, &character, 2, &consumed, 0), nullptr);
    EXPECT_EQ(consumed, 2);
    EXPECT_EQ(getGlyph(instance.Get(), &glyph, &character, 1, &consumed, 0)->code, kTYBadParameter);
    EXPECT_EQ(glyph, 0U);
    EXPECT_EQ(consumed, 0);

    TYBox box{1, 1, 1, 1};
    const TYMatrix identity;
    EXPECT_EQ(VX_ENGINE(TYTextGetBoundingBox)(wrong, &identity, &box)->code, kTYBadHandle);
    EXPECT_EQ(box.right, 0.0F);
    const CTYText text = TYNewTextFontInstanceCP(instance, u'A');
    std::int32_t ok = 9;
    EXPECT_NE(VX_ENGINE(TYTextGetOutlines)(text.Get(), &identity, &box, 2, GFMSharedBezierPath{}, &ok),
              nullptr);
    EXPECT_EQ(ok, 0);
    const TYMatrix endless{std::numeric_limits<float>::infinity(), 0, 0, 1, 0, 0};
    EXPECT_NE(VX_ENGINE(TYTextGetBoundingBox)(text.Get(), &endless, &box), nullptr);

    EXPECT_TRUE(TYEncodingNewFromPreDefEncoding(12).IsEmpty());
    EXPECT_TRUE(Instance({}).IsEmpty());
    EXPECT_TRUE(TYFamilyListGetNthFamily(TYFamilyListNewList(TYFontSetNew()), -1).IsEmpty());
    EXPECT_TRUE(TYFamilyListGetNthFamily(TYFamilyListNewList(TYFontSetNew()), 1 << 30).IsEmpty());
}

TEST_F(VXTypeEngine, NothingIsAliveAfterTheEnd) {
    const auto count = VX_ENGINE(TYTestLiveHandleCount);
    CTYFontDict font = Font("DejaVu Sans");
    EXPECT_EQ(count(), 1);
    const CTYFontDict copy = font;
    EXPECT_EQ(count(), 1) << "a copy shares";
    const CTYFontInstance instance = Instance(font);
    const CTYText text = TYNewTextFontInstanceCP(instance, u'A');
    EXPECT_EQ(count(), 3);

    VX_ENGINE(TYTerminateProc)();
    EXPECT_EQ(count(), 0);
    EXPECT_TRUE(CTYFontDict(font).IsEmpty()) << "a stale handle takes no reference";
    EXPECT_EQ(Width(instance, u'A'), 0.0F);

    const CTYFontDict again = Font("DejaVu Sans");
    EXPECT_EQ(count(), 1) << "the engine starts again";
    EXPECT_EQ(VX_ENGINE(TYBaseReleaseProc)(font.Get())->code, kTYBadHandle);
    EXPECT_EQ(count(), 1);
    EXPECT_EQ(Box(instance, u'A').right, 0.0F);
}
