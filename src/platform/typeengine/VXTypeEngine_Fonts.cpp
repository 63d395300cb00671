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
    VXClear(out);
    return VXRunStep([&](VXTypeEngine& engine) -> TYError {
        const auto* object = engine.handles.Find<VXFontDictObject>(font);
        if (object == nullptr) return &kVXBadHandle;
        if (out == nullptr) return &kVXBadParameter;
        return engine.Add(std::make_unique<VXStringObject>(object->font.record->name), out);
    });
}

TYError GetStyleName(TYFontDict font, std::int32_t* out, std::uint16_t* buffer, std::int32_t* length,
                     std::int32_t encoding) {
    constexpr std::int32_t kUTF16 = 1;
    const std::int32_t room = length == nullptr ? -1 : *length;
    VXClear(out);
    VXClear(length);
    if (room >= 0) VXClear(buffer);
    return VXRunStep([&](VXTypeEngine& engine) -> TYError {
        const auto* object = engine.handles.Find<VXFontDictObject>(font);
        if (object == nullptr) return &kVXBadHandle;
        if (buffer == nullptr || room < 0 || encoding != kUTF16) return &kVXBadParameter;
        const std::string& name = object->font.record->styleName;
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
    VXClear(out);
    return VXRunStep([&](VXTypeEngine& engine) -> TYError {
        const auto* object = engine.handles.Find<VXFontSetObject>(set);
        if (object == nullptr) return &kVXBadHandle;
        if (out == nullptr) return &kVXBadParameter;
        return engine.Add(std::make_unique<VXFamilyListObject>(object->list), out);
    });
}

TYError TYFamilyListGetNumFamsProc(TYFamilyList list, std::int32_t* out) {
    VXClear(out);
    return VXRunStep([&](VXTypeEngine& engine) -> TYError {
        const auto* object = engine.handles.Find<VXFamilyListObject>(list);
        if (object == nullptr) return &kVXBadHandle;
        if (out != nullptr) *out = static_cast<std::int32_t>(object->list->GetFamilies().size());
        return nullptr;
    });
}

TYError TYFamilyListGetNthFamilyProc(TYFamilyList list, std::int32_t index, TYFamily* out) {
    VXClear(out);
    return VXRunStep([&](VXTypeEngine& engine) -> TYError {
        const auto* object = engine.handles.Find<VXFamilyListObject>(list);
        if (object == nullptr) return &kVXBadHandle;
        auto family = At(object->list, object->list->GetFamilies(), index);
        if (out == nullptr || family == nullptr) return &kVXBadParameter;
        return engine.Add(std::make_unique<VXFamilyObject>(std::move(family)), out);
    });
}

TYError TYFamilyGetNumFontsProc(TYFamily family, std::int32_t* out, std::int32_t) {
    VXClear(out);
    return VXRunStep([&](VXTypeEngine& engine) -> TYError {
        const auto* object = engine.handles.Find<VXFamilyObject>(family);
        if (object == nullptr) return &kVXBadHandle;
        if (out != nullptr) *out = static_cast<std::int32_t>(object->family->fonts.size());
        return nullptr;
    });
}

TYError TYFamilyGetNthFontProc(TYFamily family, const std::int32_t* index, TYFontDict* out) {
    VXClear(out);
    return VXRunStep([&](VXTypeEngine& engine) -> TYError {
        const auto* object = engine.handles.Find<VXFamilyObject>(family);
        if (object == nullptr) return &kVXBadHandle;
        auto font = index == nullptr ? nullptr : At(object->family, object->family->fonts, *index);
        if (out == nullptr || font == nullptr) return &kVXBadParameter;
        return engine.Add(std::make_unique<VXFontDictObject>(VXFontChoice{std::move(font)}), out);
    });
}

TYError TYFontDictGetFontNameProc(TYFontDict font, TYString* out) { return GetFontName(font, out); }

TYError TYFontDictGetFontNameProcV2(TYFontDict font, TYString* out, std::int32_t, std::int32_t) {
    return GetFontName(font, out);
}

TYError TYStringGetCharPtrProc(TYString string, const char** out) {
    VXClear(out);
    return VXRunStep([&](VXTypeEngine& engine) -> TYError {
        const auto* object = engine.handles.Find<VXStringObject>(string);
        if (object == nullptr) return &kVXBadHandle;
        if (out != nullptr) *out = object->text.c_str();
        return nullptr;
    });
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
    VXClear(out);
    return VXRunStep([&](VXTypeEngine& engine) -> TYError {
        const auto* object = engine.handles.Find<VXFontDictObject>(font);
        if (object == nullptr) return &kVXBadHandle;
        if (out != nullptr) *out = object->font.GetStyle();
        return nullptr;
    });
}

TYError TYFontDictNewSyntheticFontProc(TYFontDict* out, TYFontDict base, std::int32_t style, std::int32_t,
                                       std::int32_t, std::int32_t, const TYDesignVector*) {
    VXClear(out);
    return VXRunStep([&](VXTypeEngine& engine) -> TYError {
        const auto* object = engine.handles.Find<VXFontDictObject>(base);
        if (object == nullptr) return &kVXBadHandle;
        if (out == nullptr || style < kTYItalic || style > kTYBoldItalic) return &kVXBadParameter;
        VXFontChoice font = object->font;
        const int missing = style & ~font.GetStyle();
        font.isEmboldened |= (missing & kTYBold) != 0;
        font.isSlanted |= (missing & kTYItalic) != 0;
        return engine.Add(std::make_unique<VXFontDictObject>(std::move(font)), out);
    });
}

TYError TYFontDictGetHorizontalMetricsProc(TYFontDict font, float* first, float* second, float* third) {
    VXClear(first);
    VXClear(second);
    VXClear(third);
    return VXRunStep([&](VXTypeEngine& engine) -> TYError {
        const auto* object = engine.handles.Find<VXFontDictObject>(font);
        if (object == nullptr) return &kVXBadHandle;
        const std::shared_ptr<VXFace> opened = engine.faces.Get(object->font.record);
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
