#pragma once

#include "framework/VXSwfControlTag.h"
#include "platform/VXString.h"

/// The full name of a font and its copyright notice.
///
///     type 88:  FontId u16, FontName str, FontCopyright str
///
/// Built by code only: in a loaded movie the type stays raw. One that was made by code and then loaded keeps
/// the body and leaves the fields alone, and a dump writes the fields. Deleted through
/// `VXSwfTagFactory::DeleteTag` alone.
class VXSWF_API VXSwfDefineFontNameTag : public VXSwfControlTag {
public:
    /// Text outside ASCII is cut short, as `VXBitStream::WriteVXString` cuts it.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;

    /// Always 0.
    VXErrorCodeEnum AddFontInfo(unsigned short id, const VXString& name, const VXString& copyright);

    unsigned short m_FontId = 0xFFFF;
    VXString m_FontName;
    VXString m_FontCopyright;

private:
    friend class VXSwfTagFactory;
    explicit VXSwfDefineFontNameTag(enuTagType type);
    ~VXSwfDefineFontNameTag() override;
};
