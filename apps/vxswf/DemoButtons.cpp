#include "DemoPages.h"

namespace {

constexpr int kButtonWidth = 180;
constexpr int kButtonHeight = 44;

/// What a button plays when it is pressed.
void AddSound(DemoStage& stage, const VXSwfDefineButton2Tag& button, const VXSwfDefineSoundTag& sound,
              const VXFlintSoundInfo& info) {
    constexpr std::size_t kOverUpToOverDown = 2;
    // Files are the place where this class is at home, so code asks for what a load would make.
    auto& sounds = stage.GetBuilder().Add<TAG_DEFINEBUTTONSOUND>();
    sounds.ButtonId = button.GetCharacterId();
    sounds.ButtonSoundChar[kOverUpToOverDown] = sound.GetCharacterId();
    sounds.ButtonSoundInfo[kOverUpToOverDown] = info;
}

/// Three times, from the left to the right.
VXFlintSoundInfo Wandering() {
    VXFlintSoundInfo info;
    info.HasLoops = 1;
    info.LoopCount = 3;
    info.HasEnvelope = 1;
    info.EnvelopeRecords.resize(2);
    info.EnvelopeRecords[0].LeftLevel = 32768;
    info.EnvelopeRecords[1].Pos44 = 3 * 44100 / 2;
    info.EnvelopeRecords[1].RightLevel = 32768;
    return info;
}

void AddStates(DemoStage& stage) {
    const struct {
        unsigned int color;
        const char* caption;
    } states[] = {{kBlue, "Up is blue"}, {kGreen, "Over is green"}, {kRed, "Down is red"}};
    double left = 20;
    for (const auto& [color, caption] : states) {
        VXSwfDefineShapeTag& swatch = stage.GetBuilder().Define<TAG_DEFINESHAPE3>();
        swatch.CreateRoundedRectangle(0, 0, 60, 22, Rgba(color), 8);
        stage.Place(swatch, left, 330);
        stage.Write(caption, left + 70, 334, {.widest = 125});
        left += 204;
    }
}

}  // namespace

void AddDemoButtons(DemoStage& stage) {
    CVXStreamReadWrite bytes(stage.GetAssets().sound.data(), stage.GetAssets().sound.size());
    const VXSwfDefineSoundTag& sound = *stage.GetBuilder().DefineSound(bytes);  // it was checked

    VXSwfDefineButton2Tag& once = stage.DefineButton("Press me", kButtonWidth, kButtonHeight);
    stage.GetBuilder().AddAction(&once,
                                 VXActionWriter()
                                     .Push("clicks")
                                     .Push("clicks")
                                     .Do(kVXActionGetVariable)
                                     .Push(1)
                                     .Do(kVXActionAdd2)
                                     .Do(kVXActionSetVariable),
                                 kVXKeySpace);
    AddSound(stage, once, sound, {});
    VXSwfDefineButton2Tag& wandering = stage.DefineButton("Press me too", kButtonWidth, kButtonHeight);
    AddSound(stage, wandering, sound, Wandering());
    VXSwfDefineButton2Tag& silence = stage.DefineButton("Silence", kButtonWidth, kButtonHeight);
    stage.GetBuilder().AddAction(&silence, VXActionWriter().Do(kVXActionStopSounds));

    const struct {
        const VXSwfDefineButton2Tag& button;
        const char* caption;
    } buttons[] = {{once, "Plays once; a release counts"},
                   {wandering, "Three times, left to right"},
                   {silence, "Stops all sounds"}};
    double left = 20;
    for (const auto& [button, caption] : buttons) {
        stage.Place(button, left, 84);
        stage.Write(caption, left, 138, {.widest = kButtonWidth});
        left += 204;
    }

    stage.GetBuilder().AddScript(VXActionWriter().Push("clicks").Push(0).Do(kVXActionSetVariable));
    VXSwfDefineEditTextTag& count = stage.DefineField(60, 26);
    count.SetVariable("clicks");
    count.SetReadOnly(1);
    stage.Write("Releases so far; the space bar counts too:", 20, 206, {.size = 14, .widest = 380});
    stage.Place(count, 424, 200);
    stage.Write("The sound was played when this page was entered.", 20, 250, {.size = 14, .widest = 580});
    stage.GetBuilder().StartSound(&sound);

    stage.Write("States of a button:", 20, 300, {.size = 14, .widest = 580});
    AddStates(stage);
}
