#include "scripting/VXSwfActionRecordContainer.h"

VXSwfActionRecordContainer::~VXSwfActionRecordContainer() = default;

VXSwfScriptTag::VXSwfScriptTag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfScriptTag::~VXSwfScriptTag() = default;

VXSwfTag* VXSwfScriptTag::Copy() {
    return CopyThroughWire(VXSwfTagFactory::CreateTagOfType(GetTagType(), 0, 0));
}

VXErrorCodeEnum VXSwfScriptTag::PushActionRecord(VXFlintActionRecord* record) {
    m_ActionRecords.PushActionRecord(record);
    return kVXSuccess;
}
