#pragma once

#include <span>

#include "bitstream/VXBitStream.h"

/// What stands in the bytes of placements and of what holds scripts, for movies that are carried as bytes.
/// Types and layouts are those of the tag classes. A body that ends early has no more than it has.

/// The highest depth that a placement, or what it masks, takes; 0 for other types.
unsigned int VXTopDepthOf(unsigned int type, std::span<const unsigned char> body);

/// Whether the tag has scripts of a version before 3, or sprites that have.
bool VXHasOldScripts(unsigned int type, std::span<const unsigned char> body);

/// Writes the body of a placement of type 26, or of a sprite, with the clip events that versions from 6 on
/// have, 32 bits for 16. False, and `out` is of no use, when there is nothing to change.
bool VXWidenClipEvents(unsigned int type, std::span<const unsigned char> body, VXBitStream& out);
