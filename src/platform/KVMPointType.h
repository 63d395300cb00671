#pragma once

/// Kinds of entries in the path of an outline, as the path buffer lists them. Each has its own run of the
/// path's coordinates.
enum KVMPointType : unsigned int {
    kKVMMove = 0,   ///< x, y
    kKVMLine = 1,   ///< x, y
    kKVMCurve = 2,  ///< a cubic: both control points and the end; takes the next two entries along
    kKVMClose = 3,  ///< x, y
};
