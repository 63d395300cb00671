#include "platform/typeengine/VXFaceCache_p.h"

#include <algorithm>
#include <utility>

#include FT_ADVANCES_H

#include "platform/system/VXSystemFile_p.h"

namespace {

/// Larger than any font, and far from what a process cannot hold.
constexpr std::int64_t kMaxFileSize = std::int64_t{512} << 20;

/// Empty when there is nothing to read.
std::pair<std::unique_ptr<unsigned char[]>, std::size_t> ReadFile(const char* path) {
    VXSystemFile file = VXSystemFile::OpenExisting(path);
    // A device could give bytes for ever.
    const std::int64_t size = file.IsOpen() && file.IsRegular() ? file.GetSize() : 0;
    if (size <= 0 || size > kMaxFileSize) return {};
    const auto expected = static_cast<std::size_t>(size);
    auto bytes = std::make_unique_for_overwrite<unsigned char[]>(expected);
    bool isFailed = false;
    const std::size_t count = file.ReadAt(0, bytes.get(), expected, isFailed);
    return {std::move(bytes), count};
}

}  // namespace

std::shared_ptr<VXFace> VXFace::Open(const std::shared_ptr<FT_LibraryRec_>& library,
                                     const VXFontRecord& font) {
    auto [bytes, size] = ReadFile(font.file.c_str());
    if (size == 0) return nullptr;
    std::shared_ptr<VXFace> opened(new VXFace);
    opened->m_Library = library;
    opened->m_Bytes = std::move(bytes);
    opened->m_Size = size;

    FT_Face face = nullptr;
    if (FT_New_Memory_Face(library.get(), opened->m_Bytes.get(), static_cast<FT_Long>(size), font.faceIndex,
                           &face) != 0) {
        return nullptr;
    }
    opened->m_Face.reset(face);
    // With one pixel for each unit, outlines come in 64ths of a unit, and parts of composite glyphs keep
    // those.
    if (!FT_IS_SCALABLE(face) || face->units_per_EM == 0 ||
        FT_Set_Pixel_Sizes(face, face->units_per_EM, face->units_per_EM) != 0) {
        return nullptr;
    }
    opened->m_IsSymbol = face->charmap == nullptr && FT_Select_Charmap(face, FT_ENCODING_MS_SYMBOL) == 0;
    return opened;
}

TYGlyphID VXFace::GetGlyph(char16_t character) const {
    if (character >= 0xD800 && character <= 0xDFFF) return 0;
    const TYGlyphID glyph = FT_Get_Char_Index(m_Face.get(), character);
    return glyph == 0 && m_IsSymbol && character < 0x100
               ? FT_Get_Char_Index(m_Face.get(), 0xF000U + character)
               : glyph;
}

bool VXFace::GetAdvance(TYGlyphID glyph, double& out) const {
    FT_Fixed advance = 0;
    if (FT_Get_Advance(m_Face.get(), glyph, FT_LOAD_NO_SCALE, &advance) != 0) return false;
    out = static_cast<double>(advance) / GetUnitsPerEm();
    return true;
}

std::shared_ptr<VXFace> VXFaceCache::Get(const std::shared_ptr<const VXFontRecord>& font) {
    const auto found = std::find_if(m_Entries.begin(), m_Entries.end(),
                                    [&](const Entry& entry) { return entry.font == font; });
    if (found != m_Entries.end()) {
        std::rotate(m_Entries.begin(), found, found + 1);
        return m_Entries.front().face;
    }

    if (m_Library == nullptr) {
        FT_Library library = nullptr;
        if (FT_Init_FreeType(&library) != 0) return nullptr;
        m_Library.reset(library, &FT_Done_FreeType);
    }
    std::shared_ptr<VXFace> face = VXFace::Open(m_Library, *font);
    if (face == nullptr) return nullptr;
    m_Entries.push_front({font, face});
    m_Bytes += face->GetFileSize();
    while (m_Entries.size() > kMaxFaces || (m_Bytes > kMaxBytes && m_Entries.size() > 1)) {
        m_Bytes -= m_Entries.back().face->GetFileSize();
        m_Entries.pop_back();
    }
    return face;
}
