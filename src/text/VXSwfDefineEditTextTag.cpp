#include "text/VXSwfDefineEditTextTag.h"

#include "bitstream/VXBitRun_p.h"
#include "framework/VXFlintIDMap.h"
#include "graphics/VXTwips.h"

namespace {

using Tag = VXSwfDefineEditTextTag;

// In the order of the wire.
constexpr short Tag::*kFlags[] = {
    &Tag::m_HasText,      &Tag::m_WordWrap,     &Tag::m_Multiline,    &Tag::m_Password,
    &Tag::m_ReadOnly,     &Tag::m_HasTextColor, &Tag::m_HasMaxLength, &Tag::m_HasFont,
    &Tag::m_HasFontClass, &Tag::m_AutoSize,     &Tag::m_HasLayout,    &Tag::m_NoSelect,
    &Tag::m_Border,       &Tag::m_WasStatic,    &Tag::m_HTML,         &Tag::m_UseOutlines,
};

}  // namespace

VXSwfDefineEditTextTag::VXSwfDefineEditTextTag(enuTagType type) : VXSwfDefinitionTag(type) {}

VXSwfDefineEditTextTag::~VXSwfDefineEditTextTag() = default;

VXErrorCodeEnum VXSwfDefineEditTextTag::LoadDataFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(m_Bounds.LoadFromStream(in));
    for (short Tag::*flag : kFlags) VX_RETURN_IF_FAILED(in.ReadVXBool16(this->*flag));
    if (m_HasFont != 0) {
        VX_RETURN_IF_FAILED(in.ReadWord(m_FontId));
        VX_RETURN_IF_FAILED(VXReadTwipsWord(in, m_FontHeight));
    }
    if (m_HasTextColor != 0) VX_RETURN_IF_FAILED(m_TextColor.LoadFromStream(in));
    if (m_HasMaxLength != 0) VX_RETURN_IF_FAILED(in.ReadWord(m_MaxLength));
    if (m_HasLayout != 0) {
        VX_RETURN_IF_FAILED(in.ReadByte(m_Align));
        VX_RETURN_IF_FAILED(in.ReadWord(m_LeftMargin));
        VX_RETURN_IF_FAILED(in.ReadWord(m_RightMargin));
        VX_RETURN_IF_FAILED(in.ReadWord(m_Indent));
        VX_RETURN_IF_FAILED(in.ReadWord(m_Leading));
    }
    VX_RETURN_IF_FAILED(in.ReadVXString(m_VariableName));
    return m_HasText != 0 ? in.ReadVXString(m_InitialText) : kVXSuccess;
}

VXErrorCodeEnum VXSwfDefineEditTextTag::DumpToStream(VXBitStream& out) {
    return DumpFields(out, [this](VXBitStream& body) -> VXErrorCodeEnum {
        VX_RETURN_IF_FAILED(m_Bounds.DumpToStream(body));
        VXBitRun run(body);
        for (short Tag::*flag : kFlags) run.AddFlag(this->*flag);
        VX_RETURN_IF_FAILED(run.Finish());
        if (m_HasFont != 0) {
            VX_RETURN_IF_FAILED(body.WriteWord(m_FontId));
            VX_RETURN_IF_FAILED(VXWriteTwipsWord(body, m_FontHeight));
        }
        if (m_HasTextColor != 0) VX_RETURN_IF_FAILED(m_TextColor.DumpToStream(body));
        if (m_HasMaxLength != 0) VX_RETURN_IF_FAILED(body.WriteWord(m_MaxLength));
        if (m_HasLayout != 0) {
            VX_RETURN_IF_FAILED(body.WriteByte(m_Align));
            VX_RETURN_IF_FAILED(body.WriteWord(m_LeftMargin));
            VX_RETURN_IF_FAILED(body.WriteWord(m_RightMargin));
            VX_RETURN_IF_FAILED(body.WriteWord(m_Indent));
            VX_RETURN_IF_FAILED(body.WriteWord(m_Leading));
        }
        VX_RETURN_IF_FAILED(body.WriteVXString(m_VariableName));
        return m_HasText != 0 ? body.WriteVXString(m_InitialText) : kVXSuccess;
    });
}

void VXSwfDefineEditTextTag::UpdateReferenceIDs(VXFlintIDMap* map) {
    if (m_HasFont == 0 || map == nullptr || m_FontId == 0) return;
    m_FontId = map->GetNewId(m_FontId);
}

void VXSwfDefineEditTextTag::SetText(const VXString& text) {
    m_InitialText = text;
    if (!m_InitialText.empty()) m_HasText = 1;
}

void VXSwfDefineEditTextTag::SetColor(const VXFlintRGB& color) {
    m_TextColor = color;
    m_TextColor.UseAlpha = 1;
    m_HasTextColor = 1;
}

void VXSwfDefineEditTextTag::SetFont(unsigned short id) {
    m_FontId = id;
    m_HasFont = 1;
}

bool VXSwfDefineEditTextTag::GetFontID(unsigned short& id) const {
    if (m_HasFont != 1) return false;
    id = m_FontId;
    return true;
}
