#pragma once

#include <memory>
#include <string>

#include "platform/IVXStream.h"

/// A stream over memory of its own or over a file. Files are buffered, so that a word written is not a system
/// call; `Flush`, `Close` and destruction bring the buffer out. A new stream reads.
///
/// Offsets go up to 2^32 − 1; `Seek` takes a signed int, so a target beyond 2^31 − 1 is reached in steps.
class VXPLATFORM_API CVXStreamReadWrite : public IVXReadWriteStream {
public:
    enum FileAccess : int {
        kOpenExisting = 0,   ///< read only
        kCreateOrEmpty = 1,  ///< read and write, the file made or cut to nothing
    };

    /// An empty stream in memory.
    CVXStreamReadWrite();
    /// A stream in memory that starts with a copy of `size` bytes, positioned at 0.
    CVXStreamReadWrite(const void* data, std::size_t size);
    /// A stream over the file `path`, in the system's own encoding of file names. `Open` answers 0 when the
    /// file could not be opened; every other operation then behaves as on an empty stream that takes no data.
    CVXStreamReadWrite(const char* path, FileAccess access);
    /// Takes over an open file descriptor that can seek, at the start of its file, and closes it in the end.
    explicit CVXStreamReadWrite(int descriptor);
    ~CVXStreamReadWrite() override;

    CVXStreamReadWrite(const CVXStreamReadWrite&) = delete;
    CVXStreamReadWrite& operator=(const CVXStreamReadWrite&) = delete;

    int XferByte(unsigned char* data, int count) override;
    int XferByte(unsigned char& value) override;
    int XferString(VXString& value) override;
    int XferBool(bool& value) override;
    int XferBool(short& value) override;
    int XferInt16(std::int16_t& value) override;
    int XferInt16(std::uint16_t& value) override;
    int XferInt32(std::int32_t& value) override;
    int XferInt32(std::uint32_t& value) override;
    int XferInt64(std::int64_t& value) override;
    int XferID(std::int32_t& value) override;
    int XferID(std::uint32_t& value) override;
    int XferPropertyID(std::int32_t& value) override;
    int XferPropertyID(std::uint32_t& value) override;
    int XferRealNumber(double& value) override;
    int XferRealNumber(float& value) override;
    void Comment(const char* text) override;
    int Seek(int offset, VXSeekFromWhere origin) override;
    unsigned int Tell() override;
    void SetEndOfStream() override;
    void Flush() override;
    int GetStreamState() override;
    bool IsReading() const override;
    bool IsWriting() const override;
    void SetSwapping(short swap) override;
    short GetSwapping() const override;
    int Open() override;
    void Close() override;
    void SetMode(Mode mode) override;
    Mode GetMode() const override;
    void Destroy() override;

    /// The bytes of a stream in memory, `GetMemorySize` of them, valid until the next write. Null for a file.
    const unsigned char* GetMemory() const;
    std::size_t GetMemorySize() const;

private:
    class Medium;
    class MemoryMedium;
    class FileMedium;

    std::unique_ptr<Medium> m_Medium;
    Mode m_Mode = kRead;
    short m_Swapping = 0;
};
