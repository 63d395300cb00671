#pragma once

#include <array>

#include "platform/VXExport.h"
#include "platform/VXTypes.h"

/// A colour of the host, kept in the model it was given in. Components are reals, 0 for none and 1 for full,
/// and are stored as given: nothing cuts them to that range before they become bytes.
///
/// The packed form is one unsigned word: red in bits 16 to 23, green in 8 to 15, blue in 0 to 7, and alpha in
/// 24 to 31. Hosts without transparency leave alpha at 0 and write 0x00RRGGBB, so an alpha of 0 does not mean
/// invisible here.
class VXPLATFORM_API VXColor {
public:
    enum Model : int {
        kRGB = 0,   ///< red, green, blue
        kCMYK = 1,  ///< cyan, magenta, yellow, black
        kGray = 2,  ///< one component, 0 for black
    };

    /// From the packed form; every word comes back from `GetColorAsUI` as it was.
    explicit VXColor(unsigned int word = 0);
    static VXColor FromRGB(VXReal red, VXReal green, VXReal blue, VXReal alpha = 0.0);
    static VXColor FromCMYK(VXReal cyan, VXReal magenta, VXReal yellow, VXReal black, VXReal alpha = 0.0);
    static VXColor FromGray(VXReal gray, VXReal alpha = 0.0);

    Model GetModel() const { return m_Model; }
    /// In the order of the model; 0 for an index that the model does not have.
    VXReal GetComponent(int index) const;
    VXReal GetAlpha() const { return m_Alpha; }

    /// The same colour as red, green and blue: black ink darkens what the other three leave. Alpha stays.
    VXColor ConvertToRGB() const;
    /// The packed form. Components are cut to 0 to 1 and rounded to the nearest of 256 steps; one that is not
    /// a number becomes 0.
    unsigned int GetColorAsUI() const;

    /// Model and every component are equal; two models never are.
    bool operator==(const VXColor& other) const = default;

private:
    VXColor(Model model, std::array<VXReal, 4> components, VXReal alpha);

    std::array<VXReal, 4> m_Components;
    VXReal m_Alpha;
    Model m_Model;
};
