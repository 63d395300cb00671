#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "scripting/VXFlintActionRecord.h"

/// A script: an ordered list of actions.
///
///     VXFlintActionRecord ..., 00
///
/// The action of code 0 that ends the list on the wire is not held. A list as it was loaded stays packed in
/// the bytes that it came in, until somebody asks for an action of it.
///
/// The list owns its actions. Copies of the list share them, and the last holder deletes an action; `Copy`
/// is the way to actions of one's own.
class VXSWF_API VXFlintActionRecords {
public:
    using iterator = VXFlintActionRecord* const*;

    VXFlintActionRecords() = default;
    VXFlintActionRecords(const VXFlintActionRecords& other);
    VXFlintActionRecords(VXFlintActionRecords&& other) noexcept;
    VXFlintActionRecords& operator=(const VXFlintActionRecords& other);
    VXFlintActionRecords& operator=(VXFlintActionRecords&& other) noexcept;
    virtual ~VXFlintActionRecords();

    /// Appends what it reads. 1 when the data ends before the list does; the actions read so far stay.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    /// Always 0, whatever `out` takes.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) const;
    /// Appends copies of the actions of `source`, which may be this list. With a non-zero `beforeEnd`, where
    /// this list closes with an action of code 0, they go in front of that one, and those of code 0 are left
    /// out.
    void Copy(const VXFlintActionRecords& source, short beforeEnd);
    /// Appends a call of the function `name` with one argument, its result thrown away: Push, CallFunction
    /// and Pop.
    ///
    /// Kept: a name outside ASCII is cut short.
    void InsertCallFunction(VXString name, int argument);

    /// Appends `record`, which the list owns from here on, along with other lists that have it; without
    /// memory it is gone. Null is ignored.
    void PushActionRecord(VXFlintActionRecord* record);
    bool empty() const { return !m_Packed && m_Records.empty(); }
    std::size_t size() const;
    /// The actions belong to the list and may be changed in place. Valid until the next action is added.
    iterator begin() const;
    iterator end() const;

private:
    void Unpack() const;
    VXErrorCodeEnum LoadRecords(VXBitStream& in);
    void Append(std::unique_ptr<VXFlintActionRecord> record);
    short AddActionToList(unsigned char code, const unsigned char* data, unsigned int length);

    // One of the two is empty. Who asks for an action changes the form and not the contents.
    mutable VXByteView m_Packed;  // the wire form, complete with its end
    mutable std::vector<VXFlintActionRecord*, VXPoolAllocator<VXFlintActionRecord*>> m_Records;
};
