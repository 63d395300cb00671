#pragma once

#include "framework/VXSwfControlTag.h"

/// How the player smooths the glyphs of a text, or of all text in a font.
///
///     type 74:  TextId u16, UseType ub[2], GridFit ub[3], ub[3] = 0, Thickness u32, Sharpness u32, u8 = 0
///
/// Built by code only: in a loaded movie the type stays raw. One that was made by code and then loaded keeps
/// the body and leaves the fields alone, and a dump writes the fields.
class VXSWF_API VXSwfCSMTextSettingTag : public VXSwfControlTag {
public:
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    ~VXSwfCSMTextSettingTag() override;

    // A value wider than its bits spoils the bits in front.

    unsigned short m_TextId = 0;   ///< of a text or a font
    unsigned char m_UseType = 1;   ///< 0 the system's smoothing, 1 the player's
    unsigned char m_GridFit = 2;   ///< 0 none, 1 to pixels, 2 to parts of pixels
    unsigned int m_Thickness = 0;  ///< bits of a float
    unsigned int m_Sharpness = 0;  ///< bits of a float

private:
    friend class VXSwfTagFactory;
    explicit VXSwfCSMTextSettingTag(enuTagType type);
};
