#include "scripting/VXSwfExportAssetsTag.h"

#include <algorithm>

#include "framework/VXFlintIDMap.h"
#include "scripting/VXNameTable_p.h"

VXSwfExportAssetsTag::VXSwfExportAssetsTag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfExportAssetsTag::~VXSwfExportAssetsTag() = default;

VXErrorCodeEnum VXSwfExportAssetsTag::LoadDataFromStream(VXBitStream& in) {
    m_Ids.clear();
    m_Names.clear();
    return VXLoadNames(in, m_NumAssets, m_Ids, m_Names);
}

VXErrorCodeEnum VXSwfExportAssetsTag::DumpToStream(VXBitStream& out) {
    return DumpFields(out,
                      [this](VXBitStream& body) { return VXDumpNames(body, m_NumAssets, m_Ids, m_Names); });
}

void VXSwfExportAssetsTag::UpdateReferenceIDs(VXFlintIDMap* map) {
    if (map == nullptr) return;
    const std::size_t count =
        std::min<std::size_t>(static_cast<unsigned short>(m_Names.size()), m_Ids.size());
    for (std::size_t i = 0; i < count; ++i) {
        const auto entry = map->find(m_Ids[i]);
        // Kept: the entry counts even when its value is 0.
        if (entry != map->end()) m_Ids[i] = entry->second;
    }
}

VXErrorCodeEnum VXSwfExportAssetsTag::AddCharacterIdnName(unsigned short id, const VXString& name) {
    return VXAppendName(m_NumAssets, m_Ids, m_Names, id, name);
}

unsigned short VXSwfExportAssetsTag::GetAssetIDByIndex(unsigned int index) const {
    return index < m_Ids.size() ? m_Ids[index] : 0;
}

VXErrorCodeEnum VXSwfExportAssetsTag::GetAssestName(unsigned short id, VXString& name) const {
    const auto index = static_cast<std::size_t>(std::find(m_Ids.begin(), m_Ids.end(), id) - m_Ids.begin());
    if (index >= std::min(m_Ids.size(), m_Names.size())) return kVXFailure;
    name = m_Names[index];
    return kVXSuccess;
}
