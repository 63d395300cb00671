#include "support/Test.h"
#include "typeengine/EngineFixture.h"

using namespace BND_NT_NMT;

namespace {

enum class Hidden { Nothing, Older, Newer };

Hidden g_Hidden;

TYError GetEndlessStyle(TYFontDict, std::int32_t*, std::uint16_t* buffer, std::int32_t* length,
                        std::int32_t) {
    EXPECT_EQ(*length, 255);
    std::fill_n(buffer, 256, std::uint16_t{'x'});
    return nullptr;
}

/// The engine of this machine, as one that has only one generation of the four procedures that have two.
VXBndProc Find(const char* name) {
    constexpr std::string_view kOlder[] = {"TYFontDictGetFontNameProc", "TYFontDictGetStyleNameProc",
                                           "TYFontInstanceNewFontInstanceProcV3",
                                           "TYNewTextFontInstanceCPProcV2"};
    constexpr std::string_view kNewer[] = {"TYFontDictGetFontNameProcV2", "TYFontDictGetStyleNameProcV2",
                                           "TYFontInstanceNewFontInstanceProcV4",
                                           "TYNewTextFontInstanceCPProcV3"};
    if (g_Hidden == Hidden::Older && std::ranges::count(kOlder, name) != 0) return nullptr;
    if (g_Hidden == Hidden::Newer && std::ranges::count(kNewer, name) != 0) return nullptr;
    return GetVXBndAddressProc()(name);
}

class BNDTypeEngine : public EngineFixture, public testing::WithParamInterface<Hidden> {
protected:
    void SetUp() override {
        g_Hidden = GetParam();
        BNDInitialize(&Find);
    }
};

INSTANTIATE_TEST_SUITE_P(Generations, BNDTypeEngine,
                         testing::Values(Hidden::Nothing, Hidden::Older, Hidden::Newer));

}  // namespace

TEST_P(BNDTypeEngine, EitherGenerationAnswersTheSame) {
    const CTYFontDict font = Font("DejaVu Sans Bold Oblique");
    EXPECT_EQ(TYFontDictGetFontName(font), "DejaVu Sans Bold Oblique");
    EXPECT_EQ(TYFontDictGetStyleName(font), "Bold Oblique");
    const CTYFontInstance instance = Instance(font);
    EXPECT_EQ(Width(instance, u'A'), 1585 / 2.0F);
    EXPECT_NEAR(Box(instance, u'l').top, -1556 / 2.0, 0.01);
    EXPECT_EQ(VX_ENGINE(TYTestLiveHandleCount)(), 2) << "what was asked for is given back";
}

TEST_P(BNDTypeEngine, WrappersCountAndOutliveTheBinding) {
    const CTYFontDict font = Font("DejaVu Sans");
    {
        CTYFontDict copy = font;
        const CTYFontDict moved = std::move(copy);
        EXPECT_TRUE(copy.IsEmpty());  // NOLINT(bugprone-use-after-move)
        copy = moved;
        copy = *&copy;
        EXPECT_EQ(copy, font);
        copy = CTYFontDict();
        EXPECT_TRUE(CTYFontDict(static_cast<TYFontDict>(TYHandle{8})).IsEmpty()) << "the engine refuses it";
        const CTYFontDict shared(font.Get());
    }
    EXPECT_EQ(TYFontDictGetFontName(font), "DejaVu Sans") << "as many references have ended as were added";
    EXPECT_EQ(VX_ENGINE(TYTestLiveHandleCount)(), 1);
    BNDTerminate();
    EXPECT_FALSE(font.IsEmpty());
    EXPECT_TRUE(CTYFontDict(font).IsEmpty());
    EXPECT_TRUE(TYFontDictGetFontName(font).empty());
}

TEST(BNDTypeEngineNames, AnEngineThatForgetsTheEndIsNotFollowedBeyondTheBuffer) {
    BNDInitialize([](const char* name) {
        const bool isStyle = std::string_view(name) == "TYFontDictGetStyleNameProc";
        return isStyle ? reinterpret_cast<VXBndProc>(&GetEndlessStyle) : nullptr;
    });
    EXPECT_EQ(TYFontDictGetStyleName({}).length(), 256U);
    BNDTerminate();
}
