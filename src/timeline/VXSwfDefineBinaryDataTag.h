#pragma once

#include "framework/VXSwfDefinitionTag.h"
#include "memory/VXByteBlock.h"

/// Bytes for scripts to read.
///
///     type 87:  CharacterId u16, reserved u32, bytes
///
/// Built by code only: in a loaded movie the type stays raw. Copies share the bytes.
class VXSWF_API VXSwfDefineBinaryDataTag : public VXSwfDefinitionTag {
public:
    using VXSwfDefinitionTag::DumpToStream;
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    ~VXSwfDefineBinaryDataTag() override;
    /// Takes what the length of the tag says, as far as it is there. 1 without the reserved word, which leaves
    /// the old bytes, and without a byte behind it.
    VXErrorCodeEnum LoadDataFromStream(VXBitStream& in) override;

    /// Takes as many bytes as the whole stream has, from where it stands on. What does not come is zero, up
    /// to 16 MiB or twice what came; beyond that it is left out. 1 for null, which changes nothing.
    VXErrorCodeEnum SetBinaryData(IVXStream* stream);
    const unsigned char* GetBinaryData() const { return BinaryData.GetBytes(); }
    unsigned int GetBinaryDataSize() const { return BinaryData.GetSize(); }

private:
    friend class VXSwfTagFactory;
    explicit VXSwfDefineBinaryDataTag(enuTagType type);

    VXByteBlock BinaryData;
};
