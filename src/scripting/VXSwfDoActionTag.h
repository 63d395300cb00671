#pragma once

#include "scripting/VXSwfActionRecordContainer.h"

/// A script that runs when its frame is shown.
///
///     type 12:  VXFlintActionRecords
class VXSWF_API VXSwfDoActionTag : public VXSwfScriptTag {
public:
    /// Regenerates header and body, so that a changed list has the right length with no further step.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    ~VXSwfDoActionTag() override;
    /// 1 when the list is cut short; the actions read by then stay.
    VXErrorCodeEnum LoadDataFromStream(VXBitStream& in) override;

    /// Stores a pointer to the tag's own list, which goes with the tag. Null is ignored.
    void GetActionRecords(VXFlintActionRecords** out) {
        if (out != nullptr) *out = &m_ActionRecords;
    }

private:
    friend class VXSwfTagFactory;
    explicit VXSwfDoActionTag(enuTagType type);
};
