// Sounds: an MP3 file, started with a frame, and by a button.
//
//     sounds SOUND.mp3
#include "kit.h"

namespace {

VXSwfDefineSoundTag* AddSound(VXFlintFile& movie, Ids& ids, const char* path) {
    CVXStreamReadWrite file(path, CVXStreamReadWrite::kOpenExisting);
    auto& sound = Define<VXSwfDefineSoundTag>(movie, ids, VXSwfTagFactory::TAG_DEFINESOUND);
    // A `short`: non-zero for good, 0 where no frame of an MP3 is found.
    if (sound.IncludeMP3Sound(&file, 0) == 0) return nullptr;
    return &sound;
}

void StartTwice(VXFlintFile& movie, const VXSwfDefineSoundTag& sound) {
    auto& start = Add<VXSwfStartSoundTag>(movie, VXSwfTagFactory::TAG_STARTSOUND);
    start.StartSound(sound.GetCharacterId());
    start.SoundInfo.HasLoops = 1;
    start.SoundInfo.LoopCount = 2;
}

}  // namespace

int main(int argc, char** argv) {
    Expect(argc == 2, "a sound is given");
    VXFlintFile movie;
    Ids ids;
    Begin(movie);
    VXSwfDefineSoundTag* sound = AddSound(movie, ids, argv[1]);
    Expect(sound != nullptr, "the file is an MP3");
    Expect(sound->SoundSampleCount > 0, "the sound was measured");
    StartTwice(movie, *sound);

    VXFlintFile loaded;
    Finish(movie, "sounds.swf", loaded);
    auto start = loaded.FindNthTagOfType(VXSwfTagFactory::TAG_STARTSOUND, 1);
    Expect(start != loaded.end() && (*start)->GetTagLen() == 5, "the sound starts, with a number of loops");
    return 0;
}
