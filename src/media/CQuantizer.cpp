#include "media/CQuantizer.h"

#include <algorithm>
#include <bit>
#include <cstring>

static_assert(std::endian::native == std::endian::little, "pixels are taken as little-endian words");

namespace {

constexpr unsigned int kPathLevels = 7;
constexpr std::uint32_t kNoPath = 0xFFFFFFFFu;
constexpr unsigned int kNearLevel = 5;

/// Puts bits 7 to 1 of a byte three places apart, bit 7 at 18 and bit 1 at 0.
constexpr std::uint32_t Spread(unsigned int byte) {
    std::uint32_t spread = 0;
    for (unsigned int bit = 1; bit <= kPathLevels; ++bit) spread |= (byte >> bit & 1u) << 3 * (bit - 1);
    return spread;
}

constexpr std::array<std::uint32_t, 256> MakeSpreads() {
    std::array<std::uint32_t, 256> spreads{};
    for (unsigned int byte = 0; byte < 256; ++byte) spreads[byte] = Spread(byte);
    return spreads;
}

constexpr std::array<std::uint32_t, 256> kSpread = MakeSpreads();

std::uint32_t PixelAt(const unsigned char* pixels) {
    std::uint32_t pixel;
    std::memcpy(&pixel, pixels, sizeof pixel);
    return pixel >> 24 == 0 ? 0 : pixel;
}

std::uint32_t ByteOf(std::uint32_t pixel, unsigned int index) { return pixel >> 8 * index & 0xFFu; }

/// The child indices of levels 1 to 7, three bits each, level 1 on top.
std::uint32_t PathOf(std::uint32_t pixel) {
    return kSpread[ByteOf(pixel, 0)] << 2 | kSpread[ByteOf(pixel, 1)] << 1 |
           kSpread[ByteOf(pixel, 2) | ByteOf(pixel, 3)];
}

/// The child that the path takes from a node; all take the first one from the root.
unsigned int ChildOf(std::uint32_t path, unsigned int level) {
    return level == 0 ? 0 : path >> 3 * (kPathLevels - level) & 7u;
}

/// The part of a path that leads to a near node.
std::uint32_t NearPathOf(std::uint32_t path) { return path >> 3 * (kPathLevels + 1 - kNearLevel); }

}  // namespace

CQuantizer::CQuantizer(unsigned int maxColors) : MaxColors(maxColors), LastPath(kNoPath) {}

CQuantizer::~CQuantizer() = default;

CQuantizer::NodeIndex CQuantizer::NewNode(unsigned int level) {
    NodeIndex index = FreeNodes;
    if (index != 0) {
        FreeNodes = Nodes[index].Next;
        Nodes[index] = Node();
    } else {
        index = static_cast<NodeIndex>(Nodes.size());
        Nodes.emplace_back();
    }
    Node& node = Nodes[index];
    node.Level = static_cast<std::uint8_t>(level);
    node.IsLeaf = level == kColorBits;
    if (node.IsLeaf) {
        ++LeafCount;
    } else {
        // The root is the only member of its list, so that 0 can end every list.
        node.Next = ReducibleNodes[level];
        ReducibleNodes[level] = index;
    }
    return index;
}

CQuantizer::NodeIndex CQuantizer::FindOrMakeLeaf(std::uint32_t path) {
    if (Nodes.empty()) NewNode(0);
    NodeIndex& nearNode = NearNodes[NearPathOf(path)];
    NodeIndex index = nearNode;
    while (!Nodes[index].IsLeaf) {
        const unsigned int level = Nodes[index].Level;
        const unsigned int child = ChildOf(path, level);
        NodeIndex next = Nodes[index].Children[child];
        if (next == 0) {
            next = NewNode(level + 1);
            Nodes[index].Children[child] = next;
        }
        index = next;
        if (level < kNearLevel) nearNode = index;
    }
    return index;
}

void CQuantizer::AddRun(std::uint32_t pixel, std::uint32_t length) {
    const std::uint32_t path = PathOf(pixel);
    if (path != LastPath) {
        LastLeaf = FindOrMakeLeaf(path);
        LastPath = path;
    }
    Node& leaf = Nodes[LastLeaf];
    leaf.PixelCount += length;
    for (unsigned int i = 0; i < 4; ++i) leaf.Sums[i] += ByteOf(pixel, i) * length;
    while (LeafCount > MaxColors && ReduceOnce()) LastPath = kNoPath;
}

void CQuantizer::AddPixels(const unsigned char* pixels, std::size_t count) {
    for (std::size_t i = 0; i < count;) {
        const std::uint32_t pixel = PixelAt(pixels + 4 * i);
        std::uint32_t length = 1;
        while (++i < count && length < 0x00FFFFFFu && PixelAt(pixels + 4 * i) == pixel) ++length;
        AddRun(pixel, length);
    }
}

/// Makes a leaf of the newest node of the deepest level that has one. False when none is left.
bool CQuantizer::ReduceOnce() {
    unsigned int level = kColorBits - 1;
    while (level > 0 && ReducibleNodes[level] == 0) --level;
    const NodeIndex index = ReducibleNodes[level];
    if (Nodes[index].IsLeaf) return false;  // the root, cut back already
    Node& node = Nodes[index];
    ReducibleNodes[level] = node.Next;
    if (level < kNearLevel) NearNodes = {};
    std::uint32_t freed = 0;
    for (NodeIndex& place : node.Children) {
        if (place == 0) continue;
        Node& child = Nodes[place];
        for (unsigned int i = 0; i < 4; ++i) node.Sums[i] += child.Sums[i];
        node.PixelCount += child.PixelCount;
        child.Next = FreeNodes;
        FreeNodes = place;
        place = 0;
        ++freed;
    }
    node.IsLeaf = true;
    LeafCount += 1 - freed;
    return true;
}

std::vector<CQuantizer::Color> CQuantizer::MakePalette() {
    std::vector<Color> palette;
    if (!Nodes.empty()) Number(0, 0, palette);
    return palette;
}

/// Numbers the leaves at and below a node; `way` leads there from level 1, three bits a level, as far as the
/// near level.
void CQuantizer::Number(NodeIndex index, std::uint32_t way, std::vector<Color>& palette) {
    Node& node = Nodes[index];
    if (node.Level == kNearLevel || (node.IsLeaf && node.Level < kNearLevel)) {
        const unsigned int bits = 3 * (kNearLevel - std::max<unsigned int>(node.Level, 1));
        std::fill_n(NearNodes.begin() + (way << bits), std::size_t{1} << bits, index);
    }
    if (node.IsLeaf) {
        node.PaletteIndex = static_cast<std::uint32_t>(palette.size());
        Color color{};
        for (unsigned int i = 0; i < 4 && node.PixelCount != 0; ++i) {
            color[i] = static_cast<unsigned char>(node.Sums[i] / node.PixelCount);
        }
        palette.push_back(color);
        return;
    }
    for (std::uint32_t child = 0; child < node.Children.size(); ++child) {
        if (node.Children[child] == 0) continue;
        Number(node.Children[child], node.Level < kNearLevel ? way << 3 | child : way, palette);
    }
}

CQuantizer::NodeIndex CQuantizer::FindLeaf(std::uint32_t path) const {
    NodeIndex index = NearNodes[NearPathOf(path)];
    while (!Nodes[index].IsLeaf) {
        index = Nodes[index].Children[ChildOf(path, Nodes[index].Level)];
        if (index == 0) return 0;
    }
    return index;
}

void CQuantizer::MapPixels(const unsigned char* pixels, std::size_t count, unsigned char* indices) const {
    std::uint32_t lastPath = kNoPath;
    unsigned char lastIndex = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t path = PathOf(PixelAt(pixels + 4 * i));
        if (path != lastPath) {
            lastPath = path;
            lastIndex = Nodes.empty() ? 0 : static_cast<unsigned char>(Nodes[FindLeaf(path)].PaletteIndex);
        }
        indices[i] = lastIndex;
    }
}
