#include "media/VXStandardColors.h"

#include <algorithm>

namespace {

constexpr unsigned int kPrimaries[] = {0x00000000, 0x00FF0000, 0x0000FF00, 0x000000FF, 0x00FFFFFF};
constexpr unsigned int kStep = 0x33;

constexpr std::array<unsigned int, 221> MakeColors() {
    std::array<unsigned int, 221> colors{};
    auto* next = std::copy(std::begin(kPrimaries), std::end(kPrimaries), colors.begin());
    for (unsigned int red = 0; red <= 0xFF; red += kStep) {
        for (unsigned int green = 0; green <= 0xFF; green += kStep) {
            for (unsigned int blue = 0; blue <= 0xFF; blue += kStep) {
                *next++ = 0xFF000000u | red << 16 | green << 8 | blue;
            }
        }
    }
    return colors;
}

}  // namespace

constinit const std::array<unsigned int, 221> kVXStandardColors = MakeColors();
