#include "scripting/VXSwfDoActionTag.h"

VXSwfDoActionTag::VXSwfDoActionTag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfDoActionTag::~VXSwfDoActionTag() = default;

VXErrorCodeEnum VXSwfDoActionTag::LoadDataFromStream(VXBitStream& in) {
    return m_ActionRecords.LoadFromStream(in);
}

VXErrorCodeEnum VXSwfDoActionTag::DumpToStream(VXBitStream& out) {
    return DumpFields(out, [this](VXBitStream& body) { return m_ActionRecords.DumpToStream(body); });
}

VXSwfTag* VXSwfDoActionTag::Copy() {
    return CopyThroughWire(VXSwfTagFactory::CreateTagOfType(VXSwfTagFactory::TAG_DOACTION, 0, 0));
}

VXErrorCodeEnum VXSwfDoActionTag::PushActionRecord(VXFlintActionRecord* record) {
    m_ActionRecords.PushActionRecord(record);
    return kVXSuccess;
}
