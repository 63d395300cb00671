#include <initializer_list>

#include "DemoPages.h"

namespace {

constexpr int kWidth = DemoStage::kCellWidth;
constexpr int kHeight = DemoStage::kCellHeight;
constexpr unsigned char kPad = 0;
constexpr unsigned char kReflect = 1;
constexpr unsigned char kRepeat = 2;

struct Stop {
    unsigned char ratio;
    unsigned int color;
    unsigned char alpha = 255;
};

/// A gradient over `width` × `height` pixels about the middle of a cell.
VXFlintFillStyle Gradient(VXFillStyleEnum type, double width, double height, double degrees,
                          unsigned char spread, std::initializer_list<Stop> stops) {
    constexpr double kSquare = 32768.0 / 20.0;  // pixels; a gradient lies on such a square about the origin
    VXFlintFillStyle fill;
    fill.FillStyleType = type;
    fill.GradientMatrix.ToUnitMatrix();
    fill.GradientMatrix.Scale(width / kSquare, height / kSquare);
    if (degrees != 0) fill.GradientMatrix.Rotate(degrees);
    fill.GradientMatrix.Translate(kWidth / 2.0, kHeight / 2.0);
    fill.Gradient.SpreadMode = spread;
    for (const auto& [ratio, color, alpha] : stops) {
        VXFlintGradRecord& record = fill.Gradient.GradientRecords.emplace_back();
        record.Ratio = ratio;
        record.Color = Rgba(color, alpha);
        ++fill.Gradient.NumGradients;
    }
    fill.SetAlpha(1);
    return fill;
}

/// A bitmap of which a pixel is `scale` pixels of the stage.
VXFlintFillStyle Bitmap(VXFillStyleEnum type, unsigned short id, double scale) {
    VXFlintFillStyle fill;
    fill.FillStyleType = type;
    fill.BitmapId = id;
    fill.BitmapMatrix.ToUnitMatrix();
    fill.BitmapMatrix.Scale(20 * scale, 20 * scale);
    return fill;
}

/// Four pixels, each of another colour.
VXImage FourColors() {
    return VXImage(2, 2,
                   std::vector<unsigned char>{0xC4, 0x4E, 0x3A, 255, 0xF2, 0xB1, 0x34, 255,  //
                                              0x3A, 0x7C, 0xA5, 255, 0x6A, 0x99, 0x4E, 255});
}

}  // namespace

void AddDemoFills(DemoStage& stage) {
    auto& dots = stage.GetBuilder().Define<TAG_DEFINEBITSLOSSLESS2>();
    VXIgnore(dots.CreateImage(FourColors(), kVXBitmapQualityTrueColor));  // always good
    const unsigned short id = dots.GetCharacterId();
    const std::initializer_list<Stop> two = {{0, kAmber}, {255, kNavy}};
    const std::initializer_list<Stop> five = {
        {0, kRed}, {64, kAmber}, {128, kGreen}, {192, kBlue}, {255, kNavy}};

    struct Fill {
        const char* caption;
        VXFlintFillStyle style;
        bool isSeenThrough = false;
    };
    const Fill fills[] = {
        {"Solid", SolidFill(kRed)},
        {"Solid, half clear", SolidFill(kRed, 128), true},
        {"Linear", Gradient(kVXFillLinearGradient, kWidth, kHeight, 0, kPad, two)},
        {"Linear, five stops", Gradient(kVXFillLinearGradient, kWidth, kHeight, 0, kPad, five)},
        {"Linear, upright", Gradient(kVXFillLinearGradient, kHeight, kHeight, 90, kPad, two)},
        {"Radial", Gradient(kVXFillRadialGradient, kWidth, kHeight, 0, kPad, two)},
        {"Radial, fades out",
         Gradient(kVXFillRadialGradient, kWidth, kHeight, 0, kPad, {{0, kRed}, {255, kRed, 0}}), true},
        {"Linear, reflected", Gradient(kVXFillLinearGradient, kWidth / 4.0, kHeight, 0, kReflect, two)},
        {"Linear, repeated", Gradient(kVXFillLinearGradient, kWidth / 4.0, kHeight, 0, kRepeat, two)},
        {"Tiles of 20, smooth", Bitmap(kVXFillTiledBitmap, id, 10)},
        {"Tiles of 20, hard", Bitmap(kVXFillTiledHardBitmap, id, 10)},
        {"Clipped: edges go on", Bitmap(kVXFillClippedHardBitmap, id, 30)},
    };
    int cell = 0;
    for (const auto& [caption, style, isSeenThrough] : fills) {
        const int column = cell % 4;
        const int row = cell++ / 4;
        VXSwfDefineShapeTag& shape = stage.GetBuilder().Define<TAG_DEFINESHAPE3>();
        shape.CreateRectangleWithFillStyle(0, 0, kWidth, kHeight, style);
        if (isSeenThrough) {
            stage.Place(stage.DefineChecks(kWidth, kHeight), DemoStage::CellLeft(column),
                        DemoStage::CellTop(row));
        }
        stage.PlaceInCell(shape, column, row, caption);
    }
}
