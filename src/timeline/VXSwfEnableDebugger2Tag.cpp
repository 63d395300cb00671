#include "timeline/VXSwfEnableDebugger2Tag.h"

VXSwfEnableDebugger2Tag::VXSwfEnableDebugger2Tag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfEnableDebugger2Tag::~VXSwfEnableDebugger2Tag() = default;

VXErrorCodeEnum VXSwfEnableDebugger2Tag::DumpToStream(VXBitStream& out) {
    return DumpFields(out, [](VXBitStream& body) {
        VX_RETURN_IF_FAILED(body.WriteWord(0));
        return body.WriteByte(0);
    });
}
