#include <algorithm>

#include "DemoPages.h"

namespace {

using Lossless = VXSwfDefineBitsLossless2Tag;
using Jpeg = VXSwfDefineBitsJpegTag;

constexpr auto kLossless = TAG_DEFINEBITSLOSSLESS2;
constexpr int kBoxWidth = 180;
constexpr int kBoxHeight = 140;

struct Size {
    int width;
    int height;
};

/// The size in which a picture fills a box.
Size Fit(unsigned int width, unsigned int height) {
    const double scale = std::min(kBoxWidth / double(width), kBoxHeight / double(height));
    return {std::max(1, static_cast<int>(width * scale)), std::max(1, static_cast<int>(height * scale))};
}

/// Where a bitmap is shown, and on what.
enum class Look { kPlain, kSeenThrough, kTiled };

/// Shows a bitmap through a shape, which is the only way for a bitmap to be seen.
void Show(DemoStage& stage, const VXSwfDefinitionTag& bitmap, unsigned int width, unsigned int height,
          int cell, const char* caption, Look look = Look::kPlain) {
    const Size size = look == Look::kTiled ? Size{kBoxWidth, kBoxHeight} : Fit(width, height);
    const int column = cell % 3;
    const int row = cell / 3;
    const double left = 20 + 204 * column;
    const double top = DemoStage::kTop + 184 * row;
    if (look == Look::kSeenThrough) stage.Place(stage.DefineChecks(size.width, size.height), left, top);
    VXSwfDefineShapeTag& shape = stage.GetBuilder().Define<TAG_DEFINESHAPE3>();
    shape.CreateShapeForImage(bitmap.GetCharacterId(), 0, 0, static_cast<int>(width),
                              static_cast<int>(height), size.width, size.height,
                              look == Look::kTiled ? 1 : 0);
    stage.Place(shape, left, top);
    stage.Write(caption, left, top + size.height + 8, {.widest = kBoxWidth});
}

/// The picture without alpha, on the colour of the page.
VXImage16BPP ToFifteenBits(const DemoAssets& assets) {
    std::vector<unsigned char> pixels;
    pixels.reserve(assets.picture.size() / 2);
    for (std::size_t i = 0; i < assets.picture.size(); i += 4) {
        const unsigned char* pixel = &assets.picture[i];
        unsigned int color = 0;
        for (unsigned int channel = 0; channel < 3; ++channel) {
            const unsigned int paper = kPaper >> (16 - 8 * channel) & 0xFF;
            color = color << 5 | (pixel[channel] * pixel[3] + paper * (255u - pixel[3])) / 255 >> 3;
        }
        pixels.push_back(static_cast<unsigned char>(color >> 8));
        pixels.push_back(static_cast<unsigned char>(color));
    }
    return VXImage16BPP(assets.pictureWidth, assets.pictureHeight, std::move(pixels));
}

}  // namespace

void AddDemoPictures(DemoStage& stage) {
    const DemoAssets& assets = stage.GetAssets();
    CVXStreamReadWrite bytes(assets.photo.data(), assets.photo.size());
    auto& photo = stage.GetBuilder().Define<TAG_DEFINEBITSJPEG2>();
    VXIgnore(photo.SetJpegData(&bytes));  // there is a stream
    Show(stage, photo, assets.photoWidth, assets.photoHeight, 0, "JPEG");

    // Clear on the left, opaque on the right; the library compresses the plane.
    bytes.Seek(0, kVXSeekFromStart);
    auto& faded = stage.GetBuilder().Define<TAG_DEFINEBITSJPEG3>();
    VXIgnore(faded.SetJpegData(&bytes));
    std::vector<unsigned char> alpha(std::size_t{assets.photoWidth} * assets.photoHeight);
    for (std::size_t i = 0; i < alpha.size(); ++i)
        alpha[i] = static_cast<unsigned char>(i % assets.photoWidth * 255 / assets.photoWidth);
    VXIgnore(faded.SetAlphaData(alpha.data(), static_cast<unsigned int>(alpha.size())));  // always good
    Show(stage, faded, assets.photoWidth, assets.photoHeight, 1, "JPEG with alpha", Look::kSeenThrough);

    Show(stage, photo, assets.photoWidth, assets.photoHeight, 2, "JPEG, in tiles of its size", Look::kTiled);

    const VXImage image(assets.pictureWidth, assets.pictureHeight, assets.picture.data());
    auto& trueColor = stage.GetBuilder().Define<kLossless>();
    VXIgnore(trueColor.CreateImage(image, kVXBitmapQualityTrueColor));  // always good, as the next one
    Show(stage, trueColor, assets.pictureWidth, assets.pictureHeight, 3, "Lossless, 32 bits",
         Look::kSeenThrough);
    auto& palette = stage.GetBuilder().Define<kLossless>();
    VXIgnore(palette.CreateImage(image, kVXBitmapQualityPalette));
    Show(stage, palette, assets.pictureWidth, assets.pictureHeight, 4, "Lossless, 256 colours",
         Look::kSeenThrough);
    auto& fifteenBits = stage.GetBuilder().Define<kLossless>();
    VXIgnore(fifteenBits.CreateImage(ToFifteenBits(assets)));  // there are pixels
    Show(stage, fifteenBits, assets.pictureWidth, assets.pictureHeight, 5, "Lossless, 15 bits");
}
