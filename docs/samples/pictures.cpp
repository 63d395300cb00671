// Pictures: pixels of the host without loss, and a JPEG file with and without an alpha plane.
//
//     pictures PHOTO.jpg
#include <utility>
#include <vector>

#include "expect.h"

namespace {

constexpr int kSide = 64;  // pixels
constexpr unsigned int kPhotoWidth = 96;
constexpr unsigned int kPhotoHeight = 64;

VXImage MakePixels() {
    std::vector<unsigned char> pixels;  // red, green, blue and alpha; rows from the top
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            pixels.insert(pixels.end(), {static_cast<unsigned char>(x * 4), static_cast<unsigned char>(y * 4),
                                         0x80, static_cast<unsigned char>(255 - x)});
        }
    }
    return VXImage(kSide, kSide, std::move(pixels));  // or a pointer to pixels that stay the host's
}

void AddPixels(VXMovieBuilder& builder) {
    builder.Place(builder.DefinePicture(MakePixels()), 20, 20);  // a shape that the bitmap fills
}

/// The same step by step, with a palette.
void AddPalette(VXMovieBuilder& builder) {
    auto& bitmap = builder.Define<TAG_DEFINEBITSLOSSLESS2>();
    VXIgnore(bitmap.CreateImage(MakePixels(), kVXBitmapQualityPalette));  // small enough
    auto& shape = builder.Define<TAG_DEFINESHAPE3>();
    // The last argument would repeat it.
    shape.CreateShapeForImage(bitmap.GetCharacterId(), 0, 0, kSide, kSide, kSide, kSide, 0);
    builder.Place(shape, 100, 20);
}

void AddPhoto(VXMovieBuilder& builder, const char* path, unsigned int width, unsigned int height) {
    CVXStreamReadWrite file(path, CVXStreamReadWrite::kOpenExisting);
    const std::vector<unsigned char> alpha(std::size_t{width} * height,
                                           0x80);  // a byte a pixel; may be left out
    builder.Place(builder.DefineJpeg(file, alpha), 200, 20);
}

}  // namespace

int main(int argc, char** argv) {
    Expect(argc == 2, "a photo is given");
    VXFlintFile movie;
    VXMovieBuilder builder(movie, 320, 240);
    AddPixels(builder);
    AddPalette(builder);
    AddPhoto(builder, argv[1], kPhotoWidth, kPhotoHeight);

    VXFlintFile loaded;
    SaveAndLoad(builder, "pictures.swf", loaded);
    // Pictures are built and not parsed: in a loaded movie they are raw tags, whose bytes are all there.
    auto format = [&loaded](unsigned short id) {
        VXSwfTag* tag = loaded.FindTagByID(id);
        if (tag == nullptr || dynamic_cast<VXSwfDefineBitsLossless2Tag*>(tag) != nullptr) return -1;
        return tag->GetTagLen() > 7 ? tag->GetData()[2] : -1;  // behind the ID
    };
    Expect(format(1) == 5, "format 5 is true colour");
    Expect(format(3) == 3, "format 3 is the one with a palette");
    return 0;
}
