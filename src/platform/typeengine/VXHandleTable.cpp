#include <algorithm>
#include <limits>
#include <utility>

#include "platform/typeengine/VXHandleTable_p.h"

namespace {

constexpr int kSlotBits = 24;
constexpr TYHandle kSlotMask = (TYHandle{1} << kSlotBits) - 1;

/// Lasts for a trillion objects.
constinit TYHandle g_Generation = 0;

}  // namespace

VXEngineObject::~VXEngineObject() = default;

TYHandle VXHandleTable::Add(std::unique_ptr<VXEngineObject> object) {
    if (m_Free.empty()) {
        if (m_Slots.size() == kSlotMask) return 0;
        if (m_Slots.size() == m_Slots.capacity()) {
            // A release must not have to allocate.
            const std::size_t capacity = std::max<std::size_t>(64, m_Slots.capacity() * 2);
            m_Free.reserve(capacity);
            m_Slots.reserve(capacity);
        }
        m_Slots.emplace_back();
        m_Free.push_back(static_cast<std::uint32_t>(m_Slots.size() - 1));
    }
    const std::uint32_t index = m_Free.back();
    m_Free.pop_back();
    const TYHandle handle = (++g_Generation << kSlotBits) | (index + 1);
    m_Slots[index] = {std::move(object), handle, 1};
    return handle;
}

bool VXHandleTable::AddRef(TYHandle handle) {
    Slot* slot = FindSlot(handle);
    if (slot == nullptr || slot->references == std::numeric_limits<std::uint32_t>::max()) return false;
    ++slot->references;
    return true;
}

bool VXHandleTable::Release(TYHandle handle) {
    Slot* slot = FindSlot(handle);
    if (slot == nullptr) return false;
    if (--slot->references == 0) {
        *slot = {};
        m_Free.push_back(static_cast<std::uint32_t>(slot - m_Slots.data()));
    }
    return true;
}

const VXHandleTable::Slot* VXHandleTable::FindSlot(TYHandle handle) const {
    const TYHandle index = (handle & kSlotMask) - 1;
    if (handle == 0 || index >= m_Slots.size()) return nullptr;
    return m_Slots[index].handle == handle ? &m_Slots[index] : nullptr;
}
