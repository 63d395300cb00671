#pragma once

#include "support/Test.h"

/// The records from `first` on in a line of text, numbers in pixels: "M x,y" a move with "l1", "f1" or "g1"
/// for what it selects as line, fill 0 or fill 1; "L dx,dy", "H dx" and "V dy" straight edges; "C dx,dy
/// dx,dy" a curve by control and anchor; "E" the end.
std::string TextOf(const VXFlintShapeRecords& records, std::size_t first = 0);
