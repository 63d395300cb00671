#pragma once

#include <string>
#include <vector>

#include "Report.h"
#include "vxswf.h"

/// What stands for the program's own assets, each a file or empty; and the name of a font.
struct DemoFiles {
    std::string font = "DejaVu Sans";
    std::string jpeg;
    std::string png;
    std::string mp3;
};

/// What the pages of the demo movie are made from, checked.
struct DemoAssets {
    VXString font;                     ///< one that the type engine has
    std::vector<unsigned char> photo;  ///< a JPEG as it is, in grey or colour
    unsigned int photoWidth = 0;       ///< pixels, as are the three below
    unsigned int photoHeight = 0;
    unsigned int pictureWidth = 0;
    unsigned int pictureHeight = 0;
    std::vector<unsigned char> picture;  ///< rows of red, green, blue and alpha
    std::vector<unsigned char> sound;    ///< an MP3 from its first frame on
};

/// The type engine has to be up. What goes wrong has been reported when the call comes back.
ExitCode LoadDemoAssets(const DemoFiles& files, DemoAssets& assets);
