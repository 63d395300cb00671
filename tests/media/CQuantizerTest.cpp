#include "media/CQuantizer.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>

#include "support/Bytes.h"

namespace {

/// The algorithm word for word, with nodes of its own: slow, plain, and right by inspection.
class PlainQuantizer {
public:
    explicit PlainQuantizer(unsigned int maxColors) : m_MaxColors(maxColors) {}
    void Add(const unsigned char* pixel) {
        Add(m_Root, ColorOf(pixel), 0);
        while (m_Leaves > m_MaxColors) Reduce();
    }
    std::vector<CQuantizer::Color> Palette() {
        std::vector<CQuantizer::Color> palette;
        Collect(*m_Root, palette);
        return palette;
    }
    unsigned int Map(const unsigned char* pixel) const {
        const Node* node = m_Root.get();
        for (unsigned int level = 0; !node->isLeaf; ++level) {
            node = node->children[ChildOf(ColorOf(pixel), level)].get();
        }
        return node->index;
    }

private:
    using Sums = std::array<unsigned int, 4>;
    struct Node {
        bool isLeaf = false;
        unsigned int count = 0;
        unsigned int index = 0;
        Sums sums{};
        std::array<std::unique_ptr<Node>, 8> children;
    };
    static Sums ColorOf(const unsigned char* pixel) {
        return pixel[3] == 0 ? Sums{} : Sums{pixel[0], pixel[1], pixel[2], pixel[3]};
    }
    static unsigned int ChildOf(const Sums& c, unsigned int level) {
        const unsigned int shift = 8 - level;
        return (c[0] >> shift & 1u) << 2 | (c[1] >> shift & 1u) << 1 | ((c[2] | c[3]) >> shift & 1u);
    }
    void Add(std::unique_ptr<Node>& node, const Sums& c, unsigned int level) {
        if (node == nullptr) {
            node = std::make_unique<Node>();
            node->isLeaf = level == 8;
            if (node->isLeaf) {
                ++m_Leaves;
            } else {
                m_Lists[level].push_back(node.get());
            }
        }
        if (!node->isLeaf) return Add(node->children[ChildOf(c, level)], c, level + 1);
        ++node->count;
        for (unsigned int i = 0; i < 4; ++i) node->sums[i] += c[i];
    }
    void Reduce() {
        unsigned int level = 7;
        while (level > 0 && m_Lists[level].empty()) --level;
        Node* node = m_Lists[level].back();
        m_Lists[level].pop_back();
        for (std::unique_ptr<Node>& child : node->children) {
            if (child == nullptr) continue;
            for (unsigned int i = 0; i < 4; ++i) node->sums[i] += child->sums[i];
            node->count += child->count;
            child.reset();
            --m_Leaves;
        }
        node->isLeaf = true;
        ++m_Leaves;
    }
    void Collect(Node& node, std::vector<CQuantizer::Color>& palette) {
        for (const std::unique_ptr<Node>& child : node.children) {
            if (child != nullptr) Collect(*child, palette);
        }
        if (!node.isLeaf) return;
        node.index = static_cast<unsigned int>(palette.size());
        palette.emplace_back();
        for (unsigned int i = 0; i < 4; ++i) {
            palette.back()[i] = static_cast<unsigned char>(node.sums[i] / node.count);
        }
    }

    unsigned int m_MaxColors;
    std::unique_ptr<Node> m_Root;
    unsigned int m_Leaves = 0;
    std::array<std::vector<Node*>, 8> m_Lists;
};

Bytes Noise(std::size_t pixels, unsigned int seed, unsigned char orAlpha) {
    Bytes bytes(pixels * 4);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        seed = seed * 1664525u + 1013904223u;
        bytes[i] = static_cast<unsigned char>(seed >> 24);
        if (i % 4 == 3) bytes[i] = static_cast<unsigned char>(bytes[i] | orAlpha);
        // Runs, as pictures have them.
        if (i >= 4 && seed % 3 == 0) bytes[i] = bytes[i - 4];
    }
    return bytes;
}

void ComparePalettes(const Bytes& pixels, unsigned int maxColors) {
    const std::size_t size = pixels.size() / 4;
    CQuantizer quantizer(maxColors);
    PlainQuantizer plain(maxColors);
    quantizer.AddPixels(pixels.data(), size);
    for (std::size_t i = 0; i < size; ++i) plain.Add(pixels.data() + 4 * i);
    const auto palette = quantizer.MakePalette();
    ASSERT_EQ(palette, plain.Palette()) << size << " pixels, " << maxColors << " colours";
    ASSERT_EQ(quantizer.GetLeafCount(), palette.size());
    Bytes indices(size);
    quantizer.MapPixels(pixels.data(), size, indices.data());
    for (std::size_t i = 0; i < size; ++i) ASSERT_EQ(indices[i], plain.Map(pixels.data() + 4 * i));
}

}  // namespace

TEST(CQuantizer, FindsTheSamePaletteAsThePlainAlgorithm) {
    for (const unsigned char orAlpha : Hex("00 80 FF")) {
        for (const std::size_t size : {1u, 255u, 256u, 257u, 258u, 5000u, 40000u}) {
            ComparePalettes(Noise(size, static_cast<unsigned int>(size), orAlpha), 256);
        }
        // So few that the branches near the root are cut too.
        for (const unsigned int maxColors : {1u, 2u, 9u, 40u}) {
            ComparePalettes(Noise(3000, maxColors, orAlpha), maxColors);
        }
    }
}

TEST(CQuantizer, MapsWhatTheTreeDoesNotHaveToTheFirstColour) {
    CQuantizer quantizer;
    const Bytes pixel = Hex("FF FF FF FF");
    Bytes index = Hex("77");
    quantizer.MapPixels(pixel.data(), 1, index.data());
    EXPECT_EQ(index, Hex("00")) << "no tree at all";
    const Bytes black = Hex("00 00 00 FF");
    quantizer.AddPixels(black.data(), 1);
    EXPECT_EQ(quantizer.MakePalette().size(), 1u);
    quantizer.MapPixels(pixel.data(), 1, index.data());
    EXPECT_EQ(index, Hex("00"));
}

TEST(CQuantizer, CutsBackToTheRootAndNoFurther) {
    CQuantizer quantizer(0);
    const Bytes pixels = Hex("00 00 00 FF FF FF FF FF 10 20 30 40");
    quantizer.AddPixels(pixels.data(), 3);
    const auto palette = quantizer.MakePalette();
    ASSERT_EQ(palette.size(), 1u);
    EXPECT_EQ(palette[0], (CQuantizer::Color{0x5A, 0x5F, 0x65, 0xBF}));
}
