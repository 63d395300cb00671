#pragma once

#include "framework/VXFlintFile.h"
#include "support/Bytes.h"

/// A movie of a few thousand bytes with tags of every class that a load can make and with every part that
/// their records can have, nested sprites, a shape that can fail inside one, and the raw types that a merge
/// looks at. Below version 6 its clip actions are parsed.
Bytes GoldenMovie(unsigned int version);

/// Appends tags of the classes that are built by code alone, as hosts build them.
void BuildTags(VXSwfTagSet& movie);
