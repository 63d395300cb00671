// Sounds: an MP3 file, started with a frame, and by a button.
//
//     sounds SOUND.mp3
#include "expect.h"

namespace {

const VXSwfDefineSoundTag* AddSound(VXMovieBuilder& builder, const char* path) {
    CVXStreamReadWrite file(path, CVXStreamReadWrite::kOpenExisting);
    const VXSwfDefineSoundTag* sound =
        builder.DefineSound(file);  // null for a file without a frame of an MP3
    builder.StartSound(sound, 2);
    return sound;
}

}  // namespace

int main(int argc, char** argv) {
    Expect(argc == 2, "a sound is given");
    VXFlintFile movie;
    VXMovieBuilder builder(movie, 320, 240);
    const VXSwfDefineSoundTag* sound = AddSound(builder, argv[1]);
    Expect(sound != nullptr, "the file is an MP3");
    Expect(sound->SoundSampleCount > 0, "the sound was measured");

    VXFlintFile loaded;
    SaveAndLoad(builder, "sounds.swf", loaded);
    auto start = loaded.FindNthTagOfType(VXSwfTagFactory::TAG_STARTSOUND, 1);
    Expect(start != loaded.end() && (*start)->GetTagLen() == 5, "the sound starts, with a number of loops");
    return 0;
}
