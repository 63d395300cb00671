#include "support/Test.h"

namespace {

/// Runs and noise of every alpha that `orAlpha` leaves.
Bytes Pixels(std::size_t count, unsigned char orAlpha) {
    Bytes pixels = Noise(count * 4, static_cast<unsigned int>(count));
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        if (i % 4 == 3) pixels[i] = static_cast<unsigned char>(pixels[i] | orAlpha);
        if (i / 4 % 3 == 1) pixels[i] = pixels[i - 4];
    }
    return pixels;
}

/// Every colour is the average of the pixels that are mapped to it, whatever was cut on the way.
void ExpectAverages(const Bytes& pixels, unsigned int maxColors) {
    const std::size_t count = pixels.size() / 4;
    CQuantizer quantizer(maxColors);
    quantizer.AddPixels(pixels.data(), count);
    const auto palette = quantizer.MakePalette();
    ASSERT_EQ(quantizer.GetLeafCount(), palette.size());
    EXPECT_LE(palette.size(), maxColors);
    if (count > 20 * maxColors) {
        EXPECT_GE(palette.size() + 6, maxColors) << "no cut takes more than seven leaves away";
    }
    Bytes indices(count);
    quantizer.MapPixels(pixels.data(), count, indices.data());
    std::vector<std::array<unsigned int, 5>> sums(palette.size());
    for (std::size_t i = 0; i < count; ++i) {
        auto& sum = sums.at(indices[i]);
        const unsigned char* pixel = pixels.data() + 4 * i;
        for (std::size_t k = 0; k < 4; ++k) sum[k] += pixel[3] == 0 ? 0 : pixel[k];
        ++sum[4];
    }
    for (std::size_t i = 0; i < palette.size(); ++i) {
        ASSERT_NE(sums[i][4], 0u) << "a colour that nobody has";
        for (std::size_t k = 0; k < 4; ++k) ASSERT_EQ(palette[i][k], sums[i][k] / sums[i][4]);
    }
}

}  // namespace

TEST(CQuantizer, ColoursAreAveragesOfTheirPixels) {
    for (const unsigned char orAlpha : Hex("00 80 FF")) {
        for (const std::size_t count : {1u, 255u, 256u, 257u, 258u, 40000u}) {
            ExpectAverages(Pixels(count, orAlpha), 256);
        }
        // So few that the branches near the root are cut too.
        for (const unsigned int maxColors : {1u, 2u, 9u, 40u})
            ExpectAverages(Pixels(3000, orAlpha), maxColors);
    }
}

TEST(CQuantizer, TheYoungestOfTheDeepestBranchesIsCut) {
    // Two pairs that differ in the last bit that counts, and one colour more than fits.
    const std::pair<Bytes, Bytes> rows[] = {{Hex("00 80 02 82 80"), Hex("00 02 80")},
                                            {Hex("80 00 02 82 00"), Hex("00 80 82")}};
    for (const auto& [reds, expected] : rows) {
        CQuantizer quantizer(3);
        for (const unsigned char red : reds) {
            const Bytes pixel = {red, 0, 0, 0xFF};
            quantizer.AddPixels(pixel.data(), 1);
        }
        Bytes palette;
        for (const auto& color : quantizer.MakePalette()) palette.push_back(color[0]);
        EXPECT_EQ(palette, expected);
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
