#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "memory/VXHeld.h"

/// A vector of plain pointers to objects that its copies share: the last of them deletes what is in it when it
/// goes. What is taken out, or written over, belongs to whoever did so. Null entries are allowed.
///
/// The count of further owners stands in the object (its member `m_Holders`), and is not guarded.
template <typename T>
class VXSharedVector : public std::vector<T*> {
public:
    VXSharedVector() = default;
    VXSharedVector(const VXSharedVector& other) : std::vector<T*>(other) {
        for (T* object : *this) {
            if (object != nullptr) ++object->m_Holders.m_Count;
        }
    }
    VXSharedVector(VXSharedVector&& other) noexcept : std::vector<T*>(std::move(other)) {}
    VXSharedVector& operator=(VXSharedVector other) noexcept {
        this->swap(other);
        return *this;
    }
    ~VXSharedVector() {
        for (T* object : *this) {
            if (object != nullptr && object->m_Holders.m_Count-- == 0) delete object;
        }
    }

    T& Add(std::unique_ptr<T> object) {
        this->push_back(object.get());
        return *object.release();
    }
};
