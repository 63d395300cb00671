#include "scripting/VXFlintActionRecords.h"

#include <utility>

#include "scripting/VXActionCodes.h"

namespace {

constexpr unsigned char kPushString = 0;
constexpr unsigned char kPushInteger = 7;

struct Extent {
    unsigned int length = 0;  // in bytes, with the end; 0 when the data does not hold the whole list
    unsigned int count = 0;   // of actions in front of the end
};

Extent MeasureList(const unsigned char* bytes, unsigned int size) {
    Extent extent;
    unsigned int at = 0;
    while (at < size) {
        const unsigned char code = bytes[at++];
        if (code == kVXActionEnd) {
            extent.length = at;
            return extent;
        }
        if (code >= 128) {
            if (size - at < 2) break;
            const unsigned int length = bytes[at] | static_cast<unsigned int>(bytes[at + 1]) << 8;
            at += 2;
            if (size - at < length) break;
            at += length;
        }
        ++extent.count;
    }
    return {};
}

}  // namespace

VXFlintActionRecords::VXFlintActionRecords(const VXFlintActionRecords& other) {
    other.Unpack();
    m_Records = other.m_Records;
    for (VXFlintActionRecord* record : m_Records) ++record->m_Holders;
}

VXFlintActionRecords::VXFlintActionRecords(VXFlintActionRecords&& other) noexcept
    : m_Packed(std::move(other.m_Packed)), m_Records(std::move(other.m_Records)) {}

VXFlintActionRecords& VXFlintActionRecords::operator=(const VXFlintActionRecords& other) {
    return *this = VXFlintActionRecords(other);
}

VXFlintActionRecords& VXFlintActionRecords::operator=(VXFlintActionRecords&& other) noexcept {
    // By way of a list of its own: what is replaced goes only when both lists are settled.
    VXFlintActionRecords taken(std::move(other));
    std::swap(m_Packed, taken.m_Packed);
    m_Records.swap(taken.m_Records);
    return *this;
}

VXFlintActionRecords::~VXFlintActionRecords() {
    for (VXFlintActionRecord* record : m_Records) {
        if (--record->m_Holders == 0) delete record;
    }
}

VXErrorCodeEnum VXFlintActionRecords::LoadFromStream(VXBitStream& in) {
    in.ByteAlignSBits();
    if (empty() && in.GetRemaining() != 0) {
        VXBitStream memory = in;
        memory.SetOutputStream(nullptr);  // its position would be that of the writes
        const Extent extent = MeasureList(memory.GetBuffer() + memory.GetPosition(), memory.GetRemaining());
        if (extent.count != 0) {
            m_Packed = in.ReadView(extent.length);
            return kVXSuccess;
        }
    }
    Unpack();
    return LoadRecords(in);
}

VXErrorCodeEnum VXFlintActionRecords::LoadRecords(VXBitStream& in) {
    for (;;) {
        auto record = std::make_unique<VXFlintActionRecord>();
        VX_RETURN_IF_FAILED(record->LoadFromStream(in));
        if (record->m_ActionCode == kVXActionEnd) return kVXSuccess;
        Append(std::move(record));
    }
}

VXErrorCodeEnum VXFlintActionRecords::DumpToStream(VXBitStream& out) const {
    if (m_Packed) {
        VXIgnore(out.FlushBits());  // always good
        VXIgnore(out.Write(m_Packed.GetBytes(), m_Packed.GetSize()));
        return kVXSuccess;
    }
    for (const VXFlintActionRecord* record : m_Records) VXIgnore(record->DumpToStream(out));
    VXIgnore(out.WriteByte(kVXActionEnd));
    return kVXSuccess;
}

void VXFlintActionRecords::Unpack() const {
    if (!m_Packed) return;
    VXFlintActionRecords list;
    list.m_Records.reserve(MeasureList(m_Packed.GetBytes(), m_Packed.GetSize()).count);
    VXBitStream bytes;
    bytes.LoadFromAllocedMem(m_Packed.GetBytes(), m_Packed.GetSize());
    VXIgnore(list.LoadRecords(bytes));  // it was complete when it was packed
    m_Records.swap(list.m_Records);
    m_Packed = VXByteView();
}

void VXFlintActionRecords::Append(std::unique_ptr<VXFlintActionRecord> record) {
    m_Records.push_back(record.get());
    ++record.release()->m_Holders;
}

void VXFlintActionRecords::PushActionRecord(VXFlintActionRecord* record) {
    if (record == nullptr) return;
    ++record->m_Holders;
    const auto drop = [](VXFlintActionRecord* held) {
        if (--held->m_Holders == 0) delete held;
    };
    std::unique_ptr<VXFlintActionRecord, decltype(drop)> hold(record, drop);
    Unpack();
    m_Records.push_back(record);
    static_cast<void>(hold.release());
}

void VXFlintActionRecords::Copy(const VXFlintActionRecords& source, short beforeEnd) {
    Unpack();
    const bool keepsEnd =
        beforeEnd != 0 && !m_Records.empty() && m_Records.back()->m_ActionCode == kVXActionEnd;
    VXFlintActionRecords copies;
    for (const VXFlintActionRecord* record : source) {
        if (keepsEnd && record->m_ActionCode == kVXActionEnd) continue;
        copies.Append(std::unique_ptr<VXFlintActionRecord>(record->Copy()));
    }
    m_Records.insert(m_Records.end() - (keepsEnd ? 1 : 0), copies.m_Records.begin(), copies.m_Records.end());
    copies.m_Records.clear();  // they are held from here now
}

void VXFlintActionRecords::InsertCallFunction(VXString name, int argument) {
    VXBitStream payload;
    VXIgnore(payload.WriteByte(kPushInteger));  // a stream in memory takes everything
    VXIgnore(payload.WriteDWord(static_cast<unsigned int>(argument)));
    VXIgnore(payload.WriteByte(kPushInteger));
    VXIgnore(payload.WriteDWord(1));  // the number of arguments
    VXIgnore(payload.WriteByte(kPushString));
    VXIgnore(payload.WriteVXString(name));
    AddActionToList(kVXActionPush, payload.GetBuffer(), payload.GetSize());
    AddActionToList(kVXActionCallFunction, nullptr, 0);
    AddActionToList(kVXActionPop, nullptr, 0);
}

short VXFlintActionRecords::AddActionToList(unsigned char code, const unsigned char* data,
                                            unsigned int length) {
    Unpack();
    auto record = std::make_unique<VXFlintActionRecord>(code);
    if (data != nullptr && length != 0) record->SetData(data, length);
    Append(std::move(record));
    return 1;
}

std::size_t VXFlintActionRecords::size() const {
    Unpack();
    return m_Records.size();
}

VXFlintActionRecords::iterator VXFlintActionRecords::begin() const {
    Unpack();
    return m_Records.data();
}

VXFlintActionRecords::iterator VXFlintActionRecords::end() const {
    Unpack();
    return m_Records.data() + m_Records.size();
}
