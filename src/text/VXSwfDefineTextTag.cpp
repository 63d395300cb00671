#include "text/VXSwfDefineTextTag.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "graphics/VXTwips.h"
#include "memory/VXMemoryLimit_p.h"
#include "text/VXFontPublishManager.h"
#include "text/VXFontTagRegistry_p.h"
#include "text/VXSwfDefineFont2Tag.h"

namespace {

// Two bytes make a run of 255 glyphs when both widths are 0, and at the end of a body glyphs of 255 bits come
// from nothing, so what a byte can ask for, in memory or in a dump, has a limit.
constexpr std::uint64_t kMostPerByte = 256;
constexpr std::uint64_t kFree = 255 * sizeof(VXFlintGlyphEntry);  // one run, however short the body

std::uint64_t CostOfEntry(unsigned int bits) {
    return std::max<std::uint64_t>(sizeof(VXFlintGlyphEntry), bits / 8);
}

}  // namespace

VXSwfDefineTextTag::VXSwfDefineTextTag(enuTagType type) : VXSwfDefinitionTag(type) {
    m_Matrix.ToUnitMatrix();
}

VXSwfDefineTextTag::~VXSwfDefineTextTag() = default;

VXErrorCodeEnum VXSwfDefineTextTag::LoadDataFromStream(VXBitStream& in) {
    std::uint64_t costLeft = kFree + kMostPerByte * in.GetRemaining();
    VX_RETURN_IF_FAILED(m_Bounds.LoadFromStream(in));
    VX_RETURN_IF_FAILED(m_Matrix.LoadFromStream(in));
    VXIgnore(in.ReadByte(m_GlyphBits));  // a width that is not there stays as it was
    VXIgnore(in.ReadByte(m_AdvanceBits));
    const std::uint64_t costOfEntry = CostOfEntry(m_GlyphBits + m_AdvanceBits);
    for (;;) {
        VXSwfTextStyleChangeRecord record;
        record.SetAlpha(GetTagType() == VXSwfTagFactory::TAG_DEFINETEXT2 ? 1 : 0);
        record.m_GlyphBits = m_GlyphBits;
        record.m_AdvanceBits = m_AdvanceBits;
        // Kept: a run that fails looks like the end of the list. One beyond the limit ends it the same way.
        if (record.LoadFromStream(in) != kVXSuccess) return kVXSuccess;
        const std::uint64_t cost = record.m_GlyphEntries.size() * costOfEntry;
        if (cost > costLeft) return kVXSuccess;
        costLeft -= cost;
        VXMemoryLimit::Charge(sizeof record + record.m_GlyphEntries.size() * sizeof(VXFlintGlyphEntry));
        m_TextRecords.push_back(std::move(record));
    }
}

void VXSwfDefineTextTag::MeasureRecords() {
    unsigned int largestIndex = 0;
    int largestAdvance = 0;
    bool hasFont = false;
    for (const VXSwfTextStyleChangeRecord& record : m_TextRecords) {
        const VXSwfDefineFont2Tag* font = record.m_Font;
        if (!VXFontTagRegistry::IsLive(font)) continue;
        hasFont = true;
        if (record.m_GlyphCount == 0) continue;
        // The glyphs of a run are all of one character, so the first one tells for all.
        BND_NT_NMT::CTYFontInstance instance = VXFontPublishManager::GetFontInstance(
            font->GetFontName(), font->IsBold() == 1, font->IsItalic() == 1,
            static_cast<float>(record.m_TextHeight));
        const int advance = VXToTwips(VXFontPublishManager::CharWidth(record.m_Character, instance));
        largestIndex =
            std::max(largestIndex, static_cast<unsigned int>(font->GetIndexOfChar(record.m_Character)));
        largestAdvance = std::max(largestAdvance, advance);
        // Kept: twips on this side and pixels on the other.
        const VXReal right = static_cast<VXReal>(advance) + record.m_XOffset;
        if (!(m_Bounds.XMax - 0.00001 > right)) m_Bounds.XMax = right;
        // Kept: the first run speaks for all of them.
        const VXReal bottom = m_TextRecords.front().m_ExtentY;
        if (!(m_Bounds.YMax - 0.00001 > bottom)) m_Bounds.YMax = bottom;
    }
    if (!hasFont) return;
    m_Bounds.XMax = VXFromTwips(VXTruncate(m_Bounds.XMax));
    m_GlyphBits = static_cast<unsigned char>(VXBitStream::MinBits(largestIndex, 0));
    m_AdvanceBits =
        static_cast<unsigned char>(VXBitStream::MinBits(static_cast<unsigned int>(largestAdvance), 1));
}

VXErrorCodeEnum VXSwfDefineTextTag::DumpToStream(VXBitStream& out) {
    MeasureRecords();
    return DumpFields(out, [this](VXBitStream& body) -> VXErrorCodeEnum {
        VX_RETURN_IF_FAILED(m_Bounds.DumpToStream(body));
        VX_RETURN_IF_FAILED(m_Matrix.DumpToStream(body));
        VX_RETURN_IF_FAILED(body.WriteByte(m_GlyphBits));
        VX_RETURN_IF_FAILED(body.WriteByte(m_AdvanceBits));
        for (VXSwfTextStyleChangeRecord& record : m_TextRecords) {
            record.m_GlyphBits = m_GlyphBits;
            record.m_AdvanceBits = m_AdvanceBits;
            VX_RETURN_IF_FAILED(record.DumpToStream(body));
            VX_RETURN_IF_FAILED(body.FlushBits());
        }
        return body.WriteByte(0);
    });
}

void VXSwfDefineTextTag::UpdateReferenceIDs(VXFlintIDMap* map) {
    for (VXSwfTextStyleChangeRecord& record : m_TextRecords) record.UpdateReferenceIDs(map);
}
