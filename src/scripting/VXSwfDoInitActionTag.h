#pragma once

#include "scripting/VXSwfActionRecordContainer.h"

/// A script that initialises a sprite, once, before the sprite is first shown.
///
///     type 59:  m_SpriteId u16, VXFlintActionRecords
class VXSWF_API VXSwfDoInitActionTag : public VXSwfScriptTag {
public:
    /// Regenerates header and body, so that a changed list has the right length with no further step.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    /// The sprite.
    unsigned short GetReferencedID() const override;
    void SetReferencedID(unsigned short id) override;
    ~VXSwfDoInitActionTag() override;
    /// 1 when the sprite's ID is missing or the list is cut short; the actions read by then stay.
    VXErrorCodeEnum LoadDataFromStream(VXBitStream& in) override;

    /// Always 0.
    VXErrorCodeEnum GetSpriteReferenceID(unsigned short& id) const;
    /// Always 0.
    VXErrorCodeEnum SetSpriteReferenceID(unsigned short id);

    unsigned short m_SpriteId = 0;

private:
    friend class VXSwfTagFactory;
    explicit VXSwfDoInitActionTag(enuTagType type);
};
