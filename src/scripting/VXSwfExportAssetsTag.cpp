#include "scripting/VXSwfExportAssetsTag.h"

#include <algorithm>

#include "framework/VXFlintIDMap.h"

namespace {

constexpr unsigned short kMostAssets = 65535;
constexpr unsigned int kSmallCount = 255;

}  // namespace

VXSwfExportAssetsTag::VXSwfExportAssetsTag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfExportAssetsTag::~VXSwfExportAssetsTag() = default;

VXErrorCodeEnum VXSwfExportAssetsTag::LoadDataFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(in.ReadWord(m_NumAssets));
    // A small count has its entries even where the data ends early. A large one may lie.
    const std::size_t size = std::min<std::size_t>(m_NumAssets, std::max(in.GetRemaining(), kSmallCount));
    m_Ids.assign(size, 0);
    m_Names.assign(size, VXString());
    for (std::size_t i = 0; i < size; ++i) {
        VX_RETURN_IF_FAILED(in.ReadWord(m_Ids[i]));
        VX_RETURN_IF_FAILED(in.ReadVXString(m_Names[i]));
    }
    return size == m_NumAssets ? kVXSuccess : kVXFailure;
}

VXErrorCodeEnum VXSwfExportAssetsTag::DumpFields(VXBitStream& body) const {
    VX_RETURN_IF_FAILED(body.WriteWord(m_NumAssets));
    const std::size_t count = std::min<std::size_t>({m_NumAssets, m_Ids.size(), m_Names.size()});
    for (std::size_t i = 0; i < count; ++i) {
        VX_RETURN_IF_FAILED(body.WriteWord(m_Ids[i]));
        VX_RETURN_IF_FAILED(body.WriteVXString(m_Names[i]));
    }
    return kVXSuccess;
}

VXErrorCodeEnum VXSwfExportAssetsTag::DumpToStream(VXBitStream& out) {
    VXBitStream body;
    VX_RETURN_IF_FAILED(DumpFields(body));
    return DumpBody(out, body);
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
    if (m_NumAssets == kMostAssets) return kVXFailure;
    m_Names.resize(m_Ids.size());  // a name whose ID found no memory
    m_Names.push_back(name);
    m_Ids.push_back(id);
    ++m_NumAssets;
    return kVXSuccess;
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
