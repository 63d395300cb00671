#include "scripting/VXSwfSymbolClassTag.h"

#include <algorithm>

#include "framework/VXFlintIDMap.h"

namespace {

constexpr unsigned int kLeastEntry = 3;  // bytes of an entry with an empty name
constexpr unsigned short kMostSymbols = 65535;

}  // namespace

VXSwfSymbolClassTag::VXSwfSymbolClassTag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfSymbolClassTag::~VXSwfSymbolClassTag() = default;

VXErrorCodeEnum VXSwfSymbolClassTag::LoadDataFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(in.ReadWord(m_NumSymbols));
    const std::size_t room = std::min<unsigned int>(m_NumSymbols, in.GetRemaining() / kLeastEntry);
    m_Ids.reserve(m_Ids.size() + room);
    m_Names.reserve(m_Names.size() + room);
    for (unsigned int i = 0; i < m_NumSymbols; ++i) {
        unsigned short id = 0;
        VX_RETURN_IF_FAILED(in.ReadWord(id));
        m_Ids.push_back(id);
        VXString name;
        VX_RETURN_IF_FAILED(in.ReadVXString(name));
        m_Names.push_back(std::move(name));
    }
    return kVXSuccess;
}

VXErrorCodeEnum VXSwfSymbolClassTag::DumpFields(VXBitStream& body) const {
    VX_RETURN_IF_FAILED(body.WriteWord(m_NumSymbols));
    const std::size_t count = std::min(CountIds(), m_Names.size());
    for (std::size_t i = 0; i < count; ++i) {
        VX_RETURN_IF_FAILED(body.WriteWord(m_Ids[i]));
        VX_RETURN_IF_FAILED(body.WriteVXString(m_Names[i]));
    }
    return kVXSuccess;
}

VXErrorCodeEnum VXSwfSymbolClassTag::DumpToStream(VXBitStream& out) {
    VXBitStream body;
    SetIsLongTag(1);
    VX_RETURN_IF_FAILED(DumpFields(body));
    return DumpBody(out, body);
}

void VXSwfSymbolClassTag::UpdateReferenceIDs(VXFlintIDMap* map) {
    if (map == nullptr) return;
    for (std::size_t i = 0; i < CountIds(); ++i) map->Renumber(m_Ids[i]);
}

std::size_t VXSwfSymbolClassTag::CountIds() const {
    return std::min<std::size_t>(m_NumSymbols, m_Ids.size());
}

std::size_t VXSwfSymbolClassTag::FindId(unsigned short id) const {
    // A merge searches once for each symbol; a block is a handful of vector instructions.
    constexpr std::size_t kBlock = 64;
    const std::size_t count = CountIds();
    std::size_t index = 0;
    for (; count - index >= kBlock; index += kBlock) {
        const unsigned short* block = m_Ids.data() + index;
        unsigned short isHere = 0;
        for (std::size_t i = 0; i < kBlock; ++i) isHere |= block[i] == id ? 1 : 0;
        if (isHere != 0) break;
    }
    while (index < count && m_Ids[index] != id) ++index;
    return index;
}

void VXSwfSymbolClassTag::AddSymbol(const VXString& name, unsigned short id) {
    const std::size_t index = FindId(id);
    if (index < CountIds()) {
        m_Names.resize(std::max(m_Names.size(), index + 1));  // a table that was cut may lack the last name
        m_Names[index] = name;
        return;
    }
    if (m_NumSymbols == kMostSymbols) return;
    m_Names.resize(m_Ids.size());
    m_Names.push_back(name);
    m_Ids.push_back(id);
    ++m_NumSymbols;
}

bool VXSwfSymbolClassTag::HasID(unsigned short id) const { return FindId(id) < CountIds(); }
