#pragma once

#include <vector>

#include "framework/VXSwfDefinitionTag.h"
#include "graphics/VXFlintMatrix.h"
#include "graphics/VXFlintRectangle.h"
#include "text/VXSwfTextStyleChangeRecord.h"

/// Text that was laid out ahead of time, as runs of glyphs.
///
///     type 11, colours without alpha, and type 33, colours with alpha:
///     CharacterId u16
///     Bounds VXFlintRectangle, Matrix VXFlintMatrix
///     GlyphBits u8, AdvanceBits u8
///     TextRecords VXSwfTextStyleChangeRecord..., each from byte to byte
///     u8 = 0
class VXSWF_API VXSwfDefineTextTag : public VXSwfDefinitionTag {
public:
    using VXSwfDefinitionTag::DumpToStream;
    /// A text with no font pointer in its runs goes out with the widths and bounds that it has. Otherwise
    /// they are worked out first from the fonts, the characters and the offsets of the runs, and stored.
    ///
    /// Kept: only the widths come from the fonts; the entries written are those of the runs. What stands in
    /// `m_Bounds.XMax`, even a right end from the load or the last dump, is taken for twips and divided by
    /// 20.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    /// Of the fonts of all runs.
    void UpdateReferenceIDs(VXFlintIDMap* map) override;
    ~VXSwfDefineTextTag() override;
    /// Appends runs up to the end of the list or to one that fails, which are both good. 1 when bounds or
    /// matrix are not there. A run also ends the list when the glyphs, which may take no bits, would take more
    /// than 256 times the bytes of the body.
    VXErrorCodeEnum LoadDataFromStream(VXBitStream& in) override;

    VXFlintRectangle m_Bounds;
    VXFlintMatrix m_Matrix;  ///< starts as `ToUnitMatrix` makes it
    unsigned char m_GlyphBits = 0;
    unsigned char m_AdvanceBits = 0;
    unsigned char m_TextFlag = 1;  ///< copied with the tag and not used, as the next one
    int m_TextValue = 0;
    std::vector<VXSwfTextStyleChangeRecord> m_TextRecords;

private:
    friend class VXSwfTagFactory;
    explicit VXSwfDefineTextTag(enuTagType type);

    void MeasureRecords();
};
