#pragma once

#include "kit/VXMovieBuilder.h"

/// The movie, or a sprite that is not in it yet.
struct VXMovieBuilder::Level {
    std::unique_ptr<VXSwfDefineSpriteTag> sprite;
    bool isFrameOpen = false;
};

/// A text whose glyphs are known once all characters of their fonts are.
struct VXMovieBuilder::Text {
    struct Run {
        VXSwfDefineFont2Tag* font;
        VXString text;
    };
    VXSwfDefineTextTag* tag;
    std::vector<Run> runs;  // as the tag has them
};
