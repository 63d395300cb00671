#pragma once

#include <memory>
#include <utility>
#include <vector>

/// A vector of plain pointers that owns what they point to: what is in it when it goes is deleted, and a copy
/// has copies. What is taken out, or written over, belongs to whoever did so. Null entries are allowed.
template <typename T>
class VXOwnedVector : public std::vector<T*> {
public:
    VXOwnedVector() = default;
    VXOwnedVector(const VXOwnedVector& other) : VXOwnedVector() {
        this->reserve(other.size());
        for (const T* object : other) this->push_back(object == nullptr ? nullptr : new T(*object));
    }
    VXOwnedVector(VXOwnedVector&& other) noexcept : std::vector<T*>(std::move(other)) {}
    VXOwnedVector& operator=(VXOwnedVector other) noexcept {
        this->swap(other);
        return *this;
    }
    ~VXOwnedVector() {
        for (T* object : *this) delete object;
    }

    T& Add(std::unique_ptr<T> object) {
        this->push_back(object.get());
        return *object.release();
    }
};
