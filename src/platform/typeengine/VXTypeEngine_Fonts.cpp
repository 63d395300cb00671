#include <algorithm>
#include <cstdlib>

#include "platform/VXString.h"
#include "platform/typeengine/VXTypeEngine_p.h"

namespace {

/// The element at `index` of a sequence that `owner` keeps alive; null when there is none.
template <class Element, class Owner>
std::shared_ptr<const Element> At(const std::shared_ptr<Owner>& owner, const std::vector<Element>& elements,
                                  std::int32_t index) {
    if (index < 0 || static_cast<std::size_t>(index) >= elements.size()) return nullptr;
    return {owner, &elements[static_cast<std::size_t>(index)]};
}

TYError GetFontName(TYFontDict font, TYString* out) {
    return VXMake<VXFontDictObject>(font, out, [](const VXFontDictObject& object) {
        return std::make_unique<VXStringObject>(object.value.record->name);
    });
}

TYError GetStyleName(TYFontDict font, std::int32_t* out, std::uint16_t* buffer, std::int32_t* length,
                     std::int32_t encoding) {
    constexpr std::int32_t kUTF16 = 1;
    const std::int32_t room = length == nullptr ? -1 : *length;
    VXClear(out);
    VXClear(length);
    if (room >= 0) VXClear(buffer);
    return VXWith<VXFontDictObject>(font, [&](VXTypeEngine&, const VXFontDictObject& object) -> TYError {
        if (buffer == nullptr || room < 0 || encoding != kUTF16) return &kVXBadParameter;
        const std::string& name = object.value.record->styleName;
        const VXString units(name.data(), name.size());
        const auto count = static_cast<std::int32_t>(units.length());
        *length = std::min(count, room);
        *std::copy_n(units.begin(), *length, buffer) = 0;
        if (out != nullptr) *out = count;
        return nullptr;
    });
}

}  // namespace

extern "C" {

TYError TYFontSetNewProc(TYFontSet* out, std::int32_t system) {
    VXClear(out);
    if (out == nullptr || system != 1) return &kVXBadParameter;
    return VXRunStep([&](VXTypeEngine& engine) {
        return engine.Add(std::make_unique<VXFontSetObject>(engine.GetFonts()), out);
    });
}

TYError TYFamilyListNewListProc(TYFontSet set, std::int32_t, TYFamilyList* out) {
    return VXMake<VXFontSetObject>(set, out, [](const VXFontSetObject& object) {
        return std::make_unique<VXFamilyListObject>(object.value);
    });
}

TYError TYFamilyListGetNumFamsProc(TYFamilyList list, std::int32_t* out) {
    return VXGet<VXFamilyListObject>(
        list, out, [](const VXFamilyListObject& object) { return object.value->GetFamilies().size(); });
}

TYError TYFamilyListGetNthFamilyProc(TYFamilyList list, std::int32_t index, TYFamily* out) {
    return VXMake<VXFamilyListObject>(list, out, [index](const VXFamilyListObject& object) {
        auto family = At(object.value, object.value->GetFamilies(), index);
        return family == nullptr ? nullptr : std::make_unique<VXFamilyObject>(std::move(family));
    });
}

TYError TYFamilyGetNumFontsProc(TYFamily family, std::int32_t* out, std::int32_t) {
    return VXGet<VXFamilyObject>(family, out,
                                 [](const VXFamilyObject& object) { return object.value->fonts.size(); });
}

TYError TYFamilyGetNthFontProc(TYFamily family, const std::int32_t* index, TYFontDict* out) {
    return VXMake<VXFamilyObject>(family, out, [index](const VXFamilyObject& object) {
        auto font = index == nullptr ? nullptr : At(object.value, object.value->fonts, *index);
        return font == nullptr ? nullptr : std::make_unique<VXFontDictObject>(VXFontChoice{std::move(font)});
    });
}

TYError TYFontDictGetFontNameProc(TYFontDict font, TYString* out) { return GetFontName(font, out); }

TYError TYFontDictGetFontNameProcV2(TYFontDict font, TYString* out, std::int32_t, std::int32_t) {
    return GetFontName(font, out);
}

TYError TYStringGetCharPtrProc(TYString string, const char** out) {
    return VXGet<VXStringObject>(string, out,
                                 [](const VXStringObject& object) { return object.value.c_str(); });
}

TYError TYFontDictGetStyleNameProc(TYFontDict font, std::int32_t* out, std::uint16_t* buffer,
                                   std::int32_t* length, std::int32_t encoding) {
    return GetStyleName(font, out, buffer, length, encoding);
}

TYError TYFontDictGetStyleNameProcV2(TYFontDict font, std::int32_t* out, std::uint16_t* buffer,
                                     std::int32_t* length, std::int32_t encoding, std::int32_t,
                                     std::int32_t) {
    return GetStyleName(font, out, buffer, length, encoding);
}

TYError TYFontDictGetStyleProc(TYFontDict font, std::int32_t* out) {
    return VXGet<VXFontDictObject>(font, out,
                                   [](const VXFontDictObject& object) { return object.value.GetStyle(); });
}

TYError TYFontDictNewSyntheticFontProc(TYFontDict* out, TYFontDict base, std::int32_t style, std::int32_t,
                                       std::int32_t, std::int32_t, const TYDesignVector*) {
    return VXMake<VXFontDictObject>(
        base, out, [style](const VXFontDictObject& object) -> std::unique_ptr<VXFontDictObject> {
            if (style < kTYItalic || style > kTYBoldItalic) return nullptr;
            VXFontChoice font = object.value;
            const int missing = style & ~font.GetStyle();
            font.isEmboldened |= (missing & kTYBold) != 0;
            font.isSlanted |= (missing & kTYItalic) != 0;
            return std::make_unique<VXFontDictObject>(std::move(font));
        });
}

TYError TYFontDictGetHorizontalMetricsProc(TYFontDict font, float* first, float* second, float* third) {
    VXClear(first);
    VXClear(second);
    VXClear(third);
    return VXWith<VXFontDictObject>(
        font, [&](VXTypeEngine& engine, const VXFontDictObject& object) -> TYError {
            const std::shared_ptr<VXFace> opened = engine.faces.Get(object.value.record);
            if (opened == nullptr) return &kVXBadFont;
            const FT_Face face = opened->GetFace();
            const auto inEms = [&](long units) {
                return static_cast<float>(static_cast<double>(units) / opened->GetUnitsPerEm());
            };
            if (first != nullptr) *first = inEms(face->ascender);
            if (second != nullptr) *second = inEms(std::abs(long{face->descender}));
            if (third != nullptr) *third = inEms(long{face->height} - face->ascender + face->descender);
            return nullptr;
        });
}

}  // extern "C"
