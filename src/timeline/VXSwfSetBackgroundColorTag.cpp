#include "timeline/VXSwfSetBackgroundColorTag.h"

VXSwfSetBackgroundColorTag::VXSwfSetBackgroundColorTag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfSetBackgroundColorTag::~VXSwfSetBackgroundColorTag() = default;

VXErrorCodeEnum VXSwfSetBackgroundColorTag::LoadDataFromStream(VXBitStream& in) {
    Color.UseAlpha = 0;
    return Color.LoadFromStream(in);
}

VXErrorCodeEnum VXSwfSetBackgroundColorTag::DumpToStream(VXBitStream& out) {
    VXBitStream body;
    VX_RETURN_IF_FAILED(Color.DumpToStream(body));
    return DumpBody(out, body);
}
