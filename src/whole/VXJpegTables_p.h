#pragma once

#include <span>
#include <vector>

/// A JPEG file (ITU-T T.81) of tables that are shared and a picture without them: one mark for the start, the
/// segments of both, one for the end. Older programs left such marks in between, with an end before a start.
std::vector<unsigned char> VXJoinJpegTables(std::span<const unsigned char> tables,
                                            std::span<const unsigned char> picture);
