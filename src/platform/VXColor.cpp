#include "platform/VXColor.h"

namespace {

VXReal FromByte(unsigned int word, int shift) { return static_cast<VXReal>((word >> shift) & 0xFFU) / 255.0; }

unsigned int ToByte(VXReal component) {
    if (!(component > 0.0)) return 0;  // takes in what is not a number
    // NOLINTNEXTLINE(bugprone-incorrect-roundings): never negative
    return component < 1.0 ? static_cast<unsigned int>(component * 255.0 + 0.5) : 255;
}

}  // namespace

VXColor::VXColor(unsigned int word)
    : VXColor(kRGB, {FromByte(word, 16), FromByte(word, 8), FromByte(word, 0), 0.0}, FromByte(word, 24)) {}

VXColor::VXColor(Model model, std::array<VXReal, 4> components, VXReal alpha)
    : m_Components(components), m_Alpha(alpha), m_Model(model) {}

VXColor VXColor::FromRGB(VXReal red, VXReal green, VXReal blue, VXReal alpha) {
    return VXColor(kRGB, {red, green, blue, 0.0}, alpha);
}

VXColor VXColor::FromCMYK(VXReal cyan, VXReal magenta, VXReal yellow, VXReal black, VXReal alpha) {
    return VXColor(kCMYK, {cyan, magenta, yellow, black}, alpha);
}

VXColor VXColor::FromGray(VXReal gray, VXReal alpha) { return VXColor(kGray, {gray, 0.0, 0.0, 0.0}, alpha); }

VXReal VXColor::GetComponent(int index) const {
    // Components that the model does not have are kept at 0.
    return index >= 0 && index < 4 ? m_Components[static_cast<std::size_t>(index)] : 0.0;
}

VXColor VXColor::ConvertToRGB() const {
    const auto& c = m_Components;
    switch (m_Model) {
        case kCMYK: {
            const VXReal light = 1.0 - c[3];
            return FromRGB((1.0 - c[0]) * light, (1.0 - c[1]) * light, (1.0 - c[2]) * light, m_Alpha);
        }
        case kGray:
            return FromRGB(c[0], c[0], c[0], m_Alpha);
        case kRGB:
            break;
    }
    return *this;
}

unsigned int VXColor::GetColorAsUI() const {
    const VXColor rgb = ConvertToRGB();
    return ToByte(rgb.m_Alpha) << 24 | ToByte(rgb.m_Components[0]) << 16 | ToByte(rgb.m_Components[1]) << 8 |
           ToByte(rgb.m_Components[2]);
}
