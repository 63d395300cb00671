// Pictures: pixels of the host without loss, and a JPEG file with and without an alpha plane.
//
//     pictures PHOTO.jpg
#include <vector>

#include "kit.h"

namespace {

constexpr int kSide = 64;  // pixels

/// A bitmap is seen through a shape that it fills. The last argument of `CreateShapeForImage` would repeat
/// it.
void Show(VXFlintFile& movie, Ids& ids, const VXSwfDefinitionTag& bitmap, int width, int height, double x) {
    auto& shape = Define<VXSwfDefineShapeTag>(movie, ids, VXSwfTagFactory::TAG_DEFINESHAPE3);
    shape.CreateShapeForImage(bitmap.GetCharacterId(), 0, 0, width, height, width, height, 0);
    movie.PlaceObject(&shape, -1, VXString(), x, 20.0, 0, {});
}

void AddPixels(VXFlintFile& movie, Ids& ids, VXBitmapQualityEnum quality) {
    std::vector<unsigned char> pixels;  // three colour bytes, then alpha; rows from the top
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            pixels.insert(pixels.end(), {static_cast<unsigned char>(x * 4), static_cast<unsigned char>(y * 4),
                                         0x80, static_cast<unsigned char>(255 - x)});
        }
    }
    const VXImage image(kSide, kSide, std::move(pixels));  // or a pointer to pixels that stay the host's

    auto& bitmap = Define<VXSwfDefineBitsLossless2Tag>(movie, ids, VXSwfTagFactory::TAG_DEFINEBITSLOSSLESS2);
    VXIgnore(bitmap.CreateImage(image, quality));  // always good
    Show(movie, ids, bitmap, kSide, kSide, quality == kVXBitmapQualityPalette ? 20.0 : 100.0);
}

void AddPhoto(VXFlintFile& movie, Ids& ids, const char* path, int width, int height) {
    CVXStreamReadWrite file(path, CVXStreamReadWrite::kOpenExisting);
    Expect(file.Open() != 0, "the photo is there");
    auto& photo = Define<VXSwfDefineBitsJpegTag>(movie, ids, VXSwfTagFactory::TAG_DEFINEBITSJPEG3);
    VXIgnore(photo.SetJpegData(&file));  // takes the bytes as they are; nothing looks into them
    const std::vector<unsigned char> alpha(static_cast<std::size_t>(width * height), 0x80);  // a byte a pixel
    VXIgnore(photo.SetAlphaData(alpha.data(), static_cast<unsigned int>(alpha.size())));
    Show(movie, ids, photo, width, height, 200.0);
}

}  // namespace

int main(int argc, char** argv) {
    Expect(argc == 2, "a photo is given");
    VXFlintFile movie;
    Ids ids;
    Begin(movie);
    AddPixels(movie, ids, kVXBitmapQualityPalette);
    AddPixels(movie, ids, kVXBitmapQualityTrueColor);
    AddPhoto(movie, ids, argv[1], 96, 64);

    VXFlintFile loaded;
    Finish(movie, "pictures.swf", loaded);
    // Pictures are built and not parsed: in a loaded movie they are raw tags, whose bytes are all there.
    auto format = [&loaded](unsigned short id) {
        VXSwfTag* tag = loaded.FindTagByID(id);
        if (tag == nullptr || dynamic_cast<VXSwfDefineBitsLossless2Tag*>(tag) != nullptr) return -1;
        return tag->GetTagLen() > 7 ? tag->GetData()[2] : -1;  // behind the ID
    };
    Expect(format(1) == 3, "format 3 is the one with a palette");
    Expect(format(3) == 5, "format 5 is true colour");
    return 0;
}
