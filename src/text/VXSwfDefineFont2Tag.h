#pragma once

#include <cstddef>
#include <vector>

#include "framework/VXSwfDefinitionTag.h"
#include "graphics/VXFlintRectangle.h"
#include "graphics/VXFlintShape.h"
#include "platform/VXString.h"
#include "platform/VXTypes.h"

/// A font, of one of two kinds. A device font is a name, and the player draws it from fonts of its own. A
/// glyph font carries outlines: it collects the characters that texts need, and every dump fetches their
/// outlines, advances and bounds from the type engine.
///
///     types 48 and 75:
///     CharacterId u16
///     HasLayout ub[1], ShiftJIS ub[1], SmallText ub[1], ANSI ub[1],
///     WideOffsets ub[1], WideCodes ub[1], Italic ub[1], Bold ub[1]
///     LanguageCode u8
///     NameLength u8, FontName u8[NameLength]
///     NumGlyphs u16
///     OffsetTable u32[NumGlyphs], CodeTableOffset u32            u16 each without WideOffsets
///     GlyphShapes VXFlintShape[NumGlyphs], each from byte to byte
///     CodeTable u16[NumGlyphs]                                   u8 each without WideCodes
///     Ascent u16, Descent u16, Leading u16                       when HasLayout, as the next three
///     AdvanceTable u16[NumGlyphs]
///     BoundsTable VXFlintRectangle[NumGlyphs]
///     KerningCount u16 = 0                                       a load wants it in any case
///
/// Offsets count from the start of the offset table. Built by code only: in a loaded movie both types stay
/// raw. A table with fewer than `m_NumGlyphs` entries goes out with zeros or empty rectangles behind them; of
/// shapes all there are go out, whatever the count.
///
/// Kept: load and dump do not agree. A load takes one byte more for each glyph than a dump writes, wants a
/// kerning count without layout too, and drops all kerning; a dump writes the three metrics twenty times as
/// great as a load stores them.
class VXSWF_API VXSwfDefineFont2Tag : public VXSwfDefinitionTag {
public:
    static constexpr int kDeviceFont = 1;
    static constexpr int kGlyphFont = 2;

    VXSwfDefineFont2Tag(const VXSwfDefineFont2Tag& other);
    VXSwfDefineFont2Tag& operator=(const VXSwfDefineFont2Tag&);

    using VXSwfDefinitionTag::DumpToStream;
    /// Fills the tables of a glyph font first. The result is that of writing the finished tag.
    ///
    /// Kept: takes a tag out of `VXFontPublishManager` under its name with bold and italic exchanged, so one
    /// that is bold and not italic, or the other way round, stays there.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    /// The publish manager is not told; it skips tags that are gone.
    ~VXSwfDefineFont2Tag() override;
    /// 1 when the body ends early; what was read by then stays. Shapes that are there already get the new
    /// records behind their own. `m_FontKind` stays too, so that a tag fresh from the factory is a device
    /// font with tables, which go out as they are.
    VXErrorCodeEnum LoadDataFromStream(VXBitStream& in) override;

    /// Makes this a font without glyphs. Tables and characters of an earlier use stay, as with the next one.
    /// Always 0.
    VXErrorCodeEnum CreateDeviceFont(const VXString& name, short bold, short italic);
    /// Makes this a font whose glyphs each dump fetches. Always 0.
    VXErrorCodeEnum CreateGlyphFont(const VXString& name, short bold, short italic);
    /// Wants a character, a single UTF-16 unit. One that is wanted already may come again.
    void AddGlyphText(unsigned short c) { m_GlyphText.push_back(c); }
    /// Sorts the characters, so that the index of one is that of its glyph, and counts them. Every dump of a
    /// glyph font does so first.
    void UpdateForGlyphFont();
    /// Index of a character in the text, −1 when it is not there. It is that of the glyph once the text is
    /// sorted.
    int GetIndexOfChar(unsigned short c) const;
    /// The right end of a glyph's bounds, in pixels; 0 for an index out of range.
    ///
    /// Kept: a bound in spite of the name, and not the advance.
    VXReal GetCharWidthW(int index) const;
    VXString GetFontName() const { return m_FontName; }
    short IsBold() const { return m_Bold; }
    short IsItalic() const { return m_Italic; }
    void SetBold(short bold) { m_Bold = bold; }
    void SetItalic(short italic) { m_Italic = italic; }

    short m_HasLayout = 0;
    short m_ShiftJIS = 0;  ///< the text is in a double-byte encoding
    short m_SmallText = 0;
    short m_ANSI = 0;
    short m_WideOffsets = 1;
    short m_WideCodes = 1;
    short m_Italic = 1;  ///< as is `m_Bold`, until the kind or a load says otherwise
    short m_Bold = 1;
    unsigned char m_LanguageCode = 1;
    unsigned char m_NameLength = 0;  ///< as read or written last
    VXString m_FontName;
    unsigned short m_NumGlyphs = 0;
    std::vector<unsigned int> m_OffsetTable;
    unsigned int m_CodeTableOffset = 0;  ///< as read; a dump works out its own
    std::vector<VXFlintShape> m_GlyphShapes;
    std::vector<unsigned short> m_CodeTable;
    short m_Ascent = 0;  ///< as read in twips, else in units of 1024 to the em, as the next two
    short m_Descent = 0;
    short m_Leading = 0;
    std::vector<short> m_AdvanceTable;  ///< twips
    std::vector<VXFlintRectangle> m_BoundsTable;
    unsigned short m_KerningCount = 0;  ///< always 0
    int m_FontKind = kDeviceFont;       ///< one of the two constants
    VXString m_GlyphText;               ///< the characters wanted, a unit each

private:
    friend class VXSwfTagFactory;
    explicit VXSwfDefineFont2Tag(enuTagType type);

    VXErrorCodeEnum ReadOffset(VXBitStream& in, unsigned int& offset) const;
    VXErrorCodeEnum WriteOffset(VXBitStream& body, unsigned int offset) const;
    VXErrorCodeEnum ReadCode(VXBitStream& in, unsigned short& code) const;
    VXErrorCodeEnum WriteCode(VXBitStream& body, unsigned short code) const;
    VXErrorCodeEnum LoadLayout(VXBitStream& in);
    VXErrorCodeEnum DumpLayout(VXBitStream& body);
    /// Bytes of the offsets of `count` glyphs with that of the code table behind them.
    unsigned int GetOffsetTableSize(std::size_t count) const {
        return (m_WideOffsets != 0 ? 4u : 2u) * (static_cast<unsigned int>(count) + 1);
    }
    VXErrorCodeEnum DumpFields(VXBitStream& body, VXBitStream& shapes);
    /// Appends to `m_ShapeBytes`, and answers how many bytes.
    unsigned int DumpShape(VXFlintShape& shape);
    void SetFont(const VXString& name, short bold, short italic);
    void FillDefineFont2Tables();

    VXBitStream* m_ShapeBytes = nullptr;  ///< the shapes of a dump that is going on
};
