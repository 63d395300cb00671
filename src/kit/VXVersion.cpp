#include "kit/VXVersion.h"

#define VX_TEXT_OF(number) #number
#define VX_DOTTED(major, minor, patch) VX_TEXT_OF(major) "." VX_TEXT_OF(minor) "." VX_TEXT_OF(patch)

int VXGetVersion() { return VXSWF_VERSION; }

const char* VXGetVersionText() {
    return VX_DOTTED(VXSWF_VERSION_MAJOR, VXSWF_VERSION_MINOR, VXSWF_VERSION_PATCH);
}
