#pragma once

#include "platform/VXExport.h"

/// A part of the host that is loaded on its own, started once and stopped once.
///
/// Eleven virtual operations, in the order that hosts rely on. Slots 5 to 11 are called by hosts for purposes
/// of their own; a component without a use for them answers 0 from each.
class VXPLATFORM_API IVXComponent {
public:
    virtual ~IVXComponent();
    /// Tells the host's components apart.
    virtual int GetComponentCode() = 0;
    /// 0 for good. Comes before any other use of the component, from one thread.
    virtual int Startup() = 0;
    /// 0 for good. Undoes `Startup`.
    virtual int Shutdown() = 0;
    virtual int HostSlot5() = 0;
    virtual int HostSlot6() = 0;
    virtual int HostSlot7() = 0;
    virtual int HostSlot8() = 0;
    virtual int HostSlot9() { return 0; }
    virtual int HostSlot10() { return 0; }
    virtual int HostSlot11() { return 0; }
};
