#pragma once

#include "framework/VXSwfControlTag.h"
#include "scripting/VXFlintActionRecords.h"

/// Whatever takes actions one by one: a tag that holds a script.
class VXSWF_API VXSwfActionRecordContainer {
public:
    // The virtual operations stand in slot order.

    /// Appends `record`, which the container then owns. Null is ignored. Always 0.
    virtual VXErrorCodeEnum PushActionRecord(VXFlintActionRecord* record) = 0;
    virtual ~VXSwfActionRecordContainer();

protected:
    VXSwfActionRecordContainer() = default;
    VXSwfActionRecordContainer(const VXSwfActionRecordContainer&) = default;
    VXSwfActionRecordContainer& operator=(const VXSwfActionRecordContainer&) = default;
};

/// What the tags of scripts share: their actions. Bytes behind the end of the list are not kept.
class VXSWF_API VXSwfScriptTag : public VXSwfControlTag, public VXSwfActionRecordContainer {
public:
    /// A tag of the same type with actions of its own.
    VXSwfTag* Copy() override;
    ~VXSwfScriptTag() override;

    VXErrorCodeEnum PushActionRecord(VXFlintActionRecord* record) override;

    VXFlintActionRecords m_ActionRecords;

protected:
    explicit VXSwfScriptTag(enuTagType type);
    VXSwfScriptTag(const VXSwfScriptTag&) = default;
    VXSwfScriptTag& operator=(const VXSwfScriptTag&) = default;
};
