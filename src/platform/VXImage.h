#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

/// A picture of the host: `height` rows of `width` pixels from the top, without gaps between them. The pixels
/// belong to the image, or to somebody else who keeps them until the image is gone. An image may have no
/// pixels at all.
template <std::size_t BytesPerPixel>
class VXPixelRows {
public:
    VXPixelRows() = default;
    /// Owns `pixels`. A vector that is too short for the size counts as none.
    VXPixelRows(unsigned int width, unsigned int height, std::vector<unsigned char> pixels)
        : m_Width(width), m_Height(height), m_Pixels(std::move(pixels)) {
        if (m_Pixels.size() / BytesPerPixel < std::uint64_t{width} * height) m_Pixels = {};
    }
    /// Borrows `pixels`, which may be null.
    VXPixelRows(unsigned int width, unsigned int height, const unsigned char* pixels)
        : m_Width(width), m_Height(height), m_Borrowed(pixels) {}

    unsigned int GetWidth() const { return m_Width; }
    unsigned int GetHeight() const { return m_Height; }
    /// The first byte of the first row, or null.
    const unsigned char* GetBuffer() const { return m_Pixels.empty() ? m_Borrowed : m_Pixels.data(); }

private:
    unsigned int m_Width = 0;
    unsigned int m_Height = 0;
    std::vector<unsigned char> m_Pixels;
    const unsigned char* m_Borrowed = nullptr;
};

/// Four bytes a pixel, p0 to p3 in memory: three colour bytes, then alpha.
class VXImage : public VXPixelRows<4> {
public:
    using VXPixelRows::VXPixelRows;
};

/// Two bytes a pixel, high byte first: one bit unused, then five each of red, green and blue.
class VXImage16BPP : public VXPixelRows<2> {
public:
    using VXPixelRows::VXPixelRows;
};
