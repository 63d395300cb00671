#pragma once

#include <iosfwd>

#include "vxswf.h"

/// Writes the timeline of a movie, frame by frame. Each character is opened where it comes first: the frames
/// of a sprite, what a shape, text or button needs. Behind that comes what never stands on a timeline.
void ListAsTree(const VXFlintFile& movie, std::ostream& out);
