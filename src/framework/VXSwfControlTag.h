#pragma once

#include "framework/VXSwfTag.h"

/// A tag that defines no character.
class VXSWF_API VXSwfControlTag : public VXSwfTag {
public:
    ~VXSwfControlTag() override;

    /// Does nothing.
    void SetCharacterId(unsigned short id) override;
    /// Always 0.
    unsigned short GetCharacterId() const override;
    void UpdateReferenceIDs(VXFlintIDMap* map) override;

protected:
    explicit VXSwfControlTag(enuTagType type, short parsing = 1);
    VXSwfControlTag(const VXSwfControlTag&) = default;
    VXSwfControlTag& operator=(const VXSwfControlTag&) = default;

    /// The common end of every dump: flushes `body` and writes header and bytes to `out`. The tag has the length
    /// of `body` afterwards, and the body kept from the load stays in force.
    VXErrorCodeEnum DumpBody(VXBitStream& out, VXBitStream& body);
    /// A dump that makes the body anew: `writeFields(body)` and `DumpBody`.
    template <typename WriteFields>
    VXErrorCodeEnum DumpFields(VXBitStream& out, const WriteFields& writeFields) {
        VXNestedStream body(out);
        VX_RETURN_IF_FAILED(writeFields(body));
        return DumpBody(out, body);
    }
};
