#include "text/VXSwfDefineFont2Tag.h"

#include <string>

#include "bitstream/VXBitRun_p.h"
#include "bitstream/VXReadField_p.h"
#include "graphics/VXTwips.h"
#include "platform/VXFontUtils.h"
#include "text/VXFontPublishManager.h"
#include "text/VXFontTagRegistry_p.h"

namespace {

using Tag = VXSwfDefineFont2Tag;

// In the order of the wire.
constexpr short Tag::*kFlags[] = {&Tag::m_HasLayout,   &Tag::m_ShiftJIS,  &Tag::m_SmallText, &Tag::m_ANSI,
                                  &Tag::m_WideOffsets, &Tag::m_WideCodes, &Tag::m_Italic,    &Tag::m_Bold};

/// Loads `count` entries. The table grows as they come, so that a count from a file takes no memory by
/// itself.
template <typename Entry, typename Read>
VXErrorCodeEnum LoadTable(std::vector<Entry>& table, unsigned int count, const Read& read) {
    if (table.size() > count) table.resize(count);
    for (unsigned int i = 0; i < count; ++i) {
        if (i == table.size()) table.emplace_back();
        VX_RETURN_IF_FAILED(read(table[i]));
    }
    return kVXSuccess;
}

/// Writes `count` entries, empty ones where the table is shorter.
template <typename Entry, typename Write>
VXErrorCodeEnum DumpTable(const std::vector<Entry>& table, unsigned int count, const Write& write) {
    const Entry none{};
    for (unsigned int i = 0; i < count; ++i) VX_RETURN_IF_FAILED(write(i < table.size() ? table[i] : none));
    return kVXSuccess;
}

}  // namespace

VXSwfDefineFont2Tag::VXSwfDefineFont2Tag(enuTagType type) : VXSwfDefinitionTag(type) {
    VXFontTagRegistry::Add(this);
}

VXSwfDefineFont2Tag::VXSwfDefineFont2Tag(const VXSwfDefineFont2Tag& other)
    : VXSwfDefineFont2Tag(other.GetTagType()) {
    *this = other;
}

VXSwfDefineFont2Tag& VXSwfDefineFont2Tag::operator=(const VXSwfDefineFont2Tag&) = default;

VXSwfDefineFont2Tag::~VXSwfDefineFont2Tag() { VXFontTagRegistry::Remove(this); }

VXErrorCodeEnum VXSwfDefineFont2Tag::ReadOffset(VXBitStream& in, unsigned int& offset) const {
    return m_WideOffsets != 0 ? in.ReadDWord(offset) : VXReadWord(in, offset);
}

VXErrorCodeEnum VXSwfDefineFont2Tag::WriteOffset(VXBitStream& body, unsigned int offset) const {
    return m_WideOffsets != 0 ? body.WriteDWord(offset) : body.WriteWord(static_cast<unsigned short>(offset));
}

VXErrorCodeEnum VXSwfDefineFont2Tag::ReadCode(VXBitStream& in, unsigned short& code) const {
    if (m_WideCodes != 0) return in.ReadWord(code);
    unsigned char byte = 0;
    VX_RETURN_IF_FAILED(in.ReadByte(byte));
    code = byte;
    return kVXSuccess;
}

VXErrorCodeEnum VXSwfDefineFont2Tag::WriteCode(VXBitStream& body, unsigned short code) const {
    return m_WideCodes != 0 ? body.WriteWord(code) : body.WriteByte(static_cast<unsigned char>(code));
}

VXErrorCodeEnum VXSwfDefineFont2Tag::LoadDataFromStream(VXBitStream& in) {
    for (short Tag::*flag : kFlags) VX_RETURN_IF_FAILED(in.ReadVXBool16(this->*flag));
    VX_RETURN_IF_FAILED(in.ReadByte(m_LanguageCode));
    VX_RETURN_IF_FAILED(in.ReadByte(m_NameLength));
    VX_RETURN_IF_FAILED(in.ReadVXString(m_FontName, m_NameLength));
    VX_RETURN_IF_FAILED(in.ReadWord(m_NumGlyphs));
    if (m_NumGlyphs != 0) {
        VX_RETURN_IF_FAILED(LoadTable(m_OffsetTable, m_NumGlyphs,
                                      [&](unsigned int& offset) { return ReadOffset(in, offset); }));
    }
    VX_RETURN_IF_FAILED(ReadOffset(in, m_CodeTableOffset));
    // Kept: the shape reads two pairs of widths, of which a dump writes one.
    VX_RETURN_IF_FAILED(LoadTable(m_GlyphShapes, m_NumGlyphs, [&](VXFlintShape& shape) {
        shape.SetAlpha(0);
        return shape.LoadFromStream(in);
    }));
    VX_RETURN_IF_FAILED(
        LoadTable(m_CodeTable, m_NumGlyphs, [&](unsigned short& code) { return ReadCode(in, code); }));
    if (m_HasLayout != 0) VX_RETURN_IF_FAILED(LoadLayout(in));
    // Kept: without layout too. The kerning records behind it stay unread.
    unsigned short kerningCount = 0;
    VX_RETURN_IF_FAILED(in.ReadWord(kerningCount));
    m_KerningCount = 0;
    return kVXSuccess;
}

VXErrorCodeEnum VXSwfDefineFont2Tag::DumpFields(VXBitStream& body, VXBitStream& shapes) {
    if (shapes.HasFailed()) return kVXFailure;
    VXBitRun run(body);
    for (short Tag::*flag : kFlags) run.AddFlag(this->*flag);
    VX_RETURN_IF_FAILED(run.Finish());
    VX_RETURN_IF_FAILED(body.WriteByte(m_LanguageCode));
    // Kept: counts units and writes UTF-8, which has at least as many bytes, so a name outside ASCII is cut
    // short.
    m_NameLength = static_cast<unsigned char>(m_FontName.length());
    VX_RETURN_IF_FAILED(body.WriteByte(m_NameLength));
    VX_RETURN_IF_FAILED(body.Write(m_FontName.GetUTF8String().data(), m_NameLength));
    VX_RETURN_IF_FAILED(body.WriteWord(m_NumGlyphs));
    VX_RETURN_IF_FAILED(DumpTable(m_OffsetTable, m_NumGlyphs,
                                  [&](unsigned int offset) { return WriteOffset(body, offset); }));
    VX_RETURN_IF_FAILED(WriteOffset(body, GetOffsetTableSize(m_NumGlyphs) + shapes.GetSize()));
    VX_RETURN_IF_FAILED(body.Write(shapes.GetBuffer(), shapes.GetSize()));
    VX_RETURN_IF_FAILED(
        DumpTable(m_CodeTable, m_NumGlyphs, [&](unsigned short code) { return WriteCode(body, code); }));
    if (m_HasLayout == 0) return kVXSuccess;
    VX_RETURN_IF_FAILED(DumpLayout(body));
    m_KerningCount = 0;
    return body.WriteWord(m_KerningCount);
}

unsigned int VXSwfDefineFont2Tag::DumpShape(VXFlintShape& shape) {
    const unsigned int start = m_ShapeBytes->GetPosition();
    VXIgnore(shape.ShapeRecords.DumpToStream(*m_ShapeBytes));  // a list with a gap goes out up to there
    VXIgnore(m_ShapeBytes->FlushBits());  // fails for want of memory alone, which the stream remembers
    return m_ShapeBytes->GetPosition() - start;
}

VXErrorCodeEnum VXSwfDefineFont2Tag::LoadLayout(VXBitStream& in) {
    VX_RETURN_IF_FAILED(VXReadWord(in, m_Ascent));
    VX_RETURN_IF_FAILED(VXReadWord(in, m_Descent));
    VX_RETURN_IF_FAILED(VXReadWord(in, m_Leading));
    if (m_NumGlyphs == 0) return kVXSuccess;
    VX_RETURN_IF_FAILED(
        LoadTable(m_AdvanceTable, m_NumGlyphs, [&](short& advance) { return VXReadWord(in, advance); }));
    return LoadTable(m_BoundsTable, m_NumGlyphs,
                     [&](VXFlintRectangle& bounds) { return bounds.LoadFromStream(in); });
}

VXErrorCodeEnum VXSwfDefineFont2Tag::DumpLayout(VXBitStream& body) {
    // Kept: twenty times what a load stores, cut to 16 bits.
    VX_RETURN_IF_FAILED(VXWriteTwipsWord(body, m_Ascent));
    VX_RETURN_IF_FAILED(VXWriteTwipsWord(body, m_Descent));
    VX_RETURN_IF_FAILED(VXWriteTwipsWord(body, m_Leading));
    VX_RETURN_IF_FAILED(DumpTable(m_AdvanceTable, m_NumGlyphs, [&](short advance) {
        return body.WriteWord(static_cast<unsigned short>(advance));
    }));
    return DumpTable(m_BoundsTable, m_NumGlyphs,
                     [&](const VXFlintRectangle& bounds) { return bounds.DumpToStream(body); });
}

VXErrorCodeEnum VXSwfDefineFont2Tag::DumpToStream(VXBitStream& out) {
    VXNestedStream shapes(out);
    m_ShapeBytes = &shapes;
    if (m_FontKind == kGlyphFont) {
        UpdateForGlyphFont();
        FillDefineFont2Tables();
    } else {
        for (VXFlintShape& shape : m_GlyphShapes) DumpShape(shape);
    }
    VXNestedStream body(out);
    BeginBody(body);
    const VXErrorCodeEnum result = DumpFields(body, shapes);
    // Kept: the other way round than the manager has its arguments.
    VXFontPublishManager::RemoveFontTag(m_FontName, m_Italic, m_Bold);
    VX_RETURN_IF_FAILED(result);
    return DumpBody(out, body);
}

void VXSwfDefineFont2Tag::SetFont(const VXString& name, short bold, short italic) {
    m_ShiftJIS = 0;
    m_LanguageCode = 1;
    m_NumGlyphs = 0;
    m_Italic = italic;
    m_Bold = bold;
    m_FontName = name;
    VXFontInfo info;
    VXFontUtils::GetFontInfo(m_FontName, &info);
    if (info.m_IsDoubleByte != 0) {
        m_ShiftJIS = 1;
        m_ANSI = 0;
    }
}

VXErrorCodeEnum VXSwfDefineFont2Tag::CreateDeviceFont(const VXString& name, short bold, short italic) {
    m_FontKind = kDeviceFont;
    m_HasLayout = 0;
    m_SmallText = 0;
    m_ANSI = 1;
    m_WideOffsets = 0;
    m_WideCodes = 0;
    SetFont(name, bold, italic);
    return kVXSuccess;
}

VXErrorCodeEnum VXSwfDefineFont2Tag::CreateGlyphFont(const VXString& name, short bold, short italic) {
    m_FontKind = kGlyphFont;
    m_HasLayout = 1;
    m_SmallText = 1;
    m_ANSI = 0;
    m_WideOffsets = 1;
    m_WideCodes = 1;
    m_Ascent = 0;
    m_Descent = 0;
    m_Leading = 0;
    SetFont(name, bold, italic);
    m_NameLength = static_cast<unsigned char>(m_FontName.size());
    return kVXSuccess;
}

int VXSwfDefineFont2Tag::GetIndexOfChar(unsigned short c) const {
    return static_cast<int>(m_GlyphText.find(c, 0));
}

VXReal VXSwfDefineFont2Tag::GetCharWidthW(int index) const {
    if (index < 0 || static_cast<std::size_t>(index) >= m_BoundsTable.size()) return 0.0;
    return m_BoundsTable[static_cast<std::size_t>(index)].XMax;
}
