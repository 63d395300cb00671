#pragma once

#include <map>

#include "platform/IVXComponent.h"
#include "platform/VXExport.h"

/// The library as a component of its host. `Startup` comes before any use of fonts, `Shutdown` at the end.
/// Both may be called again, and in any order; neither has anything to report. Font tags that a movie holds
/// outlive a shut-down.
class VXSWF_API VXSwfParserComponent : public IVXComponent {
public:
    using ColorMap = std::map<unsigned int, unsigned char>;

    // The virtual operations stand in slot order.

    ~VXSwfParserComponent() override;
    /// 19.
    int GetComponentCode() override;
    /// Connects the type engine and fills the map of standard colours. Always 0.
    int Startup() override;
    /// Forgets the fonts that were handed out and disconnects the type engine. Always 0.
    int Shutdown() override;
    int HostSlot5() override;
    int HostSlot6() override;
    int HostSlot7() override;
    int HostSlot8() override;

    /// From each standard colour to its number, the lowest where a colour is repeated; empty before the first
    /// start. Nothing in the library reads it.
    static const ColorMap& GetColorMap();
};

/// The one component of the process, made at the first call and never freed. The first call must come from
/// one thread.
extern "C" VXSWF_API IVXComponent* GetSwfParserComponent();
