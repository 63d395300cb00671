#pragma once

#include <utility>

#include "platform/VXExport.h"
#include "platform/typeengine/VXTypeEngineAPI.h"

namespace BND_NT_NMT {

/// Adds a reference through the binding; false when the handle is none or stale, or the binding is not
/// started.
VXSWF_API bool AddRef(TYHandle handle);
/// Ends a reference. Does nothing for no handle, a stale one, or without the binding.
VXSWF_API void Release(TYHandle handle);

/// Chooses the constructor that takes over the reference of a counted result.
struct CTYAdopt {};

/// One counted handle, or none. A copy adds a reference and is empty when that fails; the end gives it back.
template <class Handle>
class CTYCounted {
public:
    CTYCounted() = default;
    /// Shares what somebody else counts; empty when no reference can be added.
    explicit CTYCounted(Handle shared) : m_Handle(AddRef(shared) ? shared : Handle{}) {}
    /// Takes over the reference that came with `counted`.
    CTYCounted(Handle counted, CTYAdopt) : m_Handle(counted) {}
    CTYCounted(const CTYCounted& other) : CTYCounted(other.m_Handle) {}
    CTYCounted(CTYCounted&& other) noexcept : m_Handle(std::exchange(other.m_Handle, Handle{})) {}
    CTYCounted& operator=(CTYCounted other) noexcept {
        std::swap(m_Handle, other.m_Handle);
        return *this;
    }
    ~CTYCounted() {
        if (m_Handle != Handle{}) Release(m_Handle);
    }

    bool IsEmpty() const { return m_Handle == Handle{}; }
    /// The handle, still counted by this object; 0 for none.
    Handle Get() const { return m_Handle; }

    /// Whether both hold the same handle, or none.
    friend bool operator==(const CTYCounted& left, const CTYCounted& right) {
        return left.m_Handle == right.m_Handle;
    }

private:
    Handle m_Handle{};
};

/// A set of fonts.
class CTYFontSet : public CTYCounted<TYFontSet> {
    using CTYCounted::CTYCounted;
};
/// The families of a set.
class CTYFamilyList : public CTYCounted<TYFamilyList> {
    using CTYCounted::CTYCounted;
};
/// A family of fonts.
class CTYFamily : public CTYCounted<TYFamily> {
    using CTYCounted::CTYCounted;
};
/// A font, as it is without a size.
class CTYFontDict : public CTYCounted<TYFontDict> {
    using CTYCounted::CTYCounted;
};
/// Text that the engine lends.
class CTYString : public CTYCounted<TYString> {
    using CTYCounted::CTYCounted;
};
/// How bytes are understood as characters.
class CTYEncoding : public CTYCounted<TYEncoding> {
    using CTYCounted::CTYCounted;
};
/// A font at a size, in an encoding.
class CTYFontInstance : public CTYCounted<TYFontInstance> {
    using CTYCounted::CTYCounted;
};
/// Text set in a font instance.
class CTYText : public CTYCounted<TYText> {
    using CTYCounted::CTYCounted;
};
/// A path buffer. Copies share it.
class CGFMSharedBezierPath : public CTYCounted<GFMSharedBezierPath> {
    using CTYCounted::CTYCounted;
};

}  // namespace BND_NT_NMT
