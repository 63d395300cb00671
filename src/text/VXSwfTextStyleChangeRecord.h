#pragma once

#include <vector>

#include "bitstream/VXBitStream.h"
#include "framework/VXFlintIDMap.h"
#include "graphics/VXFlintRGB.h"
#include "platform/VXExport.h"
#include "platform/VXTypes.h"

class VXSwfDefineFont2Tag;

/// One glyph of a run.
struct VXFlintGlyphEntry {
    unsigned int m_GlyphIndex = 0;  ///< in the font's glyphs
    int m_GlyphAdvance = 0;         ///< twips
};

/// A run of text in one style, as much of it as changes from the run before:
///
///     ub[1] = 1, StyleFlagsReserved ub[3], HasFont ub[1], HasColor ub[1], HasYOffset ub[1], HasXOffset ub[1]
///     FontId u16                                                    when HasFont
///     Color VXFlintRGB                                              when HasColor
///     XOffset u16                                                   when HasXOffset
///     YOffset u16                                                   when HasYOffset
///     TextHeight u16, in twips                                      when HasFont
///     GlyphCount u8
///     GlyphIndex ub[GlyphBits], GlyphAdvance sb[AdvanceBits]        GlyphCount times
///
/// It starts on a byte; its dump leaves the stream in mid-byte. A first byte of 0 is the end of a list of
/// runs.
///
/// A run that a host builds stands for one character in one font, repeated `m_GlyphCount` times. The tag that
/// it goes into works out widths and bounds from the two; the entries that go out are those of the run.
class VXSWF_API VXSwfTextStyleChangeRecord {
public:
    VXSwfTextStyleChangeRecord() = default;
    VXSwfTextStyleChangeRecord(const VXSwfTextStyleChangeRecord&) = default;
    VXSwfTextStyleChangeRecord(VXSwfTextStyleChangeRecord&&) noexcept = default;
    VXSwfTextStyleChangeRecord& operator=(const VXSwfTextStyleChangeRecord&) = default;
    VXSwfTextStyleChangeRecord& operator=(VXSwfTextStyleChangeRecord&&) noexcept = default;
    virtual ~VXSwfTextStyleChangeRecord();

    /// Appends the entries. 1 at the end of the list, as on a failure.
    ///
    /// Kept: a glyph count or an index for which there are no bits left is no failure.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    /// Entries that are missing go out as index 0 and advance 0. A value wider than its field spoils the bits
    /// in front.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) const;
    /// Of the font. An ID that the map does not have gets an entry of 0 there.
    void UpdateReferenceIDs(VXFlintIDMap* map);
    /// Whether the colour has an alpha byte.
    void SetAlpha(short useAlpha) { m_Color.UseAlpha = useAlpha; }

    unsigned char m_StyleFlagsReserved = 0;
    short m_HasFont = 1;
    short m_HasColor = 1;
    short m_HasYOffset = 1;
    short m_HasXOffset = 1;
    unsigned short m_FontId = 0;
    VXFlintRGB m_Color;
    unsigned short m_XOffset = 0;     ///< twips; one below 0 as its 16 bits
    unsigned short m_YOffset = 0;     ///< the same
    unsigned short m_TextHeight = 0;  ///< whole pixels; a load cuts the fraction off
    int m_ExtentX = 0;                ///< never on the wire, as the next three; not used
    int m_ExtentY = 0;                ///< least bottom of the text's bounds, in its first run alone
    /// Not owned. One that is gone by the time of a dump counts as null.
    VXSwfDefineFont2Tag* m_Font = nullptr;
    unsigned short m_Character = 0;  ///< the character that the run repeats
    unsigned char m_GlyphCount = 0;
    std::vector<VXFlintGlyphEntry> m_GlyphEntries;
    unsigned char m_GlyphBits = 0;  ///< of the tag, set before a load or a dump, as the next one
    unsigned char m_AdvanceBits = 0;
};
