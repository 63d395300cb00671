#include "text/VXSwfCSMTextSettingTag.h"

#include "bitstream/VXBitRun_p.h"

VXSwfCSMTextSettingTag::VXSwfCSMTextSettingTag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfCSMTextSettingTag::~VXSwfCSMTextSettingTag() = default;

VXErrorCodeEnum VXSwfCSMTextSettingTag::DumpFields(VXBitStream& body) const {
    VX_RETURN_IF_FAILED(body.WriteWord(m_TextId));
    VXBitRun run(body);
    run.Add(m_UseType, 2);
    run.Add(m_GridFit, 3);
    VX_RETURN_IF_FAILED(run.Finish());
    VX_RETURN_IF_FAILED(body.WriteDWord(m_Thickness));
    VX_RETURN_IF_FAILED(body.WriteDWord(m_Sharpness));
    return body.WriteByte(0);
}

VXErrorCodeEnum VXSwfCSMTextSettingTag::DumpToStream(VXBitStream& out) {
    VXBitStream body;
    VX_RETURN_IF_FAILED(DumpFields(body));
    return DumpBody(out, body);
}
