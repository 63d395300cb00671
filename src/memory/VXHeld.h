#pragma once

#include <utility>

/// How many holders an object has; a copy of the object starts without any.
class VXHolderCount {
public:
    VXHolderCount() = default;
    VXHolderCount(const VXHolderCount&) noexcept {}
    VXHolderCount& operator=(const VXHolderCount&) noexcept { return *this; }

private:
    template <typename T>
    friend class VXHeld;
    template <typename T>
    friend class VXSharedVector;

    unsigned int m_Count = 0;
};

/// A holder of an object made with `new`, to be used like the pointer that it converts to and from. The last
/// holder deletes the object. The count stands in the object (its member `m_Holders`), so that any number of
/// holders can be made from the plain pointer, as hosts pass it.
///
/// The count is not guarded: an object and its holders belong to one thread at a time.
template <typename T>
class VXHeld {
public:
    VXHeld() = default;
    VXHeld(T* object) noexcept : m_Object(object) {
        if (m_Object != nullptr) ++m_Object->m_Holders.m_Count;
    }
    VXHeld(const VXHeld& other) noexcept : VXHeld(other.m_Object) {}
    VXHeld(VXHeld&& other) noexcept : m_Object(std::exchange(other.m_Object, nullptr)) {}
    VXHeld& operator=(VXHeld other) noexcept {
        std::swap(m_Object, other.m_Object);
        return *this;
    }
    ~VXHeld() {
        if (m_Object != nullptr && --m_Object->m_Holders.m_Count == 0) delete m_Object;
    }

    operator T*() const { return m_Object; }
    T* operator->() const { return m_Object; }

private:
    T* m_Object = nullptr;
};
