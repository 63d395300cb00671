#include "scripting/VXSwfSymbolClassTag.h"

#include <algorithm>

#include "framework/VXFlintIDMap.h"
#include "scripting/VXNameTable_p.h"

VXSwfSymbolClassTag::VXSwfSymbolClassTag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfSymbolClassTag::~VXSwfSymbolClassTag() = default;

VXErrorCodeEnum VXSwfSymbolClassTag::LoadDataFromStream(VXBitStream& in) {
    return VXLoadNames(in, m_NumSymbols, m_Ids, m_Names);
}

VXErrorCodeEnum VXSwfSymbolClassTag::DumpToStream(VXBitStream& out) {
    SetIsLongTag(1);
    return DumpFields(out,
                      [this](VXBitStream& body) { return VXDumpNames(body, m_NumSymbols, m_Ids, m_Names); });
}

void VXSwfSymbolClassTag::UpdateReferenceIDs(VXFlintIDMap* map) {
    if (map == nullptr) return;
    for (std::size_t i = 0; i < CountIds(); ++i) map->Renumber(m_Ids[i]);
}

std::size_t VXSwfSymbolClassTag::CountIds() const {
    return std::min<std::size_t>(m_NumSymbols, m_Ids.size());
}

std::size_t VXSwfSymbolClassTag::FindId(unsigned short id) const {
    const auto end = m_Ids.begin() + static_cast<std::ptrdiff_t>(CountIds());
    return static_cast<std::size_t>(std::find(m_Ids.begin(), end, id) - m_Ids.begin());
}

void VXSwfSymbolClassTag::AddSymbol(const VXString& name, unsigned short id) {
    const std::size_t index = FindId(id);
    if (index < CountIds()) {
        m_Names.resize(std::max(m_Names.size(), index + 1));  // a table that was cut may lack the last name
        m_Names[index] = name;
        return;
    }
    VXIgnore(VXAppendName(m_NumSymbols, m_Ids, m_Names, id, name));  // told nobody
}

bool VXSwfSymbolClassTag::HasID(unsigned short id) const { return FindId(id) < CountIds(); }
