#include "framework/VXSwfControlTag.h"

#include "framework/VXFlintIDMap.h"

VXSwfControlTag::VXSwfControlTag(enuTagType type, short parsing) : VXSwfTag(type, parsing) {}

VXSwfControlTag::~VXSwfControlTag() = default;

void VXSwfControlTag::SetCharacterId(unsigned short) {}

unsigned short VXSwfControlTag::GetCharacterId() const { return 0; }

void VXSwfControlTag::UpdateReferenceIDs(VXFlintIDMap* map) {
    if (map != nullptr) VXSwfTag::UpdateReferenceIDs(map);
}

VXErrorCodeEnum VXSwfControlTag::DumpBody(VXBitStream& out, VXBitStream& body) {
    VX_RETURN_IF_FAILED(body.FlushBits());
    if (body.HasFailed()) return kVXFailure;
    return DumpHdrAndBody(out, body);
}
