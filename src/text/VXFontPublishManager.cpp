#include "text/VXFontPublishManager.h"

#include <map>
#include <memory>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "binding/BNDTypeEngine.h"
#include "framework/VXMakeTag_p.h"
#include "graphics/VXTwips.h"
#include "text/VXFontTagRegistry_p.h"
#include "text/VXSwfCSMTextSettingTag.h"
#include "text/VXSwfDefineFont2Tag.h"
#include "text/VXWinFontData.h"
#include "text/VXWinFontTable_p.h"

using namespace BND_NT_NMT;

namespace {

constexpr float kUnitsPerEm = 1024.0f;
constexpr int kEncodingOfUnits = 13;  // a character is one 16-bit unit
constexpr std::u16string_view kBoldName = u"Bold";
constexpr std::u16string_view kBoldItalicName = u"Bold Italic";
constexpr int kBoldStyle = 2;
constexpr int kItalicStyle = 1;

/// A tag that may be gone by now.
struct SharedTag {
    VXSwfDefineFont2Tag* tag;
    unsigned long long serial;

    bool IsLive() const {
        return serial != VXFontTagRegistry::kNone && VXFontTagRegistry::GetSerial(tag) == serial;
    }
    bool HasStyle(short bold, short italic) const {
        return tag->IsBold() == bold && tag->IsItalic() == italic;
    }
};

struct ByName {
    using is_transparent = void;
    bool operator()(const VXWinFontData& left, const VXWinFontData& right) const { return left < right; }
    bool operator()(const VXWinFontData& row, const VXString& name) const { return row.m_FontName < name; }
    bool operator()(const VXString& name, const VXWinFontData& row) const { return name < row.m_FontName; }
};

CTYFontInstance NewInstance(const CTYFontDict& font, float size) {
    const TYMatrix matrix{size, 0.0f, 0.0f, size, 0.0f, 0.0f};
    return TYFontInstanceNewFontInstance(font, matrix, TYEncodingNewFromPreDefEncoding(kEncodingOfUnits));
}

unsigned short TakeId(IVXSwfIdGenerator* ids) {
    unsigned short id = 0;
    if (ids != nullptr)
        VXIgnore(ids->GetId(id, kVXSwfOrdinaryId));  // a failure leaves what the generator stored
    return id;
}

std::unique_ptr<VXSwfDefineFont2Tag> NewGlyphFont(const VXString& name, short bold, short italic,
                                                  unsigned short id) {
    auto tag = VXMakeTag<VXSwfDefineFont2Tag>(VXSwfTagFactory::TAG_DEFINEFONT3);
    if (tag == nullptr) return nullptr;
    VXIgnore(tag->CreateGlyphFont(name, bold, italic));  // never fails
    tag->SetCharacterId(id);
    return tag;
}

}  // namespace

/// Never destroyed, so that calls during process exit are safe.
struct VXFontPublishManager::State {
    std::multimap<VXString, SharedTag> fontTags;
    std::map<VXString, std::vector<std::pair<VXTYFontPropStruct, CTYFontDict>>> fonts;
    std::set<VXWinFontData, ByName> winFonts;
};

VXFontPublishManager::State& VXFontPublishManager::GetState() {
    static State& state = *new State;
    return state;
}

VXSwfDefineFont2Tag* VXFontPublishManager::GetTemporaryDefineFontTag(const VXString& name, short bold,
                                                                     short italic, IVXSwfIdGenerator* ids) {
    return NewGlyphFont(name, bold, italic, TakeId(ids)).release();
}

VXSwfDefineFont2Tag* VXFontPublishManager::GetDefineFontTag(const VXString& name, short bold, short italic,
                                                            IVXSwfIdGenerator* ids, IVXSwfTagHolder* holder,
                                                            bool addToHolder) {
    auto& tags = GetState().fontTags;
    VXSwfDefineFont2Tag* first = nullptr;
    const auto [begin, end] = tags.equal_range(name);
    for (auto entry = begin; entry != end;) {
        if (!entry->second.IsLive()) {
            entry = tags.erase(entry);
            continue;
        }
        if (first == nullptr) first = entry->second.tag;
        // Kept: the first of the name, not the one that matched.
        if (entry->second.HasStyle(bold, italic)) return first;
        ++entry;
    }
    const unsigned short id = TakeId(ids);
    std::unique_ptr<VXSwfDefineFont2Tag> made = NewGlyphFont(name, bold, italic, id);
    tags.emplace(name, SharedTag{made.get(), VXFontTagRegistry::GetSerial(made.get())});
    VXSwfDefineFont2Tag* tag = made.release();
    if (!addToHolder || holder == nullptr) return tag;

    holder->IncludeTag(tag, -1);
    VXSwfTag* settings = VXSwfTagFactory::CreateTagOfType(VXSwfTagFactory::TAG_CSMTEXTSETTINGS, 0, 0);
    if (auto* csm = dynamic_cast<VXSwfCSMTextSettingTag*>(settings)) csm->m_TextId = id;
    holder->IncludeTag(settings, -1);
    return tag;
}

void VXFontPublishManager::RemoveFontTag(const VXString& name, short bold, short italic) {
    auto& tags = GetState().fontTags;
    const auto [begin, end] = tags.equal_range(name);
    for (auto entry = begin; entry != end; ++entry) {
        if (entry->second.IsLive() && entry->second.HasStyle(bold, italic)) {
            tags.erase(entry);
            return;
        }
    }
}

bool VXFontPublishManager::GetFontDict(const VXTYFontPropStruct& props, CTYFontDict& out) {
    if (props.m_FontName.empty()) return false;
    auto& fonts = GetState().fonts;
    if (const auto found = fonts.find(props.m_FontName); found != fonts.end()) {
        for (const auto& [key, font] : found->second) {
            if (key != props) continue;
            out = font;
            return true;
        }
    }
    CTYFontDict fresh;
    if (!GetFontWithName(props, fresh)) return false;
    fonts[props.m_FontName].emplace_back(props, fresh);
    out = std::move(fresh);
    return true;
}

void VXFontPublishManager::AddFontDict(const VXTYFontPropStruct& props, const CTYFontDict& dict,
                                       bool replace) {
    if (dict.IsEmpty() || props.m_FontName.empty()) return;
    auto& fonts = GetState().fonts[props.m_FontName];
    for (auto& [key, font] : fonts) {
        if (key != props) continue;
        if (replace) font = dict;
        return;
    }
    fonts.emplace_back(props, dict);
}

bool VXFontPublishManager::GetFontWithName(const VXTYFontPropStruct& props, CTYFontDict& out) {
    const CTYFontSet set = TYFontSetNew();
    const CTYFamilyList families = TYFamilyListNewList(set);
    const int numFamilies = TYFamilyListGetNumFams(families);
    for (int i = 0; i < numFamilies; ++i) {
        const CTYFamily family = TYFamilyListGetNthFamily(families, i);
        const int numFonts = TYFamilyGetNumFonts(family);
        for (int j = 0; j < numFonts; ++j) {
            CTYFontDict font = TYFamilyGetNthFont(family, j);
            if (TYFontDictGetFontName(font) != props.m_FontName) continue;
            // A plain font is better than none.
            if (!GetFontWithProperties(family, props, out)) out = std::move(font);
            return true;
        }
    }
    return false;
}

bool VXFontPublishManager::GetFontWithProperties(const CTYFamily& family, const VXTYFontPropStruct& props,
                                                 CTYFontDict& out) {
    const int wanted = (props.m_Bold ? kBoldStyle : 0) + (props.m_Italic ? kItalicStyle : 0);
    const int numFonts = TYFamilyGetNumFonts(family);
    CTYFontDict base;  // the first that the style can be imitated from
    for (int i = 0; i < numFonts; ++i) {
        CTYFontDict font = TYFamilyGetNthFont(family, i);
        const VXString style = TYFontDictGetStyleName(font);
        const bool isBold = style.GetUnits() == kBoldName;
        // Kept: an italic member is never looked for, so italic alone is always imitated.
        if ((wanted == kBoldStyle && isBold) ||
            (wanted == (kBoldStyle | kItalicStyle) && style.GetUnits() == kBoldItalicName)) {
            out = std::move(font);
            return true;
        }
        const bool hasName = TYFontDictGetFontName(font) == props.m_FontName;
        if (wanted == 0 && hasName && TYFontDictGetStyle(font) == wanted) {
            out = std::move(font);
            return true;
        }
        const bool isBase = hasName || (wanted == (kBoldStyle | kItalicStyle) && isBold);
        if (isBase && base.IsEmpty()) base = std::move(font);
    }
    if (base.IsEmpty() || wanted == 0) return false;
    out = TYFontDictNewSyntheticFont(base, wanted);
    return true;
}

CTYFontInstance VXFontPublishManager::GetFontInstance(const VXString& name, bool bold, bool italic) {
    return GetFontInstance(name, bold, italic, kUnitsPerEm);
}

CTYFontInstance VXFontPublishManager::GetFontInstance(const VXString& name, bool bold, bool italic,
                                                      float size) {
    CTYFontDict font;
    GetFontDict({name, bold, italic, 0}, font);
    return NewInstance(font, size);
}

int VXFontPublishManager::CharWidth(unsigned short c, CTYFontInstance& instance) {
    if (instance.IsEmpty()) return 0;
    const TYGlyphID glyph = TYFontInstanceGetGlyphID(instance, c);
    return VXTruncate(VXReal{TYFontInstanceGetWidth(instance, glyph)} + 0.5);
}

bool VXFontPublishManager::GetTextOutlines(const unsigned short& c, float scaleX, float scaleY,
                                           CGFMSharedBezierPath& path, const CTYFontDict& dict, VXString&) {
    if (c == 0) return false;
    const CTYFontInstance instance = NewInstance(dict, kUnitsPerEm);
    if (instance.IsEmpty()) return false;
    const CTYText text = TYNewTextFontInstanceCP(instance, c);
    if (text.IsEmpty()) return false;
    const TYMatrix matrix{scaleX, 0.0f, 0.0f, scaleY, 0.0f, 0.0f};
    return TYTextGetOutlines(text, matrix, TYTextGetBoundingBox(text, matrix), path);
}

void VXFontPublishManager::PopulateWinFontData() {
    auto& fonts = GetState().winFonts;
    if (!fonts.empty()) return;
    std::set<VXWinFontData, ByName> filled;
    for (const VXWinFontRow& row : VXGetWinFontTable()) {
        VXWinFontData data;
        data.m_FontName = row.fontName;
        data.m_MetricA = row.metricA;
        data.m_MetricB = row.metricB;
        filled.insert(std::move(data));
    }
    fonts = std::move(filled);
}

bool VXFontPublishManager::GetWinFontData(const VXString& name, float size, float& first, float& second) {
    first = 0.0f;
    second = 0.0f;
    PopulateWinFontData();
    if (!(size > 0.0f)) return false;
    const auto& fonts = GetState().winFonts;
    const auto row = fonts.find(name);
    if (row == fonts.end()) return false;
    const float scale = size * 0.0009765625f;
    first = static_cast<float>(row->m_MetricA) * scale;
    second = static_cast<float>(row->m_MetricB) * scale;
    return true;
}

void VXFontPublishManager::DoCleanUp() {
    State& state = GetState();
    state.fontTags.clear();
    state.fonts.clear();
    state.winFonts.clear();
}
