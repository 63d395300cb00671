#include "text/VXSwfTextStyleChangeRecord.h"

#include "bitstream/VXBitRun_p.h"
#include "bitstream/VXReadField_p.h"
#include "graphics/VXTwips.h"

namespace {

/// What a negative advance is short of behind its sign, in 32 bits.
unsigned int SignWeight(unsigned int valueBits) { return valueBits < 32 ? 1u << valueBits : 0; }

VXErrorCodeEnum ReadAdvance(VXBitStream& in, unsigned int bits, int& advance) {
    advance = 0;
    if (bits == 0) return kVXSuccess;
    unsigned int sign = 0;
    unsigned int value = 0;
    VX_RETURN_IF_FAILED(in.ReadBits(1, sign));
    VX_RETURN_IF_FAILED(in.ReadBits(bits - 1, value));
    advance = static_cast<int>(sign != 0 ? value - SignWeight(bits - 1) : value);
    return kVXSuccess;
}

void AddAdvance(VXBitRun& out, unsigned int bits, int advance) {
    if (bits == 0) return;
    const unsigned int sign = advance < 0 ? 1 : 0;
    const auto value = static_cast<unsigned int>(advance);
    out.Add(sign, 1);
    out.Add(sign != 0 ? value + SignWeight(bits - 1) : value, bits - 1);
}

}  // namespace

VXSwfTextStyleChangeRecord::~VXSwfTextStyleChangeRecord() = default;

VXErrorCodeEnum VXSwfTextStyleChangeRecord::LoadFromStream(VXBitStream& in) {
    in.ByteAlignSBits();
    unsigned int type = 0;
    VX_RETURN_IF_FAILED(in.ReadBits(1, type));
    VX_RETURN_IF_FAILED(VXReadBits(in, 3, m_StyleFlagsReserved));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(m_HasFont));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(m_HasColor));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(m_HasYOffset));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(m_HasXOffset));
    const unsigned int flags = type | m_StyleFlagsReserved;
    if (flags == 0 && (m_HasFont | m_HasColor | m_HasYOffset | m_HasXOffset) == 0) return kVXFailure;
    if (m_HasFont != 0) VX_RETURN_IF_FAILED(in.ReadWord(m_FontId));
    if (m_HasColor != 0) VX_RETURN_IF_FAILED(m_Color.LoadFromStream(in));
    if (m_HasXOffset != 0) VX_RETURN_IF_FAILED(in.ReadWord(m_XOffset));
    if (m_HasYOffset != 0) VX_RETURN_IF_FAILED(in.ReadWord(m_YOffset));
    if (m_HasFont != 0) VX_RETURN_IF_FAILED(VXReadTwipsWord(in, m_TextHeight));
    VXIgnore(in.ReadByte(m_GlyphCount));  // Kept: as the index below
    m_GlyphEntries.reserve(m_GlyphEntries.size() + m_GlyphCount);
    for (unsigned int i = 0; i < m_GlyphCount; ++i) {
        VXFlintGlyphEntry entry;
        VXIgnore(in.ReadBits(m_GlyphBits, entry.m_GlyphIndex));
        VX_RETURN_IF_FAILED(ReadAdvance(in, m_AdvanceBits, entry.m_GlyphAdvance));
        m_GlyphEntries.push_back(entry);
    }
    return kVXSuccess;
}

VXErrorCodeEnum VXSwfTextStyleChangeRecord::DumpToStream(VXBitStream& out) const {
    VXBitRun run(out);
    run.Add(1, 1);
    run.Add(m_StyleFlagsReserved, 3);
    run.AddFlag(m_HasFont);
    run.AddFlag(m_HasColor);
    run.AddFlag(m_HasYOffset);
    run.AddFlag(m_HasXOffset);
    VX_RETURN_IF_FAILED(run.Finish());
    if (m_HasFont != 0) VX_RETURN_IF_FAILED(out.WriteWord(m_FontId));
    if (m_HasColor != 0) VX_RETURN_IF_FAILED(m_Color.DumpToStream(out));
    if (m_HasXOffset != 0) VX_RETURN_IF_FAILED(out.WriteWord(m_XOffset));
    if (m_HasYOffset != 0) VX_RETURN_IF_FAILED(out.WriteWord(m_YOffset));
    if (m_HasFont != 0) VX_RETURN_IF_FAILED(VXWriteTwipsWord(out, m_TextHeight));
    VX_RETURN_IF_FAILED(out.WriteByte(m_GlyphCount));
    for (unsigned int i = 0; i < m_GlyphCount; ++i) {
        const VXFlintGlyphEntry entry = i < m_GlyphEntries.size() ? m_GlyphEntries[i] : VXFlintGlyphEntry();
        run.Add(entry.m_GlyphIndex, m_GlyphBits);
        AddAdvance(run, m_AdvanceBits, entry.m_GlyphAdvance);
    }
    return run.Finish();
}

void VXSwfTextStyleChangeRecord::UpdateReferenceIDs(VXFlintIDMap* map) {
    if (map != nullptr && m_HasFont != 0 && m_FontId != 0) map->Renumber(m_FontId);
}
