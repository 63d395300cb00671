#include "binding/BNDTypeEngine.h"

#include <array>
#include <string_view>

#include "binding/BNDTable_p.h"

namespace BND_NT_NMT {

namespace {

/// Calls a procedure if the binding found it, and drops the error: its outputs hold nothing then.
template <class Result, class... Parameters, class... Arguments>
Result Call(Result (*procedure)(Parameters...), Arguments... arguments) {
    return procedure == nullptr ? Result{} : procedure(arguments...);
}

// Neutral values of what the engine can do and the library has no use for.
constexpr std::int32_t kNoFlags = 0;
constexpr std::int32_t kLeftToRight = 0;
constexpr TYDesignVector* kNoVector = nullptr;
constexpr TYDescriptor kNoFeatures;

/// The engine measures one character of UTF-16 in bytes.
constexpr std::int32_t kCharacterSize = sizeof(unsigned short);

}  // namespace

bool AddRef(TYHandle handle) { return Call(g_BNDTable.TYBaseAddRefProc, handle) != 0; }

void Release(TYHandle handle) { Call(g_BNDTable.TYBaseReleaseProc, handle); }

CTYFontSet TYFontSetNew() {
    TYFontSet set{};
    Call(g_BNDTable.TYFontSetNewProc, &set, 1);
    return {set, CTYAdopt{}};
}

CTYFamilyList TYFamilyListNewList(const CTYFontSet& set) {
    TYFamilyList list{};
    Call(g_BNDTable.TYFamilyListNewListProc, set.Get(), kNoFlags, &list);
    return {list, CTYAdopt{}};
}

std::int32_t TYFamilyListGetNumFams(const CTYFamilyList& list) {
    std::int32_t count = 0;
    Call(g_BNDTable.TYFamilyListGetNumFamsProc, list.Get(), &count);
    return count;
}

CTYFamily TYFamilyListGetNthFamily(const CTYFamilyList& list, std::int32_t index) {
    TYFamily family{};
    Call(g_BNDTable.TYFamilyListGetNthFamilyProc, list.Get(), index, &family);
    return {family, CTYAdopt{}};
}

std::int32_t TYFamilyGetNumFonts(const CTYFamily& family) {
    std::int32_t count = 0;
    Call(g_BNDTable.TYFamilyGetNumFontsProc, family.Get(), &count, kNoFlags);
    return count;
}

CTYFontDict TYFamilyGetNthFont(const CTYFamily& family, std::int32_t index) {
    TYFontDict font{};
    Call(g_BNDTable.TYFamilyGetNthFontProc, family.Get(), &index, &font);
    return {font, CTYAdopt{}};
}

VXString TYFontDictGetFontName(const CTYFontDict& font) {
    TYString name{};
    if (g_BNDTable.TYFontDictGetFontNameProcV2 != nullptr) {
        Call(g_BNDTable.TYFontDictGetFontNameProcV2, font.Get(), &name, 0, 0);
    } else {
        Call(g_BNDTable.TYFontDictGetFontNameProc, font.Get(), &name);
    }
    const CTYString held(name, CTYAdopt{});
    const char* characters = nullptr;
    Call(g_BNDTable.TYStringGetCharPtrProc, held.Get(), &characters);
    return VXString(characters, kVXEncodingUTF8);
}

VXString TYFontDictGetStyleName(const CTYFontDict& font) {
    constexpr std::int32_t kUTF16 = 1;
    std::int32_t whole = 0;
    std::array<std::uint16_t, 256> buffer{};
    std::int32_t length = 255;
    if (g_BNDTable.TYFontDictGetStyleNameProcV2 != nullptr) {
        Call(g_BNDTable.TYFontDictGetStyleNameProcV2, font.Get(), &whole, buffer.data(), &length, kUTF16, 0,
             0);
    } else {
        Call(g_BNDTable.TYFontDictGetStyleNameProc, font.Get(), &whole, buffer.data(), &length, kUTF16);
    }
    VXString name;
    for (const std::uint16_t unit : buffer) {
        if (unit == 0) break;
        name.push_back(static_cast<char16_t>(unit));
    }
    return name;
}

std::int32_t TYFontDictGetStyle(const CTYFontDict& font) {
    std::int32_t style = 0;
    Call(g_BNDTable.TYFontDictGetStyleProc, font.Get(), &style);
    return style;
}

CTYFontDict TYFontDictNewSyntheticFont(const CTYFontDict& base, std::int32_t style) {
    constexpr std::int32_t kStrength = 0x40000000;
    TYFontDict font{};
    Call(g_BNDTable.TYFontDictNewSyntheticFontProc, &font, base.Get(), style, kStrength, kNoFlags, 0,
         kNoVector);
    return {font, CTYAdopt{}};
}

void TYFontDictGetHorizontalMetrics(const CTYFontDict& font, float& first, float& second, float& third) {
    first = second = third = 0.0F;
    Call(g_BNDTable.TYFontDictGetHorizontalMetricsProc, font.Get(), &first, &second, &third);
}

CTYEncoding TYEncodingNewFromPreDefEncoding(std::int32_t number) {
    TYEncoding encoding{};
    Call(g_BNDTable.TYEncodingNewFromPreDefEncodingProc, &encoding, number);
    return {encoding, CTYAdopt{}};
}

CTYFontInstance TYFontInstanceNewFontInstance(const CTYFontDict& font, const TYMatrix& matrix,
                                              const CTYEncoding& encoding) {
    TYFontInstance instance{};
    if (g_BNDTable.TYFontInstanceNewFontInstanceProcV4 != nullptr) {
        Call(g_BNDTable.TYFontInstanceNewFontInstanceProcV4, font.Get(), &matrix, encoding.Get(), kNoVector,
             kLeftToRight, &kNoFeatures, &instance);
    } else {
        Call(g_BNDTable.TYFontInstanceNewFontInstanceProcV3, font.Get(), &matrix, encoding.Get(), kNoVector,
             kLeftToRight, &instance);
    }
    return {instance, CTYAdopt{}};
}

CTYFontDict TYFontInstanceGetFont(const CTYFontInstance& instance) {
    TYFontDict font{};
    Call(g_BNDTable.TYFontInstanceGetFontProc, instance.Get(), &font);
    return {font, CTYAdopt{}};
}

TYMatrix TYFontInstanceGetMatrix(const CTYFontInstance& instance) {
    TYMatrix matrix{0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 0.0F};
    Call(g_BNDTable.TYFontInstanceGetMatrixProc, instance.Get(), &matrix);
    return matrix;
}

TYGlyphID TYFontInstanceGetGlyphID(const CTYFontInstance& instance, unsigned short character) {
    TYGlyphID glyph = 0;
    std::int32_t consumed = 0;
    Call(g_BNDTable.TYFontInstanceGetGlyphIDProcV2, instance.Get(), &glyph, &character, kCharacterSize,
         &consumed, kNoFlags);
    return glyph;
}

float TYFontInstanceGetWidth(const CTYFontInstance& instance, TYGlyphID glyph) {
    float width = 0.0F;
    Call(g_BNDTable.TYFontInstanceGetWidthProc, instance.Get(), &width, glyph, kNoFlags, 1);
    return width;
}

CTYText TYNewTextFontInstanceCP(const CTYFontInstance& instance, unsigned short character) {
    TYText text{};
    std::int32_t consumed = 0;
    if (g_BNDTable.TYNewTextFontInstanceCPProcV3 != nullptr) {
        Call(g_BNDTable.TYNewTextFontInstanceCPProcV3, instance.Get(), &character, kCharacterSize, kNoFlags,
             &consumed, kLeftToRight, &kNoFeatures, &text);
    } else {
        Call(g_BNDTable.TYNewTextFontInstanceCPProcV2, instance.Get(), &character, kCharacterSize, kNoFlags,
             &consumed, kLeftToRight, &text);
    }
    return {text, CTYAdopt{}};
}

TYBox TYTextGetBoundingBox(const CTYText& text, const TYMatrix& matrix) {
    TYBox box;
    Call(g_BNDTable.TYTextGetBoundingBox, text.Get(), &matrix, &box);
    return box;
}

bool TYTextGetOutlines(const CTYText& text, const TYMatrix& matrix, const TYBox& box,
                       CGFMSharedBezierPath& path) {
    constexpr std::int32_t kMode = 2;
    std::int32_t ok = 0;
    Call(g_BNDTable.TYTextGetOutlines, text.Get(), &matrix, &box, kMode, path.Get(), &ok);
    return ok != 0;
}

CGFMSharedBezierPath GFMNewSharedBezierPath(std::int32_t capacity) {
    return {Call(g_BNDTable.GFMNewSharedBezierPathProc, capacity, kNoFlags), CTYAdopt{}};
}

void GFMSharedBezierPathGetState(const CGFMSharedBezierPath& path, unsigned int& count, float*& points,
                                 KVMPointType*& kinds) {
    count = 0;
    points = nullptr;
    kinds = nullptr;
    Call(g_BNDTable.GFMSharedBezierPathGetStateProc, path.Get(), &count, &points, &kinds);
}

}  // namespace BND_NT_NMT
