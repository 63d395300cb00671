#pragma once

#include <vector>

#include "framework/VXSwfControlTag.h"

/// Gives names to characters, under which scripts and other movies find them.
///
///     type 56:  m_NumAssets u16, (m_Ids u16, m_Names str) ...
///
/// The two sequences are parallel, and `m_NumAssets` says how much of them is written; whoever sets the
/// fields keeps the three equal. What is walked never goes beyond a sequence, and a dump counts what it writes.
class VXSWF_API VXSwfExportAssetsTag : public VXSwfControlTag {
public:
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    /// Replaces each ID that has an entry in the map, which stays as it is. Null does nothing.
    ///
    /// Kept: an entry of value 0 replaces the ID as well.
    void UpdateReferenceIDs(VXFlintIDMap* map) override;
    ~VXSwfExportAssetsTag() override;
    /// 1 when the table ends early; the entries read by then stay, and `m_NumAssets` is as stated.
    VXErrorCodeEnum LoadDataFromStream(VXBitStream& in) override;

    /// Appends an entry, without a look at those that are there. 1 for a 65,536th, which is not added.
    VXErrorCodeEnum AddCharacterIdnName(unsigned short id, const VXString& name);
    /// 0 beyond the end.
    unsigned short GetAssetIDByIndex(unsigned int index) const;
    /// The name of the first entry for `id`; 1 if there is none, and `name` stays.
    VXErrorCodeEnum GetAssestName(unsigned short id, VXString& name) const;

    unsigned short m_NumAssets = 0;
    std::vector<unsigned short> m_Ids;
    std::vector<VXString> m_Names;

private:
    friend class VXSwfTagFactory;
    explicit VXSwfExportAssetsTag(enuTagType type);
};
