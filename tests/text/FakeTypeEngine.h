#pragma once

#include "support/Test.h"

/// A type engine with families and glyphs of a test's own making, of the older generation. It is in force
/// while it lives, one at a time, and expects that every reference has ended by then.
struct FakeTypeEngine {
    struct Font {
        std::string name;
        std::string styleName;
        int style;  // 0 plain, 1 italic, 2 bold, 3 both
    };
    struct Point {
        KVMPointType kind;
        float x;
        float y;
    };

    FakeTypeEngine();
    ~FakeTypeEngine();
    FakeTypeEngine(const FakeTypeEngine&) = delete;
    FakeTypeEngine& operator=(const FakeTypeEngine&) = delete;

    /// The name of a font, with " +" and the style for one that was imitated; "none" for an empty one.
    static std::string NameOf(const BND_NT_NMT::CTYFontDict& font);

    std::vector<std::vector<Font>> families;
    std::map<unsigned int, float> widths;  // at an em of 1024; what is missing is 0 wide
    std::map<unsigned int, std::vector<Point>> outlines;
    int numPaths = 0;             // made by now
    bool refusesToShare = false;  // adds no reference
};
