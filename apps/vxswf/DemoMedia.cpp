#include <cmath>

#include "Assets.h"
#include "DemoStage.h"

namespace {

using Shape = VXSwfDefineShapeTag;
using Lossless = VXSwfDefineBitsLossless2Tag;
using Jpeg = VXSwfDefineBitsJpegTag;

constexpr unsigned int kSide = 64;  // of the picture, in pixels
constexpr int kPhotoWidth = 96;
constexpr int kPhotoHeight = 64;

constexpr unsigned char kPlay = 0x06;

/// Rings that fade out towards the corners.
VXImage MakeRings() {
    std::vector<unsigned char> pixels;
    pixels.reserve(kSide * kSide * 4);
    for (unsigned int y = 0; y < kSide; ++y) {
        for (unsigned int x = 0; x < kSide; ++x) {
            const double distance = std::hypot(x - kSide / 2.0, y - kSide / 2.0);
            const auto ring = static_cast<unsigned char>(127.5 + 127.5 * std::cos(distance / 3.0));
            const double fade = distance < kSide / 2.0 ? 1.0 - distance * 2.0 / kSide : 0.0;
            pixels.insert(pixels.end(),
                          {ring, static_cast<unsigned char>(x * 4), static_cast<unsigned char>(y * 4),
                           static_cast<unsigned char>(255.0 * std::sqrt(fade))});
        }
    }
    return VXImage(kSide, kSide, std::move(pixels));
}

VXImage16BPP MakeStripes() {
    std::vector<unsigned char> pixels;
    for (unsigned int y = 0; y < kSide; ++y) {
        for (unsigned int x = 0; x < kSide; ++x) {
            const unsigned int color = (x / 8 + y / 8) % 2 == 0 ? x / 2 << 10 | 31 : y / 2 << 5 | 8;
            pixels.push_back(static_cast<unsigned char>(color >> 8));
            pixels.push_back(static_cast<unsigned char>(color));
        }
    }
    return VXImage16BPP(kSide, kSide, std::move(pixels));
}

/// Shows a bitmap through a shape, which is the only way for a bitmap to be seen.
void Show(DemoStage& stage, const VXSwfDefinitionTag& bitmap, int imageWidth, int imageHeight, int width,
          int height, short tiled, double x, double y) {
    Shape& shape = stage.Define<Shape>(VXSwfTagFactory::TAG_DEFINESHAPE3);
    shape.CreateShapeForImage(bitmap.GetCharacterId(), 0, 0, imageWidth, imageHeight, width, height, tiled);
    stage.Place(shape, x, y);
}

void AddPictures(DemoStage& stage) {
    const int side = kSide;
    auto& trueColor = stage.Define<Lossless>(VXSwfTagFactory::TAG_DEFINEBITSLOSSLESS2);
    VXIgnore(trueColor.CreateImage(MakeRings(), kVXBitmapQualityTrueColor));  // always good
    Show(stage, trueColor, side, side, side, side, 0, 320, 120);

    auto& palette = stage.Define<Lossless>(VXSwfTagFactory::TAG_DEFINEBITSLOSSLESS2);
    VXIgnore(palette.CreateImage(MakeRings(), kVXBitmapQualityPalette));  // always good
    Show(stage, palette, side, side, 2 * side, 2 * side, 1, 400, 120);

    auto& fifteenBit = stage.Define<Lossless>(VXSwfTagFactory::TAG_DEFINEBITSLOSSLESS2);
    VXIgnore(fifteenBit.CreateImage(MakeStripes()));  // there are pixels
    Show(stage, fifteenBit, side, side, side, side, 0, 540, 120);
}

void AddPhotos(DemoStage& stage) {
    CVXStreamReadWrite bytes(kPhoto.bytes, kPhoto.size);
    auto& photo = stage.Define<Jpeg>(VXSwfTagFactory::TAG_DEFINEBITSJPEG2);
    VXIgnore(photo.SetJpegData(&bytes));  // there is a stream
    Show(stage, photo, kPhotoWidth, kPhotoHeight, kPhotoWidth, kPhotoHeight, 0, 320, 260);

    bytes.Seek(0, kVXSeekFromStart);
    auto& faded = stage.Define<Jpeg>(VXSwfTagFactory::TAG_DEFINEBITSJPEG3);
    VXIgnore(faded.SetJpegData(&bytes));
    std::vector<unsigned char> alpha;
    for (int y = 0; y < kPhotoHeight; ++y) {
        for (int x = 0; x < kPhotoWidth; ++x)
            alpha.push_back(static_cast<unsigned char>(x * 255 / kPhotoWidth));
    }
    VXIgnore(faded.SetAlphaData(alpha.data(), static_cast<unsigned int>(alpha.size())));
    Show(stage, faded, kPhotoWidth, kPhotoHeight, 2 * kPhotoWidth, 2 * kPhotoHeight, 0, 430, 260);
}

/// A button that chimes when it is pressed and goes on when it is released. Answers its tag.
VXSwfDefineButton2Tag& AddButton(DemoStage& stage, unsigned short sound) {
    unsigned short faces[3] = {};
    const unsigned char reds[] = {0xE7, 0xF4, 0x9C};
    for (int i = 0; i < 3; ++i) {
        Shape& face = stage.Define<Shape>(VXSwfTagFactory::TAG_DEFINESHAPE3);
        face.CreateRoundedRectangle(0, 0, 120, 40, VXFlintRGB(reds[i], 0x6F, 0x51, 1, 255), 12);
        faces[i] = face.GetCharacterId();
    }
    auto& button = stage.Define<VXSwfDefineButton2Tag>(VXSwfTagFactory::TAG_DEFINEBUTTON2);
    button.CreateButtonRecord(1, 0, 0, 1, faces[0], 1);
    button.CreateButtonRecord(0, 1, 0, 0, faces[1], 1);
    button.CreateButtonRecord(0, 0, 1, 0, faces[2], 1);
    auto* released = new VXFlintButtonCondAction;
    released->CondOverDownToOverUp = 1;
    released->Actions.PushActionRecord(new VXFlintActionRecord(kPlay));
    button.AddButtonAction(released);
    auto* enter = new VXFlintButtonCondAction;
    enter->CondKeyPress = 13;
    enter->Actions.PushActionRecord(new VXFlintActionRecord(kPlay));
    button.AddButtonAction(enter);

    // Files are the place where this class is at home, so code asks for what a load would make.
    auto& sounds = stage.Add<VXSwfDefineButtonSoundTag>(VXSwfTagFactory::TAG_DEFINEBUTTONSOUND, 1);
    sounds.ButtonId = button.GetCharacterId();
    sounds.ButtonSoundChar[2] = sound;  // over-up to over-down
    return button;
}

}  // namespace

void AddDemoMedia(DemoStage& stage) {
    AddPictures(stage);
    AddPhotos(stage);
    CVXStreamReadWrite bytes(kChime.bytes, kChime.size);
    auto& chime = stage.Define<VXSwfDefineSoundTag>(VXSwfTagFactory::TAG_DEFINESOUND);
    chime.IncludeMP3Sound(&bytes, 0);
    stage.Place(AddButton(stage, chime.GetCharacterId()), 260, 420);
    stage.AddScript({DemoStage::kStop});
    stage.Add<VXSwfStartSoundTag>(VXSwfTagFactory::TAG_STARTSOUND).StartSound(chime.GetCharacterId());
    stage.EndFrame();
}
