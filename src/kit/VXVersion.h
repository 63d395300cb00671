#pragma once

#include "platform/VXExport.h"

// The version of these headers. The build takes its own from here.
#define VXSWF_VERSION_MAJOR 0
#define VXSWF_VERSION_MINOR 1
#define VXSWF_VERSION_PATCH 0
/// To be compared: `#if VXSWF_VERSION >= 10200` asks for 1.2.0.
#define VXSWF_VERSION (VXSWF_VERSION_MAJOR * 10000 + VXSWF_VERSION_MINOR * 100 + VXSWF_VERSION_PATCH)

/// The version of the library that runs, in the form of `VXSWF_VERSION`.
VXSWF_API int VXGetVersion();
/// The same as a text: "0.1.0".
VXSWF_API const char* VXGetVersionText();
