#include "timeline/VXSwfFreeCharacterTag.h"

VXSwfFreeCharacterTag::VXSwfFreeCharacterTag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfFreeCharacterTag::~VXSwfFreeCharacterTag() = default;

VXErrorCodeEnum VXSwfFreeCharacterTag::DumpToStream(VXBitStream& out) {
    return DumpFields(out, [this](VXBitStream& body) { return body.WriteWord(CharacterId); });
}

unsigned short VXSwfFreeCharacterTag::GetReferencedID() const { return CharacterId; }

void VXSwfFreeCharacterTag::SetReferencedID(unsigned short id) { CharacterId = id; }
