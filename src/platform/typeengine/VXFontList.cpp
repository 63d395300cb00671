#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string_view>
#include <tuple>
#include <unordered_map>

#include "platform/typeengine/VXFontList_p.h"

namespace {

std::string_view ViewOf(const FcChar8* text) { return reinterpret_cast<const char*>(text); }

bool IsTrue(const FcPattern* pattern, const char* property) {
    FcBool value = FcFalse;
    return FcPatternGetBool(pattern, property, 0, &value) == FcResultMatch && value == FcTrue;
}

/// The last name that is marked as English; a font without one is known by its first name.
std::string EnglishName(const FcPattern* pattern, const char* names, const char* languages) {
    std::string found;
    FcChar8* name = nullptr;
    if (FcPatternGetString(pattern, names, 0, &name) == FcResultMatch) found = ViewOf(name);
    for (int index = 0; FcPatternGetString(pattern, names, index, &name) == FcResultMatch; ++index) {
        FcChar8* language = nullptr;
        if (FcPatternGetString(pattern, languages, index, &language) != FcResultMatch) continue;
        const std::string_view tag = ViewOf(language);
        if (tag == "en" || tag.starts_with("en-")) found = ViewOf(name);
    }
    return found;
}

/// False for what the engine does not offer.
bool ReadPattern(const FcPattern* pattern, std::string& family, VXFontRecord& font) {
    FcChar8* file = nullptr;
    if (!IsTrue(pattern, FC_OUTLINE) || IsTrue(pattern, FC_VARIABLE) ||
        FcPatternGetString(pattern, FC_FILE, 0, &file) != FcResultMatch) {
        return false;
    }
    family = EnglishName(pattern, FC_FAMILY, FC_FAMILYLANG);
    if (family.empty()) return false;
    font.styleName = EnglishName(pattern, FC_STYLE, FC_STYLELANG);
    font.file = ViewOf(file);

    int index = 0;
    if (FcPatternGetInteger(pattern, FC_INDEX, 0, &index) == FcResultMatch) font.faceIndex = index;
    font.weight = FC_WEIGHT_REGULAR;
    double weight = 0.0;
    if (FcPatternGetDouble(pattern, FC_WEIGHT, 0, &weight) == FcResultMatch) font.weight = weight;
    int slant = FC_SLANT_ROMAN;
    if (FcPatternGetInteger(pattern, FC_SLANT, 0, &slant) == FcResultMatch) font.slant = slant;
    font.style = static_cast<TYStyle>((font.weight >= FC_WEIGHT_BOLD ? kTYBold : kTYPlain) |
                                      (font.slant > FC_SLANT_ROMAN ? kTYItalic : kTYPlain));
    return true;
}

void Arrange(VXFontFamily& family) {
    std::stable_sort(family.fonts.begin(), family.fonts.end(),
                     [](const VXFontRecord& left, const VXFontRecord& right) {
                         return std::tie(right.weight, left.slant, left.styleName) <
                                std::tie(left.weight, right.slant, right.styleName);
                     });
    const auto plainness = [](const VXFontRecord& font) {
        return std::pair<int, double>(font.style, std::abs(font.weight - FC_WEIGHT_REGULAR));
    };
    const auto plainest = std::min_element(family.fonts.begin(), family.fonts.end(),
                                           [&](const VXFontRecord& left, const VXFontRecord& right) {
                                               return plainness(left) < plainness(right);
                                           });
    for (VXFontRecord& font : family.fonts) font.name = family.name + ' ' + font.styleName;
    plainest->name = family.name;
}

}  // namespace

std::shared_ptr<const VXFontList> VXFontList::Load() {
    auto list = std::make_shared<VXFontList>();
    // A configuration of our own: the one of the process is its host's to change and to end.
    const std::unique_ptr<FcConfig, decltype(&FcConfigDestroy)> config(FcInitLoadConfigAndFonts(),
                                                                       &FcConfigDestroy);
    if (config == nullptr) return list;

    std::unordered_map<std::string, std::size_t> indices;
    const FcFontSet* patterns = FcConfigGetFonts(config.get(), FcSetSystem);
    for (int i = 0; patterns != nullptr && i < patterns->nfont; ++i) {
        std::string family;
        VXFontRecord font;
        if (!ReadPattern(patterns->fonts[i], family, font)) continue;
        const auto [entry, isNew] = indices.try_emplace(family, list->m_Families.size());
        if (isNew) list->m_Families.push_back({std::move(family), {}});
        list->m_Families[entry->second].fonts.push_back(std::move(font));
    }
    for (VXFontFamily& family : list->m_Families) Arrange(family);
    return list;
}
