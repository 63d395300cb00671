#pragma once

#include <memory>

#include "memory/VXPool.h"

/// A value that most of its owners leave as it was made. Until somebody asks for it in order to change it, it
/// takes a pointer and stands for a fresh `T`. Copying copies the value.
template <typename T>
class VXOnDemand {
public:
    VXOnDemand() = default;
    VXOnDemand(const VXOnDemand& other)
        : m_Box(other.m_Box == nullptr ? nullptr : std::make_unique<Box>(*other.m_Box)) {}
    VXOnDemand(VXOnDemand&&) noexcept = default;
    VXOnDemand& operator=(VXOnDemand other) noexcept {
        m_Box.swap(other.m_Box);
        return *this;
    }
    ~VXOnDemand() = default;

    /// Makes the value at the first call.
    T& Edit() {
        if (m_Box == nullptr) m_Box = std::make_unique<Box>();
        return m_Box->value;
    }
    /// The value, or a fresh one that all share.
    const T& Read() const {
        if (m_Box != nullptr) return m_Box->value;
        static const T kFresh{};
        return kFresh;
    }
    bool IsMade() const { return m_Box != nullptr; }
    /// Back to a fresh value, which takes no memory.
    void Reset() { m_Box.reset(); }

private:
    struct Box : VXPooled {
        T value;
    };

    std::unique_ptr<Box> m_Box;
};
