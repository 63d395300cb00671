#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstddef>
#include <deque>
#include <memory>

#include "platform/typeengine/VXFontList_p.h"
#include "platform/typeengine/VXTypeEngineAPI.h"

/// A font file that is open, sized so that one unit of the font is 64 units of its outlines.
class VXFace {
public:
    /// The file is read whole: a file that is cut short while it is mapped would end the process. Null when
    /// it can not be read, holds no such face, or the face has no outlines.
    static std::shared_ptr<VXFace> Open(const std::shared_ptr<FT_LibraryRec_>& library,
                                        const VXFontRecord& font);

    FT_Face GetFace() const { return m_Face.get(); }
    /// Units of the font to the em, above 0.
    double GetUnitsPerEm() const { return m_Face->units_per_EM; }
    std::size_t GetFileSize() const { return m_Size; }
    /// 0 for a character that the font lacks, and for half a surrogate pair.
    TYGlyphID GetGlyph(char16_t character) const;
    /// The horizontal advance in ems, neither hinted nor rounded; false when the font has no such glyph.
    bool GetAdvance(TYGlyphID glyph, double& out) const;

private:
    VXFace() = default;

    std::shared_ptr<FT_LibraryRec_> m_Library;
    std::unique_ptr<unsigned char[]> m_Bytes;
    std::size_t m_Size = 0;
    std::unique_ptr<FT_FaceRec_, decltype(&FT_Done_Face)> m_Face{nullptr, &FT_Done_Face};
    bool m_IsSymbol = false;  ///< its codes lie at U+F000 and up
};

/// Keeps the faces used last, few in number and in bytes; the very last one also when it alone is larger,
/// since the next glyph needs it again. Whoever holds a face keeps it alive beyond that.
class VXFaceCache {
public:
    static constexpr std::size_t kMaxFaces = 16;
    static constexpr std::size_t kMaxBytes = std::size_t{64} << 20;

    /// Null as for `VXFace::Open`; such a font is tried again the next time.
    std::shared_ptr<VXFace> Get(const std::shared_ptr<const VXFontRecord>& font);

private:
    struct Entry {
        std::shared_ptr<const VXFontRecord> font;
        std::shared_ptr<VXFace> face;
    };

    std::shared_ptr<FT_LibraryRec_> m_Library;
    std::deque<Entry> m_Entries;  ///< the one used last in front
    std::size_t m_Bytes = 0;
};
