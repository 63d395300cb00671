#pragma once

#include "framework/VXSwfTag.h"

/// Takes back every body that is lent to a tag during its life, whichever way the dump ends.
class VXBodyScope {
public:
    explicit VXBodyScope(VXSwfTag& tag) : m_Tag(tag), m_Mark(tag.m_DataStack) {}
    ~VXBodyScope() {
        while (m_Tag.m_DataStack != nullptr && m_Tag.m_DataStack != m_Mark) m_Tag.SetData(nullptr);
    }
    VXBodyScope(const VXBodyScope&) = delete;
    VXBodyScope& operator=(const VXBodyScope&) = delete;

    /// Lends the bytes of `body` and gives the tag their length.
    void Lend(VXBitStream& body) {
        if (body.GetBuffer() != nullptr) m_Tag.SetData(body.GetBuffer());
        m_Tag.SetTagLen(body.GetSize());
    }

private:
    VXSwfTag& m_Tag;
    VXSwfTag::Loan* m_Mark;
};
