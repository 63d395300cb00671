#pragma once

#include "platform/VXExport.h"
#include "platform/VXTypes.h"

/// Place and size of an object on the host's stage, in pixels.
///
/// The library calls these operations by their slot: the extents must be the third and the fourth virtual
/// operation. The destructor is therefore declared last, and nothing may be put in front of it.
class VXPLATFORM_API VXSizeNPositionData {
public:
    virtual VXReal GetXPosition() const = 0;
    virtual VXReal GetYPosition() const = 0;
    virtual VXReal GetXExtent() const = 0;
    virtual VXReal GetYExtent() const = 0;
    virtual ~VXSizeNPositionData();
};
