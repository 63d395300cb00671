#include "framework/VXSwfDefinitionTag.h"

#include <algorithm>
#include <string>

namespace {

constexpr unsigned int kIdSize = 2;

}  // namespace

VXSwfDefinitionTag::VXSwfDefinitionTag(enuTagType type, short parsing) : VXSwfTag(type, parsing) {}

VXSwfDefinitionTag::~VXSwfDefinitionTag() = default;

VXErrorCodeEnum VXSwfDefinitionTag::LoadFromStream(VXBitStream& in) {
    const VXErrorCodeEnum result = VXSwfTag::LoadFromStream(in);
    const unsigned char* word = GetFirstWord();
    if (word == nullptr) return result != kVXSuccess ? result : kVXFailure;
    m_CharacterId = static_cast<unsigned short>(word[0] | word[1] << 8);
    return result;
}

void VXSwfDefinitionTag::SetCharacterId(unsigned short id) { m_CharacterId = id; }

unsigned short VXSwfDefinitionTag::GetCharacterId() const { return m_CharacterId; }

void VXSwfDefinitionTag::GetTextInfo(VXString& text) {
    VXSwfTag::GetTextInfo(text);
    text += VXString(std::string(" - Id=").append(std::to_string(GetCharacterId())).c_str());
}

unsigned char* VXSwfDefinitionTag::GetData() {
    unsigned char* word = GetFirstWord();
    return word == nullptr ? nullptr : word + kIdSize;
}

unsigned int VXSwfDefinitionTag::GetTagLen() {
    const unsigned int length = VXSwfTag::GetTagLen();
    return length < kIdSize ? 0 : length - kIdSize;
}

VXErrorCodeEnum VXSwfDefinitionTag::DumpToStream(VXBitStream& out, VXBitStream* body) {
    if (body == nullptr) {
        VXNestedStream own(out);
        VX_RETURN_IF_FAILED(WriteCharacterID(own));
        VX_RETURN_IF_FAILED(own.Write(GetBody(), std::min(VXSwfTag::GetTagLen(), GetBodySize())));
        return DumpHdrAndBody(out, own);
    }
    body->SetPosition(0);
    VX_RETURN_IF_FAILED(WriteCharacterID(*body));
    const VXErrorCodeEnum result = DumpHdrAndBody(out, *body);
    if (result != kVXSuccess) SetData(body->GetBuffer());  // Kept: it stays lent after a failed write.
    return result;
}

VXErrorCodeEnum VXSwfDefinitionTag::WriteCharacterID(VXBitStream& out) {
    return out.WriteWord(GetCharacterId());
}

void VXSwfDefinitionTag::BeginBody(VXBitStream& body) { body.SetPosition(kIdSize); }

VXErrorCodeEnum VXSwfDefinitionTag::DumpBody(VXBitStream& out, VXBitStream& body) {
    VX_RETURN_IF_FAILED(body.FlushBits());
    if (body.HasFailed()) return kVXFailure;
    struct Unwound {
        VXSwfDefinitionTag& tag;
        const Loan* mark = tag.GetLoan();
        ~Unwound() { tag.DropLoans(mark); }
    } const unwound{*this};
    return DumpToStream(out, &body);
}
