#pragma once

#include <array>

#include "platform/VXExport.h"

/// The 221 standard colours, as words with alpha on top: five primaries with alpha 0, then the cube of six
/// steps of 0x33 a channel, opaque, blue fastest. All differ. Hosts choose from them; no picture is made to
/// fit them here.
VXSWF_API extern const std::array<unsigned int, 221> kVXStandardColors;
