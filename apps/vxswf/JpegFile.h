#pragma once

#include <string>
#include <vector>

#include "ByteReader.h"

/// One JPEG file out of what a movie keeps of it: tables that stand apart, ends and starts of images between
/// the segments, bytes behind the end. Empty when there is no image in it.
std::vector<unsigned char> JoinJpeg(ByteSpan tables, ByteSpan image);

/// Pixels of four bytes, red first.
struct Pixels {
    unsigned int width = 0;
    unsigned int height = 0;
    std::vector<unsigned char> bytes;
};

/// Width and height as the header has them. False when it has none.
bool ReadJpegSize(const std::vector<unsigned char>& jpeg, unsigned int& width, unsigned int& height);
/// Decodes to opaque pixels; empty, or what is wrong. The size is the caller's to judge first.
std::string DecodeJpeg(const std::vector<unsigned char>& jpeg, Pixels& pixels);
