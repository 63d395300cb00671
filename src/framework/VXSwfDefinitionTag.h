#pragma once

#include "framework/VXSwfTag.h"

/// A tag that defines a character. The body begins with its ID:
///
///     CharacterId u16
///     fields
///
/// `GetData`, `GetTagLen` and the stream that `LoadDataFromStream` gets begin behind the ID.
class VXSWF_API VXSwfDefinitionTag : public VXSwfTag {
public:
    /// As the base; 1 also for a body that has no room for an ID. The ID is taken also when the fields fail.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in) override;
    using VXSwfTag::DumpToStream;
    void SetCharacterId(unsigned short id) override;
    unsigned short GetCharacterId() const override;
    ~VXSwfDefinitionTag() override;
    /// Adds " - Id=" and the ID.
    void GetTextInfo(VXString& text) override;
    unsigned char* GetData() override;
    unsigned int GetTagLen() override;
    /// Slot 18. Puts the ID into the first two bytes of `body`, which its maker left free, lends it and
    /// writes header and bytes to `out`. A null `body` stands for the body as loaded, behind the ID.
    ///
    /// Kept: a failed write leaves the body lent; `DumpBody` takes it back.
    virtual VXErrorCodeEnum DumpToStream(VXBitStream& out, VXBitStream* body);

protected:
    explicit VXSwfDefinitionTag(enuTagType type, short parsing = 1);
    VXSwfDefinitionTag(const VXSwfDefinitionTag&) = default;
    VXSwfDefinitionTag& operator=(const VXSwfDefinitionTag&) = default;

    VXErrorCodeEnum WriteCharacterID(VXBitStream& out);
    /// Leaves room for the ID at the start of a body that is about to be written.
    static void BeginBody(VXBitStream& body);
    /// The common end of every dump: flushes `body`, which `BeginBody` began, and goes through slot 18. The
    /// body kept from the load is in force again on every way out.
    VXErrorCodeEnum DumpBody(VXBitStream& out, VXBitStream& body);
    /// A dump that makes the body anew: `BeginBody`, `writeFields(body)` and `DumpBody`.
    template <typename WriteFields>
    VXErrorCodeEnum DumpFields(VXBitStream& out, const WriteFields& writeFields) {
        VXNestedStream body(out);
        BeginBody(body);
        VX_RETURN_IF_FAILED(writeFields(body));
        return DumpBody(out, body);
    }

private:
    friend class VXSwfTagFactory;

    unsigned short m_CharacterId = 0;
};
