#pragma once

#include "framework/VXSwfControlTag.h"

/// Takes an object off the display list.
///
///     type 5:   CharacterId u16, Depth u16
///     type 28:  Depth u16
class VXSWF_API VXSwfRemoveObjectTag : public VXSwfControlTag {
public:
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    /// A new tag of the same type with both fields, which the caller owns.
    VXSwfTag* Copy() override;
    ~VXSwfRemoveObjectTag() override;
    void GetTextInfo(VXString& text) override;
    /// 1 when the body ends early; fields read by then keep their new values.
    VXErrorCodeEnum LoadDataFromStream(VXBitStream& in) override;

    /// Higher depths cover lower ones.
    unsigned short GetDepth() const { return Depth; }
    void SetDepth(unsigned short depth) { Depth = depth; }

    unsigned short CharacterId = 0;  ///< on the wire for type 5 only

private:
    friend class VXSwfTagFactory;
    explicit VXSwfRemoveObjectTag(enuTagType type);

    unsigned short Depth = 0;
};
