#pragma once

#include "platform/VXExport.h"
#include "platform/VXTypes.h"

class VXFlintActionRecord;

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
