#pragma once

#include <memory>

#include "framework/VXSwfControlTag.h"

/// A block of scripts of version 3, carried without a look into it. Made by code alone: a loaded movie keeps
/// its blocks raw.
///
///     type 82:  m_Flags u32, m_Name str, bytecode up to the end of the tag
///
/// Kept: a name outside ASCII is cut short on dump, and the bytecode behind one loads as far as the length
/// reckons with a byte for each 16-bit unit of the name.
class VXSWF_API VXSwfDoABCTag : public VXSwfControlTag {
public:
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    /// Flags, name and bytecode; not the long header.
    VXSwfTag* Copy() override;
    ~VXSwfDoABCTag() override;
    /// 1 when flags or the end of the name are missing, or when there is no bytecode where the length of the
    /// tag promises some.
    VXErrorCodeEnum LoadDataFromStream(VXBitStream& in) override;

    /// Takes over `data`, an array of `length` bytes made with `new[]`, or null. The array that it replaces
    /// is never freed here: from this call on it belongs to the caller, who got it from `GetABCData`.
    void SetABCData(unsigned char* data, unsigned int length);
    /// The tag owns the array, and frees it when it goes.
    unsigned char* GetABCData() const { return m_ABCData.get(); }
    unsigned int GetABCDataLen() const { return m_ABCDataLen; }

    unsigned int m_Flags = 1;  ///< 1: runs only when asked for
    VXString m_Name;

private:
    friend class VXSwfTagFactory;
    explicit VXSwfDoABCTag(enuTagType type);

    std::unique_ptr<unsigned char[]> m_ABCData;
    unsigned int m_ABCDataLen = 0;
};
