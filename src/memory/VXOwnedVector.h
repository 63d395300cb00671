#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

/// A vector of plain pointers that owns what they point to: what is in it when it goes is deleted, as is what
/// the operations below remove, and a copy has copies. What is written over belongs to whoever did so; null in
/// its place takes an object out. Null entries are allowed.
template <typename T>
class VXOwnedVector : public std::vector<T*> {
    using Base = std::vector<T*>;

public:
    VXOwnedVector() = default;
    VXOwnedVector(const VXOwnedVector& other) : VXOwnedVector() {
        this->reserve(other.size());
        for (const T* object : other) this->push_back(object == nullptr ? nullptr : new T(*object));
    }
    VXOwnedVector(VXOwnedVector&& other) noexcept : Base(std::move(other)) {}
    VXOwnedVector& operator=(VXOwnedVector other) noexcept {
        this->swap(other);
        return *this;
    }
    ~VXOwnedVector() {
        for (T* object : *this) delete object;
    }

    typename Base::iterator erase(typename Base::const_iterator first, typename Base::const_iterator last) {
        for (auto entry = first; entry != last; ++entry) delete *entry;
        return Base::erase(first, last);
    }
    typename Base::iterator erase(typename Base::const_iterator entry) { return erase(entry, entry + 1); }
    void pop_back() { erase(this->end() - 1); }
    void clear() { erase(this->begin(), this->end()); }
    /// Null behind what is there.
    void resize(std::size_t size) {
        if (size < this->size()) erase(this->begin() + static_cast<std::ptrdiff_t>(size), this->end());
        Base::resize(size);
    }

    T& Add(std::unique_ptr<T> object) {
        this->push_back(object.get());
        return *object.release();
    }
};
