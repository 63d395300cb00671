#include "DemoPages.h"

namespace {

// The middle of a cell.
constexpr double kMiddleX = DemoStage::kCellWidth / 2.0;
constexpr double kMiddleY = DemoStage::kCellHeight / 2.0;

/// A shadow four pixels to the lower right. The placement takes it over.
VXFlintFilter* Shadow(bool isInner, bool isKnockout, bool hasObject) {
    return new VXFlintFilterShadow(VXColor(0x00202020), 4, 4, 45, 4, 256, isInner, isKnockout, hasObject, 2);
}

void AddShadows(DemoStage& stage) {
    const struct {
        const char* caption;
        VXFlintFilter* filter;
    } shadows[] = {{"Drop shadow", Shadow(false, false, true)},
                   {"Inner shadow", Shadow(true, false, true)},
                   {"Shadow, knocked out", Shadow(false, true, true)},
                   {"Shadow alone", Shadow(false, false, false)}};
    int column = 0;
    for (const auto& [caption, filter] : shadows)
        stage.PlaceInCell(stage.GetBadge(), column++, 0, caption, {filter}, kMiddleX, kMiddleY);
}

/// Each colour times `multiplier` / 256, and something added.
VXFlintCxForm ColorForm(int multiplier, int red, int green, int blue) {
    VXFlintCxForm form;
    form.HasMultTerms = form.HasAddTerms = 1;
    form.RedMultTerm = form.GreenMultTerm = form.BlueMultTerm = multiplier;
    form.AlphaMultTerm = 256;
    form.RedAddTerm = red;
    form.GreenAddTerm = green;
    form.BlueAddTerm = blue;
    return form;
}

void AddColors(DemoStage& stage) {
    constexpr int kRow = 1;
    stage.Place(stage.DefineChecks(DemoStage::kCellWidth, DemoStage::kCellHeight), DemoStage::CellLeft(0),
                DemoStage::CellTop(kRow));
    stage.PlaceInCell(stage.GetBadge(), 0, kRow, "Half clear", {}, kMiddleX, kMiddleY).SetAlpha(128);

    const VXFlintCxForm tint = ColorForm(128, 127, 0, 0);
    stage.PlaceInCell(stage.GetBadge(), 1, kRow, "Tinted red", {}, kMiddleX, kMiddleY).SetCxForm(&tint);
    const VXFlintCxForm negative = ColorForm(-256, 255, 255, 255);
    stage.PlaceInCell(stage.GetBadge(), 2, kRow, "Negative", {}, kMiddleX, kMiddleY).SetCxForm(&negative);

    VXSwfDefineShapeTag& mask = stage.GetBuilder().Define<TAG_DEFINESHAPE3>();
    mask.CreateRoundedRectangle(0, 0, DemoStage::kCellWidth, DemoStage::kCellHeight, Rgba(kInk), 40);
    VXSwfPlaceObject2Tag& placedMask = stage.Place(mask, DemoStage::CellLeft(3), DemoStage::CellTop(kRow));
    VXSwfPlaceObject2Tag& masked =
        stage.Place(stage.DefineChecks(DemoStage::kCellWidth, DemoStage::kCellHeight), DemoStage::CellLeft(3),
                    DemoStage::CellTop(kRow));
    placedMask.SetClipDepth(masked.GetDepth());
    stage.Write("Masked by a round shape", DemoStage::CellLeft(3),
                DemoStage::CellTop(kRow) + DemoStage::kCellHeight + 8);
}

/// A sprite whose own frames turn the badge once round.
VXSwfDefineSpriteTag& DefineWheel(DemoStage& stage) {
    constexpr int kNumFrames = 24;
    constexpr unsigned short kDepth = 1;
    const unsigned short badge = stage.GetBadge().GetCharacterId();
    auto& wheel = stage.GetBuilder().Define<TAG_DEFINESPRITE>();
    for (int frame = 0; frame < kNumFrames; ++frame) {
        // Without a character it changes what is there.
        VXSwfPlaceObject2Tag* place = wheel.PlaceObject(frame == 0 ? badge : 0, -1, "", 0, 0, kDepth, {});
        VXFlintMatrix matrix;
        matrix.ToUnitMatrix();
        matrix.Rotate(frame * 360.0 / kNumFrames);
        place->SetMatrix(matrix);
        wheel.IncludeShowFrameTags(1, -1);
    }
    return wheel;
}

/// Turns the object by five degrees in every frame.
void TurnByScript(DemoStage& stage, VXSwfPlaceObject2Tag& place) {
    constexpr int kRotation = 10;  // number of a property
    const VXActionWriter script = VXActionWriter()
                                      .Push("")
                                      .Push(kRotation)
                                      .Push("")
                                      .Push(kRotation)
                                      .Do(kVXActionGetProperty)
                                      .Push(5)
                                      .Do(kVXActionAdd2)
                                      .Do(kVXActionSetProperty);
    stage.GetBuilder().AddEvent(&place, &VXFlintClipEventFlags::ClipEventEnterFrame, script);
}

void AddSprites(DemoStage& stage) {
    constexpr int kRow = 2;
    stage.PlaceInCell(DefineWheel(stage), 0, kRow, "Turns by its 24 frames", {}, kMiddleX, kMiddleY - 4);
    TurnByScript(
        stage, stage.PlaceInCell(stage.GetBadge(), 1, kRow, "Turns by a script", {}, kMiddleX, kMiddleY - 4));
    stage.PlaceInCell(stage.GetBadge(), 2, kRow, "Wider, and less high", {}, kMiddleX, kMiddleY)
        .Scale(80, 120, 56, 28);
    auto& cached = dynamic_cast<VXSwfPlaceObject3Tag&>(stage.PlaceInCell(
        stage.GetBadge(), 3, kRow, "Kept as a bitmap", {Shadow(false, false, true)}, kMiddleX, kMiddleY));
    cached.HasCacheAsBitmap = 1;
}

}  // namespace

void AddDemoPlacements(DemoStage& stage) {
    AddShadows(stage);
    AddColors(stage);
    AddSprites(stage);
}
