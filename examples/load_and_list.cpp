// Loads a movie and lists its header and its tags.
//
//     load_and_list IN.swf

#include <iostream>

#include "vxswf.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: load_and_list IN.swf\n";
        return 2;
    }
    VXFlintFile movie;
    VXMovieIO files;
    if (files.Load(movie, argv[1]) != kVXSuccess) {
        std::cerr << files.GetErrorText() << '\n';
        return 1;
    }

    std::cout << movie.GetWidth() << " x " << movie.GetHeight() << " pixels, " << movie.GetFrameCount()
              << " frames, " << movie.GetFrameRate() << " a second\n";
    for (VXSwfTag* tag : movie) {
        VXString text;
        tag->GetTextInfo(text);
        std::cout << text.GetUTF8String() << '\n';
        // Some tags have a class of their own; the others carry their body as it came.
        if (const auto* sprite = dynamic_cast<VXSwfDefineSpriteTag*>(tag)) {
            std::cout << "    " << sprite->GetNumTags() << " tags inside\n";
        }
    }
    return 0;
}
