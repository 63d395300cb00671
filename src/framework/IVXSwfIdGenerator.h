#pragma once

#include "platform/VXExport.h"
#include "platform/VXTypes.h"

/// What a character ID is wanted for. A host may keep fixed IDs for the component kinds.
enum tVXSwfReservedIDEnum : int {
    kVXSwfOrdinaryId = -1,
    kVXSwfScrollBarId = 3,
    kVXSwfRadioButtonId = 4,
    kVXSwfComboBoxId = 5,
    kVXSwfButtonId = 6,
    kVXSwfTextInputId = 7,
    kVXSwfTextAreaId = 8,
    kVXSwfHotSpotAnimId = 9,
    kVXSwfHotSpotReviewAnimId = 10,
};

/// Hands out character IDs that are free in a movie. The operations stand in slot order, which hosts rely on.
class VXSWF_API IVXSwfIdGenerator {
public:
    static constexpr unsigned short kNoId = 65535;

    virtual ~IVXSwfIdGenerator() = default;
    /// A free ID, or 65535 for none.
    virtual unsigned short GetId(tVXSwfReservedIDEnum reserved) = 0;
    /// The same through an argument; 0 for good.
    virtual VXErrorCodeEnum GetId(unsigned short& id, tVXSwfReservedIDEnum reserved) = 0;
    /// Nothing in the library calls this.
    virtual void Reset() {}
};
