#include "text/FakeTypeEngine.h"

#include "binding/BNDTable_p.h"
#include "support/Test.h"

namespace {

/// What a handle stands for; it is its index and one more.
struct Thing {
    std::size_t family = 0;
    std::size_t font = 0;
    int style = 0;      // of an imitation
    float size = 0.0f;  // of an instance
    unsigned short character = 0;
    std::vector<float> points = {};
    std::vector<KVMPointType> kinds = {};
};

FakeTypeEngine* g_Engine = nullptr;
std::vector<Thing> g_Things;
int g_References = 0;
constexpr TYErrorRecord kBadHandle = {kTYBadHandle, "bad handle"};

Thing ThingOf(TYHandle handle) { return handle == 0 ? Thing() : g_Things.at(handle - 1); }

Thing& PathOf(GFMSharedBezierPath path) { return g_Things.at(static_cast<TYHandle>(path) - 1); }

const FakeTypeEngine::Font& FontOf(TYHandle font) {
    return g_Engine->families.at(ThingOf(font).family).at(ThingOf(font).font);
}

template <typename Handle>
TYError Make(Handle* out, Thing thing = {}) {
    g_Things.push_back(std::move(thing));
    ++g_References;
    *out = static_cast<Handle>(g_Things.size());
    return nullptr;
}

template <typename T, typename Value>
TYError Answer(T* out, Value value) {
    *out = static_cast<T>(value);
    return nullptr;
}

void FillTable(BNDTable& table) {
    table.TYBaseAddRefProc = [](TYHandle handle) {
        return handle == 0 || g_Engine->refusesToShare ? 0 : ++g_References;
    };
    table.TYBaseReleaseProc = [](TYHandle) { return Answer(&g_References, g_References - 1); };
    table.TYFontSetNewProc = [](TYFontSet* out, auto...) { return Make(out); };
    table.TYFamilyListNewListProc = [](auto, auto, TYFamilyList* out) { return Make(out); };
    table.TYFamilyListGetNumFamsProc = [](auto, auto* out) { return Answer(out, g_Engine->families.size()); };
    table.TYFamilyListGetNthFamilyProc = [](auto, std::int32_t index, TYFamily* out) {
        return Make(out, {.family = static_cast<std::size_t>(index)});
    };
    table.TYFamilyGetNumFontsProc = [](TYFamily family, auto* out, auto) {
        return Answer(out, g_Engine->families.at(ThingOf(family).family).size());
    };
    table.TYFamilyGetNthFontProc = [](TYFamily family, const auto* index, TYFontDict* out) {
        return Make(out, {.family = ThingOf(family).family, .font = static_cast<std::size_t>(*index)});
    };
    table.TYFontDictGetFontNameProc = [](TYFontDict font, TYString* out) { return Make(out, ThingOf(font)); };
    table.TYStringGetCharPtrProc = [](TYString name, const char** out) {
        return Answer(out, FontOf(name).name.c_str());
    };
    table.TYFontDictGetStyleNameProc = [](TYFontDict font, auto* out, auto* buffer, auto...) {
        const std::string& name = FontOf(font).styleName;
        *std::copy(name.begin(), name.end(), buffer) = 0;
        return Answer(out, name.size());
    };
    table.TYFontDictGetStyleProc = [](TYFontDict font, auto* out) { return Answer(out, FontOf(font).style); };
    table.TYFontDictNewSyntheticFontProc = [](TYFontDict* out, TYFontDict base, auto style, auto strength,
                                              auto...) {
        EXPECT_EQ(strength, 0x40000000);
        return Make(out, {.family = ThingOf(base).family, .font = ThingOf(base).font, .style = style});
    };
    table.TYFontDictGetHorizontalMetricsProc = [](TYFontDict font, float* first, float* second,
                                                  float* third) {
        if (font == TYFontDict{}) return &kBadHandle;
        *first = 0.75f;
        *second = 0.25f;
        return Answer(third, 0.5f);
    };
    table.TYEncodingNewFromPreDefEncodingProc = [](TYEncoding* out, auto number) {
        EXPECT_EQ(number, 13);
        return Make(out);
    };
    table.TYFontInstanceNewFontInstanceProcV3 = [](TYFontDict font, auto* matrix, auto, auto, auto,
                                                   auto* out) {
        if (font == TYFontDict{}) return &kBadHandle;
        return Make(out, {.family = ThingOf(font).family, .font = ThingOf(font).font, .size = matrix->d});
    };
    table.TYFontInstanceGetFontProc = [](TYFontInstance instance, TYFontDict* out) {
        return instance == TYFontInstance{} ? &kBadHandle : Make(out, ThingOf(instance));
    };
    table.TYFontInstanceGetMatrixProc = [](TYFontInstance instance, TYMatrix* out) {
        return Answer(&out->d, ThingOf(instance).size);
    };
    table.TYFontInstanceGetGlyphIDProcV2 = [](auto, auto* out, const void* character, auto size, auto...) {
        EXPECT_EQ(size, 2);
        return Answer(out, *static_cast<const unsigned short*>(character));  // a glyph is its character
    };
    table.TYFontInstanceGetWidthProc = [](TYFontInstance instance, float* out, TYGlyphID glyph, auto...) {
        const float width = g_Engine->widths[static_cast<unsigned int>(glyph)];
        return Answer(out, width * ThingOf(instance).size / 1024.0f);
    };
    table.TYNewTextFontInstanceCPProcV2 = [](auto, const void* character, auto size, auto, auto, auto,
                                             auto* out) {
        EXPECT_EQ(size, 2);
        return Make(out, {.character = *static_cast<const unsigned short*>(character)});
    };
    table.TYTextGetOutlines = [](TYText text, auto, auto, auto mode, GFMSharedBezierPath path, auto* ok) {
        EXPECT_EQ(mode, 2);
        for (const auto& point : g_Engine->outlines[ThingOf(text).character]) {
            PathOf(path).kinds.push_back(point.kind);
            PathOf(path).points.insert(PathOf(path).points.end(), {point.x, point.y});
        }
        return Answer(ok, !g_Engine->outlines[ThingOf(text).character].empty());
    };
    table.GFMNewSharedBezierPathProc = [](auto capacity, auto) {
        EXPECT_EQ(capacity, 1024);
        ++g_Engine->numPaths;
        GFMSharedBezierPath path{};
        Make(&path);
        PathOf(path).points.reserve(2);  // an empty path has arrays too, and they move as it grows
        PathOf(path).kinds.reserve(1);
        return path;
    };
    table.GFMSharedBezierPathGetStateProc = [](GFMSharedBezierPath path, auto* count, auto** points,
                                               auto** kinds) {
        *points = PathOf(path).points.data();
        *kinds = PathOf(path).kinds.data();
        return Answer(count, PathOf(path).kinds.size());
    };
}

}  // namespace

FakeTypeEngine::FakeTypeEngine() {
    g_Engine = this;
    BNDTerminate();
    FillTable(g_BNDTable);
}

FakeTypeEngine::~FakeTypeEngine() {
    VXFontPublishManager::DoCleanUp();
    EXPECT_EQ(g_References, 0);
    BNDTerminate();
    g_Things.clear();
    g_Engine = nullptr;
}

std::string FakeTypeEngine::NameOf(const BND_NT_NMT::CTYFontDict& font) {
    if (font.IsEmpty()) return "none";
    const int style = ThingOf(font.Get()).style;
    return FontOf(font.Get()).name + (style == 0 ? "" : " +" + std::to_string(style));
}
