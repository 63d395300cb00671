#include "framework/VXSwfParserComponent.h"

#include "binding/BNDInitialize.h"
#include "media/VXStandardColors.h"
#include "platform/GetVXBndAddressProc.h"
#include "text/VXFontPublishManager.h"

namespace {

constexpr int kComponentCode = 19;

/// Never destroyed, so that calls while the process ends are safe.
VXSwfParserComponent::ColorMap& TheColorMap() {
    static auto* const map = new VXSwfParserComponent::ColorMap;
    return *map;
}

}  // namespace

VXSwfParserComponent::~VXSwfParserComponent() = default;

int VXSwfParserComponent::GetComponentCode() { return kComponentCode; }

int VXSwfParserComponent::Startup() {
    BNDInitialize(GetVXBndAddressProc());
    unsigned char number = 0;
    for (const unsigned int color : kVXStandardColors) TheColorMap().emplace(color, number++);
    return 0;
}

int VXSwfParserComponent::Shutdown() {
    VXFontPublishManager::DoCleanUp();
    BNDTerminate();
    return 0;
}

int VXSwfParserComponent::HostSlot5() { return 0; }

int VXSwfParserComponent::HostSlot6() { return 0; }

int VXSwfParserComponent::HostSlot7() { return 0; }

int VXSwfParserComponent::HostSlot8() { return 0; }

const VXSwfParserComponent::ColorMap& VXSwfParserComponent::GetColorMap() { return TheColorMap(); }

IVXComponent* GetSwfParserComponent() {
    static auto* const component = new VXSwfParserComponent;
    return component;
}
