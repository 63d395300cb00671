#pragma once

#include "framework/VXSwfControlTag.h"
#include "graphics/VXFlintCxForm.h"
#include "graphics/VXFlintMatrix.h"

/// Puts a character on the display list.
///
///     type 4:  CharacterId u16, Depth u16, Matrix VXFlintMatrix, [CxForm VXFlintCxForm]
///
/// The colour transform has no alpha terms and may be missing in a file; a dump always writes it. The factory
/// makes this class for loaded tags only.
class VXSWF_API VXSwfPlaceObjectTag : public VXSwfControlTag {
public:
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    /// Kept: null. The factory makes no tag of this class by code, so there is nothing to copy into.
    VXSwfTag* Copy() override;
    /// Kept: the character that is placed counts as the tag's own, not as one that it refers to. A merge
    /// therefore does not renumber it.
    void SetCharacterId(unsigned short id) override;
    unsigned short GetCharacterId() const override;
    ~VXSwfPlaceObjectTag() override;
    VXErrorCodeEnum LoadDataFromStream(VXBitStream& in) override;

    unsigned short GetDepth() const { return Depth; }
    void SetDepth(unsigned short depth) { Depth = depth; }
    /// Copies every field; `HasAlpha` decides whether alpha terms go to the wire, where a player does not
    /// expect them. Null does nothing.
    void SetCxForm(const VXFlintCxForm* cxForm);

    VXFlintMatrix Matrix;
    VXFlintCxForm CxForm;  ///< `HasAlpha` starts at 0

private:
    friend class VXSwfTagFactory;
    explicit VXSwfPlaceObjectTag(enuTagType type);

    unsigned short Depth = 0;
    unsigned short CharacterId = 0;
};
