#include "text/FakeTypeEngine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

#include "binding/BNDInitialize.h"
#include "text/VXFontPublishManager.h"

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

unsigned short UnitAt(const void* character, std::int32_t size) {
    EXPECT_EQ(size, 2);
    return *static_cast<const unsigned short*>(character);
}

std::int32_t AddRef(TYHandle handle) { return handle == 0 ? 0 : ++g_References; }

TYError Release(TYHandle) { return Answer(&g_References, g_References - 1); }

TYError NewFontSet(TYFontSet* out, std::int32_t) {
    ++g_Engine->walks;
    return Make(out);
}

TYError NewFamilyList(TYFontSet, std::int32_t, TYFamilyList* out) { return Make(out); }

TYError CountFamilies(TYFamilyList, std::int32_t* out) { return Answer(out, g_Engine->families.size()); }

TYError GetFamily(TYFamilyList, std::int32_t index, TYFamily* out) {
    return Make(out, {.family = static_cast<std::size_t>(index)});
}

TYError CountFonts(TYFamily family, std::int32_t* out, std::int32_t) {
    return Answer(out, g_Engine->families.at(ThingOf(family).family).size());
}

TYError GetFont(TYFamily family, const std::int32_t* index, TYFontDict* out) {
    return Make(out, {.family = ThingOf(family).family, .font = static_cast<std::size_t>(*index)});
}

TYError GetFontName(TYFontDict font, TYString* out) { return Make(out, ThingOf(font)); }

TYError GetCharacters(TYString name, const char** out) { return Answer(out, FontOf(name).name.c_str()); }

TYError GetStyleName(TYFontDict font, std::int32_t* out, std::uint16_t* buffer, std::int32_t*, std::int32_t) {
    const std::string& name = FontOf(font).styleName;
    *std::copy(name.begin(), name.end(), buffer) = 0;
    return Answer(out, name.size());
}

TYError GetStyle(TYFontDict font, std::int32_t* out) { return Answer(out, FontOf(font).style); }

TYError NewSyntheticFont(TYFontDict* out, TYFontDict base, std::int32_t style, std::int32_t strength,
                         std::int32_t, std::int32_t, const TYDesignVector*) {
    EXPECT_EQ(strength, 0x40000000);
    return Make(out, {.family = ThingOf(base).family, .font = ThingOf(base).font, .style = style});
}

TYError GetMetrics(TYFontDict font, float* first, float* second, float* third) {
    if (font == TYFontDict{}) return &kBadHandle;
    *first = 0.75f;
    *second = 0.25f;
    return Answer(third, 0.5f);
}

TYError NewEncoding(TYEncoding* out, std::int32_t number) {
    EXPECT_EQ(number, 13);
    return Make(out);
}

TYError NewInstance(TYFontDict font, const TYMatrix* matrix, TYEncoding, const TYDesignVector*, std::int32_t,
                    TYFontInstance* out) {
    if (font == TYFontDict{}) return &kBadHandle;
    return Make(out, {.family = ThingOf(font).family, .font = ThingOf(font).font, .size = matrix->d});
}

TYError GetFontOfInstance(TYFontInstance instance, TYFontDict* out) {
    return instance == TYFontInstance{} ? &kBadHandle : Make(out, ThingOf(instance));
}

TYError GetMatrix(TYFontInstance instance, TYMatrix* out) { return Answer(&out->d, ThingOf(instance).size); }

/// A glyph is its character.
TYError GetGlyph(TYFontInstance, TYGlyphID* out, const void* character, std::int32_t size, std::int32_t*,
                 std::int32_t) {
    return Answer(out, UnitAt(character, size));
}

TYError GetWidth(TYFontInstance instance, float* out, TYGlyphID glyph, std::int32_t, std::int32_t) {
    return Answer(out, g_Engine->widths[static_cast<unsigned int>(glyph)] * ThingOf(instance).size / 1024.0f);
}

TYError NewText(TYFontInstance, const void* characters, std::int32_t size, std::int32_t, std::int32_t*,
                std::int32_t, TYText* out) {
    return Make(out, {.character = UnitAt(characters, size)});
}

TYError GetOutlines(TYText text, const TYMatrix*, const TYBox*, std::int32_t mode, GFMSharedBezierPath path,
                    std::int32_t* ok) {
    EXPECT_EQ(mode, 2);
    Thing& thing = g_Things.at(static_cast<TYHandle>(path) - 1);
    for (const auto& point : g_Engine->outlines[ThingOf(text).character]) {
        thing.kinds.push_back(point.kind);
        thing.points.insert(thing.points.end(), {point.x, point.y});
    }
    return Answer(ok, 1);
}

GFMSharedBezierPath NewPath(std::int32_t capacity, std::int32_t) {
    EXPECT_EQ(capacity, 1024);
    GFMSharedBezierPath path{};
    Make(&path);
    return path;
}

TYError GetState(GFMSharedBezierPath path, std::uint32_t* count, float** points, KVMPointType** kinds) {
    Thing& thing = g_Things.at(static_cast<TYHandle>(path) - 1);
    thing.points.reserve(2);  // an empty path has arrays too
    thing.kinds.reserve(1);
    *points = thing.points.data();
    *kinds = thing.kinds.data();
    return Answer(count, thing.kinds.size());
}

template <typename Procedure>
VXBndProc Cast(Procedure* procedure) {
    return reinterpret_cast<VXBndProc>(procedure);
}

VXBndProc Find(const char* name) {
    static const std::map<std::string_view, VXBndProc> procedures = {
        {"TYBaseAddRefProc", Cast(&AddRef)},
        {"TYBaseReleaseProc", Cast(&Release)},
        {"TYFontSetNewProc", Cast(&NewFontSet)},
        {"TYFamilyListNewListProc", Cast(&NewFamilyList)},
        {"TYFamilyListGetNumFamsProc", Cast(&CountFamilies)},
        {"TYFamilyListGetNthFamilyProc", Cast(&GetFamily)},
        {"TYFamilyGetNumFontsProc", Cast(&CountFonts)},
        {"TYFamilyGetNthFontProc", Cast(&GetFont)},
        {"TYFontDictGetFontNameProc", Cast(&GetFontName)},
        {"TYStringGetCharPtrProc", Cast(&GetCharacters)},
        {"TYFontDictGetStyleNameProc", Cast(&GetStyleName)},
        {"TYFontDictGetStyleProc", Cast(&GetStyle)},
        {"TYFontDictNewSyntheticFontProc", Cast(&NewSyntheticFont)},
        {"TYFontDictGetHorizontalMetricsProc", Cast(&GetMetrics)},
        {"TYEncodingNewFromPreDefEncodingProc", Cast(&NewEncoding)},
        {"TYFontInstanceNewFontInstanceProcV3", Cast(&NewInstance)},
        {"TYFontInstanceGetFontProc", Cast(&GetFontOfInstance)},
        {"TYFontInstanceGetMatrixProc", Cast(&GetMatrix)},
        {"TYFontInstanceGetGlyphIDProcV2", Cast(&GetGlyph)},
        {"TYFontInstanceGetWidthProc", Cast(&GetWidth)},
        {"TYNewTextFontInstanceCPProcV2", Cast(&NewText)},
        {"TYTextGetOutlines", Cast(&GetOutlines)},
        {"GFMNewSharedBezierPathProc", Cast(&NewPath)},
        {"GFMSharedBezierPathGetStateProc", Cast(&GetState)},
    };
    const auto found = procedures.find(name);
    return found == procedures.end() ? nullptr : found->second;
}

}  // namespace

FakeTypeEngine::FakeTypeEngine() {
    g_Engine = this;
    BNDInitialize(&Find);
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
