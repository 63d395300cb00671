#include "text/VXSwfCSMTextSettingTag.h"

#include "bitstream/VXBitRun_p.h"

VXSwfCSMTextSettingTag::VXSwfCSMTextSettingTag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfCSMTextSettingTag::~VXSwfCSMTextSettingTag() = default;

VXErrorCodeEnum VXSwfCSMTextSettingTag::DumpToStream(VXBitStream& out) {
    return DumpFields(out, [this](VXBitStream& body) -> VXErrorCodeEnum {
        VX_RETURN_IF_FAILED(body.WriteWord(m_TextId));
        VXBitRun run(body);
        run.Add(m_UseType, 2);
        run.Add(m_GridFit, 3);
        VX_RETURN_IF_FAILED(run.Finish());
        VX_RETURN_IF_FAILED(body.WriteDWord(m_Thickness));
        VX_RETURN_IF_FAILED(body.WriteDWord(m_Sharpness));
        return body.WriteByte(0);
    });
}
