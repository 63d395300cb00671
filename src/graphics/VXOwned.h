#pragma once

#include <concepts>
#include <memory>
#include <utility>

/// A `unique_ptr` that converts from and to the plain pointer, as hosts pass it: an object made with `new` is
/// taken over by `owner = new Object`, and is used like the pointer. Nobody else deletes it.
template <typename T>
class VXOwned : public std::unique_ptr<T> {
public:
    using std::unique_ptr<T>::unique_ptr;
    using std::unique_ptr<T>::operator=;

    VXOwned(std::unique_ptr<T> owner) noexcept : std::unique_ptr<T>(std::move(owner)) {}
    VXOwned(T* object) noexcept : std::unique_ptr<T>(object) {}
    VXOwned& operator=(T* object) noexcept {
        this->reset(object);
        return *this;
    }

    operator T*() const noexcept { return this->get(); }
    /// For a `static_cast` to the class that the object has.
    template <std::derived_from<T> Derived>
    explicit operator Derived*() const noexcept {
        return static_cast<Derived*>(this->get());
    }
};
