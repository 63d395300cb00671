#include "scripting/VXSwfDoABCTag.h"

#include <algorithm>
#include <cstring>

#include "framework/VXMakeTag_p.h"

VXSwfDoABCTag::VXSwfDoABCTag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfDoABCTag::~VXSwfDoABCTag() = default;

VXErrorCodeEnum VXSwfDoABCTag::LoadDataFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(in.ReadDWord(m_Flags));
    VX_RETURN_IF_FAILED(in.ReadVXString(m_Name));
    const std::size_t head = sizeof m_Flags + m_Name.length() + 1;
    m_ABCDataLen = 0;
    if (GetTagLen() <= head) return kVXSuccess;
    const unsigned int length = std::min(GetTagLen() - static_cast<unsigned int>(head), in.GetRemaining());
    m_ABCData.reset(new unsigned char[length]);
    m_ABCDataLen = length;
    return in.Read(m_ABCData.get(), m_ABCDataLen);
}

VXErrorCodeEnum VXSwfDoABCTag::DumpToStream(VXBitStream& out) {
    return DumpFields(out, [this](VXBitStream& body) {
        VX_RETURN_IF_FAILED(body.WriteDWord(m_Flags));
        VX_RETURN_IF_FAILED(body.WriteVXString(m_Name));
        return m_ABCData == nullptr ? kVXSuccess : body.Write(m_ABCData.get(), m_ABCDataLen);
    });
}

VXSwfTag* VXSwfDoABCTag::Copy() {
    auto copy = VXMakeTag<VXSwfDoABCTag>(VXSwfTagFactory::TAG_DOABC);
    if (copy == nullptr) return nullptr;
    copy->m_Flags = m_Flags;
    copy->m_Name = m_Name;
    copy->m_ABCDataLen = m_ABCDataLen;
    if (m_ABCData != nullptr) {
        copy->m_ABCData.reset(new unsigned char[m_ABCDataLen]);
        std::memcpy(copy->m_ABCData.get(), m_ABCData.get(), m_ABCDataLen);
    }
    return copy.release();
}

void VXSwfDoABCTag::SetABCData(unsigned char* data, unsigned int length) {
    // Kept: what is replaced stays with whoever has the pointer, which may be the very same.
    static_cast<void>(m_ABCData.release());
    m_ABCData.reset(data);
    m_ABCDataLen = length;
}
