#include "binding/BNDTypeEngine.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "binding/BNDInitialize.h"

using namespace BND_NT_NMT;

namespace {

// A small engine that counts references; its one font, handle 7, is there from the start.
std::map<TYHandle, int> g_References;
std::vector<std::string> g_Calls;

std::int32_t AddReference(TYHandle handle) {
    const auto found = g_References.find(handle);
    if (found == g_References.end()) return 0;
    ++found->second;
    return 5;
}

TYError EndReference(TYHandle handle) {
    if (--g_References.at(handle) == 0) g_References.erase(handle);
    return nullptr;
}

template <class Handle>
Handle Counted(TYHandle handle) {
    ++g_References[handle];
    return static_cast<Handle>(handle);
}

TYError GetFont(TYFontInstance, TYFontDict* out) {
    *out = Counted<TYFontDict>(7);
    return nullptr;
}

TYError GetName(TYFontDict, TYString* out) {
    g_Calls.push_back("name");
    *out = Counted<TYString>(20);
    return nullptr;
}

TYError GetNameV2(TYFontDict font, TYString* out, std::int32_t, std::int32_t) {
    GetName(font, out);
    g_Calls.back() += " V2";
    return nullptr;
}

TYError GetCharacters(TYString, const char** out) {
    *out =
        "Gr\xC3\xB6\xC3\x9F"
        "e";
    return nullptr;
}

TYError GetStyle(TYFontDict, std::int32_t*, std::uint16_t* buffer, std::int32_t* length, std::int32_t) {
    g_Calls.push_back("style");
    EXPECT_EQ(*length, 255);
    for (int i = 0; i < 256; ++i) buffer[i] = 'x';
    return nullptr;
}

TYError GetStyleV2(TYFontDict font, std::int32_t* out, std::uint16_t* buffer, std::int32_t* length,
                   std::int32_t encoding, std::int32_t, std::int32_t) {
    GetStyle(font, out, buffer, length, encoding);
    g_Calls.back() += " V2";
    buffer[4] = 0;
    return nullptr;
}

TYError NewInstanceV3(TYFontDict, const TYMatrix*, TYEncoding, const TYDesignVector*, std::int32_t,
                      TYFontInstance* out) {
    g_Calls.push_back("instance V3");
    *out = Counted<TYFontInstance>(30);
    return nullptr;
}

TYError NewInstanceV4(TYFontDict, const TYMatrix*, TYEncoding, const TYDesignVector*, std::int32_t,
                      const TYDescriptor* features, TYFontInstance* out) {
    g_Calls.push_back("instance V4");
    EXPECT_EQ(features->kind, 15);
    EXPECT_EQ(features->count, 0);
    *out = Counted<TYFontInstance>(30);
    return nullptr;
}

TYError NewTextV2(TYFontInstance, const void* characters, std::int32_t size, std::int32_t, std::int32_t*,
                  std::int32_t, TYText* out) {
    g_Calls.push_back("text V2");
    EXPECT_EQ(size, 2);
    EXPECT_EQ(*static_cast<const unsigned short*>(characters), 0x263A);
    *out = Counted<TYText>(40);
    return nullptr;
}

TYError NewTextV3(TYFontInstance instance, const void* characters, std::int32_t size, std::int32_t flags,
                  std::int32_t* consumed, std::int32_t direction, const TYDescriptor* features, TYText* out) {
    EXPECT_EQ(features->kind, 15);
    NewTextV2(instance, characters, size, flags, consumed, direction, out);
    g_Calls.back() = "text V3";
    return nullptr;
}

void End() { g_References.clear(); }

bool g_HidesNewer = false;

VXBndProc Find(const char* name) {
    const std::string_view wanted = name;
#define VX_ROW(function, type) \
    { #type, reinterpret_cast < VXBndProc>(static_cast <decltype(&::type)>(&function)) }
    const std::map<std::string_view, VXBndProc> older = {
        VX_ROW(AddReference, TYBaseAddRefProc),
        VX_ROW(EndReference, TYBaseReleaseProc),
        VX_ROW(GetFont, TYFontInstanceGetFontProc),
        VX_ROW(GetName, TYFontDictGetFontNameProc),
        VX_ROW(GetCharacters, TYStringGetCharPtrProc),
        VX_ROW(GetStyle, TYFontDictGetStyleNameProc),
        VX_ROW(NewInstanceV3, TYFontInstanceNewFontInstanceProcV3),
        VX_ROW(NewTextV2, TYNewTextFontInstanceCPProcV2),
        VX_ROW(End, TYTerminateProc),
    };
    const std::map<std::string_view, VXBndProc> newer = {
        VX_ROW(GetNameV2, TYFontDictGetFontNameProcV2),
        VX_ROW(GetStyleV2, TYFontDictGetStyleNameProcV2),
        VX_ROW(NewInstanceV4, TYFontInstanceNewFontInstanceProcV4),
        VX_ROW(NewTextV3, TYNewTextFontInstanceCPProcV3),
    };
#undef VX_ROW
    if (const auto found = older.find(wanted); found != older.end()) return found->second;
    if (const auto found = newer.find(wanted); found != newer.end() && !g_HidesNewer) return found->second;
    return nullptr;
}

class BNDTypeEngine : public testing::TestWithParam<bool> {
protected:
    void SetUp() override {
        g_HidesNewer = GetParam();
        g_References = {{7, 1}};
        g_Calls.clear();
        BNDInitialize(&Find);
    }
    void TearDown() override { BNDTerminate(); }
};

INSTANTIATE_TEST_SUITE_P(Generations, BNDTypeEngine, testing::Bool(),
                         [](const auto& test) { return test.param ? "Older" : "Newer"; });

}  // namespace

TEST_P(BNDTypeEngine, PrefersTheNewerGeneration) {
    const CTYFontDict font = TYFontInstanceGetFont({});
    EXPECT_EQ(TYFontDictGetFontName(font), VXString(u"Gr\u00F6\u00DFe"));
    const VXString style = TYFontDictGetStyleName(font);
    const CTYFontInstance instance = TYFontInstanceNewFontInstance(font, {}, {});
    const CTYText text = TYNewTextFontInstanceCP(instance, 0x263A);
    if (GetParam()) {
        EXPECT_EQ(g_Calls, (std::vector<std::string>{"name", "style", "instance V3", "text V2"}));
        EXPECT_EQ(style.length(), 256U) << "an engine that forgets the end is not followed beyond the buffer";
    } else {
        EXPECT_EQ(g_Calls, (std::vector<std::string>{"name V2", "style V2", "instance V4", "text V3"}));
        EXPECT_EQ(style, "xxxx");
    }
    EXPECT_EQ(g_References, (std::map<TYHandle, int>{{7, 2}, {30, 1}, {40, 1}})) << "the name was given back";
}

TEST_P(BNDTypeEngine, WrappersCount) {
    {
        CTYFontDict font = TYFontInstanceGetFont({});
        EXPECT_EQ(g_References[7], 2) << "adopted, not counted again";
        CTYFontDict copy = font;
        EXPECT_EQ(g_References[7], 3);
        CTYFontDict moved = std::move(copy);
        EXPECT_TRUE(copy.IsEmpty());  // NOLINT(bugprone-use-after-move)
        copy = moved;
        copy = *&copy;
        EXPECT_EQ(g_References[7], 4);
        EXPECT_EQ(copy, font);
        copy = CTYFontDict();
        EXPECT_EQ(g_References[7], 3);
        const CTYFontDict shared(static_cast<TYFontDict>(TYHandle{7}));
        EXPECT_EQ(g_References[7], 4);
        EXPECT_TRUE(CTYFontDict(static_cast<TYFontDict>(TYHandle{8})).IsEmpty()) << "the engine refuses it";
    }
    EXPECT_EQ(g_References[7], 1);
}

TEST_P(BNDTypeEngine, WrappersOutliveTheBinding) {
    const CTYFontDict font = TYFontInstanceGetFont({});
    BNDTerminate();
    EXPECT_FALSE(font.IsEmpty());
    EXPECT_TRUE(CTYFontDict(font).IsEmpty());
    EXPECT_TRUE(TYFontDictGetFontName(font).empty());
}
