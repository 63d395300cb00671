#pragma once

#include "support/Test.h"

/// All memory that the library takes in this program: counted, and refused when a test wants it so.
struct Memory {
    static std::size_t GetLive();
    /// The most that was live since `ResetPeak`.
    static std::size_t GetPeak();
    static void ResetPeak();

    /// Calls `step` while the `n`th allocation, from 1 on, is refused, and every later one too if `allLater`.
    /// True when `step` answers true; a bad_alloc that it lets through counts as false. `wasRefused` tells
    /// whether there were so many.
    template <typename Step>
    static bool Refuse(unsigned int n, bool allLater, bool& wasRefused, const Step& step) {
        bool isDone = false;
        Begin(n, allLater);
        try {
            isDone = step();
        } catch (const std::bad_alloc&) {
        }
        wasRefused = End();
        return isDone;
    }

private:
    static void Begin(unsigned int n, bool allLater);
    static bool End();
};
