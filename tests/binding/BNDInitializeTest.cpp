#include "support/Test.h"

using namespace BND_NT_NMT;

namespace {

int g_Lookups = 0;
int g_Ends = 0;

VXBndProc FindOnlyTheEnd(const char* name) {
    ++g_Lookups;
    return std::string_view(name) == "TYTerminateProc" ? [] { ++g_Ends; } : VXBndProc{};
}

VXBndProc FindNothing(const char*) { return nullptr; }

/// Every operation answers as for nothing.
void ExpectNothing() {
    const CTYFontSet set = TYFontSetNew();
    const CTYFamilyList list = TYFamilyListNewList(set);
    EXPECT_EQ(TYFamilyListGetNumFams(list), 0);
    const CTYFamily family = TYFamilyListGetNthFamily(list, 0);
    EXPECT_EQ(TYFamilyGetNumFonts(family), 0);
    const CTYFontDict font = TYFamilyGetNthFont(family, 0);
    EXPECT_TRUE(TYFontDictGetFontName(font).empty());
    EXPECT_TRUE(TYFontDictGetStyleName(font).empty());
    EXPECT_EQ(TYFontDictGetStyle(font), 0);
    float first = 1, second = 1, third = 1;
    TYFontDictGetHorizontalMetrics(font, first, second, third);
    EXPECT_TRUE(first == 0 && second == 0 && third == 0);
    const CTYFontInstance instance =
        TYFontInstanceNewFontInstance(font, {}, TYEncodingNewFromPreDefEncoding(13));
    EXPECT_EQ(TYFontInstanceGetMatrix(instance).d, 0.0F);
    EXPECT_EQ(TYFontInstanceGetGlyphID(instance, u'A'), 0U);
    EXPECT_EQ(TYFontInstanceGetWidth(instance, 0), 0.0F);
    const CTYText text = TYNewTextFontInstanceCP(instance, u'A');
    EXPECT_EQ(TYTextGetBoundingBox(text, {}).right, 0.0F);
    CGFMSharedBezierPath path = GFMNewSharedBezierPath(1024);
    EXPECT_FALSE(TYTextGetOutlines(text, {}, {}, path));
    unsigned int count = 1;
    float* points = &first;
    KVMPointType kind = kKVMMove;
    KVMPointType* kinds = &kind;
    GFMSharedBezierPathGetState(path, count, points, kinds);
    EXPECT_TRUE(count == 0 && points == nullptr && kinds == nullptr);
    EXPECT_TRUE(set.IsEmpty() && TYFontDictNewSyntheticFont(font, 3).IsEmpty() &&
                TYFontInstanceGetFont(instance).IsEmpty());
}

}  // namespace

TEST(BNDInitialize, WithoutAnEngineEverythingIsNothing) {
    ExpectNothing();
    for (const VXBndAddressProc find : {VXBndAddressProc{}, &FindNothing}) {
        BNDInitialize(find);
        ExpectNothing();
    }
    BNDTerminate();
    ExpectNothing();
}

TEST(BNDInitialize, EveryStartIsEndedOnce) {
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
    BNDTerminate();
    BNDTerminate();
    EXPECT_EQ(g_Ends, 2);
}
