#pragma once

#include "platform/KVMPointType.h"

/// Walks a path of `count` entries: `visit(entry, points, numPoints)` is called for each step with the index of
/// its entry and its points, two floats each. A curve is one step of three entries, and an entry of an unknown
/// kind has no points. A curve without its three entries ends the walk.
template <typename Float, typename Visit>
void VXWalkPath(unsigned int count, Float* points, const KVMPointType* kinds, Visit&& visit) {
    for (unsigned int entry = 0; entry < count;) {
        const KVMPointType kind = kinds[entry];
        if (kind > kKVMClose) {
            ++entry;
            continue;
        }
        const unsigned int numPoints = kind == kKVMCurve ? 3 : 1;
        if (count - entry < numPoints) return;
        visit(entry, points, numPoints);
        points += numPoints * 2;
        entry += numPoints;
    }
}
