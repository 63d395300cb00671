#include "scripting/VXSwfDoActionTag.h"

VXSwfDoActionTag::VXSwfDoActionTag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfDoActionTag::~VXSwfDoActionTag() = default;

VXErrorCodeEnum VXSwfDoActionTag::LoadDataFromStream(VXBitStream& in) {
    return m_ActionRecords.LoadFromStream(in);
}

VXErrorCodeEnum VXSwfDoActionTag::DumpFields(VXBitStream& body) const {
    return m_ActionRecords.DumpToStream(body);
}

VXErrorCodeEnum VXSwfDoActionTag::DumpToStream(VXBitStream& out) {
    VXBitStream body;
    VX_RETURN_IF_FAILED(DumpFields(body));
    return DumpBody(out, body);
}

VXSwfTag* VXSwfDoActionTag::Copy() {
    return CopyThroughWire(VXSwfTagFactory::CreateTagOfType(VXSwfTagFactory::TAG_DOACTION, 0, 0));
}

VXErrorCodeEnum VXSwfDoActionTag::PushActionRecord(VXFlintActionRecord* record) {
    m_ActionRecords.PushActionRecord(record);
    return kVXSuccess;
}
