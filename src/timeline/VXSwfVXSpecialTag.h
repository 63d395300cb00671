#pragma once

#include "framework/VXSwfControlTag.h"
#include "memory/VXByteBlock.h"

/// A host's private bytes. What each type means lies with the host.
///
///     types 996 to 999:  bytes
///
/// Built by code only: in a loaded movie the types stay raw. Copy construction shares the bytes, `Copy`
/// duplicates them.
class VXSWF_API VXSwfVXSpecialTag : public VXSwfControlTag {
public:
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    VXSwfTag* Copy() override;
    ~VXSwfVXSpecialTag() override;

    /// Copies `size` bytes, which may be the tag's own; 0 bytes change nothing. 1 for null with a size, which
    /// changes nothing either.
    VXErrorCodeEnum SetSpecificData(const unsigned char* data, unsigned int size);
    const unsigned char* GetSpecificData() const { return SpecificData.GetBytes(); }
    unsigned int GetSpecificDataSize() const { return SpecificData.GetSize(); }

private:
    friend class VXSwfTagFactory;
    explicit VXSwfVXSpecialTag(enuTagType type);

    VXByteBlock SpecificData;
};
