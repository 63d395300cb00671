#include "text/VXFontPublishManager.h"

#include <memory>
#include <string_view>

#include "binding/BNDTypeEngine.h"
#include "framework/VXMakeTag_p.h"
#include "graphics/VXTwips.h"
#include "text/VXFontTagRegistry_p.h"
#include "text/VXSwfCSMTextSettingTag.h"
#include "text/VXSwfDefineFont2Tag.h"
#include "text/VXWinFontTable_p.h"

using namespace BND_NT_NMT;

namespace {

constexpr float kUnitsPerEm = 1024.0f;
constexpr int kEncodingOfUnits = 13;  // a character is one 16-bit unit
constexpr std::u16string_view kBoldName = u"Bold";
constexpr std::u16string_view kBoldItalicName = u"Bold Italic";
constexpr int kBoldStyle = 2;
constexpr int kItalicStyle = 1;

/// Whether a tag that the map has, and that may be gone by now, is there in this style.
bool HasStyle(const VXSwfDefineFont2Tag* tag, short bold, short italic) {
    return VXFontTagRegistry::IsShared(tag) && tag->IsBold() == bold && tag->IsItalic() == italic;
}

CTYFontInstance NewInstance(const CTYFontDict& font, float size) {
    const TYMatrix matrix{size, 0.0f, 0.0f, size, 0.0f, 0.0f};
    const CTYEncoding encoding = TYEncodingNewFromPreDefEncoding(kEncodingOfUnits);
    // Shared, so that it is empty when the engine adds no reference.
    return CTYFontInstance(TYFontInstanceNewFontInstance(font, matrix, encoding).Get());
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

std::multimap<VXString, VXSwfDefineFont2Tag*>& VXFontPublishManager::m_FontMap =
    *new std::multimap<VXString, VXSwfDefineFont2Tag*>;
std::map<VXString, std::vector<VXFontPublishManager::Font>>& VXFontPublishManager::m_CTYFontMap =
    *new std::map<VXString, std::vector<Font>>;
std::set<VXWinFontData>& VXFontPublishManager::g_winFontDataSet = *new std::set<VXWinFontData>;

VXSwfDefineFont2Tag* VXFontPublishManager::GetTemporaryDefineFontTag(const VXString& name, short bold,
                                                                     short italic, IVXSwfIdGenerator* ids) {
    return NewGlyphFont(name, bold, italic, TakeId(ids)).release();
}

VXSwfDefineFont2Tag* VXFontPublishManager::GetDefineFontTag(const VXString& name, short bold, short italic,
                                                            IVXSwfIdGenerator* ids, IVXSwfTagHolder* holder,
                                                            bool addToHolder) {
    VXSwfDefineFont2Tag* first = nullptr;
    const auto [begin, end] = m_FontMap.equal_range(name);
    for (auto entry = begin; entry != end; ++entry) {
        if (!VXFontTagRegistry::IsShared(entry->second)) continue;
        if (first == nullptr) first = entry->second;
        // Kept: the first of the name, not the one that matched.
        if (HasStyle(entry->second, bold, italic)) return first;
    }
    const unsigned short id = TakeId(ids);
    std::unique_ptr<VXSwfDefineFont2Tag> made = NewGlyphFont(name, bold, italic, id);
    // The new one may lie where one that is gone lay.
    std::erase_if(m_FontMap, [](const auto& entry) { return !VXFontTagRegistry::IsShared(entry.second); });
    m_FontMap.emplace(name, made.get());
    VXFontTagRegistry::Share(made.get());
    VXSwfDefineFont2Tag* tag = made.release();
    if (!addToHolder || holder == nullptr) return tag;

    holder->IncludeTag(tag, -1);
    VXSwfTag* settings = VXSwfTagFactory::CreateTagOfType(VXSwfTagFactory::TAG_CSMTEXTSETTINGS, 0, 0);
    if (auto* csm = dynamic_cast<VXSwfCSMTextSettingTag*>(settings)) csm->m_TextId = id;
    holder->IncludeTag(settings, -1);
    return tag;
}

void VXFontPublishManager::RemoveFontTag(const VXString& name, short bold, short italic) {
    const auto [begin, end] = m_FontMap.equal_range(name);
    for (auto entry = begin; entry != end; ++entry) {
        if (HasStyle(entry->second, bold, italic)) {
            m_FontMap.erase(entry);
            return;
        }
    }
}

bool VXFontPublishManager::GetFontDict(const VXTYFontPropStruct& props, CTYFontDict& out) {
    if (props.m_FontName.empty()) return false;
    if (const auto found = m_CTYFontMap.find(props.m_FontName); found != m_CTYFontMap.end()) {
        for (const auto& [key, font] : found->second) {
            if (key != props) continue;
            out = font;
            return true;
        }
    }
    CTYFontDict fresh;
    if (!GetFontWithName(props, fresh)) return false;
    m_CTYFontMap[props.m_FontName].emplace_back(props, fresh);
    out = std::move(fresh);
    return true;
}

void VXFontPublishManager::AddFontDict(const VXTYFontPropStruct& props, const CTYFontDict& dict,
                                       bool replace) {
    if (dict.IsEmpty() || props.m_FontName.empty()) return;
    auto& fonts = m_CTYFontMap[props.m_FontName];
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
    if (!g_winFontDataSet.empty()) return;
    std::set<VXWinFontData> filled;
    for (const VXWinFontRow& row : VXGetWinFontTable())
        filled.insert({row.fontName, row.metricA, row.metricB});
    g_winFontDataSet = std::move(filled);
}

bool VXFontPublishManager::GetWinFontData(const VXString& name, float size, float& first, float& second) {
    first = 0.0f;
    second = 0.0f;
    PopulateWinFontData();
    if (!(size > 0.0f)) return false;
    const auto row = g_winFontDataSet.find({name});
    if (row == g_winFontDataSet.end()) return false;
    const float scale = size * 0.0009765625f;
    first = static_cast<float>(row->m_MetricA) * scale;
    second = static_cast<float>(row->m_MetricB) * scale;
    return true;
}

void VXFontPublishManager::DoCleanUp() {
    m_FontMap.clear();
    m_CTYFontMap.clear();
    g_winFontDataSet.clear();
}
