#pragma once

#include "framework/VXSwfControlTag.h"
#include "graphics/VXFlintRGB.h"

/// The colour behind everything.
///
///     type 9:  RGB
///
/// Built by code only: in a loaded movie the type stays raw. A colour that was given with `UseAlpha` 1 takes
/// its alpha byte to the wire.
class VXSWF_API VXSwfSetBackgroundColorTag : public VXSwfControlTag {
public:
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    ~VXSwfSetBackgroundColorTag() override;
    VXErrorCodeEnum LoadDataFromStream(VXBitStream& in) override;

    void GetColor(VXFlintRGB& color) const { color = Color; }
    void SetRGBColor(const VXFlintRGB& color) { Color = color; }

private:
    friend class VXSwfTagFactory;
    explicit VXSwfSetBackgroundColorTag(enuTagType type);

    VXFlintRGB Color;
};
