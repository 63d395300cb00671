#pragma once

#include <span>

/// A row of the built-in table of fonts, as `VXWinFontData` has it.
struct VXWinFontRow {
    const char* fontName;  // UTF-8
    short metricA;
    short metricB;
};

/// Every row once, in the order in which they enter the set.
std::span<const VXWinFontRow> VXGetWinFontTable();
