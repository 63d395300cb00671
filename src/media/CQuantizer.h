#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/VXExport.h"

/// Finds up to 256 colours for a picture of 32-bit pixels: a colour tree that is cut back while it grows, so
/// that it never holds more than a few leaves beyond that, however large the picture. The order of the pixels
/// decides which branches are cut.
///
/// A pixel is four bytes, c0 to c3 in memory, c3 its alpha; one with alpha 0 counts as four zeros. The tree
/// has nine levels. The root has one child; levels 1 to 7 branch by bits 7 to 1 of the bytes, eight ways:
/// c0's bit counts 4, c1's 2, and the bit of c2 or-ed with that of c3 counts 1. Leaves are at level 8 until
/// branches are cut.
///
/// Kept: an opaque pixel has all bits of alpha set, so c2 does not steer the tree there and only enters the
/// averages. The sums are 32 bits wide and wrap, so a colour of more than 16 million pixels comes out wrong.
class VXSWF_API CQuantizer {
public:
    using Color = std::array<unsigned char, 4>;

    explicit CQuantizer(unsigned int maxColors = 256);
    virtual ~CQuantizer();

    /// Adds `count` pixels.
    void AddPixels(const unsigned char* pixels, std::size_t count);
    /// Ends the first pass: numbers the leaves, depth first, and gives their averages in that order.
    std::vector<Color> MakePalette();
    /// Writes the index of each pixel's colour; 0 for a pixel whose branch the tree does not have.
    void MapPixels(const unsigned char* pixels, std::size_t count, unsigned char* indices) const;

    unsigned int GetLeafCount() const { return LeafCount; }

private:
    // A place in the arena; 0, the root, stands for none where a child is meant.
    using NodeIndex = std::uint32_t;

    struct Node {
        std::array<NodeIndex, 8> Children{};
        std::array<std::uint32_t, 4> Sums{};
        std::uint32_t PixelCount = 0;
        std::uint32_t PaletteIndex = 0;
        NodeIndex Next = 0;  // in the list of its level, or of the free nodes
        std::uint8_t Level = 0;
        bool IsLeaf = false;
    };

    static constexpr unsigned int kColorBits = 8;

    NodeIndex NewNode(unsigned int level);
    NodeIndex FindLeaf(std::uint32_t path) const;
    NodeIndex FindOrMakeLeaf(std::uint32_t path);
    void AddRun(std::uint32_t pixel, std::uint32_t length);
    bool ReduceOnce();
    void Number(NodeIndex index, std::uint32_t way, std::vector<Color>& palette);

    std::vector<Node> Nodes;
    NodeIndex FreeNodes = 0;
    std::uint32_t LeafCount = 0;
    std::array<NodeIndex, kColorBits> ReducibleNodes{};  // of each level, the newest first
    unsigned int MaxColors;
    // For each way through levels 1 to 4 the node at level 5, or the one where the way was last seen to end
    // above that; the root where none is known. Most pixels begin close to their leaves so.
    std::array<NodeIndex, 4096> NearNodes{};
    std::uint32_t LastPath;
    NodeIndex LastLeaf = 0;
};
