#pragma once

#include "framework/VXSwfControlTag.h"

/// Tells a player that a character is not needed any more.
///
///     type 3:  CharacterId u16
///
/// Built by code only: in a loaded movie the type stays raw.
///
/// Kept: a load into an object of this class reads nothing, so that its dump names the character that was set
/// by code, and character 0 otherwise.
class VXSWF_API VXSwfFreeCharacterTag : public VXSwfControlTag {
public:
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    unsigned short GetReferencedID() const override;
    void SetReferencedID(unsigned short id) override;
    ~VXSwfFreeCharacterTag() override;

private:
    friend class VXSwfTagFactory;
    explicit VXSwfFreeCharacterTag(enuTagType type);

    unsigned short CharacterId = 0;
};
