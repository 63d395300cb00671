#include "platform/CVXStreamReadWrite.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <new>
#include <string>
#include <type_traits>
#include <utility>

#include "platform/VXStreamMedium_p.h"
#include "platform/VXString.h"

namespace {

VXSystemFile OpenFile(const char* path, CVXStreamReadWrite::FileAccess access) {
    if (path == nullptr) return {};
    return access == CVXStreamReadWrite::kCreateOrEmpty ? VXSystemFile::CreateOrEmpty(path)
                                                        : VXSystemFile::OpenExisting(path);
}

}  // namespace

CVXStreamReadWrite::CVXStreamReadWrite() : m_Medium(std::make_unique<VXMemoryMedium>()) {}

CVXStreamReadWrite::CVXStreamReadWrite(const void* data, std::size_t size) : CVXStreamReadWrite() {
    if (data == nullptr || size == 0) return;
    if (m_Medium->Write(static_cast<const unsigned char*>(data), size) != size) throw std::bad_alloc();
    m_Medium->SetPosition(0);
}

CVXStreamReadWrite::CVXStreamReadWrite(const char* path, FileAccess access)
    : m_Medium(std::make_unique<VXFileMedium>(OpenFile(path, access))) {}

CVXStreamReadWrite::CVXStreamReadWrite(int descriptor)
    : m_Medium(std::make_unique<VXFileMedium>(VXSystemFile::Adopt(descriptor))) {}

CVXStreamReadWrite::CVXStreamReadWrite(std::unique_ptr<VXStreamMedium> medium)
    : m_Medium(std::move(medium)) {}

CVXStreamReadWrite::~CVXStreamReadWrite() = default;

inline std::size_t CVXStreamReadWrite::Xfer(unsigned char* data, std::size_t count) {
    return m_Mode == kWrite ? m_Medium->Write(data, count) : m_Medium->Read(data, count);
}

template <class Integer>
int CVXStreamReadWrite::XferInteger(Integer& value) {
    using Unsigned = std::make_unsigned_t<Integer>;
    unsigned char bytes[sizeof(Integer)];
    if (m_Mode == kWrite) {
        for (std::size_t i = 0; i < sizeof bytes; ++i) {
            bytes[i] = static_cast<unsigned char>(static_cast<Unsigned>(value) >> (8 * i));
        }
        if (m_Swapping != 0) std::reverse(std::begin(bytes), std::end(bytes));
        return m_Medium->Write(bytes, sizeof bytes) == sizeof bytes ? 1 : 0;
    }
    if (m_Medium->Read(bytes, sizeof bytes) != sizeof bytes) return 0;
    if (m_Swapping != 0) std::reverse(std::begin(bytes), std::end(bytes));
    Unsigned read = 0;
    for (std::size_t i = 0; i < sizeof bytes; ++i) {
        read = static_cast<Unsigned>(read | (Unsigned{bytes[i]} << (8 * i)));
    }
    value = static_cast<Integer>(read);
    return 1;
}

// A host may read into a variable that has no value yet, so these two look at it only while writing.

template <class Integer, class Real>
int CVXStreamReadWrite::XferReal(Real& value) {
    Integer bits = 0;
    if (m_Mode == kWrite) bits = std::bit_cast<Integer>(value);
    if (XferInteger(bits) == 0) return 0;
    if (m_Mode == kRead) value = std::bit_cast<Real>(bits);
    return 1;
}

template <class Flag>
int CVXStreamReadWrite::XferFlag(Flag& value) {
    unsigned char byte = m_Mode == kWrite && value != 0 ? 1 : 0;
    if (Xfer(&byte, 1) != 1) return 0;
    if (m_Mode == kRead) value = byte != 0 ? 1 : 0;
    return 1;
}

int CVXStreamReadWrite::XferByte(unsigned char* data, int count) {
    if (data == nullptr || count <= 0) return 0;
    return static_cast<int>(Xfer(data, static_cast<std::size_t>(count)));
}

int CVXStreamReadWrite::XferByte(unsigned char& value) { return static_cast<int>(Xfer(&value, 1)); }

int CVXStreamReadWrite::XferString(VXString& value) {
    std::string bytes;
    std::uint32_t length = 0;
    if (m_Mode == kWrite) {
        bytes = value.GetUTF8String();
        if (bytes.size() > VXStreamMedium::kMaxSize) return 0;
        length = static_cast<std::uint32_t>(bytes.size());
        if (XferInteger(length) == 0) return 0;
    } else {
        if (XferInteger(length) == 0 || length > m_Medium->GetRemaining()) return 0;
        bytes.resize(length);
    }
    if (length != 0 && Xfer(reinterpret_cast<unsigned char*>(bytes.data()), length) != length) return 0;
    if (m_Mode == kRead) value = VXString(bytes.data(), bytes.size());
    return 1;
}

int CVXStreamReadWrite::XferBool(bool& value) { return XferFlag(value); }
int CVXStreamReadWrite::XferBool(short& value) { return XferFlag(value); }
int CVXStreamReadWrite::XferInt16(std::int16_t& value) { return XferInteger(value); }
int CVXStreamReadWrite::XferInt16(std::uint16_t& value) { return XferInteger(value); }
int CVXStreamReadWrite::XferInt32(std::int32_t& value) { return XferInteger(value); }
int CVXStreamReadWrite::XferInt32(std::uint32_t& value) { return XferInteger(value); }
int CVXStreamReadWrite::XferInt64(std::int64_t& value) { return XferInteger(value); }
int CVXStreamReadWrite::XferID(std::int32_t& value) { return XferInteger(value); }
int CVXStreamReadWrite::XferID(std::uint32_t& value) { return XferInteger(value); }
int CVXStreamReadWrite::XferPropertyID(std::int32_t& value) { return XferInteger(value); }
int CVXStreamReadWrite::XferPropertyID(std::uint32_t& value) { return XferInteger(value); }
int CVXStreamReadWrite::XferRealNumber(double& value) { return XferReal<std::uint64_t>(value); }
int CVXStreamReadWrite::XferRealNumber(float& value) { return XferReal<std::uint32_t>(value); }

void CVXStreamReadWrite::Comment(const char*) {}

int CVXStreamReadWrite::Seek(int offset, VXSeekFromWhere origin) {
    std::uint64_t from = 0;
    switch (origin) {
        case kVXSeekFromStart:
            break;
        case kVXSeekFromCurrent:
            from = m_Medium->GetPosition();
            break;
        case kVXSeekFromEnd:
            from = m_Medium->GetSize();
            break;
        default:
            return 0;
    }
    // A target before the start wraps round to far beyond the limit.
    const std::uint64_t target = from + static_cast<std::uint64_t>(std::int64_t{offset});
    if (target > VXStreamMedium::kMaxSize) return 0;
    m_Medium->SetPosition(target);
    return 1;
}

unsigned int CVXStreamReadWrite::Tell() { return static_cast<unsigned int>(m_Medium->GetPosition()); }

void CVXStreamReadWrite::SetEndOfStream() {
    if (m_Medium->GetPosition() < m_Medium->GetSize()) m_Medium->Cut();
}

void CVXStreamReadWrite::Flush() { m_Medium->Flush(); }

int CVXStreamReadWrite::GetStreamState() {
    if (m_Medium->HasFailed()) return kVXStreamFailed;
    return m_Medium->GetRemaining() == 0 ? kVXStreamAtEnd : kVXStreamGood;
}

bool CVXStreamReadWrite::IsReading() const { return m_Mode == kRead; }
bool CVXStreamReadWrite::IsWriting() const { return m_Mode == kWrite; }
void CVXStreamReadWrite::SetSwapping(short swap) { m_Swapping = swap; }
short CVXStreamReadWrite::GetSwapping() const { return m_Swapping; }
int CVXStreamReadWrite::Open() { return m_Medium->IsOpen() ? 1 : 0; }
void CVXStreamReadWrite::Close() { m_Medium->Close(); }
void CVXStreamReadWrite::SetMode(Mode mode) { m_Mode = mode == kWrite ? kWrite : kRead; }
IVXStream::Mode CVXStreamReadWrite::GetMode() const { return m_Mode; }
void CVXStreamReadWrite::Destroy() { delete this; }

const unsigned char* CVXStreamReadWrite::GetMemory() const { return m_Medium->GetMemory(); }

std::size_t CVXStreamReadWrite::GetMemorySize() const {
    return GetMemory() == nullptr ? 0 : static_cast<std::size_t>(m_Medium->GetSize());
}
