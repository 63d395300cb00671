#include "timeline/VXSwfSetBackgroundColorTag.h"

VXSwfSetBackgroundColorTag::VXSwfSetBackgroundColorTag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfSetBackgroundColorTag::~VXSwfSetBackgroundColorTag() = default;

VXErrorCodeEnum VXSwfSetBackgroundColorTag::LoadDataFromStream(VXBitStream& in) {
    Color.UseAlpha = 0;
    return Color.LoadFromStream(in);
}

VXErrorCodeEnum VXSwfSetBackgroundColorTag::DumpToStream(VXBitStream& out) {
    return DumpFields(out, [this](VXBitStream& body) { return Color.DumpToStream(body); });
}
