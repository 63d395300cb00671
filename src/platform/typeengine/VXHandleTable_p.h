#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/typeengine/VXTypeEngineAPI.h"

/// Tells what a handle stands for, so that one of another kind is refused.
enum class VXObjectKind : std::uint8_t {
    FontSet,
    FamilyList,
    Family,
    FontDict,
    String,
    Encoding,
    FontInstance,
    Text,
    Path,
};

/// What a handle stands for.
class VXEngineObject {
public:
    explicit VXEngineObject(VXObjectKind kind) : m_Kind(kind) {}
    VXEngineObject(const VXEngineObject&) = delete;
    VXEngineObject& operator=(const VXEngineObject&) = delete;
    virtual ~VXEngineObject();

    VXObjectKind GetKind() const { return m_Kind; }

private:
    VXObjectKind m_Kind;
};

/// Owns the engine's objects, each with the count of its references.
///
/// A handle is `generation << 24 | slot + 1`. Generations come from one counter of the process and are never
/// used again, so that a handle is recognised as stale when its slot has a new tenant, and when the whole
/// table is a new one.
class VXHandleTable {
public:
    /// Takes `object` in with one reference; 0 when every slot is taken.
    TYHandle Add(std::unique_ptr<VXEngineObject> object);
    /// False for a handle that is stale or none.
    bool AddRef(TYHandle handle);
    /// Ends one reference, and the object with the last; false for a handle that is stale or none.
    bool Release(TYHandle handle);
    /// Null for a handle that is stale, none, or of another kind. Valid until the handle's last reference
    /// ends.
    template <class Object>
    Object* Find(TYHandle handle) const {
        const Slot* slot = FindSlot(handle);
        return slot != nullptr && slot->object->GetKind() == Object::kKind
                   ? static_cast<Object*>(slot->object.get())
                   : nullptr;
    }
    std::size_t GetLiveCount() const { return m_Slots.size() - m_Free.size(); }

private:
    struct Slot {
        std::unique_ptr<VXEngineObject> object;
        TYHandle handle = 0;  ///< 0 while the slot is free
        std::uint32_t references = 0;
    };

    const Slot* FindSlot(TYHandle handle) const;
    Slot* FindSlot(TYHandle handle) {
        return const_cast<Slot*>(static_cast<const VXHandleTable*>(this)->FindSlot(handle));
    }

    std::vector<Slot> m_Slots;
    std::vector<std::uint32_t> m_Free;  ///< slots without an object, with room for all of them
};
