#include "timeline/VXSwfFreeCharacterTag.h"

VXSwfFreeCharacterTag::VXSwfFreeCharacterTag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfFreeCharacterTag::~VXSwfFreeCharacterTag() = default;

VXErrorCodeEnum VXSwfFreeCharacterTag::DumpToStream(VXBitStream& out) {
    VXBitStream body;
    VX_RETURN_IF_FAILED(body.WriteWord(CharacterId));
    return DumpBody(out, body);
}

unsigned short VXSwfFreeCharacterTag::GetReferencedID() const { return CharacterId; }

void VXSwfFreeCharacterTag::SetReferencedID(unsigned short id) { CharacterId = id; }
