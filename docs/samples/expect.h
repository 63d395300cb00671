#pragma once

#include <cstdlib>
#include <iostream>

#include "vxswf.h"

/// Ends the program when something is not as it is told.
inline void Expect(bool isTrue, const char* what) {
    if (isTrue) return;
    std::cerr << "not so: " << what << '\n';
    std::exit(1);
}

/// Saves the movie and loads what was saved.
inline void SaveAndLoad(VXMovieBuilder& builder, const char* path, VXFlintFile& loaded) {
    if (builder.Save(path) != kVXSuccess) std::cerr << builder.GetErrorText() << '\n';
    Expect(builder.GetErrorText().empty(), "the movie can be saved");
    Expect(VXMovieIO().Load(loaded, path) == kVXSuccess, "the movie loads");
    Expect(loaded.GetNumTags() == builder.GetMovie().GetNumTags(), "no tag is lost on the way");
}
