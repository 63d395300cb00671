#pragma once

#include <vector>

#include "framework/VXSwfControlTag.h"

/// Names the script class behind each of some characters. ID 0 is the main timeline.
///
///     type 76:  m_NumSymbols u16, (m_Ids u16, m_Names str) ...
///
/// The header is always a long one. The two sequences are parallel, and `m_NumSymbols` says how much of them
/// counts; whoever sets the fields keeps the three equal. What is walked never goes beyond a sequence, and a
/// dump counts what it writes.
class VXSWF_API VXSwfSymbolClassTag : public VXSwfControlTag {
public:
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    /// Replaces each ID for which the map has a value other than 0. Every ID has an entry in the map
    /// afterwards. Null does nothing.
    void UpdateReferenceIDs(VXFlintIDMap* map) override;
    ~VXSwfSymbolClassTag() override;
    /// Appends what it reads. 1 when the table ends early; the entries read by then stay, and `m_NumSymbols`
    /// is as stated.
    VXErrorCodeEnum LoadDataFromStream(VXBitStream& in) override;

    /// Gives `id` a class, in place of the one that it may have. A 65,536th entry is not added.
    void AddSymbol(const VXString& name, unsigned short id);
    bool HasID(unsigned short id) const;

    std::vector<VXString> m_Names;
    std::vector<unsigned short> m_Ids;
    unsigned short m_NumSymbols = 0;

private:
    friend class VXSwfTagFactory;
    explicit VXSwfSymbolClassTag(enuTagType type);

    /// IDs that count and are there.
    std::size_t CountIds() const;
    /// Index of `id`, or `CountIds()`.
    std::size_t FindId(unsigned short id) const;
};
