#pragma once

#include <cstddef>

/// A file of assets/ that the program carries along.
struct Asset {
    const unsigned char* bytes;
    std::size_t size;
};

/// Hills under a sky, 96 × 64 pixels, a baseline JPEG.
extern const Asset kPhoto;
/// Rings that fade out towards the corners, 64 × 64 pixels, a PNG with alpha.
extern const Asset kRings;
/// Six tenths of a second, MPEG-2 Layer III, mono, 22050 samples a second.
extern const Asset kChime;
/// A movie of 240 × 160 pixels and two frames, in which a sprite of the name "mover" moves.
extern const Asset kMovie;
