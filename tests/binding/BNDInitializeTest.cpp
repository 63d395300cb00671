#include "binding/BNDInitialize.h"

#include <gtest/gtest.h>

#include <string_view>

#include "binding/BNDTypeEngine.h"

using namespace BND_NT_NMT;

namespace {

int g_Lookups = 0;
int g_Ends = 0;

void CountEnd() { ++g_Ends; }

VXBndProc FindOnlyTheEnd(const char* name) {
    ++g_Lookups;
    return std::string_view(name) == "TYTerminateProc" ? &CountEnd : nullptr;
}

VXBndProc FindNothing(const char*) { return nullptr; }

/// Every operation answers as for nothing.
void ExpectNothing() {
    const CTYFontSet set = TYFontSetNew();
    EXPECT_TRUE(set.IsEmpty());
    const CTYFamilyList list = TYFamilyListNewList(set);
    EXPECT_EQ(TYFamilyListGetNumFams(list), 0);
    const CTYFamily family = TYFamilyListGetNthFamily(list, 0);
    EXPECT_EQ(TYFamilyGetNumFonts(family), 0);
    const CTYFontDict font = TYFamilyGetNthFont(family, 0);
    EXPECT_TRUE(TYFontDictGetFontName(font).empty());
    EXPECT_TRUE(TYFontDictGetStyleName(font).empty());
    EXPECT_EQ(TYFontDictGetStyle(font), 0);
    EXPECT_TRUE(TYFontDictNewSyntheticFont(font, 3).IsEmpty());
    float first = 1, second = 1, third = 1;
    TYFontDictGetHorizontalMetrics(font, first, second, third);
    EXPECT_EQ(first, 0.0F);
    EXPECT_EQ(second, 0.0F);
    EXPECT_EQ(third, 0.0F);
    const CTYFontInstance instance =
        TYFontInstanceNewFontInstance(font, {}, TYEncodingNewFromPreDefEncoding(13));
    EXPECT_TRUE(TYFontInstanceGetFont(instance).IsEmpty());
    EXPECT_EQ(TYFontInstanceGetMatrix(instance).d, 0.0F);
    EXPECT_EQ(TYFontInstanceGetGlyphID(instance, u'A'), 0U);
    EXPECT_EQ(TYFontInstanceGetWidth(instance, 0), 0.0F);
    const CTYText text = TYNewTextFontInstanceCP(instance, u'A');
    EXPECT_EQ(TYTextGetBoundingBox(text, {}).right, 0.0F);
    CGFMSharedBezierPath path = GFMNewSharedBezierPath(1024);
    EXPECT_FALSE(TYTextGetOutlines(text, {}, {}, path));
    unsigned int count = 1;
    float one = 1.0F;
    float* points = &one;
    KVMPointType kind = kKVMMove;
    KVMPointType* kinds = &kind;
    GFMSharedBezierPathGetState(path, count, points, kinds);
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(points, nullptr);
    EXPECT_EQ(kinds, nullptr);
}

}  // namespace

TEST(BNDInitialize, WithoutAnEngineEverythingIsNothing) {
    ExpectNothing();
    BNDInitialize(nullptr);
    ExpectNothing();
    BNDInitialize(&FindNothing);
    ExpectNothing();
    BNDTerminate();
    ExpectNothing();
}

TEST(BNDInitialize, EveryStartIsEndedOnce) {
    g_Lookups = g_Ends = 0;
    BNDTerminate();
    BNDInitialize(&FindOnlyTheEnd);
    const int lookups = g_Lookups;
    BNDInitialize(&FindOnlyTheEnd);
    EXPECT_EQ(g_Lookups, lookups) << "a repeated start changes nothing";
    EXPECT_EQ(g_Ends, 0);
    BNDInitialize(&FindNothing);
    EXPECT_EQ(g_Ends, 1) << "what another procedure reached is ended";
    BNDTerminate();
    BNDInitialize(&FindOnlyTheEnd);
    EXPECT_GT(g_Lookups, lookups);
    BNDTerminate();
    BNDTerminate();
    EXPECT_EQ(g_Ends, 2);
}
