#include "scripting/VXSwfDoInitActionTag.h"

VXSwfDoInitActionTag::VXSwfDoInitActionTag(enuTagType type) : VXSwfScriptTag(type) {}

VXSwfDoInitActionTag::~VXSwfDoInitActionTag() = default;

VXErrorCodeEnum VXSwfDoInitActionTag::LoadDataFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(in.ReadWord(m_SpriteId));
    return m_ActionRecords.LoadFromStream(in);
}

VXErrorCodeEnum VXSwfDoInitActionTag::DumpToStream(VXBitStream& out) {
    return DumpFields(out, [this](VXBitStream& body) {
        VX_RETURN_IF_FAILED(body.WriteWord(m_SpriteId));
        return m_ActionRecords.DumpToStream(body);
    });
}

unsigned short VXSwfDoInitActionTag::GetReferencedID() const { return m_SpriteId; }

void VXSwfDoInitActionTag::SetReferencedID(unsigned short id) { m_SpriteId = id; }

VXErrorCodeEnum VXSwfDoInitActionTag::GetSpriteReferenceID(unsigned short& id) const {
    id = m_SpriteId;
    return kVXSuccess;
}

VXErrorCodeEnum VXSwfDoInitActionTag::SetSpriteReferenceID(unsigned short id) {
    m_SpriteId = id;
    return kVXSuccess;
}
