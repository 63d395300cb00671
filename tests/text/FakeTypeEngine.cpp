#include "text/FakeTypeEngine.h"

#include <gtest/gtest.h>

#include <string_view>

#include "binding/BNDInitialize.h"
#include "text/VXFontPublishManager.h"

namespace {

FakeTypeEngine* g_Engine = nullptr;

/// What a handle stands for; it is its index and one more.
struct Thing {
    int references = 1;
    std::size_t family = 0;
    std::size_t font = 0;
    int style = 0;      // of an imitation
    float size = 0.0f;  // of an instance
    unsigned short character = 0;
    std::string text;
    std::vector<float> points;
    std::vector<KVMPointType> kinds;
};

std::vector<Thing> g_Things;

template <typename Handle>
Handle NewHandle(Thing thing) {
    g_Things.push_back(std::move(thing));
    return static_cast<Handle>(g_Things.size());
}

Thing& ThingOf(TYHandle handle) {
    static Thing none;
    return handle == 0 ? none : g_Things.at(handle - 1);
}

constexpr TYErrorRecord kBadHandle = {kTYBadHandle, "bad handle"};

TYError Count() {
    ++g_Engine->calls;
    return nullptr;
}

std::int32_t AddRef(TYHandle handle) {
    if (handle == 0) return 0;
    return ++ThingOf(handle).references;
}

TYError Release(TYHandle handle) {
    EXPECT_GT(ThingOf(handle).references--, 0);
    return nullptr;
}

TYError NewFontSet(TYFontSet* out, std::int32_t) {
    ++g_Engine->walks;
    *out = NewHandle<TYFontSet>({});
    return Count();
}

TYError NewFamilyList(TYFontSet, std::int32_t, TYFamilyList* out) {
    *out = NewHandle<TYFamilyList>({});
    return Count();
}

TYError GetNumFamilies(TYFamilyList, std::int32_t* out) {
    *out = static_cast<std::int32_t>(g_Engine->families.size());
    return Count();
}

TYError GetFamily(TYFamilyList, std::int32_t index, TYFamily* out) {
    Thing thing;
    thing.family = static_cast<std::size_t>(index);
    *out = NewHandle<TYFamily>(thing);
    return Count();
}

TYError GetNumFonts(TYFamily family, std::int32_t* out, std::int32_t) {
    *out = static_cast<std::int32_t>(g_Engine->families.at(ThingOf(family).family).size());
    return Count();
}

TYError GetFont(TYFamily family, const std::int32_t* index, TYFontDict* out) {
    Thing thing;
    thing.family = ThingOf(family).family;
    thing.font = static_cast<std::size_t>(*index);
    *out = NewHandle<TYFontDict>(thing);
    return Count();
}

const FakeTypeEngine::Font& FontOf(TYHandle font) {
    return g_Engine->families.at(ThingOf(font).family).at(ThingOf(font).font);
}

TYError GetFontName(TYFontDict font, TYString* out) {
    Thing thing;
    thing.text = FontOf(font).name;
    *out = NewHandle<TYString>(thing);
    return Count();
}

TYError GetFontNameV2(TYFontDict font, TYString* out, std::int32_t, std::int32_t) {
    return GetFontName(font, out);
}

TYError GetCharacters(TYString string, const char** out) {
    *out = ThingOf(string).text.c_str();
    return Count();
}

TYError GetStyleName(TYFontDict font, std::int32_t* out, std::uint16_t* buffer, std::int32_t* length,
                     std::int32_t) {
    const std::string& name = FontOf(font).styleName;
    *out = *length = static_cast<std::int32_t>(name.size());
    for (const char c : name) *buffer++ = static_cast<unsigned char>(c);
    *buffer = 0;
    return Count();
}

TYError GetStyleNameV2(TYFontDict font, std::int32_t* out, std::uint16_t* buffer, std::int32_t* length,
                       std::int32_t encoding, std::int32_t, std::int32_t) {
    return GetStyleName(font, out, buffer, length, encoding);
}

TYError GetStyle(TYFontDict font, std::int32_t* out) {
    *out = FontOf(font).style;
    return Count();
}

TYError NewSyntheticFont(TYFontDict* out, TYFontDict base, std::int32_t style, std::int32_t strength,
                         std::int32_t, std::int32_t, const TYDesignVector*) {
    EXPECT_EQ(strength, 0x40000000);
    Thing thing = ThingOf(base);
    thing.references = 1;
    thing.style = style;
    *out = NewHandle<TYFontDict>(thing);
    return Count();
}

TYError GetMetrics(TYFontDict font, float* first, float* second, float* third) {
    if (font == TYFontDict{}) return &kBadHandle;
    *first = 0.75f;
    *second = 0.25f;
    *third = 0.5f;
    return Count();
}

TYError NewEncoding(TYEncoding* out, std::int32_t number) {
    EXPECT_EQ(number, 13);
    *out = NewHandle<TYEncoding>({});
    return Count();
}

TYError NewInstance(TYFontDict font, const TYMatrix* matrix, TYEncoding, const TYDesignVector*, std::int32_t,
                    TYFontInstance* out) {
    if (font == TYFontDict{}) return &kBadHandle;
    Thing thing = ThingOf(font);
    thing.references = 1;
    thing.size = matrix->d;
    *out = NewHandle<TYFontInstance>(thing);
    return Count();
}

TYError NewInstanceV4(TYFontDict font, const TYMatrix* matrix, TYEncoding encoding,
                      const TYDesignVector* vector, std::int32_t direction, const TYDescriptor*,
                      TYFontInstance* out) {
    return NewInstance(font, matrix, encoding, vector, direction, out);
}

TYError GetFontOfInstance(TYFontInstance instance, TYFontDict* out) {
    if (instance == TYFontInstance{}) return &kBadHandle;
    Thing thing = ThingOf(instance);
    thing.references = 1;
    *out = NewHandle<TYFontDict>(thing);
    return Count();
}

TYError GetMatrix(TYFontInstance instance, TYMatrix* out) {
    if (instance == TYFontInstance{}) return &kBadHandle;
    out->a = out->d = ThingOf(instance).size;
    return Count();
}

/// A glyph is its character.
TYError GetGlyph(TYFontInstance, TYGlyphID* out, const void* character, std::int32_t size,
                 std::int32_t* consumed, std::int32_t) {
    EXPECT_EQ(size, 2);
    *out = *static_cast<const unsigned short*>(character);
    *consumed = 2;
    return Count();
}

TYError GetWidth(TYFontInstance instance, float* out, TYGlyphID glyph, std::int32_t, std::int32_t) {
    const auto width = g_Engine->widths.find(static_cast<unsigned short>(glyph));
    *out = width == g_Engine->widths.end() ? 0.0f : width->second * ThingOf(instance).size / 1024.0f;
    return Count();
}

TYError NewText(TYFontInstance instance, const void* characters, std::int32_t size, std::int32_t,
                std::int32_t*, std::int32_t, TYText* out) {
    EXPECT_EQ(size, 2);
    Thing thing = ThingOf(instance);
    thing.references = 1;
    thing.character = *static_cast<const unsigned short*>(characters);
    *out = NewHandle<TYText>(thing);
    return Count();
}

TYError NewTextV3(TYFontInstance instance, const void* characters, std::int32_t size, std::int32_t flags,
                  std::int32_t* consumed, std::int32_t direction, const TYDescriptor*, TYText* out) {
    return NewText(instance, characters, size, flags, consumed, direction, out);
}

TYError GetBox(TYText, const TYMatrix*, TYBox*) { return Count(); }

TYError GetOutlines(TYText text, const TYMatrix*, const TYBox*, std::int32_t mode, GFMSharedBezierPath path,
                    std::int32_t* ok) {
    EXPECT_EQ(mode, 2);
    for (const FakeTypeEngine::Point& point : g_Engine->outlines[ThingOf(text).character]) {
        ThingOf(path).kinds.push_back(point.kind);
        ThingOf(path).points.insert(ThingOf(path).points.end(), {point.x, point.y});
    }
    *ok = 1;
    return Count();
}

GFMSharedBezierPath NewPath(std::int32_t capacity, std::int32_t) {
    EXPECT_EQ(capacity, 1024);
    Count();
    Thing thing;
    thing.points.reserve(2);  // so that the arrays move as they grow
    thing.kinds.reserve(1);
    return NewHandle<GFMSharedBezierPath>(std::move(thing));
}

TYError GetState(GFMSharedBezierPath path, std::uint32_t* count, float** points, KVMPointType** kinds) {
    Thing& thing = ThingOf(path);
    thing.points.reserve(2);
    thing.kinds.reserve(1);
    *count = static_cast<std::uint32_t>(thing.kinds.size());
    *points = thing.points.data();
    *kinds = thing.kinds.data();
    return Count();
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
        {"TYFamilyListGetNumFamsProc", Cast(&GetNumFamilies)},
        {"TYFamilyListGetNthFamilyProc", Cast(&GetFamily)},
        {"TYFamilyGetNumFontsProc", Cast(&GetNumFonts)},
        {"TYFamilyGetNthFontProc", Cast(&GetFont)},
        {"TYFontDictGetFontNameProc", Cast(&GetFontName)},
        {"TYFontDictGetFontNameProcV2", Cast(&GetFontNameV2)},
        {"TYStringGetCharPtrProc", Cast(&GetCharacters)},
        {"TYFontDictGetStyleNameProc", Cast(&GetStyleName)},
        {"TYFontDictGetStyleNameProcV2", Cast(&GetStyleNameV2)},
        {"TYFontDictGetStyleProc", Cast(&GetStyle)},
        {"TYFontDictNewSyntheticFontProc", Cast(&NewSyntheticFont)},
        {"TYFontDictGetHorizontalMetricsProc", Cast(&GetMetrics)},
        {"TYEncodingNewFromPreDefEncodingProc", Cast(&NewEncoding)},
        {"TYFontInstanceNewFontInstanceProcV3", Cast(&NewInstance)},
        {"TYFontInstanceNewFontInstanceProcV4", Cast(&NewInstanceV4)},
        {"TYFontInstanceGetFontProc", Cast(&GetFontOfInstance)},
        {"TYFontInstanceGetMatrixProc", Cast(&GetMatrix)},
        {"TYFontInstanceGetGlyphIDProcV2", Cast(&GetGlyph)},
        {"TYFontInstanceGetWidthProc", Cast(&GetWidth)},
        {"TYNewTextFontInstanceCPProcV2", Cast(&NewText)},
        {"TYNewTextFontInstanceCPProcV3", Cast(&NewTextV3)},
        {"TYTextGetBoundingBox", Cast(&GetBox)},
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
    for (const Thing& thing : g_Things) EXPECT_EQ(thing.references, 0);
    BNDTerminate();
    g_Things.clear();
    g_Engine = nullptr;
}

std::string FakeTypeEngine::NameOf(const BND_NT_NMT::CTYFontDict& font) {
    if (font.IsEmpty()) return "none";
    const int style = ThingOf(font.Get()).style;
    return FontOf(font.Get()).name + (style == 0 ? "" : " +" + std::to_string(style));
}
