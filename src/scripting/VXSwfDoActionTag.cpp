#include "scripting/VXSwfDoActionTag.h"

VXSwfDoActionTag::VXSwfDoActionTag(enuTagType type) : VXSwfScriptTag(type) {}

VXSwfDoActionTag::~VXSwfDoActionTag() = default;

VXErrorCodeEnum VXSwfDoActionTag::LoadDataFromStream(VXBitStream& in) {
    return m_ActionRecords.LoadFromStream(in);
}

VXErrorCodeEnum VXSwfDoActionTag::DumpToStream(VXBitStream& out) {
    return DumpFields(out, [this](VXBitStream& body) { return m_ActionRecords.DumpToStream(body); });
}
