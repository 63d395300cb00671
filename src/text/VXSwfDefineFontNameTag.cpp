#include "text/VXSwfDefineFontNameTag.h"

VXSwfDefineFontNameTag::VXSwfDefineFontNameTag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfDefineFontNameTag::~VXSwfDefineFontNameTag() = default;

VXErrorCodeEnum VXSwfDefineFontNameTag::DumpToStream(VXBitStream& out) {
    return DumpFields(out, [this](VXBitStream& body) -> VXErrorCodeEnum {
        VX_RETURN_IF_FAILED(body.WriteWord(m_FontId));
        VX_RETURN_IF_FAILED(body.WriteVXString(m_FontName));
        return body.WriteVXString(m_FontCopyright);
    });
}

VXErrorCodeEnum VXSwfDefineFontNameTag::AddFontInfo(unsigned short id, const VXString& name,
                                                    const VXString& copyright) {
    m_FontId = id;
    m_FontName = name;
    m_FontCopyright = copyright;
    return kVXSuccess;
}
